// What a TRdListView knows beside its rows: all items, hidden ones too, groups, check counts; and the acts on
// the list as a whole. Main thread.
//
// The control makes a TkListItems with itself as both owners, hands it to ReplaceCollections and keeps to
// this:
//   CreateListItem     gives a TkListItem, or a class over it; TkListItems enters it
//   ItemChanged        redraws the row if ItemShows(item)
//   ItemDeleting       OnDeletion; comes only where the event is due
//   ItemGone           drops its links to the row
//   RowStateChanged    calls Checks().HostChanged(item) for each changed check bit. OnItemChecked comes from
//                      DoItemChecked alone
//   destructor         calls Items().Clear()
#pragma once

#include "controls/list/rd/model/RdCheckBook.h"
#include "controls/list/rd/model/RdGroupPlacing.h"
#include "controls/list/rd/model/RdListGroup.h"
#include "controls/list/rd/model/RdListItems.h"

// Whether the row shows a check box, as far as its group decides that.
[[nodiscard]] bool GroupGivesBox(const TkListItem& item);

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

  [[nodiscard]] const TListLifePtr& Life() const { return FItems.Owner().Life(); }

  // A change of the row is to be drawn: no bracket is open, the row stays.
  [[nodiscard]] bool ItemShows(const TkListItem& item) const { return !FItems.Updating() && !item.Gone(); }

  // By OnCompare or, if it is not assigned, by the captions in the user's language.
  void AlphaSort();
  // Deletes the rows that are selected now in one bracket. The header row of a group stays as long as the
  // group has rows.
  void DeleteSelected();

 private:
  friend class TkGroupPlacing;
  friend class TkListItem;
  friend class TkListItems;

  // A made row becomes one of AllItems. It has no place yet.
  TkListItem* Enter(std::unique_ptr<TListItem> item);
  TkListItem* NewHeader();
  [[nodiscard]] bool TakeNextItemIsHeader() { return std::exchange(FNextItemIsHeader, false); }

  // False if the row is not to be removed now.
  [[nodiscard]] bool TellDeletion(TkListItem& item);
  // Takes rows, shown or hidden, out of everything and buries them, without a word. Gives the groups whose
  // boxes are to follow.
  std::vector<TkListGroup*> Remove(const std::vector<TkListItem*>& items);
  // The same, with those header rows whose groups have no rows then; the boxes of groups follow, which is
  // told.
  void RemoveAndFollow(std::vector<TkListItem*> items, const std::vector<TkListItem*>& headers);

  TkListItems& FItems;
  TkListOwner& FOwner;
  TkListGroups FGroups;
  TkItemQuickList FAllItems;
  TkCheckBook FChecks;
  TkGroupPlacing FPlacing;
  bool FNextItemIsHeader = false;
  bool FNoDeletionEvents = false;
};
