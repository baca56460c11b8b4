#include "controls/list/rd/model/RdListItems.h"

#include "controls/list/model/RowStates.h"
#include "controls/list/rd/model/RdListModel.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

void CopyContent(const TListItem& source, TListItem& copy) {
  copy.SetCaption(source.Caption());
  copy.SetImageIndex(source.ImageIndex());
  copy.SetStateIndex(source.StateIndex());
  copy.SetData(source.Data());
  for (int sub = 0; sub < source.SubItems().Count(); ++sub) {
    copy.SubItems().Add(source.SubItems()[sub]);
    copy.SubItems().SetImageIndex(sub, source.SubItems().ImageIndex(sub));
  }
}

void CopyLooks(const TkListItem& source, TkListItem& copy) {
  copy.SetOverlayIndex(source.OverlayIndex());
  copy.SetBackColor(source.BackColor());
  copy.SetEnabled(source.Enabled());
  if (source.ColumnTypes() != nullptr) copy.MakeColumnTypes() = *source.ColumnTypes();
}

// Groups in their order, each behind its header row; rows without group first.
qint64 GroupRank(const TkListItem& item) {
  return 2LL * item.GroupID() + (item.IsGroupHeader() ? 0 : 1);
}

TListItems::TCompare WithinGroups(const TListItems::TCompare& compare) {
  return [&compare](TListItem& a, TListItem& b) {
    const qint64 first = GroupRank(static_cast<TkListItem&>(a));
    const qint64 second = GroupRank(static_cast<TkListItem&>(b));
    return first != second ? (first < second ? -1 : 1) : compare(a, b);
  };
}

// What the rows are sorted by, all in one place.
// Texts stand one behind the other in one string, and a key knows its part: comparing walks memory in order
// and never touches a row.
struct TTextKeys {
  struct TKey {
    TListItem* Item;
    qint64 Rank;
    qsizetype First;
    qsizetype Length;
  };

  TTextKeys(const std::vector<TListItem*>& rows, int column) {
    Keys.reserve(rows.size());
    for (TListItem* row : rows) {
      const auto& item = static_cast<const TkListItem&>(*row);
      const QStringView text = ShownView(item, column);
      Keys.push_back({row, GroupRank(item), Texts.size(), text.size()});
      Texts += text;
    }
  }

  [[nodiscard]] QStringView TextOf(const TKey& key) const {
    return QStringView(Texts).sliced(key.First, key.Length);
  }

  template <typename Order>
  void Sort(const Order& order) {
    QuickSort<std::ptrdiff_t>(
        0, std::ssize(Keys) - 1, [this](std::ptrdiff_t i) -> const TKey& { return Keys.begin()[i]; },
        [this](std::ptrdiff_t a, std::ptrdiff_t b) { std::swap(Keys.begin()[a], Keys.begin()[b]); },
        [&](const TKey& a, const TKey& b) {
          return a.Rank != b.Rank ? (a.Rank < b.Rank ? -1 : 1) : order(TextOf(a), TextOf(b));
        });
  }

  std::vector<TKey> Keys;
  QString Texts;
};

}  // namespace

TkListItems::TkListItems(TListItemsOwner& rows, TkListOwner& owner)
    : TListItems(rows), FOwner(owner), FModel(std::make_unique<TkListModel>(*this, owner)) {}

TkListItems::~TkListItems() {
  for (TkListItem* item : FModel->AllItems()) {
    if (item->Hidden()) delete item;
  }
}

TkListItem* TkListItems::Item(int index) const {
  return static_cast<TkListItem*>(TListItems::Item(index));
}

TkListItem* TkListItems::operator[](int index) const {
  return static_cast<TkListItem*>(TListItems::operator[](index));
}

// Adding.

TkListItem* TkListItems::Add(int groupID) {
  const TEventScope scope(Life());
  TkListItem* const item = FModel->Enter(Owner().CreateListItem(*this));
  if (groupID >= 0) FModel->Placing().SetGroup(*item, groupID);
  if (scope.ListGone() || item->Gone()) return nullptr;
  if (item->CachedIndex() < 0 && !item->Hidden()) Place({&item, 1}, Count());
  Tell();
  return item;
}

