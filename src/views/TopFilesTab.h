// The Top 100 Files tab: the largest files of the last analysis, each with a check box, and one in the header
// for all. Checked rows and the selected row are kept apart. Main thread.
#pragma once

#include <QObject>

#include "views/ResultRows.h"
#include "views/ResultTab.h"

class QCheckBox;
class QWidget;
class TImageList;
class TListItem;
class TListView;
class TMainCommands;
class TStatusLine;
class TTallyscopeScan;
struct TMainState;

// What the tab is given; everything outlives it.
struct TTopFilesParts {
  TMainState& State;
  TMainCommands& Commands;
  TStatusLine& StatusLine;
  TImageList& FileImages;
};

// Made on its panel, which owns its controls.
class TTopFilesTab : public QObject, public TResultTab {
 public:
  TTopFilesTab(const TTopFilesParts& parts, QWidget& panel);
  ~TTopFilesTab() override;

  void Clear();

  // The first 100 files of a finished scan. Handles waiting input every fourth row.
  void FillResults(const TTallyscopeScan& scan);

  // The selection ends; the status bar counts the rows.
  void Activate();

  void FormShow();
  // `growth` is the form's width less its width at creation, in pixels.
  void FormResize(int growth);

  void SelectAll() override;
  void DeselectAll() override;
  void InvertSelection() override;

 private:
  void BuildList(QWidget& panel);
  void lvTopFileSelectItem(const TListItem* item, bool selected);
  void lvTopFileMouseUp(int x, int y);
  void CheckBox_AllClick();
  void PositionHeaderCheckBox();
  void CheckRows(bool checked);
  [[nodiscard]] int CheckedCount() const;
  void ShowCount();

  TTopFilesParts FParts;
  TListView* lvTopFile;
  QCheckBox* CheckBox_All;
  TResultSort FTopFileSort;
};
