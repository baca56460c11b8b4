// The rows of a list in their order: adding, deleting, sorting, update brackets. Plain objects that need no
// window; main thread.
#pragma once

#include "controls/list/model/ListItem.h"

#include <functional>
#include <memory>
#include <vector>

class TRowStates;

// What the rows need of the control they belong to.
class TListItemsOwner {
 public:
  virtual ~TListItemsOwner() = default;

  // The item factory; a list with rows of its own class overrides it.
  [[nodiscard]] virtual std::unique_ptr<TListItem> CreateListItem(TListItems& items) = 0;

  [[nodiscard]] virtual TRowStates& RowStates() = 0;

  // A row stands in the list with its new text or image; not called while rows are added or destroyed.
  virtual void ItemChanged(TListItem& item, TItemChange change) = 0;

  // The row is about to leave and be destroyed; it is still whole and has its index.
  virtual void ItemDeleting(TListItem& item) = 0;

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

  // The order of events: the row is deselected, then OnDeletion, then it is gone.
  virtual void Delete(int index);
  // OnDeletion for each row, first to last; no event tells of the lost selection.
  virtual void Clear();

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
  // contradicts itself gives some order and always ends. What it throws comes out, all rows still there.
  virtual void Sort(const TCompare& compare);

 protected:
  // Bits of the rows that have any, so that they follow their items through a reordering of the rows.
  struct TSavedState {
    TListItem* Item;
    unsigned State;
  };
  [[nodiscard]] std::vector<TSavedState> TakeStates();
  void RestoreStates(const std::vector<TSavedState>& saved);
  // Runs what brings the rows into another order. Should it throw, the rows as they are then keep their bits.
  void Reorder(const std::function<void()>& order);

  void NoteRowsChanged();
  [[nodiscard]] int UpdateDepth() const { return FUpdateDepth; }
  std::vector<TListItem*> FRows;

 private:
  TListItemsOwner& FOwner;
  int FUpdateDepth = 0;
  bool FRowsChanged = false;
  bool FTolerant = false;
};

// An update bracket that closes itself.
class TListUpdate {
 public:
  explicit TListUpdate(TListItems& items) : FItems(items) { FItems.BeginUpdate(); }
  ~TListUpdate() {
    if (FItems.Updating()) FItems.EndUpdate();
  }
  TListUpdate(const TListUpdate&) = delete;
  TListUpdate& operator=(const TListUpdate&) = delete;

 private:
  TListItems& FItems;
};