TkListItem* TkListItems::Insert(int index) {
  return static_cast<TkListItem*>(TListItems::Insert(index));
}

TkListItem* TkListItems::AddItem(std::unique_ptr<TListItem> item, int index) {
  if (index > Count()) throw EListError("TListItems: index out of range");
  TkListItem* const added = FModel->Enter(std::move(item));
  Place({&added, 1}, index < 0 ? Count() : index);
  Tell();
  return added;
}

void TkListItems::CopyRow(const TListItem& source) {
  const TEventScope scope(Life());
  const auto* const full = dynamic_cast<const TkListItem*>(&source);
  TkListItem* const copy = Add(full != nullptr ? full->GroupID() : -1);
  if (copy == nullptr) return;
  CopyContent(source, *copy);
  if (scope.ListGone()) return;
  copy->SetChecked(source.Checked());
  if (full != nullptr && !scope.ListGone() && !copy->Gone()) CopyLooks(*full, *copy);
}

void TkListItems::Assign(const TListItems& source) {
  if (&source == this) return;
  const TEventScope scope(Life());
  const TEventScope sourceScope(source.Owner().Life());
  const TListUpdate update(*this);
  const QScopedValueRollback quiet(FModel->FNoDeletionEvents, true);
  Clear();
  std::vector<const TListItem*> rows(source.begin(), source.end());
  if (const auto* const full = dynamic_cast<const TkListItems*>(&source)) {
    std::ranges::copy_if(full->Model().AllItems(), std::back_inserter(rows),
                         [](const TkListItem* row) { return row->Hidden(); });
  }
  // Header rows are not copied but made anew for our groups. They are told by their caption, as the source
  // may be a plain list that knows of no header rows. Any row of that caption stays out, which is wanted.
  std::erase_if(rows, [](const TListItem* row) { return row->Caption() == u"Group"; });
  for (const TListItem* row : rows) {
    if (!row->Gone()) CopyRow(*row);
    if (scope.ListGone()) return;
  }
  FModel->Placing().GroupDrawChanged();
}

// Removing.

void TkListItems::Delete(int index) {
  DeleteRows({(*this)[index]});
}

void TkListItems::DeleteRows(const std::vector<TListItem*>& rows) {
  TellDeletions(rows, true);
}

void TkListItems::Clear() {
  const TEventScope scope(Life());
  FOwner.ResetMouseState();
  if (scope.ListGone() || FModel->AllItems().Count() == 0) return;
  const TListUpdate update(*this);
  std::vector<TListItem*> rows = FRows;
  std::ranges::copy_if(FModel->AllItems(), std::back_inserter(rows),
                       [](const TkListItem* item) { return item->Hidden(); });
  TellDeletions(rows, false);
  if (!scope.ListGone() && FModel->AllItems().Count() == 0) FModel->Checks().ClearMarks();
}

// The rows whose deletion is told stand in the list until all is told; then they leave it together. A header
// row whose group still has rows by then stays with them.
void TkListItems::TellDeletions(const std::vector<TListItem*>& rows, bool deselect) {
  const TEventScope scope(Life());
  std::vector<TkListItem*> leaving;
  std::vector<TkListItem*> headers;
  const auto removal = qScopeGuard([&] {
    if (!scope.ListGone()) FModel->RemoveAndFollow(leaving, headers);
  });
  for (TListItem* row : rows) {
    if (deselect && !row->Gone()) row->SetSelected(false);
    if (scope.ListGone()) return;
    auto& item = static_cast<TkListItem&>(*row);
    if (item.IsGroupHeader() && !deselect)
      headers.push_back(&item);
    else if (!item.Gone() && FModel->TellDeletion(item))
      leaving.push_back(&item);
    if (scope.ListGone()) return;
  }
}

