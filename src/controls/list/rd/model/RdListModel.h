// What a TRdListView knows beside its rows: all items, hidden ones too, groups, check counts; and the acts on
// the list as a whole. Main thread.
//
// The control makes a TkListItems with itself as both owners, hands it to ReplaceCollections and keeps to
// this:
//   CreateListItem     gives a TkListItem, or a class over it; TkListItems enters it
//   ItemChanged        redraws the row if ItemShows(item)
//   ItemDeleting       OnDeletion; comes only where the event is due
//   RowStateChanged    calls Checks().HostChanged(item) for each changed check bit. OnItemChecked comes from
//                      DoItemChecked alone
//   destructor         calls Items().Clear()
#pragma once

#include "controls/list/rd/model/CheckBook.h"
#include "controls/list/rd/model/GroupPlacing.h"
#include "controls/list/rd/model/ItemQuickList.h"
#include "controls/list/rd/model/RdListGroup.h"
#include "controls/list/rd/model/RdListItems.h"

// Owned by the TkListItems.
class TkListModel {
 public:
  TkListModel(TkListItems& items, TkListOwner& owner)
      : FItems(items), FOwner(owner), FGroups(*this), FChecks(*this), FPlacing(*this) {}
  TkListModel(const TkListModel&) = delete;
  TkListModel& operator=(const TkListModel&) = delete;

  [[nodiscard]] TkListOwner& ListView() const { return FOwner; }
  [[nodiscard]] const TkListState& State() const { return FOwner.ListState(); }
  [[nodiscard]] TkListItems& Items() const { return FItems; }
  [[nodiscard]] TkListGroups& Groups() { return FGroups; }
  [[nodiscard]] TkCheckBook& Checks() { return FChecks; }
  [[nodiscard]] TkGroupPlacing& Placing() { return FPlacing; }
  // Every row, shown or hidden, header rows too, by Serial.
  [[nodiscard]] const TkItemQuickList& AllItems() const { return FAllItems; }

  // A change of the row is to be drawn: no bracket is open, the list is not loading, the row stays.
  [[nodiscard]] bool ItemShows(const TkListItem& item) const;

  // By OnCompare or, if it is not assigned, by the captions in the user's language.
  void AlphaSort();
  // Deletes the selected rows in one bracket. The header row of a group stays as long as the group has rows.
  void DeleteSelected();

  // A stored list is complete, and the control no longer Loading: rows captioned "Group" are deleted, header
  // rows made anew, checks counted.
  void Loaded();

 private:
  friend class TkGroupPlacing;
  friend class TkListItem;
  friend class TkListItems;
  friend class TkStoredRows;

  // A made row becomes one of AllItems. It has no place yet.
  TkListItem* Enter(std::unique_ptr<TListItem> item);
  TkListItem* NewHeader();
  [[nodiscard]] bool TakeNextItemIsHeader() { return std::exchange(FNextItemIsHeader, false); }

  void TellDeletion(TkListItem& item);
  void TellHiddenDeletions();
  // The row has left its place already.
  void Destroy(TkListItem& item);
  void DestroyHidden(TkListItem& item);
  void DestroyAll();

  TkListItems& FItems;
  TkListOwner& FOwner;
  TkListGroups FGroups;
  TkItemQuickList FAllItems;
  TkCheckBook FChecks;
  TkGroupPlacing FPlacing;
  bool FNextItemIsHeader = false;
  bool FNoDeletionEvents = false;
};
