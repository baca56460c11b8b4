// The rows of a list in their order: adding, deleting, sorting, update brackets. Plain objects that need no
// window; main thread.
//
// Place n of the rows is row n of the bits that the control keeps (RowStates): whatever adds, removes or
// moves a row here does the same there before it tells anybody. A row is held by this list alone; all others
// hold a pointer and are told as it goes (ItemGone).
#pragma once

#include "controls/list/model/EventScope.h"
#include "controls/list/model/ListItem.h"
#include "support/TList.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class TRowStates;

// What the rows need of the control they belong to.
class TListItemsOwner {
 public:
  virtual ~TListItemsOwner() = default;

  // The item factory; a list with rows of its own class overrides it.
  [[nodiscard]] virtual std::unique_ptr<TListItem> CreateListItem(TListItems& items) = 0;

  [[nodiscard]] virtual TRowStates& RowStates() = 0;

  // Shared by all parts of the list.
  [[nodiscard]] virtual const TListLifePtr& Life() const = 0;

  // A row stands in the list with its new text or image; not called while rows are added or destroyed.
  virtual void ItemChanged(TListItem& item, TItemChange change) = 0;

  // The row is about to leave and be destroyed; it is still whole and has its index.
  virtual void ItemDeleting(TListItem& item) = 0;

  // The row has left the list and is about to be freed: links to it are to be dropped. Tells nothing.
  virtual void ItemGone(TListItem&) {}

  // Rows were added, removed or moved. Inside an update bracket this comes once, at its end.
  virtual void RowsChanged() = 0;

  // The outermost update bracket was opened, or is about to be closed.
  virtual void UpdatingChanged(bool updating) = 0;

  virtual void ScrollToItem(TListItem& item, bool partialOk) = 0;
};

// Owns its rows.
class TListItems {
 public:
  explicit TListItems(TListItemsOwner& owner) : FOwner(owner) {}
  TListItems(const TListItems&) = delete;
  TListItems& operator=(const TListItems&) = delete;
  // Destroys the rows without a word; the control calls Clear first, while its handlers still stand.
  virtual ~TListItems();

  [[nodiscard]] TListItemsOwner& Owner() const { return FOwner; }

  // A new row at the end, or at an index from 0 to Count. The row is without text until it gets one.
  TListItem* Add() { return Insert(Count()); }
  TListItem* Insert(int index);
  // A made item of this list's owner takes its place.
  virtual TListItem* AddItem(std::unique_ptr<TListItem> item, int index);

  // The order of events: the row is deselected, then OnDeletion, then it is gone. A row whose deletion is
  // under way is not deleted again.
  virtual void Delete(int index);
  // The same for each of these rows of the list, which then leave it together.
  virtual void DeleteRows(const std::vector<TListItem*>& rows);
  // OnDeletion for each row, first to last; no event tells of the lost selection. Rows that handlers add
  // stay.
  virtual void Clear();

  // Gives the row the bits under the mask and tells whoever listens. Bits that one row only may have are
  // taken from the former row first, and not given if a handler gives them elsewhere meanwhile.
  void ChangeState(TListItem& item, unsigned bits, unsigned mask);

  [[nodiscard]] int Count() const { return static_cast<int>(FRows.size()); }
  // The row, null out of range; [] throws EListError there.
  [[nodiscard]] TListItem* Item(int index) const;
  [[nodiscard]] TListItem* operator[](int index) const;
  // The item's row, found at once unless rows have moved since; -1 for a strange item.
  [[nodiscard]] int IndexOf(const TListItem* item) const;

  [[nodiscard]] auto begin() const { return FRows.begin(); }
  [[nodiscard]] auto end() const { return FRows.end(); }

  // Between the two the list shows nothing new; brackets nest. A surplus EndUpdate throws EListError, or does
  // nothing if the list tolerates it. Both return true at the outermost level.
  virtual bool BeginUpdate();
  virtual bool EndUpdate();
  [[nodiscard]] bool Updating() const { return FUpdateDepth > 0; }
  void TolerateSurplusEndUpdate(bool tolerate) { FTolerant = tolerate; }

  // Below 0, 0 or above 0, as the first item comes before, with or after the second.
  using TCompare = std::function<int(TListItem& a, TListItem& b)>;

  // The program's quicksort. Every row keeps its state bits; no event tells of them. A comparison that
  // contradicts itself gives some order and always ends. What it throws comes out, and the order is as
  // before. A comparison may change the list: rows that it adds come last.
  virtual void Sort(const TCompare& compare);

 protected:
  // The rows in their new order; rows that are not in the list are left out, those that are missing come
  // last.
  void SetOrder(const std::vector<TListItem*>& order);

  // Tells the deletion of a row, which stands in the list meanwhile. False if it is not the caller's to take
  // out: its deletion was told before, or it or the list is gone.
  bool TellDeletion(TListItem& item);
  // All rows leave the list at once and are gone. Their deletion is told, and they are buried, by whoever
  // took them; not those whose deletion is under way.
  [[nodiscard]] std::vector<TListItem*> TakeAll() { return TakeOut(TListItem::TLife::Staying); }
  // The row has no place any more: it is marked gone and freed as soon as no event is being told.
  void Bury(TListItem& item);

  void NoteRowsChanged();
  [[nodiscard]] int UpdateDepth() const { return FUpdateDepth; }
  // Owned, as plain pointers: a sort and a shift of many rows swap these.
  std::vector<TListItem*> FRows;

 private:
  [[nodiscard]] std::vector<TListItem*> TakeOut(TListItem::TLife life);
  void MarkGone(TListItem& item);
  void TakeOutLeaving();

  TListItemsOwner& FOwner;
  int FUpdateDepth = 0;
  bool FRowsChanged = false;
  bool FTolerant = false;
};

// An update bracket that closes itself, unless the list has gone.
class TListUpdate {
 public:
  explicit TListUpdate(TListItems& items) : FItems(items), FLife(items.Owner().Life()) {
    FItems.BeginUpdate();
  }
  ~TListUpdate() {
    if (!FLife->Gone() && FItems.Updating()) FItems.EndUpdate();
  }
  TListUpdate(const TListUpdate&) = delete;
  TListUpdate& operator=(const TListUpdate&) = delete;

 private:
  TListItems& FItems;
  const TListLifePtr FLife;
};

// How many rows ahead of a comparison the memory of a row is fetched: rows lie all over, and the waiting for
// them is most of a sort.
inline constexpr std::ptrdiff_t kRowsAhead = 8;

// The program's quicksort over a vector of rows. It trusts its comparison to stop it at the pivot, which a
// handler may not deserve: a row always equals itself here, and the places beside the list equal everything.
template <typename Row, typename Compare>
void QuickSortRows(std::vector<Row*>& rows, const Compare& compare) {
  const auto count = static_cast<std::ptrdiff_t>(rows.size());
  const auto begin = rows.begin();
  const auto at = [&](std::ptrdiff_t i) -> Row* {
    if (i + kRowsAhead < count) Prefetch(begin[i + kRowsAhead]);
    if (i >= kRowsAhead) Prefetch(begin[i - kRowsAhead]);
    return i >= 0 && i < count ? begin[i] : nullptr;
  };
  QuickSort<std::ptrdiff_t>(
      0, count - 1, at, [&](std::ptrdiff_t a, std::ptrdiff_t b) { std::swap(begin[a], begin[b]); },
      [&](Row* a, Row* b) { return a == b || a == nullptr || b == nullptr ? 0 : compare(*a, *b); });
}
