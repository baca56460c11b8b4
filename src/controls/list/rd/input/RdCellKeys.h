// The keys of a TRdListView beside those of every list. With them the keyboard can do what the mouse can:
//
//   Home, End               the first row that is no header row, the last row
//   Plus, Minus             expand and collapse the group of the focused row; on its header row Enter too
//   Space                   the check box of the row; of a header row that of its group
//   Ctrl+Shift+Space        the check box of the whole list, in the header
//   Ctrl+Left, Ctrl+Right   the cell cursor: the cell of the focused row, and the column, that these act on:
//     F2, Ctrl+Enter          press the button, label or icon text, open the editor, switch the check box
//     Shift+F2                press the icon of an icon text
//     Ctrl+0                  sort by the column, as a click on its header cell
//     Ctrl+Shift+Left, Right  make the column narrower or wider
//   Ctrl+1 to Ctrl+9        sort by that column
//   Shift+F10, menu key     the popup menu at the focused row
//
// In an editor Enter writes the text, Escape drops it. Main thread.
#pragma once

#include <Qt>

class TRdListView;

class TRdCellKeys {
 public:
  explicit TRdCellKeys(TRdListView& list) : FList(list) {}

  // False for a key that is left to the host.
  bool Key(int key, Qt::KeyboardModifiers shift);

  // -1 as long as it was not moved.
  [[nodiscard]] int CursorColumn() const { return FColumn; }
  void ResetCursor() { FColumn = -1; }

 private:
  bool MoveInRows(int key);
  bool CursorKey(int key, Qt::KeyboardModifiers shift);
  bool Act(int key, Qt::KeyboardModifiers shift);
  bool ExpandGroup(int key) const;
  void MoveCursor(int step);
  void WidenColumn(int pixels) const;
  void GoTo(int row) const;
  [[nodiscard]] int FirstRow() const;

  TRdListView& FList;
  int FColumn = -1;
};
