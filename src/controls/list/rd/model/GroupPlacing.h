// Where the rows of groups lie: header rows, joining and leaving a group, collapse and expand. Main thread.
//
// Rows of a group lie together behind its header row, groups in the order of their ids, rows without group
// where they were put. A collapsed group has its rows out of the list, in its HiddenItems.
#pragma once

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
  // Groups were added: rows that ask for their ids join them.
  void UpdateGroups();

  // Told by the program, GroupShowHide does not come. reorder: rows of the group that were moved away come
  // back to it first.
  void Collapse(TkListGroup& group, bool internal);
  void Expand(TkListGroup& group, bool internal, bool reorder);

 private:
  friend class TkListGroups;
  friend class TkListItem;
  friend class TkListItems;
  friend class TkListModel;
  friend class TkStoredRows;

  void SetGroup(TkListItem& item, int groupID);
  void LeaveForNone(TkListItem& item, int groupID);
  void GoToShown(TkListItem& item, TkListGroup& group);
  void GoToCollapsed(TkListItem& item, TkListGroup& group);
  void RedrawAfterMove(const TkListItem& item) const;
  void Show(TkListItem& item, int index);

  void Join(TkListItem& item, TkListGroup& group);
  void Leave(TkListItem& item);
  // A group is about to be removed; or is now at another position.
  void Dissolve(TkListGroup& group);
  void Renumber(TkListGroup& group, int groupID);

  [[nodiscard]] bool DrawsGroups() const;
  void EnsureHeader(TkListGroup& group);
  void RemoveHeader(TkListGroup& group);
  void DeleteStrayHeaders();
  void GatherRows(const TkListGroup& group);
  void ShowHiddenItems(TkListGroup& group);
  void DeselectRows(const TkListGroup& group);
  [[nodiscard]] std::vector<int> RowsToHide(const TkListGroup& group) const;

  // Places in the list; -1 is before the first row.
  [[nodiscard]] int LastRowOf(int groupID) const;
  [[nodiscard]] int FirstRowOf(const TkListGroup& group) const;
  [[nodiscard]] const TkListGroup* NextWithHeader(int groupID) const;

  TkListModel& FModel;
};
