#include "controls/list/rd/input/CellMouse.h"

#include "controls/list/rd/RdListView.h"

#include <utility>

namespace {
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

bool TRdCellMouse::Press(const QPoint& pos, bool bothButtons) {
  FList.CloseEditors();
  TRdListState& state = FList.FState;
  const THit hit = FList.HitTest(pos);
  TkListItem* const item = FList.Items().Item(hit.Row);
  if (item == nullptr) return false;
  state.PressedRow = hit.Row;
  state.PressedColumn = hit.Column;
  FPressedSerial = item->Serial();
  const TRdCellReader reader(FList);
  const bool own = FList.OpenOwnerDraw();
  if (own && reader.ExpandButtonRect(*item, hit.Row).contains(pos)) {
    state.GroupBtnPressed = true;
    RepaintRow(hit.Row);
    return true;
  }
  if (own && reader.CheckBoxRect(*item, hit.Row).contains(pos)) {
    state.BoxClicked = true;
    ClickBox(*item);
    return false;
  }
  if (item->IsGroupHeader()) return PressGroupRow(*item, hit.Row);
  return hit.Column >= 0 && PressCell(*item, hit.Row, hit.Column, pos, bothButtons);
}

bool TRdCellMouse::ClickBox(TkListItem& item) {
  if (!TRdCellReader(FList).HasCheckBox(item)) return false;
  const int serial = item.Serial();
  const int row = item.Index();
  if (FList.OnItemCheckBoxClick) FList.OnItemCheckBoxClick(&item);
  TkListItem* const still = FList.Items().Item(row);
  if (still != &item || still->Serial() != serial) return true;
  const bool clicked = FList.FState.BoxClicked;
  item.SetChecked(!item.Checked());
  FList.FState.BoxClicked = clicked;
  return true;
}

bool TRdCellMouse::PressGroupRow(TkListItem& header, int row) {
  TkListGroup* const group = header.Group();
  if (group == nullptr || !FList.Skin().Group.GroupClickExpand) return false;
  FList.SelectRow(row);
  group->SetGroupExpand(!group->GroupExpand());
  return false;
}

bool TRdCellMouse::PressCell(TkListItem& item, int row, int column, const QPoint& pos, bool bothButtons) {
  const TRdCellReader reader(FList);
  const TRdCell cell = reader.Cell(item, row, column);
  switch (cell.Type) {
    case ltButton:
      if (!HasCell(item, column) || !reader.InHotArea(cell, pos) || FList.FState.CellHotState == kCellPressed)
        return false;
      TakeHot(row, column);
      SetCellState(kCellPressed, -1);
      return false;
    case ltEdit:
    case ltComboBox:
      return FList.Editors().Open(item, column, pos, bothButtons);
    case ltCheckbox:
      if (reader.InHotArea(cell, pos)) item.SetSubItemChecked(column, !item.SubItemChecked(column));
      return false;
    default:
      return false;
  }
}

void TRdCellMouse::Release(const QPoint& pos) {
  TRdListState& state = FList.FState;
  state.EditActive = false;
  state.EditStarted = false;
  if (!FList.OpenOwnerDraw()) return;
  const int pressedRow = std::exchange(state.PressedRow, -1);
  const int pressedColumn = std::exchange(state.PressedColumn, -1);
  const THit hit = FList.HitTest(pos);
  TkListItem* const item = FList.Items().Item(hit.Row);
  const bool sameRow = item != nullptr && item->Serial() == FPressedSerial;
  const bool sameCell = sameRow && hit.Row == pressedRow && hit.Column == pressedColumn;
  if (!sameCell) EndPressedLook(pressedRow, pressedColumn);
  const bool groupButton = std::exchange(state.GroupBtnPressed, false);
  if (groupButton) RepaintRow(pressedRow);
  if (item == nullptr) return;
  if (item->IsGroupHeader())
    groupButton&& ReleaseGroupRow(*item, hit.Row, pressedRow, pos);
  else if (sameCell && hit.Column >= 0)
    ReleaseCell(*item, hit.Row, hit.Column, pos);
}

void TRdCellMouse::EndPressedLook(int row, int column) {
  TkListItem* const item = FList.Items().Item(row);
  if (FList.FState.CellHotState != kCellPressed) return;
  FList.FState.CellHotState = kCellNormal;
  if (item != nullptr) FList.RepaintCell(*item, column);
  RepaintRow(FList.FState.HotRow);
}

bool TRdCellMouse::ReleaseGroupRow(TkListItem& header, int row, int pressedRow, const QPoint& pos) {
  if (row != pressedRow || !TRdCellReader(FList).ExpandButtonRect(header, row).contains(pos)) return false;
  FList.SelectRow(row);
  TkListItem* const item = FList.Items().Item(row);
  if (item != &header || header.Group() == nullptr) return false;
  header.Group()->SetGroupExpand(!header.Group()->GroupExpand());
  Refresh();
  return true;
}

// The handlers come last: they may delete the row.
void TRdCellMouse::ReleaseCell(TkListItem& item, int row, int column, const QPoint& pos) {
  const TRdCellReader reader(FList);
  const TRdCell cell = reader.Cell(item, row, column);
  const bool hot = reader.InHotArea(cell, pos);
  const auto fire = [&](const TOnLabelClick& event) {
    if (hot && event) event(&item, column);
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
      if (!FList.Editors().Shown() && FList.Editors().Open(item, column, pos, false))
        FList.FState.EditStarted = true;
      return;
    default:
      return;
  }
}

bool TRdCellMouse::Act(TkListItem& item, int column, bool onIcon) {
  const int row = item.Index();
  if (row < 0 || item.IsGroupHeader() || column < 0 || column >= FList.Columns().Count()) return false;
  const TRdCell cell = TRdCellReader(FList).Cell(item, row, column);
  const auto fire = [&](const TOnLabelClick& event) {
    if (event) event(&item, column);
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
    case ltEdit:
    case ltComboBox:
      return FList.Editors().Open(item, column, std::nullopt, false);
    case ltCheckbox:
      item.SetSubItemChecked(column, !item.SubItemChecked(column));
      return true;
    default:
      return false;
  }
}

void TRdCellMouse::Move(const QPoint& pos, quint64 tick) {
  TRdListState& state = FList.FState;
  FLast = pos;
  if (FList.OpenOwnerDraw() && tick != 0 && tick - state.LastMoveTick < kMoveIntervalMs) return;
  state.LastMoveTick = tick;
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
  TRdListState& state = FList.FState;
  if (row == state.HotRow && column == state.HotColumn) return;
  SetCellState(kCellNormal, -1);
  state.PrevHotRow = state.HotRow;
  state.PrevHotColumn = state.HotColumn;
  state.HotRow = row;
  state.HotColumn = column;
  if (state.PrevHotRow == row) return;
  for (const int one : {state.PrevHotRow, row})
    if (TkListItem* const item = FList.Items().Item(one)) FList.RepaintCell(*item, -1, true);
}

void TRdCellMouse::HoverCell(const TRdCellReader& reader, const TkListItem& item, const QPoint& pos) {
  const TRdListState& state = FList.MouseState();
  if (!HasCell(item, state.HotColumn)) return SetHandCursor(false);
  const TRdCell cell = reader.Cell(item, state.HotRow, state.HotColumn);
  const bool hot = HasHover(cell.Type) && reader.InHotArea(cell, pos);
  const bool held =
      cell.Type == ltButton && state.PressedRow == state.HotRow && state.PressedColumn == state.HotColumn;
  SetCellState(!hot ? kCellNormal : held ? kCellPressed : kCellHot, reader.IconTextHit(cell, pos));
  SetHandCursor(hot && TakesHand(cell.Type));
}

void TRdCellMouse::HoverGroupButton(int row) {
  const int before = std::exchange(FList.FState.HotGroupRow, row);
  if (before == row) return;
  RepaintRow(before);
  RepaintRow(row);
}

void TRdCellMouse::SetCellState(int state, int line) {
  TRdListState& now = FList.FState;
  if (now.CellHotState == state && now.HotLine == line) return;
  now.CellHotState = state;
  now.HotLine = line;
  if (TkListItem* const item = FList.Items().Item(now.HotRow)) FList.RepaintCell(*item, now.HotColumn);
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
  TRdListState& state = FList.FState;
  SetHandCursor(false);
  FLast = {-1, -1};
  TakeHot(-1, -1);
  HoverGroupButton(-1);
  if (state.EditActive) return;
  state.PressedRow = -1;
  state.PressedColumn = -1;
}

void TRdCellMouse::Refresh() {
  if (FLast.x() >= 0) Move(FLast, 0);
}
