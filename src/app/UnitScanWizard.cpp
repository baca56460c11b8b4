#include "app/UnitScanWizard.h"

#include <QDeadlineTimer>
#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScopeGuard>
#include <QShowEvent>
#include <QThread>

#include <algorithm>

#include "app/ScanProgressPage.h"
#include "app/TargetPage.h"
#include "app/WizardBand.h"
#include "controls/notes/PPageNote.h"
#include "download/DownloadDirectoryScan.h"
#include "platform/Messages.h"
#include "platform/Process.h"
#include "scan/ScanMessages.h"
#include "support/PLanguage.h"
#include "views/language/FormComponents.h"
#include "views/main/Looks.h"

namespace {

// How long a close stands still for the thread, in the hope that it has ended before the window is opened
// again; and how often a stop is asked for.
constexpr int kCloseWaitMs = 200;
constexpr int kStopAgainMs = 50;
// Device-independent pixels, as drawn; the width is the same in every language.
constexpr QSize kClientSize(595, 382);
constexpr int kBottomHeight = 49;
constexpr int kTargetTab = 0;
constexpr int kProgressTab = 1;

// What screen readers call the components without a text of their own: the words beside them on the page.
constexpr TSpokenRow kSpoken[] = {{"lvDrive", "rbScanDrive"},
                                  {"edtBtnFolder", "rbScanFolder"},
                                  {"lvAnalyze", "lblSelLoc"},
                                  {"imgPgBar", "lblSelLoc"}};

// A page of the page control, filled by one widget.
template <typename TPage>
TPage* AddPage(TPageNote& note, const QString& name, const TResultForm& results, TImageList& images) {
  auto* tab = new TPageTab(note);
  tab->setObjectName(name);
  auto* page = new TPage(results, images, tab);
  auto* layout = new QVBoxLayout(tab);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(page);
  return page;
}

QPushButton* AddButton(QHBoxLayout& row, const QString& name, const QString& caption) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  row.addWidget(button);
  return button;
}

}  // namespace

TFormWizard::TFormWizard(TResultForm& results, TImageList& images, const TStartParameters& parameters)
    : QDialog(&results.Window()),
      FResults(results),
      FParameters(parameters),
      FMessages({{WM_SCANBEGIN, [this](const TMessage&) { ScanBegin(); }},
                 {WM_SCANDONE, [this](const TMessage&) { ScanDone(); }},
                 {WM_SCANSTATUS, [this](const TMessage& message) { ScanStatus(message); }},
                 {WM_SCANPROGRESS, [this](const TMessage& message) { ScanProgress(message); }},
                 {WM_SCANSTOPPED, [this](const TMessage&) { ScanStopped(); }}}),
      FScanThread(new TTallyscopeScan(&FMessages, FindDownloadLocations)) {
  setObjectName(u"FormWizard"_qs);
  // Both go back by themselves at the end of the first scan.
  AutoScan = FParameters.AutoStart() != TAutoStart::None;
  CountDownloads = FParameters.AutoStart() != TAutoStart::ScanSystem;
  FStopAgain.setInterval(kStopAgainMs);
  connect(&FStopAgain, &QTimer::timeout, this, [this] { FScanThread->Stop(); });
  BuildPages(images);
}

TFormWizard::~TFormWizard() = default;

void TFormWizard::BuildPages(TImageList& images) {
  setWindowTitle(u"Korvel Tallyscope"_qs);
  setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                 Qt::WindowCloseButtonHint);
  setFont(FormFont());
  pgntScan = new TPageNote(this);
  pgntScan->setObjectName(u"pgntScan"_qs);
  new TWizardPaper(*pgntScan);
  FTargetPage = AddPage<TTargetPage>(*pgntScan, u"PageTab_1"_qs, FResults, images);
  FProgressPage = AddPage<TScanProgressPage>(*pgntScan, u"PageTab_2"_qs, FResults, images);
  pgntScan->SetTabIndex(kTargetTab);
  FTargetPage->OnChoiceChanged = [this] { btnAnalyze->setEnabled(FTargetPage->CanAnalyze() && !FAbandoned); };

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(pgntScan, 1);
  column->addWidget(BuildBottom());
  FitHeight();
}

// As drawn, or as high as the texts of both pages need it.
void TFormWizard::FitHeight() {
  const int pageHeight = std::max(FTargetPage->layout()->totalHeightForWidth(kClientSize.width()),
                                  FProgressPage->layout()->totalHeightForWidth(kClientSize.width()));
  setFixedSize(kClientSize.width(), std::max(kClientSize.height(), pageHeight + kBottomHeight));
}

QWidget* TFormWizard::BuildBottom() {
  auto* bottom = new QFrame(this);
  bottom->setObjectName(u"pnlpnBottom"_qs);
  bottom->setFixedHeight(kBottomHeight);
  auto* row = new QHBoxLayout(bottom);
  row->setContentsMargins(kWizardMargin, 0, kWizardMargin, 0);
  row->addStretch(1);
  btnAnalyze = AddButton(*row, u"btnAnalyze"_qs, u"Analyze"_qs);
  btnAnalyze->setDefault(true);
  btnClose = AddButton(*row, u"btnClose"_qs, u"Close"_qs);
  connect(btnAnalyze, &QPushButton::clicked, this, [this] { btnAnalyzeClick(); });
  connect(btnClose, &QPushButton::clicked, this, [this] { close(); });
  return bottom;
}

void TFormWizard::ApplyLanguage() {
  const TLanguage& language = FResults.Language();
  ApplyToForm(language, *this);
  ApplyToLabels(language, *this, {"lbl_Warning_Content", "lblWait", "lblSelLoc"});
  ApplySpokenNames(language, *this, kSpoken);
  HoldFormCaptions(*this, 0);
  FitHeight();
}

