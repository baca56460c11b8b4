#include "views/files/FileOperations.h"

#include <QPointer>
#include <QWidget>

#include "platform/Messages.h"
#include "platform/Paths.h"
#include "support/ShellRoutines.h"
#include "views/commands/Commands.h"
#include "views/files/FileWork.h"
#include "views/files/PropertiesDialog.h"
#include "views/main/Dialogs.h"
#include "views/main/ResultTab.h"

#include <algorithm>
#include <vector>

namespace {

// The rows that were checked when the work began, by the places that they had then. A list that follows the
// disk gives rows other places whenever waiting input is handled, so each is looked for by its path when its
// turn comes: none is passed over or met twice, and none that came or was checked later is taken.
class TChosenRows {
 public:
  explicit TChosenRows(const TFileRows& rows) : FRows(rows) {
    for (int row = 0; row < rows.Count(); ++row)
      FPaths.push_back(rows.Checked(row) ? rows.Row(row).Path : QString());
  }

  // Of all rows, checked or not.
  [[nodiscard]] int Count() const { return static_cast<int>(FPaths.size()); }

  // The row that had this place, -1 if it was not checked, is not now, or has gone.
  [[nodiscard]] int Find(int place) {
    const QString& path = FPaths[static_cast<size_t>(place)];
    const int near = place + FShift;
    for (int away = 0; !path.isEmpty() && away <= std::max(near, FRows.Count() - near); ++away) {
      for (const int row : {near - away, near + away}) {
        if (row < 0 || row >= FRows.Count() || FRows.Row(row).Path != path) continue;
        FShift = row - place;
        return FRows.Checked(row) ? row : -1;
      }
    }
    return -1;
  }

 private:
  const TFileRows& FRows;
  std::vector<QString> FPaths;  // empty for a row that was not checked
  int FShift = 0;               // by which the row found last has moved
};

}  // namespace

TFileOperations::TFileOperations(const TTabParts& parts, TTabIndex tab, TFileRows& rows)
    : FParts(parts), FTab(tab), FRules(kFileRules[static_cast<size_t>(tab)]), FRows(rows) {}

QString TFileOperations::Text(const QString& key, const QString& defaultText) const {
  return FParts.State.FLanguage.GetMessage(key, defaultText);
}

// The commands are held from before the question on: while a box is open, a second one can't begin its own
// walk.
// What the system or a list that follows the disk does meanwhile may change rows at any time from here on: an
// index is used at once or not at all.
void TFileOperations::Delete() {
  if (FRules.Rows == TRowsTaken::Selected && FRows.Selected() < 0) return;
  QWidget& window = FParts.Host.Window();
  TFileWork work(FParts.Commands, window, FParts.State.FLanguage);
  if (FRules.ButtonsOff == TButtonsOff::BeforeAsking) NoteDeleteStarts();
  if (!FParts.Dialogs.Ask(window, Text(u"M_Delete_Warning"_qs,
                                       u"Are you sure you want to delete all the selected files?"_qs)))
    return;
  if (FRules.ButtonsOff == TButtonsOff::AfterYes) NoteDeleteStarts();
  work.Begin();
  DeleteRows(work);
  AfterDelete();
}

void TFileOperations::NoteDeleteStarts() {
  ApplyEnableRules(FParts.Commands, FTab, TTabEvent::DeleteStarts);
}

// From the last row to the first, so that a row that goes moves none that is still to come.
void TFileOperations::DeleteRows(TFileWork& work) {
  if (FRules.Rows == TRowsTaken::Selected) {
    if (const int row = FRows.Selected(); row >= 0) DeleteRow(row);
    return;
  }
  TChosenRows chosen(FRows);
  for (int place = chosen.Count() - 1; place >= 0 && !work.Ended(); --place) {
    if (const int row = chosen.Find(place); row >= 0) DeleteRow(row);
    if (FRules.DeletePump > 0 && place % FRules.DeletePump == 0) PumpMessages();
  }
}

// The system may handle input while it deletes a folder, and a list that follows the disk may have taken the
// row off by then.
void TFileOperations::DeleteRow(int row) {
  // A copy: the row itself may go while the system deletes.
  const TFileRow target = FRows.Row(row);
  if (!DeleteEntry(target, FRows.OpenParent(row))) return;
  if (row < FRows.Count() && FRows.Row(row).Path == target.Path) FRows.Remove(row);
}

