// The Overview tab: the drives before any analysis, the largest folders and files after one, under a header
// that names the subject. Main thread.
#pragma once

#include <functional>

#include "views/ResultRows.h"
#include "views/ResultTab.h"

#include <QStringList>
#include <QWidget>

class QLabel;
class TImageList;
class TImageNote;
class TListItem;
class TListView;
class TMainCommands;
class TOverviewHeader;
class TScanForm;
class TStatusLine;
class TTallyscopeScan;
struct TMainState;

// What the tab is given; everything outlives it.
struct TOverviewParts {
  TMainState& State;
  TMainCommands& Commands;
  TStatusLine& StatusLine;
  const TImageNote& Pictures;
  TImageList& StaticImages;
  TImageList& DockImages;
};

// Made on its panel, which owns its controls.
class TOverviewTab : public QObject, public TResultTab {
 public:
  TOverviewTab(const TOverviewParts& parts, QWidget& panel);
  ~TOverviewTab() override;

  // Double click on a drive analyses it through this form; until it is set, the double click does nothing.
  void SetScanForm(TScanForm* form) { FScanForm = form; }

  // Runs when a row's selection ended and no row is selected: the tab's state is to be set anew.
  std::function<void()> OnNoCurrentRow;

  // The state before any result; the tip's default text differs between the form's making and a reset.
  void ShowDrives(const QString& tip);

  // Fills the list from a finished scan and shows it under the header of what was scanned. Handles waiting
  // input every fourth row.
  void FillResults(const TTallyscopeScan& scan, const QStringList& targets);

  // Selections end; the commands of this list go off.
  void Activate();

  void FormShow();
  // `growth` is the form's width less its width at creation, in pixels.
  void FormResize(int growth);
  void FitDriveColumns();

  void Open() override;

 private:
  void BuildLists(QWidget& panel);
  void BuildDriveList(QWidget& panel);
  void BuildTopList(QWidget& panel);

  void lvOverviewSelectItem(TListItem* item, bool selected);
  void lvOverviewDblClick();
  void lvTopSelectItem();

  void FillTop(const TTallyscopeScan& scan);
  void ShowSubject(const TTallyscopeScan& scan, const QStringList& targets);
  void ShowFolderSubject(const TTallyscopeScan& scan, const QString& folder);
  void ShowDriveSubject(const TTallyscopeScan& scan, const QString& drive);
  [[nodiscard]] QString Text(const QString& key, const QString& defaultText) const;

  TOverviewParts FParts;
  TScanForm* FScanForm = nullptr;
  TOverviewHeader* FHeader;
  QLabel* lblLarge;
  TListView* lvOverview;
  TListView* lvTop;
  TResultSort FTopSort;
};
