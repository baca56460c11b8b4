// The three levels of checks: row, group, whole list. Every change of a check ends here. Main thread.
//
// Handlers may do anything to the list in the events that these tell; the counts are right before each of
// them.
//
// Three numbers that must agree: the check of each row (FCheckedState), the count of each group (its checked
// members, without the header row) and the count of the whole list (header rows too). A change comes in by
// HostChanged, Set, SetGroup or SetAll, ends in Book, and is told there, after all counts.
// Two guards keep levels from chasing each other: while a group's check goes to its rows (FCheckPropagating)
// their changes do not come back to the group's box, and while rows are set one by one (FPropagating) header
// rows leave theirs alone.
#pragma once

class TkListGroup;
class TkListItem;
class TkListModel;

class TkCheckBook {
 public:
  explicit TkCheckBook(TkListModel& model) : FModel(model) {}

  // How many of AllItems are checked, header rows too.
  [[nodiscard]] int CheckedTotal() const { return FCheckedTotal; }
  // All of them are; false for an empty list unless it was set. Setting it checks no row, SetAll does.
  [[nodiscard]] bool CheckAll() const { return FCheckAll; }
  void SetCheckAll(bool checked) { FCheckAll = checked; }

  // The row host has changed the check bit of a shown row.
  void HostChanged(TkListItem& item);
  // The program sets the check of a row, shown or hidden.
  void Set(TkListItem& item, bool checked);
  // The box of the whole list: CheckAll and every shown row, then the hidden rows, those of groups first.
  void SetAll(bool checked);
  // The box of a group as the program sets it: its header row, and with that its rows. Without a header row
  // the value is only stored.
  void SetGroup(TkListGroup& group, bool checked);

 private:
  friend class TkGroupPlacing;
  friend class TkListItems;
  friend class TkListModel;

  void Book(TkListItem& item, bool checked, bool fireEvent);
  void BookMember(TkListGroup& group, bool checked, bool fireEvent);
  void Changed(TkListItem& item, bool checked, bool fireEvent);
  void HeaderChanged(TkListItem& header, bool checked, bool fireEvent);
  void SetHidden(TkListItem& item, bool checked);
  void Propagate(TkListGroup& group, bool checked);

  // Without a word: all rows have gone, a new header row has its group's mark, members have come or gone.
  void ClearMarks();
  void MarkNewHeader(TkListItem& header, bool checked);
  static void CountMember(TkListGroup& group, int change);
  // The box of a group follows its rows: unlike SetGroup it leaves them alone.
  void FollowMembers(TkListGroup& group);
  void MarkGroup(TkListGroup& group, bool checked);
  void AddChecked(int change);

  TkListModel& FModel;
  int FCheckedTotal = 0;
  bool FCheckAll = false;
  bool FPropagating = false;  // rows are being set one by one: header rows leave their members alone
};
