#include "controls/list/rd/input/RdCellKeys.h"

#include "controls/list/rd/RdListView.h"

#include <algorithm>

namespace {
// One press of Ctrl+Shift with Left or Right.
constexpr int kWidthStep = 10;  // pixels
}  // namespace

bool TRdCellKeys::Key(int key, Qt::KeyboardModifiers shift) {
  if (FList.Items().Count() == 0 && key != Qt::Key_Space) return false;
  const Qt::KeyboardModifiers bare = shift & ~Qt::KeypadModifier;
  if (bare == Qt::NoModifier && MoveInRows(key)) return true;
  if (key == Qt::Key_Space && bare == (Qt::ControlModifier | Qt::ShiftModifier))
    return FList.ToggleCheckAll();
  // On some keyboards the plus needs Shift.
  const bool plain = bare == Qt::NoModifier || (key == Qt::Key_Plus && bare == Qt::ShiftModifier);
  return CursorKey(key, bare) || Act(key, bare) || (plain && ExpandGroup(key));
}

// Rules of their own for the ends; other moves are the host's.
bool TRdCellKeys::MoveInRows(int key) {
  // Without a selection the keys are those of any list.
  if (FList.SelCount() == 0) return false;
  const TEventScope scope(FList.EventLife());
  const int last = FList.Items().Count() - 1;
  const int focused = FList.States().Next(-1, kRowFocused);
  switch (key) {
    case Qt::Key_End:
      GoTo(last);
      return true;
    case Qt::Key_Home:
      GoTo(FirstRow());
      if (!scope.ListGone()) FList.SetTopIndex(0);
      return true;
    case Qt::Key_Down:
      return focused == last;
    default:
      return false;
  }
}

// Header rows that fill the page must not trap the way to the top.
int TRdCellKeys::FirstRow() const {
  const int page = FList.Layout().RowsPerPage();
  int row = 0;
  while (row < page && row + 1 < FList.Items().Count() && FList.Items()[row]->IsGroupHeader())
    ++row;
  return row;
}

void TRdCellKeys::GoTo(int row) const {
  TkListItem* const item = FList.Items().Item(row);
  if (item == nullptr) return;
  const TEventScope scope(FList.EventLife());
  FList.SelectRow(row);
  if (!scope.ListGone()) FList.MakeRowVisible(item->Index(), false);
}

bool TRdCellKeys::CursorKey(int key, Qt::KeyboardModifiers shift) {
  if (key != Qt::Key_Left && key != Qt::Key_Right) return false;
  const int step = key == Qt::Key_Left ? -1 : 1;
  if (shift == Qt::ControlModifier)
    MoveCursor(step);
  else if (shift == (Qt::ControlModifier | Qt::ShiftModifier))
    WidenColumn(step * kWidthStep);
  else
    return false;
  return true;
}

void TRdCellKeys::MoveCursor(int step) {
  const int columns = FList.Columns().Count();
  if (columns == 0) return;
  const TEventScope scope(FList.EventLife());
  FColumn = std::clamp(FColumn < 0 ? (step > 0 ? 0 : columns - 1) : FColumn + step, 0, columns - 1);
  const QRect section = FList.Layout().SectionRect(FColumn, 1);
  // Of a column that is wider than the list, the beginning shows.
  const int hidden = std::max(section.right() + 1 - FList.viewport()->width(), 0);
  FList.SetHorzPos(FList.HorzPos() + std::min(hidden, section.left()));
  if (!scope.ListGone()) FList.CursorMoved();
}

void TRdCellKeys::WidenColumn(int pixels) const {
  if (FColumn < 0 || FColumn >= FList.Columns().Count()) return;
  TkListColumn& column = FList.Columns()[FColumn];
  if (column.Resizable()) column.SetWidth(std::max(0, column.Width() + pixels));
}

bool TRdCellKeys::Act(int key, Qt::KeyboardModifiers shift) {
  const bool ctrl = shift == Qt::ControlModifier;
  if (ctrl && key == Qt::Key_0) return FColumn >= 0 && FList.ClickHeader(FColumn);
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  const bool onIcon = shift == Qt::ShiftModifier && key == Qt::Key_F2;
  if (!(ctrl && enter) && !(shift == Qt::NoModifier && key == Qt::Key_F2) && !onIcon) return false;
  auto* const item = static_cast<TkListItem*>(FList.ItemFocused());
  return item != nullptr && FList.Act(*item, FColumn, onIcon);
}

bool TRdCellKeys::ExpandGroup(int key) const {
  auto* const item = static_cast<TkListItem*>(FList.ItemFocused());
  if (item == nullptr || item->Group() == nullptr || !FList.OpenGroupDraw()) return false;
  const TEventScope scope(FList.EventLife());
  TkListGroup& group = *item->Group();
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (enter && item->IsGroupHeader())
    group.SetGroupExpand(!group.GroupExpand());
  else if (key == Qt::Key_Plus || key == Qt::Key_Minus)
    group.SetGroupExpand(key == Qt::Key_Plus);
  else
    return false;
  // Collapsed rows are gone: their header row stands for them.
  if (scope.ListGone() || group.Gone()) return true;
  if (group.Collapsed() && group.HeaderItem() != nullptr) GoTo(group.HeaderItem()->Index());
  return true;
}
