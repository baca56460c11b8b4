#include "controls/list/input/RowInput.h"

#include "controls/list/model/RowStates.h"

#include <algorithm>
#include <utility>

namespace {
// After a second without a letter the next one begins a new word.
constexpr qint64 kTypingPauseMs = 1000;
// Told from -1, the row that a key leads to in an empty list.
constexpr int kNoKey = -2;
constexpr unsigned kSelection = kRowSelected | kRowFocused | kRowAnchor;
}  // namespace

// The letters typed.

void TTypeAhead::Add(const QString& text, qint64 now, qint64 pauseMs) {
  if (now - FLastTyped > pauseMs) FLetters.clear();
  FLetters += text;
  FLastTyped = now;
}

int TTypeAhead::Find(int count, int current, const std::function<QString(int row)>& text) const {
  if (FLetters.isEmpty()) return -1;
  const bool next = std::ranges::all_of(
      FLetters, [this](QChar letter) { return letter.toCaseFolded() == FLetters[0].toCaseFolded(); });
  const QString sought = next ? FLetters.left(1) : FLetters;
  const int first = std::max(0, next ? current + 1 : current);
  for (int step = 0; step < count; ++step) {
    const int row = (first + step) % count;
    if (text(row).startsWith(sought, Qt::CaseInsensitive)) return row;
  }
  return -1;
}

// Selecting.

int TRowInput::FocusedRow() const {
  return States().Next(-1, kRowFocused);
}

TListItem* TRowInput::AnchorItem() const {
  const int anchor = States().Next(-1, kRowAnchor);
  return Items().Item(anchor >= 0 ? anchor : std::max(0, FocusedRow()));
}

std::vector<TListItem*> TRowInput::SelectedItems() const {
  std::vector<TListItem*> items;
  if (States().CountOf(kRowSelected) == 0) return items;
  for (int row = States().Next(-1, kRowSelected); row >= 0; row = States().Next(row, kRowSelected)) {
    if (TListItem* const item = Items().Item(row)) items.push_back(item);
  }
  return items;
}

// One change, with its events, per row, as if the user had gone through them one by one. The rows are a copy
// that no handler can change.
void TRowInput::ChangeAll(const std::vector<TListItem*>& items, unsigned bits, unsigned mask) {
  const TEventScope scope = Scope();
  for (TListItem* item : items) {
    if (!item->Gone()) Items().ChangeState(*item, bits, mask);
    if (scope.ListGone()) return;
  }
}

void TRowInput::DeselectOutside(int first, int last) {
  std::vector<TListItem*> others = SelectedItems();
  std::erase_if(others,
                [=](const TListItem* item) { return item->Index() >= first && item->Index() <= last; });
  ChangeAll(others, 0, kRowSelected);
}

void TRowInput::DeselectAll() {
  DeselectOutside(0, -1);
}

void TRowInput::SelectOnly(TListItem& item) {
  const TEventScope scope = Scope();
  DeselectOutside(item.Index(), item.Index());
  if (!scope.ListGone() && !item.Gone()) Items().ChangeState(item, kSelection, kSelection);
}

void TRowInput::Toggle(TListItem& item) {
  Items().ChangeState(item, (item.Selected() ? 0 : kRowSelected) | kRowFocused | kRowAnchor, kSelection);
}

void TRowInput::SelectRange(TListItem& item, bool add) {
  const TEventScope scope = Scope();
  TListItem* const anchor = AnchorItem();
  // The anchor keeps its bit, so that a next Shift makes the range longer or shorter from the same end.
  Items().ChangeState(*anchor, kRowAnchor, kRowAnchor);
  if (scope.ListGone() || item.Gone() || anchor->Gone()) return;
  const auto [first, last] = std::minmax({anchor->Index(), item.Index()});
  if (first < 0) return;  // a row that a handler has hidden
  const std::vector<TListItem*> range(Items().begin() + first, Items().begin() + last + 1);
  if (!add) DeselectOutside(first, last);
  if (!scope.ListGone()) ChangeAll(range, kRowSelected, kRowSelected);
  if (!scope.ListGone() && !item.Gone()) item.SetFocused(true);
}

void TRowInput::SelectAll() {
  ChangeAll({Items().begin(), Items().end()}, kRowSelected, kRowSelected);
}

// Without MultiSelect, Shift counts for nothing, and Ctrl only lets the keys move the focus away from the
// selected row.
void TRowInput::Apply(TListItem& item, Qt::KeyboardModifiers shift, bool ctrlFocuses) {
  const bool ctrl = shift.testFlag(Qt::ControlModifier);
  const bool multi = FHost.Options().MultiSelect;
  if (multi && shift.testFlag(Qt::ShiftModifier))
    SelectRange(item, ctrl);
  else if (ctrl && ctrlFocuses)
    item.SetFocused(true);
  else if (ctrl && multi)
    Toggle(item);
  else
    SelectOnly(item);
}

