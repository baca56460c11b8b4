#include "views/UnitMain.h"

#include <QEvent>
#include <QMenuBar>
#include <QResizeEvent>
#include <QScreen>
#include <QShowEvent>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

#include "controls/bars/StatusBar.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/notes/PImageNote.h"
#include "controls/picture/ImageList.h"
#include "platform/KnownFolders.h"
#include "platform/Process.h"
#include "views/Commands.h"
#include "views/DownloadsTab.h"
#include "views/HelpCommands.h"
#include "views/Looks.h"
#include "views/OverviewTab.h"
#include "views/Pictures.h"
#include "views/StatusLine.h"
#include "views/TabSwitching.h"
#include "views/TopFilesTab.h"

namespace {

constexpr QSize kClientSize(812, 572);
constexpr QSize kMinimumSize(820, 599);  // with the frame
constexpr int kActivationMs = 500;

}  // namespace

TFormMain::TFormMain(TStartParameters parameters)
    : FParameters(std::move(parameters)),
      FState(ProgramFolder() + u"Toolbox_Language"_qs),
      imglstStatic(MakeStaticImages()),
      cxmglstdock(MakeDockImages()),
      cxmglstlvFile(MakeFileImages()),
      cxmglstdownloadfiles(MakeDownloadImages()),
      ImageNote1(new TImageNote(this)) {
  setObjectName(u"FormMain"_qs);
  setWindowTitle(u"Korvel Tallyscope"_qs);
  setFont(FormFont());
  FormCreate();
}

TFormMain::~TFormMain() {
  // The lists go while their images and the parts that their handlers use still stand.
  delete takeCentralWidget();
}

void TFormMain::FormCreate() {
  LoadLanguage();
  FState.FDrives.Enumerate(FState.FLanguage.GetMessage(u"M_Local_Disk"_qs, u"Local Disk"_qs));
  BuildWindow();
  BuildTabs();
  WireCommands();
  FBaseWidth = width();
  FOverview->ShowDrives(FState.FLanguage.GetMessage(
      u"M_Tip"_qs, u"Tips: you can double click one item to perform quick analysis."_qs));
  FStatusLine->ShowDetails();
  dxTabContainerDockSite1->SetActiveChildIndex(kOverviewTab);
}

void TFormMain::LoadLanguage() {
  FState.FLanguage.LoadLanguage(GetSuiteLanguageName());
  FState.FAnalyzingText = FState.FLanguage.GetMessage(u"M_Analyzing"_qs, u"Analyzing"_qs);
  FState.FCompletedText = FState.FLanguage.GetMessage(u"M_Completed"_qs, u"Completed"_qs);
}

void TFormMain::BuildWindow() {
  ImageNote1->setObjectName(u"ImageNote1"_qs);
  ImageNote1->hide();
  for (const char* name : StorePicture::kNames) {
    TPictureItem& item = ImageNote1->Items().Add();
    item.Name = QLatin1String(name);
    item.Picture = TPicture::FromResource(item.Name);
  }
  FCommands = std::make_unique<TMainCommands>(*this);
  for (const char* name : {"lbtnAnalyze", "lbtnBack", "lbtnForward", "lbtnUp"})
    FCommands->Button(name).SetHint(FCommands->Button(name).Caption());

  setMenuBar(&FCommands->Bars().MenuBar(u"dxbrManager1Bar"_qs));
  addToolBar(&FCommands->Bars().ToolBar(u"dxbrManager1Bar1"_qs));

  dxTabContainerDockSite1 = new TdxTabContainerDockSite(this);
  dxTabContainerDockSite1->setObjectName(u"dxTabContainerDockSite1"_qs);
  setCentralWidget(dxTabContainerDockSite1);
  dxstsbr1 = new TdxStatusBar(this);
  dxstsbr1->setObjectName(u"dxstsbr1"_qs);
  setStatusBar(dxstsbr1);
  FStatusLine = std::make_unique<TStatusLine>(*dxstsbr1, *ImageNote1, FState);
  resize(kClientSize);
  move(screen()->availableGeometry().center() - rect().center());
}

TdxDockPanel* TFormMain::AddPanel(const QString& name, const QString& caption, int picture) {
  static constexpr const char* kPictures[] = {"tab_overview16", "tab_contents16", "tab_topfiles16",
                                              "tab_downloads16"};
  auto* panel = new TdxDockPanel(*dxTabContainerDockSite1);
  panel->setObjectName(name);
  panel->SetCaption(caption);
  panel->SetPicture(TPicture::FromResource(QLatin1String(kPictures[picture])));
  return panel;
}

