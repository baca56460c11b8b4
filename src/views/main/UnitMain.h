// The main form: menu, tool bar, four tabs and status bar, joined here and nowhere else. It holds what the
// whole program shares, resets itself before each analysis and shows its result afterwards. Main thread.
//
// In which order things happen: the form is made with all its parts, the wizard is joined to it, and it is
// shown (FormShow: language, minimum size). Its first activation (FormActivate) tells the tabs, fits the
// columns and opens the wizard. Each analysis is one modal call of the wizard, from btnScanClick, which
// resets the form before, or from a double click on a drive; FillResults comes from within that call. Until
// the first activation no command and no status text follows a change of tabs.
#pragma once

#include <QMainWindow>

#include <array>
#include <memory>

#include "views/main/Looks.h"
#include "views/main/ResultTab.h"
#include "views/main/StartParameters.h"

class TDialogs;
class TImageNote;
class TMainCommands;
class TTabSwitching;
class TdxStatusBar;
class TdxTabContainerDockSite;

class TFormMain : public QMainWindow, public TResultForm, public TTabHost {
 public:
  // The dialogs outlive the form. The language files lie in "Toolbox_Language" beside the program, if no
  // other folder is named.
  TFormMain(TStartParameters parameters, TDialogs& dialogs, const QString& languageFolder = {});
  ~TFormMain() override;

  // Joins the wizard to the form before the form is shown; the wizard must outlive its use.
  void SetScanForm(TScanForm& scanForm);

  // Images of drive rows, for the wizard too.
  [[nodiscard]] TImageList& StaticImages() { return FImages.imglstStatic; }

  // True once the first activation was handled.
  [[nodiscard]] bool Activated() const { return FActivated; }

  // TResultForm
  [[nodiscard]] const TDriveList& Drives() const override { return FState.FDrives; }
  [[nodiscard]] const TLanguage& Language() const override { return FState.FLanguage; }
  [[nodiscard]] TDialogs& Dialogs() const override { return FDialogs; }
  [[nodiscard]] QString AnalyzingText() const override { return FAnalyzingText; }
  [[nodiscard]] QString CompletedText() const override { return FCompletedText; }
  [[nodiscard]] QString DownloadsCaption() const override;
  void FillResults(const TTallyscopeScan& scan, const QStringList& targets) override;
  void ScanAbandoned() override;

  // TTabHost
  [[nodiscard]] TScanForm* ScanForm() const override { return FScanForm; }
  void ActivateAgain() override;

  // TResultForm and TTabHost
  [[nodiscard]] QWidget& Window() override { return *this; }

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void FormCreate();
  void LoadLanguage();
  void BuildWindow();
  void WireCommands();

  void FormShow();
  void ApplyLanguage();
  void HoldMinimumSize();
  void FormActivate();
  void FormResize();
  void btnScanClick();
  void ResetForm();
  void ApplyPreselection();

  const TStartParameters FParameters;
  TDialogs& FDialogs;
  // What the parts below are given by reference stands above them, so that it outlives them. The tabs
  // themselves are children of the central widget, which the destructor deletes first.
  TMainState FState;
  QString FAnalyzingText;
  QString FCompletedText;
  TScanForm* FScanForm = nullptr;

  TFormImages FImages;
  TImageNote* ImageNote1;

  std::unique_ptr<TMainCommands> FCommands;
  TdxTabContainerDockSite* dxTabContainerDockSite1 = nullptr;
  TdxStatusBar* dxstsbr1 = nullptr;
  std::unique_ptr<TStatusLine> FStatusLine;
  std::unique_ptr<TTabSwitching> FTabSwitching;

  bool FActivated = false;
  bool FLanguageApplied = false;
  int FBaseWidth = 0;  // the form's width at its making, pixels
};