// The mouse.

bool TRowInput::OnCheckBox(const THit& hit) const {
  return hit.Row >= 0 && FHost.Options().CheckBoxes && (hit.Flags & htOnStateIcon) != 0;
}

bool TRowInput::Press(const THit& hit, Qt::MouseButton button, Qt::KeyboardModifiers shift) {
  TListItem* const item = Items().Item(hit.Row);
  if (button == Qt::LeftButton && item != nullptr && OnCheckBox(hit)) {
    FHost.SwitchCheck(*item, !item->HasState(kRowChecked));
    return true;
  }
  if (button != Qt::LeftButton && button != Qt::RightButton) return false;
  if (item != nullptr)
    PressRow(*item, button, shift);
  else if ((shift & (Qt::ControlModifier | Qt::ShiftModifier)) == 0)
    DeselectAll();
  return false;
}

void TRowInput::PressRow(TListItem& item, Qt::MouseButton button, Qt::KeyboardModifiers shift) {
  const bool plain = (shift & (Qt::ControlModifier | Qt::ShiftModifier)) == 0;
  if (!item.Selected() && (plain || button == Qt::RightButton)) {
    SelectOnly(item);
  } else if (button == Qt::RightButton) {
    item.SetFocused(true);
  } else if (plain) {
    // A press on one of several selected rows may begin a drag of all of them: what it would deselect waits
    // for the release.
    FCollapse = &item;
    Items().ChangeState(item, kRowFocused | kRowAnchor, kRowFocused | kRowAnchor);
  } else {
    Apply(item, shift, false);
  }
}

bool TRowInput::Release() {
  const bool clicks = std::exchange(FClicks, false);
  if (TListItem* const item = std::exchange(FCollapse, nullptr)) SelectOnly(*item);
  return clicks;
}

// The keys.

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
      SelectAll();
      return true;
    default: {
      const int target = TargetOf(key);
      return target != kNoKey && MoveTo(target, shift);
    }
  }
}

// The row that a key leads to, -1 in an empty list.
int TRowInput::TargetOf(int key) const {
  const int last = Items().Count() - 1;
  const int focused = FocusedRow();
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
  const int last = Items().Count() - 1;
  const int page = FHost.RowsPerPage();
  const int top = FHost.TopIndex();
  const int edge = direction < 0 ? top : top + page - 1;
  const bool shown = from >= top && from < top + page;
  const int target = shown && from != edge ? edge : from + direction * std::max(1, page - 1);
  return std::min(std::max(0, target), last);
}

bool TRowInput::MoveTo(int row, Qt::KeyboardModifiers shift) {
  TListItem* const item = Items().Item(row);
  if (item == nullptr) return true;
  const TEventScope scope = Scope();
  Apply(*item, shift, true);
  if (!scope.ListGone() && !item->Gone()) FHost.MakeRowVisible(item->Index(), false);
  return true;
}

bool TRowInput::Space(Qt::KeyboardModifiers shift) {
  TListItem* const item = Items().Item(std::max(0, FocusedRow()));
  if (item == nullptr) return true;
  // Where Space checks, Ctrl+Space still selects.
  if (shift == Qt::NoModifier && FHost.Options().CheckBoxes)
    SwitchChecks(*item);
  else
    Apply(*item, shift, false);
  return true;
}

// The focused row switches; if it is one of several selected rows, all of them follow it.
void TRowInput::SwitchChecks(TListItem& item) {
  const TEventScope scope = Scope();
  const bool checked = !item.HasState(kRowChecked);
  std::vector<TListItem*> items{&item};
  if (item.Selected()) {
    const std::vector<TListItem*> selected = SelectedItems();
    items.insert(items.end(), selected.begin(), selected.end());
  }
  for (TListItem* one : items) {
    if (!one->Gone() && one->HasState(kRowChecked) != checked) FHost.SwitchCheck(*one, checked);
    if (scope.ListGone()) return;
  }
}

bool TRowInput::Type(const QString& text, qint64 now) {
  if (text.isEmpty() || !text[0].isPrint()) return false;
  FTypeAhead.Add(text, now, kTypingPauseMs);
  const int row =
      FTypeAhead.Find(Items().Count(), FocusedRow(), [this](int one) { return FHost.RowText(one); });
  if (row >= 0) MoveTo(row, Qt::NoModifier);
  return true;
}
