// What the file commands of a tab do with its rows: delete, move, open, show in the file manager, properties.
// One engine over the rows of any list; what differs by tab stands in FileRules.h. None of these changes a
// result list, a sum or a label of the header: what was found stays as it was found. Main thread.
#pragma once

#include "platform/FileActions.h"
#include "views/files/FileRows.h"
#include "views/files/FileRules.h"

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
