// The Download Directory tab: the files found in the download folders of known applications, each with a
// check box, and one in the header for all. Main thread.
//
// Differences to the Top 100 Files tab, all wanted: the list is the one with a header of its own look, rows
// and selection outlive a reset and a look at another tab, every click counts the boxes wherever it lands,
// and a double click opens nothing.
#pragma once

#include <QObject>

#include "views/files/FileOperations.h"
#include "views/main/ResultTab.h"
#include "views/rows/ResultRows.h"

class THeaderCheckBox;
class TRdListView;

// Rows stay until the next fill.
class TDownloadsTab : public QObject, public TResultTab {
 public:
  TDownloadsTab(const TTabParts& parts, QWidget& panel);

  void FormShow() override;
  void FormResize(int growth) override;
  void FitColumns() override {}  // they keep their widths
  void Reset() override {}       // rows outlive it
  void Fill(const TTallyscopeScan& scan, const QStringList& targets) override;
  void Activate() override {}  // the selection stays, and the commands with it
  [[nodiscard]] int RowCount() const override;

  void Open() override { FFileOperations.Open(); }
  void OpenFileFolder() override { FFileOperations.OpenFileFolder(); }
  void ShowProperties() override { FFileOperations.ShowProperties(); }
  void DeleteRows() override { FFileOperations.Delete(); }
  void MoveRows() override { FFileOperations.Move(); }
  void SelectAll() override;
  void DeselectAll() override;
  void InvertSelection() override;

  // What Fill shows of these records, which lie below the roots.
  void FillRows(const TList<TFileInfoEx>& records, const QStringList& roots);

 private:
  void BuildList();
  void DressList();
  void BuildHeaderBox();
  void AddRows(const TList<TFileInfoEx>& records);
  void lvDownloadsFileColumnClick(TListColumn& column);
  void lvDownloadsFileMouseUp();
  void CountBoxes();

  TTabParts FParts;
  TRdListView* lvDownloadsFile;
  THeaderCheckBox* CheckBox_Downloads;
  TResultSort FDownloadSort{kDownloadRules};
  TResultFileRows FFileRows;
  TFileOperations FFileOperations;
};
