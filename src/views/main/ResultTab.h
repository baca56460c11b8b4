// The four tabs of the main form, as the form sees them, and what they are given. Main thread.
#pragma once

#include <QStringList>

#include "views/main/StatusLine.h"

class QWidget;
class TDialogs;
class TImageNote;
class TMainCommands;
class TScanForm;
class TTallyscopeScan;
struct TFormImages;
struct TMainState;

inline constexpr int kTabCount = 4;

// Child indexes of the tab container.
enum TTabIndex : int { kOverviewTab = 0, kContentsTab = 1, kTopFilesTab = 2, kDownloadsTab = 3 };

// The main form, as its tabs see it.
class TTabHost {
 public:
  virtual ~TTabHost() = default;

  // The wizard; null until it was joined to the form.
  [[nodiscard]] virtual TScanForm* ScanForm() const = 0;

  // Does once more what the activation of the active tab did.
  virtual void ActivateAgain() = 0;

  // The window that boxes belong to.
  [[nodiscard]] virtual QWidget& Window() = 0;
};

// What every tab is given; all of it outlives the tabs.
struct TTabParts {
  TTabHost& Host;
  TMainState& State;
  TMainCommands& Commands;
  TStatusLine& StatusLine;
  TDialogs& Dialogs;
  const TImageNote& Pictures;
  TFormImages& Images;
};

// Every tab says what it does at each step of the form and for each command, also where that is nothing. Each
// is made on its panel, which owns it and its controls.
class TResultTab {
 public:
  virtual ~TResultTab() = default;

  // The form's own steps, told to each tab in the order of the tabs.
  virtual void FormShow() = 0;
  // `growth` is the form's width less its width at creation, in pixels.
  virtual void FormResize(int growth) = 0;
  // The form has become active for the first time.
  virtual void FormActivate() {}
  // The form closes: what works for the tab in the background ends, and nobody waits for it.
  virtual void FormClose() {}
  // The form was first activated, or a scan was given up: columns take the width that is left.
  virtual void FitColumns() = 0;
  // Back to the state before any result.
  virtual void Reset() = 0;
  // Shows a finished scan of these targets. May handle waiting input meanwhile.
  virtual void Fill(const TTallyscopeScan& scan, const QStringList& targets) = 0;

  // The tab has become the active one: selections end, and late work is done. The caller sees to commands
  // and status bar.
  virtual void Activate() = 0;

  // Asked only of tabs that have such a thing, as the row of tabs tells: the number of rows, what the status
  // bar names, and whether a folder is shown that has one above it.
  [[nodiscard]] virtual int RowCount() const { return 0; }
  [[nodiscard]] virtual TSubject Subject() const { return {}; }
  [[nodiscard]] virtual bool CanGoUp() const { return false; }

  // Act on the selected row.
  virtual void Open() = 0;
  virtual void OpenFileFolder() = 0;
  virtual void ShowProperties() = 0;

  // Act on the rows that the tab takes: checked ones, or the selected one (views/files/FileRules.h).
  virtual void DeleteRows() = 0;
  virtual void MoveRows() = 0;

  // Act on the check marks of all rows.
  virtual void SelectAll() = 0;
  virtual void DeselectAll() = 0;
  virtual void InvertSelection() = 0;
};
