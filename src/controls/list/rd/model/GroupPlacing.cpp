#include "controls/list/rd/model/GroupPlacing.h"

#include "controls/list/rd/model/RdListModel.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <map>

bool TkGroupPlacing::DrawsGroups() const {
  return FModel.State().OpenGroupDraw && FModel.State().ReportView;
}

// Joining and leaving.

void TkGroupPlacing::SetGroup(TkListItem& item, int groupID) {
  TkListGroup* const group = FModel.Groups().Find(groupID);
  if (item.IsGroupHeader() || (groupID == item.GroupID() && group == item.Group())) return;
  if (group == nullptr) return LeaveForNone(item, groupID);
  const bool wasHidden = item.Group() != nullptr && item.Group()->HiddenItems().Contains(item);
  Leave(item);
  Join(item, *group);
  if (wasHidden) group->FHiddenItems.Add(item);
  if (DrawsGroups() && group->Collapsed())
    GoToCollapsed(item, *group);
  else
    GoToShown(item, *group);
  RedrawAfterMove(item);
}

// A row that only its group kept out of the list comes back.
void TkGroupPlacing::LeaveForNone(TkListItem& item, int groupID) {
  const bool wasHidden = item.Group() != nullptr && item.Group()->HiddenItems().Contains(item);
  Leave(item);
  item.FGroupID = groupID;
  if (wasHidden) Show(item, FModel.Items().Count());
  if (const int row = item.Index(); row >= 0) FModel.Items().FGroupOrder.Changed(row, row);
  RedrawAfterMove(item);
}

void TkGroupPlacing::GoToShown(TkListItem& item, TkListGroup& group) {
  TkListItems& items = FModel.Items();
  EnsureHeader(group);
  const int last = LastRowOf(group.GroupID());
  const int from = item.Index();
  item.FGroupID = group.GroupID();
  if (from < 0) return Show(item, last + 1);
  const int to = from <= last ? last : last + 1;
  if (to != from)
    items.Shift(from, to);
  else
    items.FGroupOrder.Changed(to, to);
}

void TkGroupPlacing::GoToCollapsed(TkListItem& item, TkListGroup& group) {
  if (!group.GroupExpand()) EnsureHeader(group);
  item.FGroupID = group.GroupID();
  group.FHiddenItems.Add(item);
  FModel.Items().TakeOut(item, -1);
}

void TkGroupPlacing::RedrawAfterMove(const TkListItem& item) const {
  const TkListState& state = FModel.State();
  if (!state.OwnerData || FModel.Items().Updating()) return;
  const bool below = state.ReportView && item.Index() >= FModel.ListView().EndOfPage();
  if (!below) FModel.ListView().RedrawList();
}

void TkGroupPlacing::Show(TkListItem& item, int index) {
  TkListItems& items = FModel.Items();
  if (index < 0) index = item.Group() != nullptr ? LastRowOf(item.GroupID()) + 1 : item.HiddenIndex();
  if (item.Group() != nullptr) item.Group()->FHiddenItems.Remove(item);
  if (index < 0 || index > items.Count()) index = items.Count();
  TkListItem* const shown = &item;
  items.Place({&shown, 1}, index);
}

void TkGroupPlacing::Join(TkListItem& item, TkListGroup& group) {
  item.FGroup = &group;
  group.FItems.Add(item);
  if (item.CachedIndex() >= 0) ++group.FShownCount;
  FModel.Checks().CountMember(group, item.Checked() ? 1 : 0);
}

void TkGroupPlacing::Leave(TkListItem& item) {
  TkListGroup* const group = item.Group();
  if (group == nullptr) return;
  item.FGroup = nullptr;
  group->FItems.Remove(item);
  group->FHiddenItems.Remove(item);
  if (item.CachedIndex() >= 0) --group->FShownCount;
  FModel.Checks().CountMember(*group, item.Checked() ? -1 : 0);
  const TkListState& state = FModel.State();
  if (group->Items().Count() == 0 && !state.Reading && !state.Loading) RemoveHeader(*group);
}

