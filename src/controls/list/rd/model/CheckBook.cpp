#include "controls/list/rd/model/CheckBook.h"

#include "controls/list/model/RowStates.h"
#include "controls/list/rd/model/RdListModel.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace {

// Whether the row shows a check box, as far as its group decides that.
bool GroupGivesBox(const TkListItem& item) {
  const TkListGroup* const group = item.Group();
  if (group == nullptr) return true;
  return group->GroupCheckboxes() && (!item.IsGroupHeader() || group->GroupHeadCheckbox());
}

}  // namespace

void TkCheckBook::Book(TkListItem& item, bool checked, bool fireEvent) {
  const TkListState& state = FModel.State();
  if (!state.Recreating && !state.Loading) {
    FCheckedTotal = std::clamp(FCheckedTotal + (checked ? 1 : -1), 0, FModel.AllItems().Count());
    UpdateCheckAll();
  }
  ++item.FCheckChangeCount;
  if (item.Group() != nullptr && !item.IsGroupHeader()) BookMember(*item.Group(), checked, fireEvent);
  if (fireEvent) FModel.ListView().DoItemChecked(item);
}

void TkCheckBook::BookMember(TkListGroup& group, bool checked, bool fireEvent) {
  if (!checked) {
    if (fireEvent) MarkGroup(group, false);
    if (!FModel.State().Loading) group.FCheckedCount = std::max(0, group.FCheckedCount - 1);
    return;
  }
  const int members = group.Items().Count();
  group.FCheckedCount = std::min(members, group.FCheckedCount + 1);
  if (fireEvent && members > 0 && group.FCheckedCount == members) MarkGroup(group, true);
}

void TkCheckBook::HostChanged(TkListItem& item) {
  const bool checked = item.HasState(kRowChecked);
  if (checked == item.FCheckedState) return;
  const TkListState& state = FModel.State();
  Changed(item, checked, GroupGivesBox(item) && !state.Recreating && !state.Loading);
}

void TkCheckBook::Changed(TkListItem& item, bool checked, bool fireEvent) {
  item.FCheckedState = checked;
  if (item.IsGroupHeader() && item.Group() != nullptr)
    HeaderChanged(item, checked, fireEvent);
  else
    Book(item, checked, fireEvent);
}

void TkCheckBook::HeaderChanged(TkListItem& header, bool checked, bool fireEvent) {
  TkListGroup& group = *header.Group();
  const bool leads = group.FGroupChecked != checked && fireEvent;  // else the box only follows its rows
  group.FGroupChecked = checked;
  Book(header, checked, leads);
  // The handler may have deleted the header row.
  if (leads && group.HeaderItem() == &header && !FPropagating) Propagate(group, checked);
}

// The handler of each row may delete rows.
void TkCheckBook::Propagate(TkListGroup& group, bool checked) {
  const TListUpdate update(FModel.Items());
  const QScopedValueRollback list(FPropagating, true);
  const QScopedValueRollback guard(group.FCheckPropagating, true);
  group.FHeaderItem->FCheckPropagating = true;
  for (int member = 0; member < group.Items().Count(); ++member)
    Set(*group.Items()[member], checked);
  if (group.FHeaderItem != nullptr) group.FHeaderItem->FCheckPropagating = false;
}

void TkCheckBook::Set(TkListItem& item, bool checked) {
  if (item.Hidden()) return SetHidden(item, checked);
  if (item.FCheckPropagating) return;
  FModel.ListView().ForgetBoxClick();
  item.SetState(kRowChecked, checked);  // the host reports it to HostChanged
}

void TkCheckBook::SetHidden(TkListItem& item, bool checked) {
  if (item.FCheckedState == checked) return;
  Changed(item, checked, FModel.State().CheckBoxes && GroupGivesBox(item));
}

void TkCheckBook::SetAll(bool checked) {
  FCheckAll = checked;
  const TListUpdate update(FModel.Items());
  const QScopedValueRollback list(FPropagating, true);
  for (int row = 0; row < FModel.Items().Count(); ++row)
    Set(*FModel.Items()[row], checked);
  for (const auto& group : FModel.Groups()) {
    for (int row = 0; row < group->HiddenItems().Count(); ++row)
      SetHidden(*group->HiddenItems()[row], checked);
  }
  for (int item = 0; item < FModel.AllItems().Count(); ++item) {
    if (FModel.AllItems()[item]->Hidden()) SetHidden(*FModel.AllItems()[item], checked);
  }
}

void TkCheckBook::SetGroup(TkListGroup& group, bool checked) {
  if (group.HeaderItem() != nullptr)
    Set(*group.HeaderItem(), checked);
  else
    group.FGroupChecked = checked;
}

void TkCheckBook::CountMember(TkListGroup& group, int change) {
  const int members = group.Items().Count();
  group.FCheckedCount = std::clamp(group.FCheckedCount + change, 0, members);
  MarkGroup(group, members > 0 && group.FCheckedCount == members);
}

void TkCheckBook::MarkGroup(TkListGroup& group, bool checked) {
  if (group.FCheckPropagating) return;
  group.FGroupChecked = checked;
  TkListItem* const header = group.HeaderItem();
  if (header != nullptr && header->Checked() != checked) Set(*header, checked);
}

void TkCheckBook::UpdateCheckAll() {
  const int count = FModel.AllItems().Count();
  FCheckAll = count > 0 && FCheckedTotal == count;
}

// The boxes of groups first: they may change the checks of header rows.
void TkCheckBook::Recount() {
  const auto checked = [](const TkListItem* item) { return item->Checked(); };
  for (const auto& group : FModel.Groups()) {
    group->FCheckedCount = static_cast<int>(std::ranges::count_if(group->Items(), checked));
    CountMember(*group, 0);
  }
  FCheckedTotal = static_cast<int>(std::ranges::count_if(FModel.AllItems(), checked));
  UpdateCheckAll();
}

void TkCheckBook::Reset() {
  FCheckedTotal = 0;
  FCheckAll = false;
  for (const auto& group : FModel.Groups()) {
    group->FGroupChecked = false;
    group->FCheckedCount = 0;
  }
}
