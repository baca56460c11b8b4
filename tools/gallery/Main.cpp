// The gallery: gallery shows it; gallery FOLDER light|dark SCALE saves pictures of it and ends. The scale
// names the files; it is set by QT_SCALE_FACTOR.
#include "GalleryButtons.h"
#include "GalleryWindow.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTimer>

namespace {

constexpr int kSettleMs = 300;

void MoveMouse(TRdListView& list, int row, int column) {
  const QPointF pos = list.Layout().CellRect(row, column).center();
  QMouseEvent move(QEvent::MouseMove, pos, list.viewport()->mapToGlobal(pos), Qt::NoButton, {}, {});
  QCoreApplication::sendEvent(list.viewport(), &move);
}

void Save(QWidget& window, const QString& file) {
  if (!window.grab().save(file)) qFatal("can't write %s", qPrintable(file));
}

// The pages, and what shows them.
struct TGallery {
  QTabWidget Pages;
  TGalleryWindow Lists;
  TGalleryButtons Buttons;
  TGalleryFolds Folds;

  TGallery() {
    Pages.setWindowTitle(u"Gallery"_qs);
    Pages.addTab(&Lists, u"List"_qs);
    Pages.addTab(&Buttons, u"Image buttons"_qs);
    Pages.addTab(&Folds, u"Fold panels"_qs);
    Pages.resize(1180, 740);
    Lists.OnSkin = [this](TGallerySkin skin) {
      Buttons.Use(skin);
      Folds.Use(skin);
    };
    Lists.Use(TGallerySkin::Light);
  }
};

void AfterSettling(TGallery& gallery, const std::function<void()>& act) {
  QTimer::singleShot(kSettleMs, &gallery.Pages, act);
}

// A picture of the buttons and one of fold panels.
void TakeButtonPictures(TGallery& gallery, const QString& folder, const QString& suffix, TGallerySkin skin) {
  gallery.Pages.resize(760, 640);
  gallery.Lists.Use(skin);
  gallery.Pages.setCurrentWidget(&gallery.Buttons);
  gallery.Buttons.Pose();
  Save(gallery.Buttons, folder + u"/gallery_buttons"_qs + suffix);
  gallery.Pages.setCurrentWidget(&gallery.Folds);
  gallery.Folds.Pose();
  AfterSettling(gallery, [&gallery, folder, suffix] {
    Save(gallery.Folds, folder + u"/gallery_folds"_qs + suffix);
    QApplication::quit();
  });
}

// A picture with a selected row, a hot button and a sort mark; one with an open editor and a collapsed group;
// one of a narrow list with bars; the other pages.
void TakePictures(TGallery& gallery, const QString& folder, const QString& suffix, TGallerySkin skin) {
  TGalleryWindow& page = gallery.Lists;
  TRdListView& list = page.List();
  page.Use(skin);
  list.SetSelected(list.Items()[5]);
  list.SetSort(kTextColumn, ssDown);
  MoveMouse(list, 2, kButtonColumn);
  gallery.Pages.resize(1530, 760);
  AfterSettling(gallery, [&gallery, &page, &list, folder, suffix, skin] {
    Save(page, folder + u"/gallery"_qs + suffix);
    list.Groups()[1].SetGroupExpand(false);
    MoveMouse(list, 4, kNameColumn);
    list.Editors().Open(*list.Items()[1], kEditColumn, std::nullopt, false);
    Save(page, folder + u"/gallery_edit"_qs + suffix);
    list.HideEditors();
    list.Groups()[1].SetGroupExpand(true);
    gallery.Pages.resize(960, 640);
    AfterSettling(gallery, [&gallery, &page, &list, folder, suffix, skin] {
      list.SetTopIndex(2);
      Save(page, folder + u"/gallery_bars"_qs + suffix);
      page.Use(TGallerySkin::None);
      Save(page, folder + u"/gallery_plain"_qs + suffix);
      list.SetOpenOwnerDraw(false);
      Save(page, folder + u"/gallery_host"_qs + suffix);
      TakeButtonPictures(gallery, folder, suffix, skin);
    });
  });
}

}  // namespace

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  if (QGuiApplication::platformName() == u"offscreen"_qs)
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_qs));
  TGallery gallery;
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() == 4)
    TakePictures(gallery, arguments[1], u"_"_qs + arguments[2] + u"_"_qs + arguments[3] + u"x.png"_qs,
                 arguments[2] == u"dark" ? TGallerySkin::Dark : TGallerySkin::Light);
  gallery.Pages.show();
  return QApplication::exec();
}
