// Renders the program's pages to PNG files: screenshot_maker FOLDER light|dark SCALE. The scale names the
// files; it is set by QT_SCALE_FACTOR. Without a screen the pages are drawn in Qt's own style; on a screen
// they are in the style of the system, and a picture of the whole screen with all windows is taken too.
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QPalette>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>

#include <functional>

#include "DemoTree.h"
#include "app/UnitScanWizard.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/list/ListView.h"
#include "controls/shell/RzShellList.h"
#include "platform/KnownFolders.h"
#include "views/commands/Commands.h"
#include "views/files/PropertiesDialog.h"
#include "views/main/Dialogs.h"
#include "views/main/Looks.h"
#include "views/main/StartParameters.h"
#include "views/main/UnitMain.h"

namespace {

constexpr int kSettleMs = 400;
constexpr int kEarlyInScanMs = 200;  // the blinking mark of the running row shows
constexpr int kScanMs = 1000;

void UseDarkPalette() {
  QPalette palette(QColor(62, 63, 68), QColor(53, 54, 58));
  palette.setColor(QPalette::Base, QColor(35, 36, 40));
  palette.setColor(QPalette::AlternateBase, QColor(42, 43, 47));
  palette.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent);
  palette.setColor(QPalette::Highlight, QColor(53, 116, 190));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, QColor(60, 61, 66));
  palette.setColor(QPalette::ToolTipText, Qt::white);
  QApplication::setPalette(palette);
}

bool OnScreen() {
  return QGuiApplication::platformName() != u"offscreen"_qs;
}

// Large enough to be still running when its picture is taken. Under Wine it is there too, on the drive of the
// build folder.
QString LargeFolder() {
  const QFileInfo programs(u"/usr"_qs);
  return programs.exists() ? QDir::toNativeSeparators(programs.absoluteFilePath()) : GetWindowsFolder();
}

// Takes the pictures one after the other: each step runs inside the event loop of the modal wizard.
class TPhotographer {
 public:
  TPhotographer(const TDemoTree& demo, QString folder, const QString& suffix, TFormMain& form,
                TFormWizard& wizard)
      : FDemo(demo), FFolder(std::move(folder)), FSuffix(suffix), FForm(form), FWizard(wizard) {}

  void Run() {
    After(kSettleMs, [this] { TakeDrivePage(); });
    QApplication::exec();
  }

 private:
  static void After(int milliseconds, std::function<void()> step) {
    QTimer::singleShot(milliseconds, qApp, std::move(step));
  }

  void Save(QWidget& window, const QString& name) {
    Write(window.grab(), name);
    if (OnScreen()) Write(window.screen()->grabWindow(0), name + u"-screen"_qs);
  }

  void Write(const QPixmap& picture, const QString& name) {
    const QString file = FFolder + u'/' + name + FSuffix + u".png"_qs;
    if (!picture.save(file)) qFatal("can't write %s", qPrintable(file));
  }

  QPushButton& Analyze() { return *FWizard.findChild<QPushButton*>(u"btnAnalyze"_qs); }

  void TakeDrivePage() {
    Save(FWizard, u"wizard-choose"_qs);
    Save(FForm, u"overview-before"_qs);
    FWizard.PreselectFolder(LargeFolder());
    Analyze().click();
    After(kEarlyInScanMs, [this] { TakeScanPage(); });
  }

  void TakeScanPage() {
    Save(FWizard, u"wizard-scan"_qs);
    Analyze().click();  // Stop
    FWizard.PreselectFolder(FDemo.Root());
    After(kSettleMs, [this] { Analyze().click(); });
    After(kSettleMs + kScanMs, [this] { TakeResult(); });
  }

  void TakeResult() {
    auto* list = FForm.findChild<TListView*>(u"lvTop"_qs);
    list->SetSelected(list->Items().Item(2));
    list->setFocus();
    After(kSettleMs, [this] {
      Save(FForm, u"overview-after"_qs);
      TakeTopFiles();
    });
  }

  void TakeTopFiles() {
    FForm.findChild<TdxTabContainerDockSite*>(u"dxTabContainerDockSite1"_qs)
        ->SetActiveChildIndex(kTopFilesTab);
    auto* list = FForm.findChild<TListView*>(u"lvTopFile"_qs);
    for (const int row : {1, 3, 4})
      list->Items()[row]->SetChecked(true);
    After(kSettleMs, [this] {
      Save(FForm, u"top-files"_qs);
      TakeContents();
    });
  }

