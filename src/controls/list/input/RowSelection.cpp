#include "controls/list/input/RowSelection.h"

#include "controls/list/input/RowInputHost.h"
#include "controls/list/model/RowStates.h"

#include <algorithm>

TRowStates& TRowSelection::States() const {
  return FHost.States();
}

int TRowSelection::FocusedRow() const {
  return States().Next(-1, kRowFocused);
}

int TRowSelection::AnchorRow() const {
  const int anchor = States().Next(-1, kRowAnchor);
  return anchor >= 0 ? anchor : std::max(0, FocusedRow());
}

// Handlers may remove rows meanwhile: each step looks again.
void TRowSelection::DeselectOutside(int first, int last) {
  TRowStates& states = States();
  if (states.CountOf(kRowSelected) == 0) return;
  for (int row = states.Next(-1, kRowSelected); row >= 0; row = states.Next(row, kRowSelected))
    if (row < first || row > last) states.Change(row, 0, kRowSelected);
}

void TRowSelection::SelectOnly(int row) {
  constexpr unsigned bits = kRowSelected | kRowFocused | kRowAnchor;
  DeselectOutside(row, row);
  States().Change(row, bits, bits);
}

void TRowSelection::Toggle(int row) {
  const unsigned selected = ~States().State(row) & kRowSelected;
  constexpr unsigned others = kRowFocused | kRowAnchor;
  States().Change(row, selected | others, kRowSelected | others);
}

void TRowSelection::SelectRange(int row, bool add) {
  const int anchor = AnchorRow();
  States().Change(anchor, kRowAnchor, kRowAnchor);
  const auto [first, last] = std::minmax(anchor, row);
  if (!add) DeselectOutside(first, last);
  for (int one = first; one <= last; ++one)
    States().Change(one, kRowSelected, kRowSelected);
  Focus(row);
}

void TRowSelection::Focus(int row) {
  States().Change(row, kRowFocused, kRowFocused);
}

void TRowSelection::SelectAll() {
  for (int row = 0; row < States().Count(); ++row)
    States().Change(row, kRowSelected, kRowSelected);
}

void TRowSelection::Apply(int row, Qt::KeyboardModifiers shift, bool ctrlFocuses) {
  const bool ctrl = shift.testFlag(Qt::ControlModifier);
  const bool multi = FHost.Options().MultiSelect;
  if (multi && shift.testFlag(Qt::ShiftModifier))
    SelectRange(row, ctrl);
  else if (ctrl && ctrlFocuses)
    Focus(row);
  else if (ctrl && multi)
    Toggle(row);
  else
    SelectOnly(row);
}
