#include "controls/list/rd/model/RdCheckBook.h"

#include "controls/list/model/RowStates.h"
#include "controls/list/rd/model/RdListModel.h"

#include <QScopedValueRollback>

#include <algorithm>

// Kept by every change instead of summed at every question, as the box of a long list is asked at each check.
void TkCheckBook::AddChecked(int change) {
  const int count = FModel.AllItems().Count();
  FCheckedTotal = std::clamp(FCheckedTotal + change, 0, count);
  FCheckAll = count > 0 && FCheckedTotal == count;
}

// Counts first and tells last, so that a handler finds list and group as they are now. After BookMember the
// list may be gone.
void TkCheckBook::Book(TkListItem& item, bool checked, bool fireEvent) {
  const TEventScope scope(FModel.Life());
  AddChecked(checked ? 1 : -1);
  ++item.FCheckChangeCount;
  if (item.Group() != nullptr && !item.IsGroupHeader()) BookMember(*item.Group(), checked, fireEvent);
  if (fireEvent && !scope.ListGone() && !item.Gone()) (void)FModel.ListView().DoItemChecked(item);
}

// A group loses its mark with its first unchecked row and gets it with its last checked one.
void TkCheckBook::BookMember(TkListGroup& group, bool checked, bool fireEvent) {
  CountMember(group, checked ? 1 : -1);
  const bool full = group.FCheckedCount > 0 && group.FCheckedCount == group.Items().Count();
  if (fireEvent && (!checked || full)) MarkGroup(group, checked);
}

// The bit of the host is what paints; FCheckedState is what has been booked. They differ while a
// change is on its way.
void TkCheckBook::HostChanged(TkListItem& item) {
  const bool checked = item.HasState(kRowChecked);
  if (checked != item.FCheckedState) Changed(item, checked, GroupGivesBox(item));
}

void TkCheckBook::Changed(TkListItem& item, bool checked, bool fireEvent) {
  item.FCheckedState = checked;
  if (item.IsGroupHeader() && item.Group() != nullptr)
    HeaderChanged(item, checked, fireEvent);
  else
    Book(item, checked, fireEvent);
}

// The box of a group changes for one of two reasons: somebody set it, which takes its rows along and is told,
// or its last row changed, which FGroupChecked already says.
void TkCheckBook::HeaderChanged(TkListItem& header, bool checked, bool fireEvent) {
  const TEventScope scope(FModel.Life());
  TkListGroup& group = *header.Group();
  const bool leads = group.FGroupChecked != checked && fireEvent;  // else the box only follows its rows
  group.FGroupChecked = checked;
  Book(header, checked, leads);
  if (scope.ListGone() || !leads || FPropagating) return;
  // The handler may have put the box back, or another row in the place of this one.
  if (group.HeaderItem() == &header && group.GroupChecked() == checked) Propagate(group, checked);
}

// The members are copied, as their handlers may move and delete rows. Both guards keep the group from
// following its rows while these follow it; the one of the row goes with the row, so nothing clears it when
// the list is gone.
void TkCheckBook::Propagate(TkListGroup& group, bool checked) {
  const TEventScope scope(FModel.Life());
  const TListUpdate update(FModel.Items());
  const QScopedValueRollback list(FPropagating, true);
  const QScopedValueRollback guard(group.FCheckPropagating, true);
  TkListItem& header = *group.HeaderItem();
  header.FCheckPropagating = true;
  const std::vector<TkListItem*> members(group.Items().begin(), group.Items().end());
  for (TkListItem* member : members) {
    if (!member->Gone() && member->Group() == &group) Set(*member, checked);
    if (scope.ListGone()) return;
  }
  header.FCheckPropagating = false;
}

void TkCheckBook::Set(TkListItem& item, bool checked) {
  if (item.Gone()) return;
  if (item.Hidden()) return SetHidden(item, checked);
  if (item.FCheckPropagating) return;
  FModel.ListView().ForgetBoxClick();
  FModel.Items().ChangeState(item, checked ? kRowChecked : 0, kRowChecked);  // comes back to HostChanged
}

// A hidden row has no bit in the host, so nobody reports its change.
void TkCheckBook::SetHidden(TkListItem& item, bool checked) {
  if (item.FCheckedState == checked) return;
  Changed(item, checked, FModel.State().CheckBoxes && GroupGivesBox(item));
}

void TkCheckBook::SetAll(bool checked) {
  const TEventScope scope(FModel.Life());
  const TListUpdate update(FModel.Items());
  const QScopedValueRollback list(FPropagating, true);
  FCheckAll = checked;
  // Shown rows, those of collapsed groups, then whatever else is hidden: a row that is met twice has nothing
  // left to change.
  std::vector<TkListItem*> rows = FModel.Items().ShownRows();
  for (const auto& group : FModel.Groups())
    rows.insert(rows.end(), group->HiddenItems().begin(), group->HiddenItems().end());
  std::ranges::copy_if(FModel.AllItems(), std::back_inserter(rows),
                       [](const TkListItem* item) { return item->Hidden(); });
  for (TkListItem* row : rows) {
    Set(*row, checked);
    if (scope.ListGone()) return;
  }
}

void TkCheckBook::SetGroup(TkListGroup& group, bool checked) {
  if (group.HeaderItem() != nullptr)
    Set(*group.HeaderItem(), checked);
  else
    group.FGroupChecked = checked;
}

void TkCheckBook::CountMember(TkListGroup& group, int change) {
  group.FCheckedCount = std::clamp(group.FCheckedCount + change, 0, group.Items().Count());
}

void TkCheckBook::FollowMembers(TkListGroup& group) {
  if (!group.Gone())
    MarkGroup(group, group.FCheckedCount > 0 && group.FCheckedCount == group.Items().Count());
}

void TkCheckBook::MarkGroup(TkListGroup& group, bool checked) {
  if (group.FCheckPropagating) return;
  group.FGroupChecked = checked;
  TkListItem* const header = group.HeaderItem();
  if (header != nullptr && header->Checked() != checked) Set(*header, checked);
}

void TkCheckBook::MarkNewHeader(TkListItem& header, bool checked) {
  header.FCheckedState = checked;
  AddChecked(checked ? 1 : 0);
}

void TkCheckBook::ClearMarks() {
  for (const auto& group : FModel.Groups())
    group->FGroupChecked = false;
}