void TFormMain::BuildTabs() {
  TdxDockPanel* overview = AddPanel(u"DockPnlOverview"_qs, u"Overview"_qs, kOverviewTab);
  TdxDockPanel* contents = AddPanel(u"DockPnlcontent"_qs, u"Contents"_qs, kContentsTab);
  TdxDockPanel* topFiles = AddPanel(u"DockPnlFile"_qs, u"Top 100 Files"_qs, kTopFilesTab);
  dxDockPnlDownloads = AddPanel(u"dxDockPnlDownloads"_qs, u"Download Directory"_qs, kDownloadsTab);
  contents->SetTabEnabled(false);
  dxDockPnlDownloads->SetTabEnabled(false);

  FOverview = new TOverviewTab({FState, *FCommands, *FStatusLine, *ImageNote1, *imglstStatic, *cxmglstdock},
                               *overview);
  FTopFiles = new TTopFilesTab({FState, *FCommands, *FStatusLine, *cxmglstlvFile}, *topFiles);
  FDownloads = new TDownloadsTab(*cxmglstdownloadfiles, *dxDockPnlDownloads);
  FTabSwitching = std::make_unique<TTabSwitching>(*FCommands, *FOverview, *FTopFiles);

  const auto activeTabChanged = [this] {
    if (FActivated) FTabSwitching->Activated(dxTabContainerDockSite1->ActiveChildIndex());
  };
  dxTabContainerDockSite1->OnActiveChildChanged = activeTabChanged;
  FOverview->OnNoCurrentRow = activeTabChanged;
}

void TFormMain::WireCommands() {
  FCommands->DispatchTo({FOverview, nullptr, FTopFiles, nullptr},
                        [this] { return dxTabContainerDockSite1->ActiveChildIndex(); });
  FCommands->BindTab(kOverviewTab, *FOverview);
  FCommands->BindTab(kTopFilesTab, *FTopFiles);
  FCommands->OnClick("btnScan", [this] { btnScanClick(); });
  FCommands->OnClick("btnExit", [this] { close(); });
  FCommands->OnClick("btnHelp", [] { btnHelpClick(); });
  FCommands->OnClick("btnHome", [] { btnHomeClick(ColophonLibrary()); });
  FCommands->OnClick("btnAbout", [] { btnAboutClick(ColophonLibrary()); });
}

void TFormMain::SetScanForm(TScanForm& scanForm) {
  FScanForm = &scanForm;
  FOverview->SetScanForm(&scanForm);
}

QString TFormMain::DownloadsCaption() const {
  return dxDockPnlDownloads->Caption();
}

void TFormMain::FillResults(const TTallyscopeScan& scan, const QStringList& targets) {
  FOverview->FillResults(scan, targets);
  FTopFiles->FillResults(scan);
}

void TFormMain::ScanAbandoned() {
  FOverview->FitDriveColumns();
}

void TFormMain::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (!event->spontaneous()) FormShow();
}

// A frame thinner than the one that the form was drawn with must not make it larger than it opens.
void TFormMain::HoldMinimumSize() {
  const QSize frame = frameGeometry().size() - size();
  setMinimumSize((kMinimumSize - frame).boundedTo(kClientSize));
}

void TFormMain::FormShow() {
  HoldMinimumSize();
  dxTabContainerDockSite1->SetActiveChildIndex(kOverviewTab);
  FOverview->FormShow();
  FTopFiles->FormShow();
  FDownloads->FormShow();
  TrimWorkingSet();
  // Where no window manager activates windows, showing counts.
  QTimer::singleShot(kActivationMs, this, [this] { FormActivate(); });
}

bool TFormMain::event(QEvent* event) {
  // Later, since the body shows a modal form and this event is not done with yet.
  if (event->type() == QEvent::WindowActivate && !FActivated)
    QTimer::singleShot(0, this, [this] { FormActivate(); });
  return QMainWindow::event(event);
}

// The body runs once.
void TFormMain::FormActivate() {
  if (FActivated) return;
  FActivated = true;
  HoldMinimumSize();  // some window managers tell of their frame only now
  FOverview->FitDriveColumns();
  if (FParameters.Count() != 2) {
    btnScanClick();
  } else if (FScanForm != nullptr) {
    ApplyPreselection();
    FScanForm->ShowModal();
  }
}

void TFormMain::ApplyPreselection() {
  const TPreselection chosen = FParameters.Preselection();
  if (chosen.Folder) FScanForm->PreselectFolder(*chosen.Folder);
  if (chosen.Drives) FScanForm->PreselectDrives(*chosen.Drives);
}

void TFormMain::btnScanClick() {
  if (FScanForm == nullptr || FScanForm->Showing()) return;
  FScanForm->Targets().clear();
  ResetForm(FState.FLanguage.GetMessage(
      u"M_Tip"_qs, u"Tips: You can double click on an item to perform quick analysis."_qs));
  FScanForm->ShowModal();
}

// The state before any result.
void TFormMain::ResetForm(const QString& tip) {
  FOverview->ShowDrives(tip);
  FTopFiles->Clear();
  FOverview->FitDriveColumns();
  FCommands->SetEnabled({"mniTOpen", "mniTPPT", "mniTDel", "mniTOFF", "mniTMove"}, false);
  FState.FBackHistory.clear();
  FState.FForwardHistory.clear();
  dxTabContainerDockSite1->SetActiveChildIndex(kOverviewTab);
  FTabSwitching->Activated(kOverviewTab);  // also where it was the active one before
}

void TFormMain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  if (isVisible()) FormResize();
}

void TFormMain::FormResize() {
  const int growth = width() - FBaseWidth;
  FOverview->FormResize(growth);
  FTopFiles->FormResize(growth);
  FDownloads->FormResize(growth);
}
