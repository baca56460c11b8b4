// The main form: menu, tool bar, four tabs and status bar, joined here and nowhere else. It holds what the
// whole program shares, resets itself before each analysis and shows its result afterwards. Main thread.
#pragma once

#include <QMainWindow>

#include <array>
#include <memory>

#include "views/FormLinks.h"
#include "views/MainState.h"
#include "views/StartParameters.h"

class TDownloadsTab;
class TImageList;
class TImageNote;
class TMainCommands;
class TOverviewTab;
class TStatusLine;
class TTabSwitching;
class TTopFilesTab;
class TdxDockPanel;
class TdxStatusBar;
class TdxTabContainerDockSite;

class TFormMain : public QMainWindow, public TResultForm {
 public:
  explicit TFormMain(TStartParameters parameters);
  ~TFormMain() override;

  // Joins the wizard to the form before the form is shown; the wizard must outlive its use.
  void SetScanForm(TScanForm& scanForm);

  // Images of drive rows, for the wizard too.
  [[nodiscard]] TImageList& StaticImages() { return *imglstStatic; }

  // True once the first activation was handled.
  [[nodiscard]] bool Activated() const { return FActivated; }

  // TResultForm
  [[nodiscard]] const TDriveList& Drives() const override { return FState.FDrives; }
  [[nodiscard]] const TLanguage& Language() const override { return FState.FLanguage; }
  [[nodiscard]] QString AnalyzingText() const override { return FState.FAnalyzingText; }
  [[nodiscard]] QString CompletedText() const override { return FState.FCompletedText; }
  [[nodiscard]] QString DownloadsCaption() const override;
  void FillResults(const TTallyscopeScan& scan, const QStringList& targets) override;
  void ScanAbandoned() override;
  [[nodiscard]] QWidget& Window() override { return *this; }

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void FormCreate();
  void LoadLanguage();
  void BuildWindow();
  void BuildTabs();
  void WireCommands();
  [[nodiscard]] TdxDockPanel* AddPanel(const QString& name, const QString& caption, int picture);

  void FormShow();
  void HoldMinimumSize();
  void FormActivate();
  void FormResize();
  void btnScanClick();
  void ResetForm(const QString& tip);
  void ApplyPreselection();

  const TStartParameters FParameters;
  TMainState FState;
  TScanForm* FScanForm = nullptr;

  // The images stand before the parts that draw them.
  std::unique_ptr<TImageList> imglstStatic;
  std::unique_ptr<TImageList> cxmglstdock;
  std::unique_ptr<TImageList> cxmglstlvFile;
  std::unique_ptr<TImageList> cxmglstdownloadfiles;
  TImageNote* ImageNote1;

  std::unique_ptr<TMainCommands> FCommands;
  TdxTabContainerDockSite* dxTabContainerDockSite1 = nullptr;
  TdxDockPanel* dxDockPnlDownloads = nullptr;
  TdxStatusBar* dxstsbr1 = nullptr;
  std::unique_ptr<TStatusLine> FStatusLine;
  TOverviewTab* FOverview = nullptr;
  TTopFilesTab* FTopFiles = nullptr;
  TDownloadsTab* FDownloads = nullptr;
  std::unique_ptr<TTabSwitching> FTabSwitching;

  bool FActivated = false;
  int FBaseWidth = 0;  // the form's width at its making, pixels
};
