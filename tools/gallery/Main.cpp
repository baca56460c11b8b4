// The gallery: gallery shows it; gallery FOLDER light|dark SCALE saves pictures of it and ends. The scale
// names the files; it is set by QT_SCALE_FACTOR.
#include "GalleryWindow.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStyleFactory>
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

// A picture with a selected row, a hot button and a sort mark; one with an open editor and a collapsed group;
// one of a narrow list with bars.
void TakePictures(TGalleryWindow& window, const QString& folder, const QString& suffix) {
  TRdListView& list = window.List();
  list.SetSelected(list.Items()[5]);
  list.SetSort(kTextColumn, ssDown);
  MoveMouse(list, 2, kButtonColumn);
  window.resize(1530, 720);
  QTimer::singleShot(kSettleMs, &window, [&window, &list, folder, suffix] {
    Save(window, folder + u"/gallery"_qs + suffix);
    list.Groups()[1].SetGroupExpand(false);
    MoveMouse(list, 4, kNameColumn);
    list.Editors().Open(*list.Items()[1], kEditColumn, std::nullopt, false);
    Save(window, folder + u"/gallery_edit"_qs + suffix);
    list.HideEditors();
    list.Groups()[1].SetGroupExpand(true);
    window.resize(960, 600);
    QTimer::singleShot(kSettleMs, &window, [&window, &list, folder, suffix] {
      list.SetTopIndex(2);
      Save(window, folder + u"/gallery_bars"_qs + suffix);
      window.Use(TGallerySkin::None);
      Save(window, folder + u"/gallery_plain"_qs + suffix);
      list.SetOpenOwnerDraw(false);
      Save(window, folder + u"/gallery_host"_qs + suffix);
      QApplication::quit();
    });
  });
}

}  // namespace

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  if (QGuiApplication::platformName() == u"offscreen"_qs)
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_qs));
  TGalleryWindow window;
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() == 4) {
    window.Use(arguments[2] == u"dark" ? TGallerySkin::Dark : TGallerySkin::Light);
    TakePictures(window, arguments[1], u"_"_qs + arguments[2] + u"_"_qs + arguments[3] + u"x.png"_qs);
  }
  window.show();
  return QApplication::exec();
}
