#include "controls/list/model/ListItems.h"

#include "controls/list/model/RowStates.h"

#include <QScopeGuard>

#include <algorithm>
#include <utility>

TListItems::~TListItems() {
  for (TListItem* item : FRows)
    delete item;
}

TListItem* TListItems::Insert(int index) {
  return AddItem(FOwner.CreateListItem(*this), index);
}

TListItem* TListItems::AddItem(std::unique_ptr<TListItem> item, int index) {
  if (index < 0 || index > Count()) throw EListError("TListItems: index out of range");
  TListItem* const added = item.get();
  FRows.insert(FRows.begin() + index, added);
  // Not before the list has it: insert may throw.
  item.release();
  added->FIndex = index;
  FOwner.RowStates().Insert(index, 1);
  NoteRowsChanged();
  return added;
}

// Removing.

// A handler that throws keeps the row: it is as if nobody had asked for its end.
bool TListItems::TellDeletion(TListItem& item) {
  if (item.FLife != TListItem::TLife::Staying) return false;
  const TEventScope scope(FOwner.Life());
  item.FLife = TListItem::TLife::Leaving;
  auto stays = qScopeGuard([&item] {
    if (!item.Gone()) item.FLife = TListItem::TLife::Staying;
  });
  FOwner.ItemDeleting(item);
  stays.dismiss();
  return !scope.ListGone() && !item.Gone();
}

void TListItems::MarkGone(TListItem& item) {
  item.FLife = TListItem::TLife::Gone;
  item.FIndex = -1;
  FOwner.ItemGone(item);
}

void TListItems::Bury(TListItem& item) {
  MarkGone(item);
  FOwner.Life()->Bury(std::unique_ptr<TListItem>(&item));
}

void TListItems::Delete(int index) {
  TListItem* const item = (*this)[index];
  item->FIndex = index;
  DeleteRows({item});
}

// All are told first and leave together: no row moves between one event and the next, unless a handler moves
// it. What was told leaves also if a handler throws.
void TListItems::DeleteRows(const std::vector<TListItem*>& rows) {
  const TEventScope scope(FOwner.Life());
  const auto removal = qScopeGuard([&] {
    if (!scope.ListGone()) TakeOutLeaving();
  });
  for (TListItem* item : rows) {
    ChangeState(*item, 0, kRowSelected);
    if (scope.ListGone()) return;
    TellDeletion(*item);
    if (scope.ListGone()) return;
  }
}

void TListItems::Clear() {
  const TEventScope scope(FOwner.Life());
  const auto removal = qScopeGuard([&] {
    if (!scope.ListGone()) TakeOutLeaving();
  });
  const std::vector<TListItem*> rows = FRows;
  for (TListItem* item : rows) {
    TellDeletion(*item);
    if (scope.ListGone()) return;
  }
}

// In one pass.
std::vector<TListItem*> TListItems::TakeOut(TListItem::TLife life) {
  std::vector<int> places;
  std::vector<TListItem*> taken;
  size_t kept = 0;
  for (size_t row = 0; row < FRows.size(); ++row) {
    if (FRows[row]->FLife != life) {
      FRows[kept++] = FRows[row];
      continue;
    }
    places.push_back(static_cast<int>(row));
    taken.push_back(FRows[row]);
  }
  if (taken.empty()) return taken;
  FRows.resize(kept);
  FOwner.RowStates().Remove(places);
  for (TListItem* item : taken)
    MarkGone(*item);
  NoteRowsChanged();
  return taken;
}

// All whose deletion was told, whoever told it.
void TListItems::TakeOutLeaving() {
  for (TListItem* item : TakeOut(TListItem::TLife::Leaving))
    FOwner.Life()->Bury(std::unique_ptr<TListItem>(item));
}

