#include "controls/list/rd/model/RdListModel.h"

#include "controls/list/model/RowStates.h"

#include <QScopedValueRollback>

#include <algorithm>

bool GroupGivesBox(const TkListItem& item) {
  const TkListGroup* const group = item.Group();
  if (group == nullptr) return true;
  return group->GroupCheckboxes() && (!item.IsGroupHeader() || group->GroupHeadCheckbox());
}

TkListItem* TkListModel::Enter(std::unique_ptr<TListItem> item) {
  auto* const entered = dynamic_cast<TkListItem*>(item.get());
  if (entered == nullptr) throw EListError("LV\\CreateItem\\: only allow TkListItem class");
  item.release();
  FAllItems.Add(*entered);
  FChecks.SetCheckAll(false);
  return entered;
}

TkListItem* TkListModel::NewHeader() {
  // The row learns it in its constructor, which the factory of the program may call from a class of its own.
  const QScopedValueRollback next(FNextItemIsHeader, true);
  TkListItem* const header = Enter(FItems.Owner().CreateListItem(FItems));
  header->SetCaption(QStringLiteral("Group"));
  return header;
}

bool TkListModel::TellDeletion(TkListItem& item) {
  return item.IsGroupHeader() || FNoDeletionEvents || FItems.TellDeletion(item);
}

// Out of the list, out of groups, out of AllItems, out of the counts, and then buried: nothing is told, so
// nobody sees a state between.
std::vector<TkListGroup*> TkListModel::Remove(const std::vector<TkListItem*>& items) {
  std::vector<int> places;
  int checked = 0;
  for (TkListItem* item : items) {
    item->FLeaves = true;
    checked += item->Checked() ? 1 : 0;
    if (const int place = item->Index(); place >= 0) places.push_back(place);
  }
  std::ranges::sort(places);
  FItems.TakeOut(places);
  std::vector<TkListGroup*> groups = FPlacing.Forget(items);
  if (items.size() == 1)
    FAllItems.Remove(*items.front());
  else
    FAllItems.RemoveAll([](const TkListItem* item) { return item->FLeaves; });
  FChecks.AddChecked(-checked);
  for (TkListItem* item : items)
    FItems.Bury(*item);
  return groups;
}

void TkListModel::RemoveAndFollow(std::vector<TkListItem*> items, const std::vector<TkListItem*>& headers) {
  const TEventScope scope(Life());
  std::erase_if(items, [](const TkListItem* item) { return item->Gone(); });
  const std::vector<TkListGroup*> groups = Remove(items);
  for (TkListItem* header : headers) {
    if (!header->Gone() && (header->Group() == nullptr || header->Group()->Items().Count() == 0))
      Remove({header});
  }
  // The list first: the boxes of groups tell events, and what these ask must be right by then.
  FItems.Tell();
  for (TkListGroup* group : groups) {
    if (scope.ListGone()) return;
    FChecks.FollowMembers(*group);
  }
}

void TkListModel::AlphaSort() {
  if (const TListItems::TCompare compare = FOwner.RowCompare())
    FItems.Sort(compare);
  else
    FItems.SortByText(0, &QString::localeAwareCompare);
}

void TkListModel::DeleteSelected() {
  const TRowStates& states = FItems.Owner().RowStates();
  std::vector<TListItem*> rows;
  for (int row = states.Next(-1, kRowSelected); row >= 0; row = states.Next(row, kRowSelected)) {
    TkListItem* const item = FItems.Item(row);
    if (item == nullptr) continue;
    const bool needed =
        item->IsGroupHeader() && item->Group() != nullptr && item->Group()->Items().Count() > 0;
    if (!needed) rows.push_back(item);
  }
  const TListUpdate update(FItems);
  FItems.DeleteRows(rows);
}