void TkGroupPlacing::Dissolve(TkListGroup& group) {
  const TListUpdate update(FModel.Items());
  if (group.Collapsed()) Expand(group, true, false);
  RemoveHeader(group);
  while (group.Items().Count() > 0) {
    TkListItem& item = *group.Items()[group.Items().Count() - 1];
    Leave(item);
    item.FGroupID = -1;
  }
  FModel.Items().FGroupOrder.AllChanged();
}

void TkGroupPlacing::Renumber(TkListGroup& group, int groupID) {
  group.FGroupID = groupID;
  if (group.FHeaderItem != nullptr) group.FHeaderItem->FGroupID = groupID;
  for (TkListItem* item : group.Items())
    item->FGroupID = groupID;
}

void TkGroupPlacing::UpdateGroups() {
  const TListUpdate update(FModel.Items());
  for (int item = 0; item < FModel.AllItems().Count(); ++item)
    SetGroup(*FModel.AllItems()[item], FModel.AllItems()[item]->GroupID());
}

// Header rows.

void TkGroupPlacing::EnsureHeader(TkListGroup& group) {
  if (!DrawsGroups()) return RemoveHeader(group);
  if (group.HeaderItem() != nullptr) return;
  const int place = FirstRowOf(group);
  TkListItem* const header = FModel.NewHeader();
  header->SetCaption(QStringLiteral("Group"));
  header->FGroupID = group.GroupID();
  header->FGroup = &group;
  group.FHeaderItem = header;
  FModel.Items().Place({&header, 1}, place);
  FModel.Checks().MarkGroup(group, group.GroupChecked());
}

void TkGroupPlacing::RemoveHeader(TkListGroup& group) {
  if (group.FHeaderItem == nullptr) return;
  TkListItem& header = *group.FHeaderItem;
  if (!header.Hidden()) FModel.Items().TakeOut(header, -1);
  FModel.Destroy(header);
}

void TkGroupPlacing::DeleteStrayHeaders() {
  const QScopedValueRollback quiet(FModel.FNoDeletionEvents, true);
  for (int row = FModel.Items().Count() - 1; row >= 0; --row) {
    if (row < FModel.Items().Count() && FModel.Items()[row]->Caption() == u"Group")
      FModel.Items().Delete(row);
  }
}

void TkGroupPlacing::GroupDrawChanged() {
  const TListUpdate update(FModel.Items());
  for (const auto& group : FModel.Groups())
    RemoveHeader(*group);
  for (const auto& group : FModel.Groups()) {
    if (DrawsGroups()) {
      EnsureHeader(*group);
      GatherRows(*group);
    } else if (group->Collapsed()) {
      Expand(*group, true, false);
    }
  }
}

// Rows of the group that lie before its header row or behind its last row come to the edge.
void TkGroupPlacing::GatherRows(const TkListGroup& group) {
  if (group.HeaderItem() == nullptr) return;
  TkListItems& items = FModel.Items();
  const int header = group.HeaderItem()->Index();
  const int last = LastRowOf(group.GroupID());
  std::map<int, TkListItem*> before;
  std::map<int, TkListItem*> behind;
  for (TkListItem* item : group.Items()) {
    const int row = item->Index();
    if (row >= 0 && row < header) before[row] = item;
    if (row > last) behind[row] = item;
  }
  for (auto stray = before.rbegin(); stray != before.rend(); ++stray)
    items.Shift(stray->first, group.HeaderItem()->Index());
  for (const auto& stray : behind)
    items.Shift(stray.second->Index(), LastRowOf(group.GroupID()) + 1);
}

// Collapse and expand.

