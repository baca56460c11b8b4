// The Top 100 Files tab: the largest files of the last analysis, each with a check box, and one in the header
// for all. Checked rows and the selected row are kept apart. Main thread.
//
// What the commands act on: Delete and Move on the checked rows, Open, Properties and Open File Folder on the
// selected one. The box in the header follows the rows when a box is clicked, Space is released or a command
// has marked rows, and at no other time.
#pragma once

#include <QObject>

#include "views/files/FileOperations.h"
#include "views/main/ResultTab.h"
#include "views/rows/ResultRows.h"

class THeaderCheckBox;
class TListView;

class TTopFilesTab : public QObject, public TResultTab {
 public:
  TTopFilesTab(const TTabParts& parts, QWidget& panel);

  void FormShow() override;
  void FormResize(int growth) override;
  void FitColumns() override {}  // each coming to the front fits them
  void Reset() override;
  void Fill(const TTallyscopeScan& scan, const QStringList& targets) override;

  // A list whose rows have all gone shows the last result once more.
  void Activate() override;
  [[nodiscard]] int RowCount() const override;

  void Open() override { FFileOperations.Open(); }
  void OpenFileFolder() override { FFileOperations.OpenFileFolder(); }
  void ShowProperties() override { FFileOperations.ShowProperties(); }
  void DeleteRows() override { FFileOperations.Delete(); }
  void MoveRows() override { FFileOperations.Move(); }
  void SelectAll() override;
  void DeselectAll() override;
  void InvertSelection() override;

 private:
  void BuildList();
  void BuildHeaderBox();
  void Refill();
  void lvTopFileColumnClick(TListColumn& column);
  void lvTopFileSelectItem(const TListItem* item, bool selected);
  void lvTopFileMouseUp(int x, int y);
  void CountBoxes();
  void CheckBox_AllClick(bool checked);

  TTabParts FParts;
  TListView* lvTopFile;
  THeaderCheckBox* CheckBox_All;
  TResultSort FTopFileSort{kTopFileRules};
  TResultFileRows FFileRows;
  TFileOperations FFileOperations;
};
