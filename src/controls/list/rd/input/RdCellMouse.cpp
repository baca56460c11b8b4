#include "controls/list/rd/input/RdCellMouse.h"

#include "controls/list/rd/RdListView.h"

#include <utility>

namespace {

// About twenty looks a second: each lays the text of a cell out to know whether the mouse is on it.
constexpr quint64 kMoveIntervalMs = 51;

// The mouse becomes a hand over these; others have a look of their own.
bool TakesHand(TListColumnType type) {
  return type == ltIconCaption || type == ltNormalIconCaption || type == ltLabel || type == ltStar ||
         type == ltComboBox;
}

bool HasHover(TListColumnType type) {
  return TakesHand(type) || type == ltButton;
}

}  // namespace

// True: the plain list shall not have the press. First what lies over the cells, expand button and box, which
// take a second press of a double click as one more; cells and group rows take the first alone.
bool TRdCellMouse::Press(const QPoint& pos, bool bothButtons, bool second) {
  const TEventScope scope(FList.EventLife());
  FList.CloseEditors();
  if (scope.ListGone()) return true;
  LosePress();
  const THit hit = FList.HitTest(pos);
  TkListItem* const item = FList.Items().Item(hit.Row);
  if (item == nullptr) return false;
  const TRdCellReader reader(FList);
  if (reader.ExpandButtonRect(*item, hit.Row).contains(pos)) {
    Hold(*item, hit);
    FState.GroupBtnPressed = true;
    RepaintRow(hit.Row);
    return true;
  }
  if (FList.OpenOwnerDraw() && reader.CheckBoxRect(*item, hit.Row).contains(pos)) {
    // The press goes on to the host, which then moves the focus and leaves the box alone (PressRows).
    FState.BoxClicked = true;
    ClickBox(*item);
    return scope.ListGone();
  }
  if (second) return false;
  Hold(*item, hit);
  if (item->IsGroupHeader()) return PressGroupRow(*item, hit.Row);
  return hit.Column >= 0 && PressCell(*item, hit, pos, bothButtons);
}

void TRdCellMouse::Hold(TkListItem& item, const THit& hit) {
  FPressed = &item;
  FState.PressedRow = hit.Row;
  FState.PressedColumn = hit.Column;
}

bool TRdCellMouse::SwitchBox(TkListItem& item, bool checked) {
  if (!TRdCellReader(FList).HasCheckBox(item)) return false;
  const TEventScope scope(FList.EventLife());
  if (!Tell(FList.EventLife(), FList.OnItemCheckBoxClick, &item) || item.Gone()) return true;
  // Set lets go of the box, as the program may have called it; here it was the user, whose click goes on.
  const bool clicked = FState.BoxClicked;
  FList.Model().Checks().Set(item, checked);
  if (!scope.ListGone()) FState.BoxClicked = clicked;
  return true;
}

bool TRdCellMouse::PressGroupRow(TkListItem& header, int row) {
  if (header.Group() == nullptr || !FList.Skin().Group.GroupClickExpand) return false;
  const TEventScope scope(FList.EventLife());
  FList.SelectRow(row);
  if (scope.ListGone()) return true;
  if (TkListGroup* const group = header.Group()) group->SetGroupExpand(!group->GroupExpand());
  return scope.ListGone();
}

// A check box cell acts at the press, a button shows it and acts at the release. What is not hot is left to
// the host.
bool TRdCellMouse::PressCell(TkListItem& item, const THit& hit, const QPoint& pos, bool bothButtons) {
  const TEventScope scope(FList.EventLife());
  const TRdCellReader reader(FList);
  const TRdCell cell = reader.Cell(item, hit.Row, hit.Column);
  if (cell.Type == ltEdit || cell.Type == ltComboBox)
    return FList.Editors().Open(item, hit.Column, pos, bothButtons) || scope.ListGone();
  if (!reader.InHotArea(cell, pos)) return false;
  if (cell.Type == ltButton) {
    TakeHot(hit.Row, hit.Column);
    SetCellState(kCellPressed, -1);
  } else if (cell.Type == ltCheckbox) {
    item.SetSubItemChecked(hit.Column, !item.SubItemChecked(hit.Column));
  }
  return scope.ListGone();
}

