#include "controls/list/rd/model/RdGroupPlacing.h"

#include "controls/list/rd/model/RdListModel.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

bool TkGroupPlacing::DrawsGroups() const {
  return FModel.State().OpenGroupDraw;
}

// Joining and leaving.

void TkGroupPlacing::SetGroup(TkListItem& item, int groupID) {
  TkListGroup* const group = FModel.Groups().Find(groupID);
  if (item.IsGroupHeader() || (groupID == item.GroupID() && group == item.Group())) return;
  const TEventScope scope(FModel.Life());
  const bool wasHidden = item.Group() != nullptr && item.Group()->HiddenItems().Contains(item);
  TkListGroup* const former = Leave(item);
  if (former != nullptr) DropEmptyHeader(*former);
  if (group == nullptr)
    GoToNone(item, groupID, wasHidden);
  else
    GoTo(item, *group, wasHidden);
  RedrawAfterMove(item);
  if (former != nullptr) FModel.Checks().FollowMembers(*former);
  if (group != nullptr && !scope.ListGone()) FModel.Checks().FollowMembers(*group);
}

// A row that only its group kept out of the list comes back.
void TkGroupPlacing::GoToNone(TkListItem& item, int groupID, bool wasHidden) {
  item.FGroupID = groupID;
  if (groupID >= 0) FWaiting.Add(item);
  if (wasHidden) Show(item, FModel.Items().Count());
  if (const int row = item.Index(); row >= 0) FModel.Items().FGroupOrder.Changed(row, row);
}

void TkGroupPlacing::GoTo(TkListItem& item, TkListGroup& group, bool wasHidden) {
  Join(item, group);
  if (wasHidden) group.FHiddenItems.Add(item);
  // Without header rows the user has nothing to expand the group by, so its rows show.
  if (DrawsGroups() && group.Collapsed())
    GoToCollapsed(item, group);
  else
    GoToShown(item, group);
}

// Behind the last row of the group. A row that comes from above leaves a gap that the others close, so its
// new place is one less.
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
  const bool below = item.Index() >= FModel.ListView().EndOfPage();
  if (!FModel.Items().Updating() && !below) FModel.ListView().RedrawList();
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
  FWaiting.Remove(item);
  item.FGroup = &group;
  group.FItems.Add(item);
  if (item.CachedIndex() >= 0) ++group.FShownCount;
  TkCheckBook::CountMember(group, item.Checked() ? 1 : 0);
}

TkListGroup* TkGroupPlacing::Leave(TkListItem& item) {
  FWaiting.Remove(item);
  TkListGroup* const group = std::exchange(item.FGroup, nullptr);
  if (group == nullptr) return nullptr;
  group->FItems.Remove(item);
  group->FHiddenItems.Remove(item);
  if (item.CachedIndex() >= 0) --group->FShownCount;
  TkCheckBook::CountMember(*group, item.Checked() ? -1 : 0);
  return group;
}

void TkGroupPlacing::DropEmptyHeader(TkListGroup& group) {
  if (group.Items().Count() == 0) RemoveHeader(group);
}

std::vector<TkListGroup*> TkGroupPlacing::Forget(const std::vector<TkListItem*>& leaving) {
  std::vector<TkListGroup*> groups;
  for (TkListItem* item : leaving) {
    TkListGroup* const group = item->Group();
    if (group == nullptr) continue;
    if (item->IsGroupHeader()) {
      if (group->FHeaderItem == item) group->FHeaderItem = nullptr;
      continue;
    }
    TkCheckBook::CountMember(*group, item->Checked() ? -1 : 0);
    // Rows of a group mostly come in a row: most repeats are met here, the rest by the sort.
    if (groups.empty() || groups.back() != group) groups.push_back(group);
  }
  std::ranges::sort(groups);
  groups.erase(std::unique(groups.begin(), groups.end()), groups.end());
  const auto leaves = [](const TkListItem* item) { return item->FLeaves; };
  FWaiting.RemoveAll(leaves);
  for (TkListGroup* group : groups) {
    group->FItems.RemoveAll(leaves);
    group->FHiddenItems.RemoveAll(leaves);
    DropEmptyHeader(*group);
  }
  for (TkListItem* item : leaving)
    item->FGroup = nullptr;
  return groups;
}

void TkGroupPlacing::GroupAdded(TkListGroup& group) {
  const auto asks = [&group](const TkListItem* item) { return item->GroupID() == group.GroupID(); };
  std::vector<TkListItem*> rows;
  std::ranges::copy_if(FWaiting, std::back_inserter(rows), asks);
  if (rows.empty()) return;
  const TListUpdate update(FModel.Items());
  for (TkListItem* item : rows)
    Join(*item, group);
  FModel.Checks().FollowMembers(group);
  for (TkListItem* item : rows) {
    if (!item->Hidden()) GoToShown(*item, group);
  }
  FModel.Items().Tell();
}

