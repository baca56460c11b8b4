#include "controls/list/rd/model/RdListItems.h"

#include "controls/list/model/ListItems.h"
#include "controls/list/model/RowStates.h"
#include "controls/list/rd/model/RdListModel.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>
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
  TkListItem* const item = FModel->Enter(Owner().CreateListItem(*this));
  if (groupID >= 0) FModel->Placing().SetGroup(*item, groupID);
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
  const auto* const full = dynamic_cast<const TkListItem*>(&source);
  TkListItem* const copy = Add(full != nullptr ? full->GroupID() : -1);
  CopyContent(source, *copy);
  copy->SetChecked(source.Checked());
  if (full != nullptr) CopyLooks(*full, *copy);
}

void TkListItems::Assign(const TListItems& source) {
  if (&source == this) return;
  const TListUpdate update(*this);
  const QScopedValueRollback quiet(FModel->FNoDeletionEvents, true);
  Clear();
  const auto isHeader = [](const TListItem& row) { return row.Caption() == u"Group"; };
  for (const TListItem* row : source) {
    if (!isHeader(*row)) CopyRow(*row);
  }
  if (const auto* const full = dynamic_cast<const TkListItems*>(&source)) {
    for (const TkListItem* row : full->Model().AllItems()) {
      if (row->Hidden() && !isHeader(*row)) CopyRow(*row);
    }
  }
  FModel->Placing().GroupDrawChanged();
}

// Removing.

void TkListItems::Delete(int index) {
  TkListItem* const item = (*this)[index];
  Owner().RowStates().Change(index, 0, kRowSelected);
  // A handler may have moved the row or deleted it already.
  if (Item(index) != item && std::find(FRows.begin(), FRows.end(), item) == FRows.end()) return;
  FModel->TellDeletion(*item);
  TakeOut(*item, -1);
  FModel->Destroy(*item);
  Tell();
}

void TkListItems::Clear() {
  FOwner.ResetMouseState();
  if (FModel->AllItems().Count() == 0) return;
  const TListUpdate update(*this);
  for (size_t row = 0; row < FRows.size(); ++row)
    FModel->TellDeletion(*Row(row));
  FModel->TellHiddenDeletions();
  const int count = Count();
  FRows.clear();
  HostRemove(0, count);
  MoveFocusToRows();
  FNumbers.RenumberAll();
  FGroupOrder.AllChanged();
  FModel->DestroyAll();
  Tell();
}

// Update brackets.

bool TkListItems::BeginUpdate(int countDelta) {
  const bool outermost = TListItems::BeginUpdate();
  if (!FOwner.ListState().OwnerData) return outermost;
  if (outermost) FSavedHorzPos = FOwner.HorzScrollPos();
  if (countDelta != 0) {
    const int room = std::max(0, countDelta);
    Owner().RowStates().Insert(Owner().RowStates().Count(), room);
    FUpdateStack.push_back(room);
    FCountChanged = true;
  }
  return outermost;
}

bool TkListItems::EndUpdate() {
  if (Updating() && !FUpdateStack.empty()) {
    const int room = FUpdateStack.back();
    FUpdateStack.pop_back();
    Owner().RowStates().Remove(Owner().RowStates().Count() - room, room);
  }
  if (UpdateDepth() == 1) FNumbers.Settle();
  if (!TListItems::EndUpdate()) return false;
  const bool scrolling = FOwner.ListState().Scrolling;
  const int pos = std::exchange(FSavedHorzPos, -1);
  if (pos >= 0 && !scrolling) FOwner.ScrollToHorz(pos);
  if (std::exchange(FCountChanged, false) || !scrolling) FOwner.Realign();
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
  FCountChanged = true;
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
  HostRemove(index, 1);
  MoveFocusToRows();
  FCountChanged = true;
}

// Runs of neighbours leave the host at once, and the rows close up in one pass.
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
  for (auto run = ascending.rbegin(); run != ascending.rend();) {
    auto end = run + 1;
    while (end != ascending.rend() && *end == *(end - 1) - 1)
      ++end;
    HostRemove(*(end - 1), static_cast<int>(end - run));
    run = end;
  }
  MoveFocusToRows();
  FCountChanged = true;
}

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
      states.Remove(states.Count() - used, used);
      states.Insert(index, used);
    }
  }
  if (used < count) states.Insert(index + used, count - used);
}

void TkListItems::HostRemove(int index, int count) {
  TRowStates& states = Owner().RowStates();
  states.Remove(index, count);
  if (FUpdateStack.empty()) return;
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
  SortRows(compare, [&](std::vector<TListItem*>& rows) {
    QuickSortRows(rows, flat ? compare : WithinGroups(compare));
  });
}

void TkListItems::SortByText(int column, TTextOrder order, bool descending) {
  const int sign = descending ? -1 : 1;
  const auto compare = [=](TListItem& a, TListItem& b) {
    return sign * order(ShownView(static_cast<TkListItem&>(a), column),
                        ShownView(static_cast<TkListItem&>(b), column));
  };
  SortRows(compare, [&](std::vector<TListItem*>& rows) {
    TTextKeys keys(rows, column);
    keys.Sort([&](QStringView a, QStringView b) { return sign * order(a, b); });
    std::ranges::transform(keys.Keys, rows.begin(), &TTextKeys::TKey::Item);
  });
}

void TkListItems::SortRows(const TCompare& compare, const TOrder& sortShown) {
  const TListUpdate update(*this);
  for (const auto& group : FModel->Groups()) {
    if (group->Collapsed()) group->FHiddenItems.Restamp(compare);
  }
  const auto settle = qScopeGuard([this] {
    FNumbers.RenumberAll();
    FGroupOrder.AllChanged();
  });
  std::vector<TListItem*> rows = FRows;
  sortShown(rows);
  SetOrder(rows);
}