// True if the row is to go. Where a folder stands now in the place of a listed file, or the other way round,
// nothing is deleted.
bool TFileOperations::DeleteEntry(const TFileRow& target, const TOpenFolder& parent) {
  if (target.IsFolder)
    return FRules.Folders && DeleteFolderWithUndo(parent, target.Name,
                                                  Text(u"M_Delete_Folder"_qs,
                                                       u"Deleting file folder..."_qs)) == TActionResult::Done;
  const TDeleteStage stage = DeleteOneFile(parent, target.Name);
  switch (FRules.FileRowGoes) {
    case TRowGoes::OnceScheduled:
      return stage == TDeleteStage::Scheduled;
    case TRowGoes::OnSuccess:
      return stage != TDeleteStage::Failed;
    case TRowGoes::Always:
      break;
  }
  return true;
}

void TFileOperations::AfterDelete() {
  if (FRules.AfterDelete == TAfterDelete::Refill) FRows.Refill();
  if (FRules.AfterDelete == TAfterDelete::CountRows)
    FParts.StatusLine.SetCountText(FParts.StatusLine.CountText(FRows.Count()));
}

void TFileOperations::Move() {
  if (FRules.Rows == TRowsTaken::Selected && FRows.Selected() < 0) return;
  QWidget& window = FParts.Host.Window();
  TFileWork work(FParts.Commands, window, FParts.State.FLanguage);
  const auto folder =
      FParts.Dialogs.SelectFolderDialog(window, Text(u"M_Sel_Dir"_qs, u"Select directory:"_qs));
  if (!folder) return;
  work.Begin();
  MoveRows(work, *folder);
}

// The folder is held from the first row to the last: all go to the one that the user has chosen.
// First to last, unlike a delete: rows stay, but for those that the list takes off itself as it follows the
// disk.
void TFileOperations::MoveRows(TFileWork& work, const QString& folder) {
  const TOpenFolder target = TOpenFolder::Open(folder);
  const QString location = IncludeTrailingPathDelimiter(folder);
  if (FRules.Rows == TRowsTaken::Selected) {
    const int row = FRows.Selected();
    if (row >= 0 && MoveRow(work, row, target)) AfterMove(row, location);
    return;
  }
  TChosenRows chosen(FRows);
  for (int place = 0; place < chosen.Count() && !work.Ended(); ++place) {
    const int row = chosen.Find(place);
    if (row >= 0 && MoveRow(work, row, target)) AfterMove(row, location);
    if (FRules.MovePumps) PumpMessages();
  }
}

// True if the row shows what was moved: a list that follows the disk may have taken it off, or given its
// index to another one, while the move was waited for.
bool TFileOperations::MoveRow(TFileWork& work, int row, const TOpenFolder& target) {
  const TFileRow source = FRows.Row(row);
  const TOpenFolder parent = FRows.OpenParent(row);
  if (KindOfEntry(parent, source.Name) != (source.IsFolder ? TEntryKind::Folder : TEntryKind::File))
    return false;
  TFileMove move(parent, source.Name, target);
  return work.Await(move, source.Name) && row < FRows.Count() && FRows.Row(row).Path == source.Path;
}

void TFileOperations::AfterMove(int row, const QString& folder) {
  if (FRules.AfterMove == TAfterMove::NewLocation)
    FRows.SetLocation(row, folder);
  else
    FParts.StatusLine.SetCountText(QString::number(FRows.Count()) + u" items"_qs);  // in no other language
}

QString TFileOperations::SelectedPath() const {
  const int row = FRows.Selected();
  return row < 0 ? QString() : FRows.Row(row).Path;
}

// By the path and not by the folder that is held: what opens is another program, which knows only paths.
void TFileOperations::Open() {
  const QString path = SelectedPath();
  if (path.isEmpty()) return;
  if (FRules.Open == TOpenWay::WithShell) return OpenWithShell(path);
  QWidget& window = FParts.Host.Window();
  const bool opened = OpenFile(path, window.windowHandle(), FRules.Show);
  if (!opened && FRules.Open == TOpenWay::OrTell)
    FParts.Dialogs.Tell(window, Text(u"M_Open_Failed"_qs, u"Open file failed"_qs));
}

void TFileOperations::OpenFileFolder() {
  const QString path = SelectedPath();
  if (!path.isEmpty()) ShowInFileManager(path);
}

// The answer that the desktop has no such window may come after ours has gone.
void TFileOperations::ShowProperties() {
  const QString path = SelectedPath();
  if (path.isEmpty()) return;
  ShowPropertiesDialog(path, [window = QPointer(&FParts.Host.Window()), path, &state = FParts.State] {
    if (window != nullptr) ShowOwnProperties(*window, path, state.FLanguage);
  });
}