// The row counts as an object and by its place: a row that a handler has moved under the mouse was not
// pressed there.
void TRdCellMouse::Release(const QPoint& pos) {
  FList.Editors().EndGesture();
  if (!FList.OpenOwnerDraw()) return LosePress();
  const int pressedRow = FState.PressedRow;
  const int pressedColumn = FState.PressedColumn;
  const bool groupButton = FState.GroupBtnPressed;
  const THit hit = FList.HitTest(pos);
  TkListItem* const item = FList.Items().Item(hit.Row);
  const bool sameRow = item != nullptr && item == FPressed && hit.Row == pressedRow;
  const bool sameCell = sameRow && hit.Column == pressedColumn;
  if (!sameCell) EndPressedLook(pressedRow, pressedColumn);
  LosePress();
  if (!sameRow) return;
  if (item->IsGroupHeader() && groupButton)
    ReleaseGroupRow(*item, hit.Row, pos);
  else if (!item->IsGroupHeader() && sameCell && hit.Column >= 0)
    ReleaseCell(*item, hit.Row, hit.Column, pos);
}

void TRdCellMouse::LosePress() {
  FPressed = nullptr;
  const int row = std::exchange(FState.PressedRow, -1);
  FState.PressedColumn = -1;
  if (std::exchange(FState.GroupBtnPressed, false)) RepaintRow(row);
}

void TRdCellMouse::EndPressedLook(int row, int column) {
  if (FState.CellHotState != kCellPressed) return;
  FState.CellHotState = kCellNormal;
  if (TkListItem* const item = FList.Items().Item(row)) FList.RepaintCell(*item, column);
  RepaintRow(FState.HotRow);
}

void TRdCellMouse::ReleaseGroupRow(TkListItem& header, int row, const QPoint& pos) {
  if (!TRdCellReader(FList).ExpandButtonRect(header, row).contains(pos)) return;
  const TEventScope scope(FList.EventLife());
  FList.SelectRow(row);
  if (scope.ListGone() || header.Group() == nullptr) return;
  header.Group()->SetGroupExpand(!header.Group()->GroupExpand());
  if (!scope.ListGone()) Refresh();
}

// The handlers come last: what they leave of the row is theirs to know.
void TRdCellMouse::ReleaseCell(TkListItem& item, int row, int column, const QPoint& pos) {
  const TRdCellReader reader(FList);
  const TRdCell cell = reader.Cell(item, row, column);
  const bool hot = reader.InHotArea(cell, pos);
  const auto fire = [&](const TOnLabelClick& event) {
    if (hot) (void)Tell(FList.EventLife(), event, &item, column);
  };
  switch (cell.Type) {
    case ltIconCaption:
    case ltNormalIconCaption:
      return fire(reader.IconTextHit(cell, pos) == kIconHit ? FList.OnLabelIconClick
                                                            : FList.OnIconLabelClick);
    case ltButton:
      SetCellState(hot ? kCellHot : kCellNormal, -1);
      return fire(FList.OnButtonClick);
    case ltLabel:
      return fire(FList.OnLabelClick);
    case ltStar:
      return fire(FList.OnStarCaptionClick);
    case ltEdit:
    case ltComboBox:
      if (!FList.Editors().Shown()) FList.Editors().OpenAtRelease(item, column, pos);
      return;
    default:
      return;
  }
}

bool TRdCellMouse::Act(TkListItem& item, int column, bool onIcon) {
  const int row = item.Index();
  if (row < 0 || item.IsGroupHeader() || column < 0 || column >= FList.Columns().Count()) return false;
  const TRdCell cell = TRdCellReader(FList).Cell(item, row, column);
  if (cell.Type == ltEdit || cell.Type == ltComboBox)
    return FList.Editors().Open(item, column, std::nullopt, false);
  if (!HasCell(item, column)) return false;
  const auto fire = [&](const TOnLabelClick& event) {
    (void)Tell(FList.EventLife(), event, &item, column);
    return true;
  };
  switch (cell.Type) {
    case ltIconCaption:
    case ltNormalIconCaption:
      return fire(onIcon ? FList.OnLabelIconClick : FList.OnIconLabelClick);
    case ltButton:
      return item.Enabled() && fire(FList.OnButtonClick);
    case ltLabel:
      return item.Enabled() && fire(FList.OnLabelClick);
    case ltStar:
      return fire(FList.OnStarCaptionClick);
    case ltCheckbox:
      item.SetSubItemChecked(column, !item.SubItemChecked(column));
      return true;
    default:
      return false;
  }
}