void TkGroupPlacing::Collapse(TkListGroup& group, bool internal) {
  const TListUpdate update(FModel.Items());
  if (!internal && FModel.ListView().DoGroupShowHide(group, false)) return;
  group.FCollapsed = true;
  group.FGroupExpand = false;
  DeselectRows(group);
  const std::vector<int> rows = RowsToHide(group);
  group.FHiddenItems.Reserve(group.HiddenItems().Count() + static_cast<int>(rows.size()));
  for (const int row : rows)
    group.FHiddenItems.Add(*FModel.Items()[row]);
  FModel.Items().TakeOut(rows);
}

// The list hears of each, and what hears may delete rows.
void TkGroupPlacing::DeselectRows(const TkListGroup& group) {
  for (const int row : RowsToHide(group)) {
    TkListItem* const item = FModel.Items().Item(row);
    if (item != nullptr && item->Group() == &group) item->SetSelected(false);
  }
}

std::vector<int> TkGroupPlacing::RowsToHide(const TkListGroup& group) const {
  const TkListItems& items = FModel.Items();
  int first = 0;
  int last = items.Count() - 1;
  if (group.HeaderItem() != nullptr) {
    const TkListGroup* const next = NextWithHeader(group.GroupID());
    const int from = group.HeaderItem()->Index() + 1;
    const int to = next != nullptr ? next->HeaderItem()->Index() - 1 : last;
    if (from <= to) {
      first = from;
      last = to;
    }
  }
  std::vector<int> rows;
  for (int row = first; row <= last; ++row) {
    if (items[row]->Group() == &group && !items[row]->IsGroupHeader()) rows.push_back(row);
  }
  return rows;
}

void TkGroupPlacing::Expand(TkListGroup& group, bool internal, bool reorder) {
  const TListUpdate update(FModel.Items());
  if (!internal && !FModel.ListView().DoGroupShowHide(group, true)) return;
  group.FCollapsed = false;
  group.FGroupExpand = true;
  if (reorder) GatherRows(group);
  ShowHiddenItems(group);
}

void TkGroupPlacing::ShowHiddenItems(TkListGroup& group) {
  const std::vector<TkListItem*> rows(group.HiddenItems().begin(), group.HiddenItems().end());
  group.FHiddenItems.Clear();
  const bool hasHeader = group.HeaderItem() != nullptr && !group.HeaderItem()->Hidden();
  FModel.Items().Place(rows, hasHeader ? group.HeaderItem()->Index() + 1 : FirstRowOf(group));
}

void TkGroupPlacing::ExpandAll() {
  const TListUpdate update(FModel.Items());
  for (const auto& group : FModel.Groups()) {
    if (group->Collapsed()) Expand(*group, true, false);
  }
}

// Places.

const TkListGroup* TkGroupPlacing::NextWithHeader(int groupID) const {
  for (int id = groupID + 1; id < FModel.Groups().Count(); ++id) {
    const TkListItem* const header = FModel.Groups()[id].HeaderItem();
    if (header != nullptr && !header->Hidden()) return &FModel.Groups()[id];
  }
  return nullptr;
}

int TkGroupPlacing::LastRowOf(int groupID) const {
  const TkListGroup* const next = NextWithHeader(groupID);
  return next != nullptr ? next->HeaderItem()->Index() - 1 : FModel.Items().FGroupOrder.LastOf(groupID);
}

// Where the header row is to stand: behind the nearest earlier group that has rows, else before the first row
// of its own.
int TkGroupPlacing::FirstRowOf(const TkListGroup& group) const {
  for (int id = group.GroupID() - 1; id >= 0; --id) {
    const TkListGroup& earlier = FModel.Groups()[id];
    const bool hasHeader = earlier.HeaderItem() != nullptr && !earlier.HeaderItem()->Hidden();
    if (hasHeader || earlier.FShownCount > 0) return LastRowOf(id) + 1;
  }
  return std::max(0, FModel.Items().FGroupOrder.FirstOf(group.GroupID()));
}
