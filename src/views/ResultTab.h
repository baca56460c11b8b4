// What the global commands ask of a tab. A tab overrides what it can do; the rest does nothing and says
// nothing. Main thread.
#pragma once

class TResultTab {
 public:
  virtual ~TResultTab() = default;

  // Act on the selected row.
  virtual void Open() {}
  virtual void OpenFileFolder() {}
  virtual void ShowProperties() {}

  // Act on the checked rows, or on the selected one where the list has no check boxes.
  virtual void DeleteRows() {}
  virtual void MoveRows() {}

  // Act on the check marks of all rows.
  virtual void SelectAll() {}
  virtual void DeselectAll() {}
  virtual void InvertSelection() {}
};
