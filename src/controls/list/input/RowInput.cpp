#include "controls/list/input/RowInput.h"

#include "controls/list/model/RowStates.h"

#include <algorithm>
#include <utility>

namespace {
constexpr qint64 kTypingPauseMs = 1000;
constexpr int kNoKey = -2;
}  // namespace

bool TRowInput::OnCheckBox(const THit& hit) const {
  return hit.Row >= 0 && FHost.Options().CheckBoxes && (hit.Flags & htOnStateIcon) != 0;
}

bool TRowInput::Press(const THit& hit, Qt::MouseButton button, Qt::KeyboardModifiers shift) {
  FCollapseRow = -1;
  if (button == Qt::LeftButton && OnCheckBox(hit)) {
    FHost.States().Change(hit.Row, ~FHost.States().State(hit.Row), kRowChecked);
    return true;
  }
  if (button != Qt::LeftButton && button != Qt::RightButton) return false;
  if (hit.Row >= 0)
    PressRow(hit.Row, button, shift);
  else
    PressBlank(shift);
  return false;
}

void TRowInput::PressRow(int row, Qt::MouseButton button, Qt::KeyboardModifiers shift) {
  const bool selected = (FHost.States().State(row) & kRowSelected) != 0;
  const bool plain = (shift & (Qt::ControlModifier | Qt::ShiftModifier)) == 0;
  if (!selected && (plain || button == Qt::RightButton)) {
    FSelection.SelectOnly(row);
  } else if (button == Qt::RightButton) {
    FSelection.Focus(row);
  } else if (plain) {
    FHost.States().Change(row, kRowFocused | kRowAnchor, kRowFocused | kRowAnchor);
    FCollapseRow = row;
  } else {
    FSelection.Apply(row, shift, false);
  }
}

void TRowInput::PressBlank(Qt::KeyboardModifiers shift) {
  if ((shift & (Qt::ControlModifier | Qt::ShiftModifier)) == 0) FSelection.DeselectAll();
}

void TRowInput::Release() {
  const int row = std::exchange(FCollapseRow, -1);
  if (row >= 0 && row < FHost.States().Count()) FSelection.SelectOnly(row);
}

bool TRowInput::Key(int key, Qt::KeyboardModifiers shift) {
  shift &= Qt::ControlModifier | Qt::ShiftModifier;
  switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
      FHost.ScrollHorz(key == Qt::Key_Left ? -1 : 1);
      return true;
    case Qt::Key_Space:
      return Space(shift);
    case Qt::Key_A:
      if (shift != Qt::ControlModifier || !FHost.Options().MultiSelect) return false;
      FSelection.SelectAll();
      return true;
    default: {
      const int target = TargetOf(key);
      return target != kNoKey && MoveTo(target, shift);
    }
  }
}

// The row that a key leads to, -1 in an empty list.
int TRowInput::TargetOf(int key) const {
  const int last = FHost.States().Count() - 1;
  const int focused = FSelection.FocusedRow();
  const int from = std::max(0, focused);
  switch (key) {
    case Qt::Key_Home:
      return std::min(0, last);
    case Qt::Key_End:
      return last;
    case Qt::Key_Up:
      return std::min(std::max(0, focused - 1), last);
    case Qt::Key_Down:
      return std::min(focused + 1, last);
    case Qt::Key_PageUp:
      return PageTarget(from, -1);
    case Qt::Key_PageDown:
      return PageTarget(from, 1);
    default:
      return kNoKey;
  }
}

// First to the edge of the page that shows, then a page further.
int TRowInput::PageTarget(int from, int direction) const {
  const int last = FHost.States().Count() - 1;
  const int page = FHost.RowsPerPage();
  const int top = FHost.TopIndex();
  const int edge = direction < 0 ? top : top + page - 1;
  const bool shown = from >= top && from < top + page;
  const int target = shown && from != edge ? edge : from + direction * std::max(1, page - 1);
  return std::min(std::max(0, target), last);
}

bool TRowInput::MoveTo(int row, Qt::KeyboardModifiers shift) {
  if (row < 0) return true;
  FSelection.Apply(row, shift, true);
  FHost.MakeRowVisible(row, false);
  return true;
}

bool TRowInput::Space(Qt::KeyboardModifiers shift) {
  const int row = std::max(0, FSelection.FocusedRow());
  if (row >= FHost.States().Count()) return true;
  if (shift == Qt::NoModifier && FHost.Options().CheckBoxes)
    SwitchChecks(row);
  else
    FSelection.Apply(row, shift, false);
  return true;
}

// The focused row switches; if it is one of several selected rows, all of them follow it.
void TRowInput::SwitchChecks(int row) {
  TRowStates& states = FHost.States();
  const unsigned checked = ~states.State(row) & kRowChecked;
  const bool several = (states.State(row) & kRowSelected) != 0 && states.CountOf(kRowSelected) > 1;
  states.Change(row, checked, kRowChecked);
  if (!several) return;
  for (int one = states.Next(-1, kRowSelected); one >= 0; one = states.Next(one, kRowSelected))
    states.Change(one, checked, kRowChecked);
}

bool TRowInput::Type(const QString& text, qint64 now) {
  if (text.isEmpty() || !text[0].isPrint()) return false;
  FTypeAhead.Add(text, now, kTypingPauseMs);
  const int row = FTypeAhead.Find(FHost.States().Count(), FSelection.FocusedRow(),
                                  [this](int one) { return FHost.RowText(one); });
  if (row >= 0) MoveTo(row, Qt::NoModifier);
  return true;
}
