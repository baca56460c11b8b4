// The Download Directory tab: the files found in the download folders of known applications, each with a
// check box, and one in the header for all. Main thread.
#pragma once

#include <QObject>

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
  void Fill(const TTallyscopeScan& scan, const QStringList& targets) override;
  [[nodiscard]] int RowCount() const override;

  void Open() override;
  void SelectAll() override;
  void DeselectAll() override;
  void InvertSelection() override;

  // What Fill shows of these records.
  void FillRows(const TList<TFileInfoEx>& records);

 private:
  void BuildList(QWidget& panel);
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
};