std::vector<TkListItem*> TkListItems::ShownRows() const {
  std::vector<TkListItem*> rows(FRows.size());
  std::ranges::transform(FRows, rows.begin(), [](TListItem* row) { return static_cast<TkListItem*>(row); });
  return rows;
}

// Update brackets.

bool TkListItems::BeginUpdate(int countDelta) {
  const bool outermost = TListItems::BeginUpdate();
  if (outermost) FSavedHorzPos = FOwner.HorzScrollPos();
  if (countDelta != 0) {
    const int room = std::max(0, countDelta);
    Owner().RowStates().Insert(Owner().RowStates().Count(), room);
    FUpdateStack.push_back(room);
  }
  return outermost;
}

bool TkListItems::EndUpdate() {
  if (Updating() && !FUpdateStack.empty()) {
    const int room = FUpdateStack.back();
    FUpdateStack.pop_back();
    Owner().RowStates().Remove(Owner().RowStates().Count() - room, room);
  }
  // Before the bracket closes, as what is told by that asks for indexes.
  if (UpdateDepth() == 1) FNumbers.Settle();
  const TEventScope scope(Life());
  if (!TListItems::EndUpdate() || scope.ListGone()) return false;
  // Whatever the bracket did to the bars, the list stays as far to the side as the user had it.
  if (const int pos = std::exchange(FSavedHorzPos, -1); pos >= 0) FOwner.ScrollToHorz(pos);
  if (!scope.ListGone()) FOwner.Realign();
  return true;
}

// Places.

void TkListItems::Place(std::span<TkListItem* const> items, int index) {
  if (items.empty()) return;
  const int count = static_cast<int>(items.size());
  FRows.insert(FRows.begin() + index, items.begin(), items.end());
  FNumbers.Inserted(index, count, Updating());
  FGroupOrder.Changed(index, index + count - 1);
  HostInsert(index, count);
  for (int row = index; row < index + count; ++row)
    Arrived(*Item(row), row);
}

void TkListItems::Arrived(TkListItem& item, int index) {
  item.FHidden = false;
  if (item.Group() != nullptr && !item.IsGroupHeader()) ++item.Group()->FShownCount;
  if (item.Checked()) Owner().RowStates().Put(index, kRowChecked);
}

void TkListItems::TakeOut(TkListItem& item, int hiddenIndex) {
  if (item.Hidden()) return;
  const int index = item.Index();
  item.FHidden = true;
  item.CacheIndex(-1);
  item.FSameIndexOrder = hiddenIndex >= 0 ? hiddenIndex : index;
  if (index < 0) return;
  if (item.Group() != nullptr && !item.IsGroupHeader()) --item.Group()->FShownCount;
  FRows.erase(FRows.begin() + index);
  FNumbers.Removed(index, Updating());
  HostRemove({index});
  MoveFocusToRows();
}

// The rows close up in one pass.
void TkListItems::TakeOut(const std::vector<int>& ascending) {
  if (ascending.empty()) return;
  for (const int index : ascending) {
    TkListItem& item = *Item(index);
    item.FHidden = true;
    item.CacheIndex(-1);
    item.FSameIndexOrder = index;
    if (item.Group() != nullptr && !item.IsGroupHeader()) --item.Group()->FShownCount;
  }
  std::erase_if(FRows, [](const TListItem* row) { return static_cast<const TkListItem*>(row)->Hidden(); });
  FNumbers.Removed(ascending.front(), Updating());
  HostRemove(ascending);
  MoveFocusToRows();
}

// Costs the rows between, pointers and bits, and the numbers of that stretch.
void TkListItems::Shift(int from, int to) {
  const auto place = [this](int index) { return FRows.begin() + index; };
  if (from < to)
    std::rotate(place(from), place(from + 1), place(to + 1));
  else
    std::rotate(place(to), place(from), place(from + 1));
  FNumbers.Reordered(std::min(from, to), std::max(from, to));
  FGroupOrder.Changed(to, to);
  // The bits go first, or the host would hand the focus on.
  TRowStates& states = Owner().RowStates();
  const unsigned state = states.State(from);
  states.Put(from, 0);
  states.Remove(from, 1);
  states.Insert(to, 1);
  states.Put(to, state);
}

