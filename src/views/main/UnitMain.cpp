#include "views/main/UnitMain.h"

#include <QCloseEvent>
#include <QEvent>
#include <QMenuBar>
#include <QResizeEvent>
#include <QScreen>
#include <QShowEvent>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

#include <utility>

#include "controls/bars/StatusBar.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/notes/Image.h"
#include "platform/KnownFolders.h"
#include "platform/Process.h"
#include "views/commands/Commands.h"
#include "views/language/FormComponents.h"
#include "views/main/Looks.h"
#include "views/main/TabSwitching.h"

namespace {

// Device-independent pixels.
constexpr QSize kClientSize(812, 572);
constexpr QSize kMinimumSize(820, 599);  // with the frame
// After the form has been shown, for a desktop that activates nothing by itself.
constexpr int kActivationMs = 500;
constexpr int kListRoom = 780;  // pixels that the columns of a list have in the form as it opens

// What screen readers call the components that show no text of their own.
constexpr TSpokenRow kSpoken[] = {
    {"dxbrManager1Bar", "M_Menu", "Menu"},
    {"dxbrManager1Bar1", "M_Tool_Bar", "Tool bar"},
    {"pmTop10", "M_Largest", "Largest folders and files"},
    {"pmContent", "DockPnlcontent"},
    {"pmTop100", "DockPnlFile"},
    {"pmDownloadFiles", "dxDockPnlDownloads"},
    {"lvOverview", "M_PC", "My Computer"},
    {"lvTop", "M_Largest", "Largest folders and files"},
    {"RzShellCombo1", "M_Location", "Location"},
    {"ShellListContent", "DockPnlcontent"},
    {"lvTopFile", "DockPnlFile"},
    {"CheckBox_All", "mniTSelAll"},
    {"lvDownloadsFile", "dxDockPnlDownloads"},
    {"CheckBox_Downloads", "dxDownloadFilesSelectAll"},
};

}  // namespace

TFormMain::TFormMain(TStartParameters parameters, TDialogs& dialogs, const QString& languageFolder)
    : FParameters(std::move(parameters)),
      FDialogs(dialogs),
      FState(languageFolder.isEmpty() ? ProgramFolder() + u"Toolbox_Language"_qs : languageFolder),
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

// The language comes first, as the parts ask for texts while they are made; the tabs need commands and status
// bar.
void TFormMain::FormCreate() {
  LoadLanguage();
  FState.FDrives.Enumerate(FState.FLanguage.GetMessage(u"M_Local_Disk"_qs, u"Local Disk"_qs));
  BuildWindow();
  FTabSwitching = std::make_unique<TTabSwitching>(
      TTabParts{*this, FState, *FCommands, *FStatusLine, FDialogs, *ImageNote1, FImages},
      *dxTabContainerDockSite1);
  WireCommands();
  FBaseWidth = width();
  FStatusLine->ShowDetails();
  dxTabContainerDockSite1->SetActiveChildIndex(kOverviewTab);
}

void TFormMain::LoadLanguage() {
  try {
    FState.FLanguage.LoadLanguage(GetSuiteLanguageName());
  } catch (const TIniFileError&) {
    // A language file that can't be read leaves the texts in English.
  }
  FAnalyzingText = FState.FLanguage.GetMessage(u"M_Analyzing"_qs, u"Analyzing"_qs);
  FCompletedText = FState.FLanguage.GetMessage(u"M_Completed"_qs, u"Completed"_qs);
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

void TFormMain::WireCommands() {
  FCommands->DispatchTo(FTabSwitching->Tabs(),
                        [this] { return dxTabContainerDockSite1->ActiveChildIndex(); });
  FCommands->OnClick("btnScan", [this] { btnScanClick(); });
  FCommands->OnClick("btnExit", [this] { close(); });
  FCommands->OnClick("btnHelp", [] { btnHelpClick(); });
  FCommands->OnClick("btnHome", [] { btnHomeClick(ColophonLibrary()); });
  FCommands->OnClick("btnAbout", [] { btnAboutClick(ColophonLibrary()); });
}

void TFormMain::SetScanForm(TScanForm& scanForm) {
  FScanForm = &scanForm;
}

QString TFormMain::DownloadsCaption() const {
  return FTabSwitching->Panel(kDownloadsTab).Caption();
}

// In the order of the tabs. Each may handle waiting input, so that the window stays alive; the wizard is
// modal meanwhile and refuses to close.
void TFormMain::FillResults(const TTallyscopeScan& scan, const QStringList& targets) {
  for (TResultTab* tab : FTabSwitching->Tabs())
    tab->Fill(scan, targets);
}

void TFormMain::ScanAbandoned() {
  for (TResultTab* tab : FTabSwitching->Tabs())
    tab->FitColumns();
}

void TFormMain::ActivateAgain() {
  FTabSwitching->Activated();
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
  ApplyLanguage();
  dxTabContainerDockSite1->SetActiveChildIndex(kOverviewTab);
  for (TResultTab* tab : FTabSwitching->Tabs())
    tab->FormShow();
  TrimWorkingSet();
  // Where no window manager activates windows, showing counts.
  QTimer::singleShot(kActivationMs, this, [this] { FormActivate(); });
}

// Once: the texts that it leaves are not those that it starts from. The wizard has a second turn of its own.
void TFormMain::ApplyLanguage() {
  if (std::exchange(FLanguageApplied, true)) return;
  const TLanguage& language = FState.FLanguage;
  ApplyToAllForms(language);
  ApplyToLabels(language, *this, {"lblStcSize", "lblStcFiles", "lblstcUsed", "lblStcFolders"});
  FCommands->CopyCaptions();
  if (FScanForm != nullptr) FScanForm->ApplyLanguage();
  FStatusLine->NameTextPanel();
  ApplySpokenNames(language, *this, kSpoken);
  HoldFormCaptions(*this, kListRoom);
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
  FTabSwitching->Start();
  HoldMinimumSize();  // some window managers tell of their frame only now
  for (TResultTab* tab : FTabSwitching->Tabs()) {
    tab->FormActivate();
    tab->FitColumns();
  }
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
  FScanForm->ClearTargets();
  ResetForm();
  FScanForm->ShowModal();
}

// The state before any result.
void TFormMain::ResetForm() {
  for (TResultTab* tab : FTabSwitching->Tabs())
    tab->Reset();
  FTabSwitching->Activate(kOverviewTab);
}

void TFormMain::closeEvent(QCloseEvent* event) {
  for (TResultTab* tab : FTabSwitching->Tabs())
    tab->FormClose();
  QMainWindow::closeEvent(event);
}

void TFormMain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  if (isVisible()) FormResize();
}

void TFormMain::FormResize() {
  const int growth = width() - FBaseWidth;
  for (TResultTab* tab : FTabSwitching->Tabs())
    tab->FormResize(growth);
}
