// The scan wizard: the small modal window through which every analysis runs. Its first page chooses drives or
// one folder, its second shows the scan. It owns the scan thread, receives the scan's messages, and at the
// end has the main form fill its tabs and closes. Made once, lives as long as the process; main thread.
//
// The states of the window, by its fields: choosing (the thread rests, first page), scanning (second page),
// filling (FCanClose is false), and abandoned (closed while scanning, until the thread's last message). One
// scan runs at a time: whoever opens the window while an abandoned one still ends has his targets kept, and
// they begin with that last message.
// The way of a scan: StartAnalysis hands targets to the thread, whose numbered messages come to FMessages on
// this thread and from there to the Scan functions below; ScanDone fills and closes, ScanStopped goes back to
// the first page.
#pragma once

#include <QDialog>
#include <QStringList>
#include <QTimer>

#include "platform/Messages.h"
#include "scan/UnitScan.h"
#include "views/main/ResultTab.h"
#include "views/main/StartParameters.h"

class QPushButton;
class TImageList;
class TPageNote;
class TScanProgressPage;
class TTargetPage;

class TFormWizard : public QDialog, public TScanForm {
 public:
  // The main form and the images must outlive the wizard.
  TFormWizard(TResultForm& results, TImageList& images, const TStartParameters& parameters);
  ~TFormWizard() override;

  // TScanForm
  [[nodiscard]] const QStringList& Targets() const override { return FTargets; }
  void AddTarget(const QString& path) override { FTargets.append(path); }
  void ClearTargets() override { FTargets.clear(); }
  void ApplyLanguage() override;
  void ShowModal() override;
  [[nodiscard]] bool Showing() const override { return isVisible(); }
  [[nodiscard]] const TTallyscopeScan* Result() const override {
    return FHasResult ? FScanThread.get() : nullptr;
  }
  void PreselectFolder(const QString& folder) override;
  void PreselectDrives(const QStringList& paths) override;

  // True from the start of a scan until its thread rests.
  [[nodiscard]] bool Scanning() const { return !FScanThread->Suspended(); }

  // Escape and the window's close button, too: refused while results are filled; a running scan is asked to
  // stop and not waited for.
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void BuildPages(TImageList& images);
  void FitHeight();
  [[nodiscard]] QWidget* BuildBottom();
  void FormShow();
  void BeginAutomaticScan();
  [[nodiscard]] bool FormClose();
  void StopAndWaitBriefly();

  void btnAnalyzeClick();
  void StartAnalysis();
  void StopAnalysis();
  void AskToStop();
  void ShowTargetPage();

  void ScanBegin();
  void ScanDone();
  void ScanStatus(const TMessage& message);
  void ScanProgress(const TMessage& message);
  void ScanStopped();

  TResultForm& FResults;
  const TStartParameters FParameters;
  bool FCanClose = true;
  // The command line counts for the first show alone.
  bool FFirstShow = true;
  // The lists of the thread are at rest and whole: only then Result gives them out.
  bool FHasResult = false;
  bool FAbandoned = false;  // closed during a scan whose final message has not come yet
  QStringList FTargets;
  QTimer FStopAgain;

  TPageNote* pgntScan = nullptr;
  TTargetPage* FTargetPage = nullptr;
  TScanProgressPage* FProgressPage = nullptr;
  QPushButton* btnAnalyze = nullptr;
  QPushButton* btnClose = nullptr;

  // The thread posts to the window, so it stands behind it and goes first. One that hangs is left behind, and
  // what it posts then reaches nobody.
  TMessageWindow FMessages;
  TOwnedThread<TTallyscopeScan> FScanThread;
};
