// The wizard's first page: check marks on drives, or one folder. Main thread.
//
// The page holds the choice and nothing else: the wizard asks for it when the user begins (ChosenTargets,
// FolderChosen) and whether he may (CanAnalyze). Paths that come from elsewhere, a double click on a drive or
// the command line, pass this page by; RowsOf serves them too.
#pragma once

#include <QStringList>
#include <QWidget>

#include <functional>
#include <vector>

class QLineEdit;
class QPushButton;
class QRadioButton;
class TImageList;
class QLabel;
class TListView;
class TResultForm;
struct TScanRow;

// Owned by the wizard's page.
class TTargetPage : public QWidget {
 public:
  TTargetPage(const TResultForm& results, TImageList& images, QWidget* parent);
  ~TTargetPage() override;

  // Runs whenever what CanAnalyze() says may have changed.
  std::function<void()> OnChoiceChanged;

  // Enables the radio buttons and the controls of the one that is checked.
  void EnableChoice();

  // Keeps the columns within the list, as it shows now.
  void FitColumns();

  // True if a drive is checked, or the folder exists, by the radio button that is checked.
  [[nodiscard]] bool CanAnalyze() const;

  // True for the folder route.
  [[nodiscard]] bool FolderChosen() const;

  // The roots of the checked drives in row order, or the folder.
  [[nodiscard]] QStringList ChosenTargets() const;

  // What the progress page shows for these targets: a drive as its row here, any other path as a folder, and
  // the download pass where there is more than one target or a drive.
  [[nodiscard]] std::vector<TScanRow> RowsOf(const QStringList& targets) const;

  void PreselectFolder(const QString& folder);
  void PreselectDrives(const QStringList& paths);

 private:
  void Build(TImageList& images);
  void BuildDriveChoice(TImageList& images);
  void BuildFolderChoice();
  void rbScanDriveClick();
  void rbScanFolderClick();
  void edtBtnFolderChange();
  void lvDriveItemChecked();
  void Button_BrowseClick();
  void ChoiceChanged();

  const TResultForm& FResults;
  QLabel* lblWel;
  QLabel* lbl_Warning_Content;
  QRadioButton* rbScanDrive;
  TListView* lvDrive;
  QRadioButton* rbScanFolder;
  QLineEdit* edtBtnFolder;
  QPushButton* Button_Browse;
};
