// How the file commands differ from tab to tab: one row of rules per tab, side by side. The differences are
// wanted, the uneven ones too, and none is to be made to agree with its neighbours.
#pragma once

#include <array>

#include "platform/FileActions.h"
#include "platform/Shell.h"
#include "views/files/FileRows.h"
#include "views/main/ResultTab.h"

// The rows that Delete and Move act on.
enum class TRowsTaken { Selected, Checked };

// When a delete switches off the two large buttons; before asking, they stay off after a No as well.
enum class TButtonsOff { BeforeAsking, AfterYes };

// After which outcome of a file's delete its row goes. With OnceScheduled a file that is really gone keeps
// its row, and only one that the system is to delete at its next start loses it. With Always the row goes
// though the file may still be there.
enum class TRowGoes { OnceScheduled, OnSuccess, Always };

enum class TAfterDelete { Nothing, Refill, CountRows };

// What a moved row shows: its new folder, or nothing new until its list follows the disk, with the number of
// rows in the status bar.
enum class TAfterMove { NewLocation, CountRows };

// How Open opens, and whether it tells of a failure.
enum class TOpenWay { Silently, OrTell, WithShell };

// A new rule is a field here, its value in each of the four rows below, and one place in the engine that asks
// for it.
struct TFileRules {
  TRowsTaken Rows;
  TButtonsOff ButtonsOff;
  bool Folders;  // a row may be a folder, which is deleted with undo
  TRowGoes FileRowGoes;
  int DeletePump;  // waiting input is handled at each row index divisible by this; 0 never
  TAfterDelete AfterDelete;
  TAfterMove AfterMove;
  bool MovePumps;  // waiting input is handled after every row
  TOpenWay Open;
  TShowWindow Show;  // of the opened program
};

// By TTabIndex.
inline constexpr std::array<TFileRules, kTabCount> kFileRules = {{
    {TRowsTaken::Selected, TButtonsOff::BeforeAsking, true, TRowGoes::OnceScheduled, 0, TAfterDelete::Nothing,
     TAfterMove::NewLocation, false, TOpenWay::Silently, TShowWindow::Normal},
    {TRowsTaken::Checked, TButtonsOff::AfterYes, true, TRowGoes::OnSuccess, 10, TAfterDelete::Refill,
     TAfterMove::CountRows, true, TOpenWay::WithShell, TShowWindow::Normal},
    {TRowsTaken::Checked, TButtonsOff::AfterYes, false, TRowGoes::Always, 10, TAfterDelete::CountRows,
     TAfterMove::NewLocation, true, TOpenWay::OrTell, TShowWindow::Show},
    {TRowsTaken::Checked, TButtonsOff::AfterYes, false, TRowGoes::Always, 10, TAfterDelete::CountRows,
     TAfterMove::NewLocation, true, TOpenWay::OrTell, TShowWindow::Show},
}};

// What the file commands of a tab do with its rows: delete, move, open, show in the file manager, properties.
// One engine over the rows of any list; what differs by tab is its row of rules above. None of these changes
// a result list, a sum or a label of the header: what was found stays as it was found. Main thread.
//
// The way of a delete: the command runs the tab's DeleteRows, which is Delete here. TFileWork holds all
// commands, the question is asked, and then each row that the tab takes is looked at anew: its folder is
// opened as it was when the row was listed (TFileRows::OpenParent), the entry in it is deleted, and what came
// of that decides whether the row goes. A move goes the same way, with one chosen folder held open over all
// rows.

class TFileWork;

class TFileOperations {
 public:
  // The rows, like the parts, outlive this.
  TFileOperations(const TTabParts& parts, TTabIndex tab, TFileRows& rows);

  // Asks, then deletes the rows that the tab takes.
  void Delete();
  // Has the user choose a folder and moves the rows there, without asking further.
  void Move();

  // Of the selected row; without one they do nothing.
  void Open();
  void OpenFileFolder();
  void ShowProperties();

 private:
  void NoteDeleteStarts();
  void DeleteRows(TFileWork& work);
  void DeleteRow(int row);
  [[nodiscard]] bool DeleteEntry(const TFileRow& target, const TOpenFolder& parent);
  void AfterDelete();

  void MoveRows(TFileWork& work, const QString& folder);
  [[nodiscard]] bool MoveRow(TFileWork& work, int row, const TOpenFolder& target);
  void AfterMove(int row, const QString& folder);

  [[nodiscard]] QString SelectedPath() const;
  [[nodiscard]] QString Text(const QString& key, const QString& defaultText) const;

  TTabParts FParts;
  const TTabIndex FTab;
  const TFileRules& FRules;
  TFileRows& FRows;
};
