// How the parts of the main form know each other: the four tabs as the form sees them and what they are
// given, and the two forms by an interface each. Main thread.
//
// A new tab is a file pair in a folder of its own with a class over TResultTab, a value of TTabIndex, and a
// row in each table that has one per tab: kTabs (views/main/TabSwitching.cpp), kDispatch and kRules
// (views/commands/Commands.cpp) and kFileRules (views/files/FileOperations.h). kTabCount makes the compiler
// ask for most of them.
#pragma once

#include <QString>
#include <QStringList>

#include "support/PLanguage.h"
#include "views/main/StatusLine.h"
#include "views/rows/DriveList.h"

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

  // Act on the rows that the tab takes: checked ones, or the selected one (views/files/FileOperations.h).
  virtual void DeleteRows() = 0;
  virtual void MoveRows() = 0;

  // Act on the check marks of all rows.
  virtual void SelectAll() = 0;
  virtual void DeselectAll() = 0;
  virtual void InvertSelection() = 0;
};

// What the whole program shares: the user's language and the drives of the computer. Owned by the main form,
// made before its parts and living as long as the process.
struct TMainState {
  explicit TMainState(const QString& languageFolder) : FLanguage(u"Tallyscope"_qs, languageFolder) {}

  TLanguage FLanguage;
  TDriveList FDrives;
};

// The main form, as the wizard sees it. The program joins the two at start.
class TResultForm {
 public:
  virtual ~TResultForm() = default;

  [[nodiscard]] virtual const TDriveList& Drives() const = 0;
  [[nodiscard]] virtual const TLanguage& Language() const = 0;
  [[nodiscard]] virtual TDialogs& Dialogs() const = 0;

  // "Analyzing" and "Completed" in the user's language, and the caption of the Download Directory tab.
  [[nodiscard]] virtual QString AnalyzingText() const = 0;
  [[nodiscard]] virtual QString CompletedText() const = 0;
  [[nodiscard]] virtual QString DownloadsCaption() const = 0;

  // Fills the result tabs from the thread's lists, which must be at rest; handles waiting input meanwhile.
  virtual void FillResults(const TTallyscopeScan& scan, const QStringList& targets) = 0;

  // The wizard was closed while a scan ran: the drive list takes its width again.
  virtual void ScanAbandoned() = 0;

  // The window that the wizard is modal to.
  [[nodiscard]] virtual QWidget& Window() = 0;
};

// The wizard, as the main form sees it.
class TScanForm {
 public:
  virtual ~TScanForm() = default;

  // The paths of the next scan, or of the one that runs. With any of them the form begins at once when it is
  // shown. A scan that ends or is stopped leaves none.
  [[nodiscard]] virtual const QStringList& Targets() const = 0;
  virtual void AddTarget(const QString& path) = 0;
  virtual void ClearTargets() = 0;

  // Puts the user's language onto the form, before it is first shown.
  virtual void ApplyLanguage() = 0;

  // Shows the form over the main form and returns when it has closed.
  virtual void ShowModal() = 0;
  [[nodiscard]] virtual bool Showing() const = 0;

  // The thread with the lists of the last scan, if that came to its end and nothing has begun since: null
  // before the first, while one runs and after one that was stopped.
  [[nodiscard]] virtual const TTallyscopeScan* Result() const = 0;

  // Chooses what the first page offers: one folder, or the check marks of the drives that hold the paths.
  virtual void PreselectFolder(const QString& folder) = 0;
  virtual void PreselectDrives(const QStringList& paths) = 0;
};