// Returns when the window has closed, be it by the user or at the end of a fill.
void TFormWizard::ShowModal() {
  exec();
}

void TFormWizard::PreselectFolder(const QString& folder) {
  FTargetPage->PreselectFolder(folder);
}
void TFormWizard::PreselectDrives(const QStringList& paths) {
  FTargetPage->PreselectDrives(paths);
}

void TFormWizard::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!event->spontaneous()) FormShow();
}

void TFormWizard::FormShow() {
  const TLanguage& language = FResults.Language();
  FTargetPage->EnableChoice();
  FTargetPage->FitColumns();
  btnClose->setText(language.GetMessage(u"M_Close"_qs, u"Close"_qs));
  ShowTargetPage();
  btnAnalyze->show();
  if (FTargets.isEmpty())
    FProgressPage->ClearMarks();
  else if (!FAbandoned)  // else the stopped scan's final message begins this one
    PostMessage(&FMessages, WM_SCANBEGIN, 0, 0);
  if (FFirstShow) BeginAutomaticScan();
}

// Only as the window is first shown; targets that were added before are dropped for those of the command
// line.
void TFormWizard::BeginAutomaticScan() {
  FFirstShow = false;
  FTargets.clear();
  if (!AutoScan) return;
  FTargets = FParameters.AutoPaths();
  if (!FTargets.isEmpty()) btnAnalyzeClick();
}

void TFormWizard::btnAnalyzeClick() {
  if (pgntScan->TabIndex() == kTargetTab)
    StartAnalysis();
  else
    StopAnalysis();
  TrimWorkingSet();
}

void TFormWizard::StartAnalysis() {
  btnAnalyze->setText(FResults.Language().GetMessage(u"M_Stop"_qs, u"Stop"_qs));
  btnAnalyze->setEnabled(true);
  // Targets that are there already have come from elsewhere and go before the choice on the page.
  if (FTargets.isEmpty()) FTargets = FTargetPage->ChosenTargets();
  pgntScan->SetTabIndex(kProgressTab);
  FProgressPage->Begin(FTargetPage->RowsOf(FTargets));
  FHasResult = false;
  FScanThread->SetProgressTarget(&FMessages, WM_SCANPROGRESS);
  FScanThread->Start(FTargets, FTargetPage->FolderChosen());
}

void TFormWizard::StopAnalysis() {
  btnAnalyze->setEnabled(false);
  AskToStop();
}

// A stop that comes just before a walk begins is lost on that walk, so it is asked for until it is answered.
void TFormWizard::AskToStop() {
  FScanThread->Stop();
  FStopAgain.start();
}

void TFormWizard::ShowTargetPage() {
  pgntScan->SetTabIndex(kTargetTab);
  btnAnalyze->setText(FResults.Language().GetMessage(u"M_Analyze"_qs, u"Analyze"_qs));
  btnAnalyze->setEnabled(FTargetPage->CanAnalyze() && !FAbandoned);
}

void TFormWizard::reject() {
  if (FormClose()) QDialog::reject();
}

// False refuses the close.
bool TFormWizard::FormClose() {
  if (!FCanClose) return false;
  if (Scanning()) {
    FAbandoned = true;
    StopAndWaitBriefly();
    FTargets.clear();
    FResults.ScanAbandoned();
    TrimWorkingSet();
  }
  return true;
}

void TFormWizard::StopAndWaitBriefly() {
  AskToStop();
  // No message is handled meanwhile, so the last one of the thread comes after the window has closed.
  const QDeadlineTimer deadline(kCloseWaitMs);
  while (Scanning() && !deadline.hasExpired())
    QThread::msleep(1);
}

// A window that was closed before its scan began begins none.
void TFormWizard::ScanBegin() {
  if (isVisible())
    StartAnalysis();
  else
    FTargets.clear();
}

void TFormWizard::ScanDone() {
  if (FAbandoned || !isVisible()) {  // it ended by itself while the user closed the window
    ScanStopped();
    return;
  }
  FStopAgain.stop();
  FHasResult = true;
  btnAnalyze->hide();
  FCanClose = false;
  // Also when the fill fails: a window that refuses to close would hold the program.
  const auto finish = qScopeGuard([this] {
    FCanClose = true;
    FTargets.clear();
    accept();
  });
  // The modal call that opened the window returns after this, with the tabs filled.
  FResults.FillResults(*FScanThread, FTargets);
}

void TFormWizard::ScanStatus(const TMessage& message) {
  switch (message.WParam) {
    case kScanStatusRow:
      FProgressPage->ShowRow(static_cast<int>(message.LParam));
      break;
    case kScanStatusBar:
      FProgressPage->ShowBarPosition(static_cast<int>(message.LParam));
      break;
    // The text is the one that is there now, maybe a later one than at the time of the message.
    case kScanStatusPath:
      FProgressPage->ShowPath(reinterpret_cast<const TPathText*>(message.LParam)->Load());
      break;
    default:
      break;
  }
}

void TFormWizard::ScanProgress(const TMessage& message) {
  FProgressPage->ShowProgress(message.WParam, static_cast<int>(message.LParam));
}

// After a close during the scan the user may have opened the window again on other targets: those stay.
void TFormWizard::ScanStopped() {
  FStopAgain.stop();
  const bool hasNewTargets = FAbandoned && isVisible() && !FTargets.isEmpty();
  FAbandoned = false;
  ShowTargetPage();
  // In any case: what was scanned can be scanned again.
  btnAnalyze->setEnabled(true);
  if (hasNewTargets)
    PostMessage(&FMessages, WM_SCANBEGIN, 0, 0);
  else
    FTargets.clear();
}
