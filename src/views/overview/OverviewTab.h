// The Overview tab: the drives before any analysis, the largest folders and files after one, under a header
// that names the subject. Main thread.
//
// Two lists stand in one place, of which one shows: lvOverview with the drives from ShowDrives on, lvTop with
// the largest items from Fill on. The header above and the status bar follow the one that shows.
#pragma once

#include <QObject>

#include "views/files/FileOperations.h"
#include "views/main/ResultTab.h"
#include "views/rows/ResultRows.h"

class QLabel;
class TListView;
class TOverviewHeader;

class TOverviewTab : public QObject, public TResultTab {
 public:
  TOverviewTab(const TTabParts& parts, QWidget& panel);

  void FormShow() override;
  void FormResize(int growth) override;
  void FitColumns() override;
  void Reset() override;
  void Fill(const TTallyscopeScan& scan, const QStringList& targets) override;
  void Activate() override;

  void Open() override { FFileOperations.Open(); }
  void OpenFileFolder() override { FFileOperations.OpenFileFolder(); }
  void ShowProperties() override { FFileOperations.ShowProperties(); }
  void DeleteRows() override { FFileOperations.Delete(); }
  void MoveRows() override { FFileOperations.Move(); }
  void SelectAll() override {}  // rows have no check boxes here
  void DeselectAll() override {}
  void InvertSelection() override {}

 private:
  void BuildLists(QWidget& panel);
  void BuildDriveList(QWidget& panel);
  void BuildTopList();

  void ShowDrives(const QString& tip);
  void lvOverviewSelectItem(TListItem* item, bool selected);
  void lvOverviewDblClick();
  void lvTopSelectItem();

  void FillTop(const TTallyscopeScan& scan);
  void ShowSubject(const TTallyscopeScan& scan, const QStringList& targets);
  void ShowFolderSubject(const TTallyscopeScan& scan, const QString& folder);
  void ShowDriveSubject(const TTallyscopeScan& scan, const QString& drive);
  [[nodiscard]] QString Text(const QString& key, const QString& defaultText) const;

  TTabParts FParts;
  TOverviewHeader* FHeader;
  QLabel* lblLarge;
  TListView* lvOverview;
  TListView* lvTop;
  TResultSort FTopSort{kTopRules};
  TResultFileRows FFileRows;
  TFileOperations FFileOperations;
};
