// The rules of selecting rows: one, toggled, a range from the anchor. Works on the state bits alone.
#pragma once

#include <Qt>

class TRowInputHost;
class TRowStates;

class TRowSelection {
 public:
  explicit TRowSelection(TRowInputHost& host) : FHost(host) {}

  // -1 for none.
  [[nodiscard]] int FocusedRow() const;

  // The row alone: the others are deselected first. It takes focus and anchor.
  void SelectOnly(int row);
  // Its opposite; focus and anchor move there.
  void Toggle(int row);
  // From the anchor to the row, alone or in addition to what is selected. The anchor stays.
  void SelectRange(int row, bool add);
  void Focus(int row);
  void SelectAll();
  void DeselectAll() { DeselectOutside(0, -1); }

  // What Ctrl and Shift make of a key's or click's move to the row; ctrlFocuses: Ctrl alone moves the focus
  // without selecting, as for keys, else it toggles, as for clicks.
  void Apply(int row, Qt::KeyboardModifiers shift, bool ctrlFocuses);

 private:
  [[nodiscard]] TRowStates& States() const;
  [[nodiscard]] int AnchorRow() const;
  void DeselectOutside(int first, int last);

  TRowInputHost& FHost;
};
