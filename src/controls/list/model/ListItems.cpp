#include "controls/list/model/ListItems.h"

#include "controls/list/model/RowSort.h"
#include "controls/list/model/RowStates.h"

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
  item.release();
  added->FIndex = index;
  FOwner.RowStates().Insert(index, 1);
  NoteRowsChanged();
  return added;
}

void TListItems::Delete(int index) {
  TListItem* const item = (*this)[index];
  item->FIndex = index;
  FOwner.RowStates().Change(index, 0, kRowSelected);
  // A handler may have moved the row or deleted it already.
  if (Item(index) != item && std::find(FRows.begin(), FRows.end(), item) == FRows.end()) return;
  FOwner.ItemDeleting(*item);
  const int row = IndexOf(item);
  FRows.erase(FRows.begin() + row);
  FOwner.RowStates().Remove(row, 1);
  delete item;
  NoteRowsChanged();
}

void TListItems::Clear() {
  if (FRows.empty()) return;
  for (size_t row = 0; row < FRows.size(); ++row)
    FOwner.ItemDeleting(*FRows[row]);
  std::vector<TListItem*> gone;
  gone.swap(FRows);
  FOwner.RowStates().Remove(0, FOwner.RowStates().Count());
  for (TListItem* item : gone)
    delete item;
  NoteRowsChanged();
}

TListItem* TListItems::Item(int index) const {
  return index >= 0 && index < Count() ? FRows[static_cast<size_t>(index)] : nullptr;
}

TListItem* TListItems::operator[](int index) const {
  TListItem* const item = Item(index);
  if (item == nullptr) throw EListError("TListItems: index out of range");
  return item;
}

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

std::vector<TListItems::TSavedState> TListItems::TakeStates() {
  std::vector<TSavedState> saved;
  TRowStates& states = FOwner.RowStates();
  for (int row = 0; row < Count(); ++row) {
    if (const unsigned state = states.State(row); state != 0) {
      saved.push_back({FRows[static_cast<size_t>(row)], state});
      states.Put(row, 0);
    }
  }
  return saved;
}

void TListItems::RestoreStates(const std::vector<TSavedState>& saved) {
  for (const TSavedState& row : saved)
    FOwner.RowStates().Put(IndexOf(row.Item), row.State);
}

void TListItems::Sort(const TCompare& compare) {
  Reorder([&] { QuickSortRows(FRows, compare); });
}

void TListItems::Reorder(const std::function<void()>& order) {
  const std::vector<TSavedState> saved = TakeStates();
  const auto finish = [&] {
    RestoreStates(saved);
    NoteRowsChanged();
  };
  try {
    order();
  } catch (...) {
    finish();
    throw;
  }
  finish();
}