  TRzShellList& Contents() {
    return *dynamic_cast<TRzShellList*>(FForm.findChild<QWidget*>(u"ShellListContent"_qs));
  }

  // Once the folder's rows are there.
  void AtFolder(const QString& folder, const std::function<void()>& step) {
    Contents().SetPath(folder);
    WhenFilled(step);
  }
  void WhenFilled(const std::function<void()>& step) {
    if (Contents().State() != TRzShellList::TState::Filling) return step();
    After(1, [this, step] { WhenFilled(step); });
  }

  void TakeContents() {
    FForm.findChild<TdxTabContainerDockSite*>(u"dxTabContainerDockSite1"_qs)
        ->SetActiveChildIndex(kContentsTab);
    After(kSettleMs, [this] {
      Save(FForm, u"contents-computer"_qs);
      AtFolder(LargeFolder(), [this] {
        QCoreApplication::sendPostedEvents(nullptr,
                                           QEvent::LayoutRequest);  // and no answers of the size thread
        Save(FForm, u"contents-pending"_qs);
        AtFolder(FDemo.Root(), [this] { TakeFolder(); });
      });
    });
  }

  void TakeFolder() {
    Contents().Items()[3]->SetChecked(true);
    Contents().OnClick();
    Contents().SetSelected(Contents().Items()[12]);
    Contents().setFocus();
    After(kSettleMs, [this] { TakeFolderWithSizes(); });
  }

  // The folders of the picture before stand first in the queue.
  void TakeFolderWithSizes() {
    for (const TListItem* item : Contents().Items())
      if (item->SubItems().Text(0) == u"...") return After(kSettleMs, [this] { TakeFolderWithSizes(); });
    Save(FForm, u"contents"_qs);
    TakeDownloads();
  }

  void TakeDownloads() {
    FForm.findChild<TdxTabContainerDockSite*>(u"dxTabContainerDockSite1"_qs)
        ->SetActiveChildIndex(kDownloadsTab);
    After(kSettleMs, [this] {
      Save(FForm, u"downloads"_qs);
      TakeQuestion();
    });
  }

  // The box is modal: its picture is taken from inside.
  void TakeQuestion() {
    FForm.findChild<TdxTabContainerDockSite*>(u"dxTabContainerDockSite1"_qs)
        ->SetActiveChildIndex(kTopFilesTab);
    After(kSettleMs, [this] {
      QWidget* box = QApplication::activeModalWidget();
      Save(*box, u"delete-question"_qs);
      box->close();  // No
    });
    FForm.findChild<TdxBarButton*>(u"mniTDel"_qs)->OnClick();
    ShowOwnProperties(FForm, FDemo.Root() + u"/Holiday 2024.mkv"_qs, FForm.Language());
    After(kSettleMs, [this] { FForm.findChild<QPushButton*>(u"btnChecksum"_qs)->setFocus(); });
    After(2 * kSettleMs, [this] {
      Save(*FForm.findChild<QDialog*>(u"FormProperties"_qs), u"properties"_qs);
      QApplication::quit();
    });
  }

  const TDemoTree& FDemo;
  const QString FFolder;
  const QString FSuffix;
  TFormMain& FForm;
  TFormWizard& FWizard;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc != 4) qFatal("usage: screenshot_maker FOLDER light|dark SCALE");
  if (!OnScreen()) QApplication::setStyle(QStyleFactory::create(u"Fusion"_qs));
  QIcon::setThemeName(u"tallyscope"_qs);
  QApplication::setWindowIcon(ProgramIcon());
  const QString palette = QString::fromLocal8Bit(argv[2]);
  if (palette == u"dark") UseDarkPalette();
  const QString suffix = u"-%1-%2x"_qs.arg(palette, QString::fromLocal8Bit(argv[3]));

  const TDemoTree demo;
  const TStartParameters parameters{QStringList()};
  TSystemDialogs dialogs;
  TFormMain form(parameters, dialogs);
  TFormWizard wizard(form, form.StaticImages(), parameters);
  form.SetScanForm(wizard);
  form.show();
  form.activateWindow();
  TPhotographer(demo, QString::fromLocal8Bit(argv[1]), suffix, form, wizard).Run();
  return 0;
}