// A press whose release was lost (a menu, another window took it) ends with the first move without a button.
// Moves that follow faster than the eye are passed over, but not those that the list makes up itself, whose
// tick is 0.
void TRdCellMouse::Move(const QPoint& pos, quint64 tick, bool held) {
  FLast = pos;
  if (!held && FState.PressedRow >= 0) {
    EndPressedLook(FState.PressedRow, FState.PressedColumn);
    LosePress();
  }
  if (FList.OpenOwnerDraw() && tick != 0 && tick - FState.LastMoveTick < kMoveIntervalMs) return;
  FState.LastMoveTick = tick;
  const THit hit = FList.HitTest(pos);
  TkListItem* const item = FList.Items().Item(hit.Row);
  const TRdCellReader reader(FList);
  const bool group = item != nullptr && reader.IsGroupRow(*item);
  TakeHot(item != nullptr ? hit.Row : -1, item != nullptr && !group ? hit.Column : -1);
  HoverGroupButton(group && reader.ExpandButtonRect(*item, hit.Row).contains(pos) ? hit.Row : -1);
  if (item != nullptr && !group && hit.Column >= 0)
    HoverCell(reader, *item, pos);
  else
    SetHandCursor(false);
}

// Another cell is under the mouse: the look of the old one ends.
void TRdCellMouse::TakeHot(int row, int column) {
  if (row == FState.HotRow && column == FState.HotColumn) return;
  SetCellState(kCellNormal, -1);
  FState.PrevHotRow = FState.HotRow;
  FState.PrevHotColumn = FState.HotColumn;
  FState.HotRow = row;
  FState.HotColumn = column;
  if (FState.PrevHotRow == row) return;
  for (const int one : {FState.PrevHotRow, row})
    if (TkListItem* const item = FList.Items().Item(one)) FList.RepaintCell(*item, -1, true);
}

void TRdCellMouse::HoverCell(const TRdCellReader& reader, const TkListItem& item, const QPoint& pos) {
  const TRdCell cell = reader.Cell(item, FState.HotRow, FState.HotColumn);
  const bool hot = cell.Exists && HasHover(cell.Type) && reader.InHotArea(cell, pos);
  const bool held =
      cell.Type == ltButton && FState.PressedRow == FState.HotRow && FState.PressedColumn == FState.HotColumn;
  SetCellState(!hot ? kCellNormal : held ? kCellPressed : kCellHot, reader.IconTextHit(cell, pos));
  SetHandCursor(hot && TakesHand(cell.Type));
}

void TRdCellMouse::HoverGroupButton(int row) {
  const int before = std::exchange(FState.HotGroupRow, row);
  if (before == row) return;
  RepaintRow(before);
  RepaintRow(row);
}

void TRdCellMouse::SetCellState(int state, int line) {
  if (FState.CellHotState == state && FState.HotLine == line) return;
  FState.CellHotState = state;
  FState.HotLine = line;
  if (TkListItem* const item = FList.Items().Item(FState.HotRow)) FList.RepaintCell(*item, FState.HotColumn);
}

void TRdCellMouse::SetHandCursor(bool hand) {
  if (hand == FHand) return;
  FHand = hand;
  if (hand)
    FList.viewport()->setCursor(Qt::PointingHandCursor);
  else
    FList.viewport()->unsetCursor();
}

void TRdCellMouse::RepaintRow(int row) const {
  if (TkListItem* const item = FList.Items().Item(row)) FList.RepaintCell(*item, -1);
}

void TRdCellMouse::Leave() {
  SetHandCursor(false);
  FLast = {-1, -1};
  TakeHot(-1, -1);
  HoverGroupButton(-1);
  // The editor lies over the cell and takes the mouse away from it, which ends no press.
  if (!FList.Editors().State().EditActive) LosePress();
}

// What lies under the resting mouse has changed.
void TRdCellMouse::Refresh() {
  if (FLast.x() >= 0) Move(FLast, 0, FState.PressedRow >= 0);
}

void TRdCellMouse::Reset() {
  Leave();
  FState = {};
  FPressed = nullptr;
}

void TRdCellMouse::EndPress() {
  SetCellState(kCellNormal, -1);
  LosePress();
}

void TRdCellMouse::Forget(const TkListItem& item) {
  if (item.IsGroupHeader()) FState.HotGroupRow = -1;
  if (FPressed != &item) return;
  FPressed = nullptr;
  FState.PressedRow = FState.PressedColumn = -1;
  FState.GroupBtnPressed = false;
}
