// Where the rows of groups lie: header rows, joining and leaving a group, collapse and expand. Main thread.
//
// Rows of a group lie together behind its header row, groups in the order of their ids, rows without group
// where they were put. A collapsed group has its rows out of the list, in its HiddenItems.
//
// Who is where: AllItems of the model has every row; the rows of the list have those that are shown, header
// rows among them; the Items of a group have all its members, shown or hidden, without the header row; its
// HiddenItems those that its collapse took out. A member can be hidden by itself as well (TkListItem::Hide)
// and is then in none of its group's hidden rows.
// Every move goes three steps: Leave the former group, Join the new one, then take the place that it gives
// (GoToShown, GoToCollapsed, GoToNone). The row host follows each placing; whoever starts a move tells of it
// once, at its end.
#pragma once

#include "controls/list/rd/model/RdListGroup.h"

#include <vector>

class TkListGroup;
class TkListItem;
class TkListModel;

class TkGroupPlacing {
 public:
  explicit TkGroupPlacing(TkListModel& model) : FModel(model) {}

  // OpenGroupDraw or the view style was changed: every group gets its header row, or header rows go and all
  // groups are expanded.
  void GroupDrawChanged();
  // GroupCanExpand was cleared.
  void ExpandAll();
  // Told by the program, GroupShowHide does not come.
  void Collapse(TkListGroup& group, bool internal);
  void Expand(TkListGroup& group, bool internal);

 private:
  friend class TkListGroups;
  friend class TkListItem;
  friend class TkListItems;
  friend class TkListModel;

  // Tells of the marks of both groups at its end.
  void SetGroup(TkListItem& item, int groupID);
  // What follows tells nothing.
  void GoToNone(TkListItem& item, int groupID, bool wasHidden);
  void GoTo(TkListItem& item, TkListGroup& group, bool wasHidden);
  void GoToShown(TkListItem& item, TkListGroup& group);
  void GoToCollapsed(TkListItem& item, TkListGroup& group);
  void RedrawAfterMove(const TkListItem& item) const;
  void Show(TkListItem& item, int index);

  void Join(TkListItem& item, TkListGroup& group);
  // Gives the group that the row was in. A header row stays without rows until DropEmptyHeader.
  TkListGroup* Leave(TkListItem& item);
  void DropEmptyHeader(TkListGroup& group);
  // These rows leave the list for good: their groups forget them, and those that are without rows now lose
  // their header rows. Gives the groups whose boxes are to follow.
  [[nodiscard]] std::vector<TkListGroup*> Forget(const std::vector<TkListItem*>& leaving);
  // A group is new: rows that ask for its id join it. A group is about to be removed; or is now at another
  // position.
  void GroupAdded(TkListGroup& group);
  void Dissolve(TkListGroup& group);
  void Renumber(TkListGroup& group, int groupID);

  [[nodiscard]] bool DrawsGroups() const;
  void EnsureHeader(TkListGroup& group);
  void RemoveHeader(TkListGroup& group);
  void GatherRows(const TkListGroup& group);
  void ShowHiddenItems(TkListGroup& group);
  void DeselectRows(const TkListGroup& group);
  [[nodiscard]] std::vector<int> RowsToHide(const TkListGroup& group) const;

  // Places in the list; -1 is before the first row.
  [[nodiscard]] int LastRowOf(int groupID) const;
  [[nodiscard]] int FirstRowOf(const TkListGroup& group) const;
  [[nodiscard]] const TkListGroup* NextWithHeader(int groupID) const;

  TkListModel& FModel;
  TkItemQuickList FWaiting;  // rows that ask for an id that no group has
};