void TkGroupPlacing::Dissolve(TkListGroup& group) {
  const TListUpdate update(FModel.Items());
  if (group.Collapsed()) Expand(group, true);
  RemoveHeader(group);
  for (TkListItem* item : group.Items()) {
    item->FGroup = nullptr;
    item->FGroupID = -1;
  }
  group.FItems.Clear();
  group.FHiddenItems.Clear();
  FModel.Items().FGroupOrder.AllChanged();
  FModel.Items().Tell();
}

void TkGroupPlacing::Renumber(TkListGroup& group, int groupID) {
  group.FGroupID = groupID;
  if (group.FHeaderItem != nullptr) group.FHeaderItem->FGroupID = groupID;
  for (TkListItem* item : group.Items())
    item->FGroupID = groupID;
}

// Header rows.

void TkGroupPlacing::EnsureHeader(TkListGroup& group) {
  if (!DrawsGroups()) return RemoveHeader(group);
  if (group.HeaderItem() != nullptr) return;
  const int place = FirstRowOf(group);
  TkListItem* const header = FModel.NewHeader();
  header->FGroupID = group.GroupID();
  header->FGroup = &group;
  group.FHeaderItem = header;
  FModel.Checks().MarkNewHeader(*header, group.GroupChecked());
  FModel.Items().Place({&header, 1}, place);
}

void TkGroupPlacing::RemoveHeader(TkListGroup& group) {
  if (TkListItem* const header = std::exchange(group.FHeaderItem, nullptr)) FModel.Remove({header});
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
      Expand(*group, true);
    }
  }
  FModel.Items().Tell();
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
  // From the header row outwards on both sides, so that the strays keep their order.
  for (auto stray = before.rbegin(); stray != before.rend(); ++stray)
    items.Shift(stray->first, group.HeaderItem()->Index());
  for (const auto& stray : behind)
    items.Shift(stray.second->Index(), LastRowOf(group.GroupID()) + 1);
}

// Collapse and expand.

void TkGroupPlacing::Collapse(TkListGroup& group, bool internal) {
  const TEventScope scope(FModel.Life());
  const TListUpdate update(FModel.Items());
  bool show = false;
  if (!internal && (!FModel.ListView().DoGroupShowHide(group, show) || show || group.Gone())) return;
  group.FCollapsed = true;
  group.FGroupExpand = false;
  DeselectRows(group);
  // What hears of that may have expanded or deleted the group.
  if (scope.ListGone() || group.Gone() || !group.Collapsed()) return;
  const std::vector<int> rows = RowsToHide(group);
  group.FHiddenItems.Reserve(group.HiddenItems().Count() + static_cast<int>(rows.size()));
  for (const int row : rows)
    group.FHiddenItems.Add(*FModel.Items()[row]);
  FModel.Items().TakeOut(rows);
  FModel.Items().Tell();
}

void TkGroupPlacing::DeselectRows(const TkListGroup& group) {
  const TEventScope scope(FModel.Life());
  std::vector<TkListItem*> rows;
  for (const int row : RowsToHide(group)) {
    if (TkListItem* const item = FModel.Items()[row]; item->Selected()) rows.push_back(item);
  }
  for (TkListItem* item : rows) {
    if (item->Group() == &group) item->SetSelected(false);
    if (scope.ListGone()) return;
  }
}

// Looks between this header row and the next one; without a header row, or with nothing between, at all rows,
// as rows of the group may lie anywhere.
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

void TkGroupPlacing::Expand(TkListGroup& group, bool internal) {
  const TEventScope scope(FModel.Life());
  const TListUpdate update(FModel.Items());
  bool show = true;
  if (!internal && (!FModel.ListView().DoGroupShowHide(group, show) || !show || group.Gone())) return;
  group.FCollapsed = false;
  group.FGroupExpand = true;
  ShowHiddenItems(group);
  FModel.Items().Tell();
}

// In the order of their stamps, which a sort of the collapsed group has set anew.
void TkGroupPlacing::ShowHiddenItems(TkListGroup& group) {
  const std::vector<TkListItem*> rows(group.HiddenItems().begin(), group.HiddenItems().end());
  group.FHiddenItems.Clear();
  const bool hasHeader = group.HeaderItem() != nullptr && !group.HeaderItem()->Hidden();
  FModel.Items().Place(rows, hasHeader ? group.HeaderItem()->Index() + 1 : FirstRowOf(group));
}

void TkGroupPlacing::ExpandAll() {
  const TListUpdate update(FModel.Items());
  for (const auto& group : FModel.Groups()) {
    if (group->Collapsed()) Expand(*group, true);
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