// A bit that one row may have alone is taken from its holder first, which tells so. Its handler may give it
// to a third row: then that one keeps it, and no two rows ever have it. The row is followed as an object,
// wherever it goes.
void TListItems::ChangeState(TListItem& item, unsigned bits, unsigned mask) {
  if (item.Index() < 0) return;
  const TEventScope scope(FOwner.Life());
  TRowStates& states = FOwner.RowStates();
  const auto elsewhere = [&](unsigned bit) {
    if ((bits & mask & states.UniqueBits() & bit) == 0) return false;
    return states.CountOf(bit) > 0 && (states.State(item.Index()) & bit) == 0;
  };
  constexpr unsigned all[] = {kRowSelected, kRowFocused, kRowAnchor};
  for (const unsigned bit : all) {
    if (!elsewhere(bit)) continue;
    states.Change(states.Next(-1, bit), 0, bit);
    if (scope.ListGone() || item.Gone()) return;
  }
  for (const unsigned bit : all)
    if (elsewhere(bit)) mask &= ~bit;
  states.Change(item.Index(), bits, mask);
}

TListItem* TListItems::Item(int index) const {
  return index >= 0 && index < Count() ? FRows[static_cast<size_t>(index)] : nullptr;
}

TListItem* TListItems::operator[](int index) const {
  TListItem* const item = Item(index);
  if (item == nullptr) throw EListError("TListItems: index out of range");
  return item;
}

// The numbers in the rows are hints: inserting and deleting leave them, and the first that is wrong renews
// all.
int TListItems::IndexOf(const TListItem* item) const {
  if (item == nullptr || item->FIndex < 0 || &item->FOwner != this) return -1;
  if (Item(item->FIndex) == item) return item->FIndex;
  for (int row = 0; row < Count(); ++row)
    FRows[static_cast<size_t>(row)]->FIndex = row;
  return Item(item->FIndex) == item ? item->FIndex : -1;
}

bool TListItems::BeginUpdate() {
  if (++FUpdateDepth > 1) return false;
  FOwner.UpdatingChanged(true);
  return true;
}

bool TListItems::EndUpdate() {
  if (FUpdateDepth == 0) {
    if (FTolerant) return false;
    throw EListError("LV\\EndUpdate\\: EndUpdate Overflow call! ");
  }
  if (--FUpdateDepth > 0) return false;
  // The row host hears of the rows while it is still locked: layout and paint are asked for once, as it is
  // unlocked.
  if (std::exchange(FRowsChanged, false)) FOwner.RowsChanged();
  FOwner.UpdatingChanged(false);
  return true;
}

void TListItems::NoteRowsChanged() {
  if (Updating())
    FRowsChanged = true;
  else
    FOwner.RowsChanged();
}

// Sorting.

// The handler of a comparison may change the list or destroy it, so a copy of the rows is sorted.
void TListItems::Sort(const TCompare& compare) {
  const TEventScope scope(FOwner.Life());
  std::vector<TListItem*> order = FRows;
  QuickSortRows(order, [&](TListItem& a, TListItem& b) { return scope.ListGone() ? 0 : compare(a, b); });
  if (!scope.ListGone()) SetOrder(order);
}

// The bits are read before the first row moves, and go with their rows without a word.
void TListItems::SetOrder(const std::vector<TListItem*>& order) {
  TRowStates& states = FOwner.RowStates();
  std::vector<unsigned> bits(FRows.size());
  for (size_t row = 0; row < FRows.size(); ++row) {
    FRows[row]->FIndex = static_cast<int>(row);
    bits[row] = states.State(static_cast<int>(row));
  }
  std::vector<TListItem*> former = FRows;
  size_t place = 0;
  const auto put = [&](TListItem* item, size_t from) {
    former[from] = nullptr;
    FRows[place] = item;
    item->FIndex = static_cast<int>(place);
    states.Put(static_cast<int>(place++), bits[from]);
  };
  for (TListItem* item : order) {
    const auto from = static_cast<size_t>(item->FIndex);
    if (item->FIndex >= 0 && from < former.size() && former[from] == item) put(item, from);
  }
  for (size_t row = 0; row < former.size(); ++row) {
    if (former[row] != nullptr) put(former[row], row);
  }
  NoteRowsChanged();
}