void TkListItems::Exchange(int a, int b) {
  std::swap(FRows[static_cast<size_t>(a)], FRows[static_cast<size_t>(b)]);
  FNumbers.Exchanged(a, b);
  FGroupOrder.Changed(a, a);
  FGroupOrder.Changed(b, b);
  TRowStates& states = Owner().RowStates();
  const unsigned state = states.State(a);
  states.Put(a, states.State(b));
  states.Put(b, state);
}

// New rows take the room that the innermost bracket holds.
void TkListItems::HostInsert(int index, int count) {
  TRowStates& states = Owner().RowStates();
  int used = 0;
  if (!FUpdateStack.empty()) {
    used = std::min(count, FUpdateStack.back());
    FUpdateStack.back() -= used;
    if (used > 0 && index + count < Count()) {
      // Rows in the middle: the room moves from the end to their place.
      states.Remove(states.Count() - used, used);
      states.Insert(index, used);
    }
  }
  if (used < count) states.Insert(index + used, count - used);
}

void TkListItems::HostRemove(const std::vector<int>& ascending) {
  TRowStates& states = Owner().RowStates();
  states.Remove(ascending);
  if (FUpdateStack.empty()) return;
  const int count = static_cast<int>(ascending.size());
  states.Insert(states.Count(), count);
  FUpdateStack.back() += count;
}

// The host may have handed the focus to room that belongs to no row.
void TkListItems::MoveFocusToRows() {
  if (FUpdateStack.empty()) return;
  TRowStates& states = Owner().RowStates();
  const int focused = states.Next(-1, kRowFocused);
  if (focused < Count()) return;
  states.Put(focused, 0);
  states.Put(Count() - 1, states.State(Count() - 1) | kRowFocused);
}

// Sorting.

void TkListItems::Sort(const TCompare& compare) {
  if (!compare) return;
  const bool flat = FModel->Groups().Count() == 0;
  SortRows(compare, [&](std::vector<TListItem*>& rows, const TCompare& safe) {
    QuickSortRows(rows, flat ? safe : WithinGroups(safe));
  });
}

void TkListItems::SortByText(int column, TTextOrder order, bool descending) {
  const int sign = descending ? -1 : 1;
  const auto compare = [=](TListItem& a, TListItem& b) {
    return sign * order(ShownView(static_cast<TkListItem&>(a), column),
                        ShownView(static_cast<TkListItem&>(b), column));
  };
  SortRows(compare, [&](std::vector<TListItem*>& rows, const TCompare&) {
    TTextKeys keys(rows, column);
    keys.Sort([&](QStringView a, QStringView b) { return sign * order(a, b); });
    std::ranges::transform(keys.Keys, rows.begin(), &TTextKeys::TKey::Item);
  });
}

// A comparison may change the list, destroy it or throw: copies are sorted, and only then the rows take their
// order, all at once.
void TkListItems::SortRows(const TCompare& asked, const TOrder& sortShown) {
  const TEventScope scope(Life());
  const TCompare compare = [&](TListItem& a, TListItem& b) { return scope.ListGone() ? 0 : asked(a, b); };
  const TListUpdate update(*this);
  std::vector<std::pair<TkListGroup*, std::vector<TkListItem*>>> hidden;
  for (const auto& group : FModel->Groups()) {
    if (group->Collapsed())
      hidden.emplace_back(group.get(),
                          std::vector<TkListItem*>(group->HiddenItems().begin(), group->HiddenItems().end()));
  }
  for (auto& [group, rows] : hidden)
    QuickSortRows(rows, compare);
  std::vector<TListItem*> shown = FRows;
  sortShown(shown, compare);
  if (scope.ListGone()) return;
  for (auto& [group, rows] : hidden) {
    if (!group->Gone()) group->FHiddenItems.Restamp(rows);
  }
  FNumbers.Settle();  // so that the places are all that the rows have of their numbers
  SetOrder(shown);
  FGroupOrder.AllChanged();
}
