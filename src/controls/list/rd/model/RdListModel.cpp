#include "controls/list/rd/model/RdListModel.h"

#include "controls/list/model/RowStates.h"

#include <QScopedValueRollback>

#include <algorithm>

bool TkListModel::ItemShows(const TkListItem& item) const {
  return !FItems.Updating() && !State().Loading && !item.Destroying();
}

TkListItem* TkListModel::Enter(std::unique_ptr<TListItem> item) {
  auto* const entered = dynamic_cast<TkListItem*>(item.get());
  if (entered == nullptr) throw EListError("LV\\CreateItem\\: only allow TkListItem class");
  item.release();
  FAllItems.Add(*entered);
  if (!State().Loading) FChecks.SetCheckAll(false);
  return entered;
}

TkListItem* TkListModel::NewHeader() {
  const QScopedValueRollback next(FNextItemIsHeader, true);
  return Enter(FItems.Owner().CreateListItem(FItems));
}

void TkListModel::TellDeletion(TkListItem& item) {
  if (!FNoDeletionEvents && !State().Reading && !item.IsGroupHeader()) FItems.Owner().ItemDeleting(item);
}

void TkListModel::TellHiddenDeletions() {
  for (int item = 0; item < FAllItems.Count(); ++item) {
    if (FAllItems[item]->Hidden()) TellDeletion(*FAllItems[item]);
  }
}

// The last row of a group takes the header row with it.
void TkListModel::Destroy(TkListItem& item) {
  item.FDestroying = true;
  if (item.Group() != nullptr && item.Group()->HeaderItem() == &item)
    item.Group()->FHeaderItem = nullptr;
  else
    FPlacing.Leave(item);
  FAllItems.Remove(item);
  FOwner.ItemDestroying(item);
  if (item.Checked())
    FChecks.Book(item, false, false);
  else
    FChecks.UpdateCheckAll();
  delete &item;
}

void TkListModel::DestroyHidden(TkListItem& item) {
  TellDeletion(item);
  Destroy(item);
}

void TkListModel::DestroyAll() {
  const TkItemQuickList items = std::exchange(FAllItems, TkItemQuickList());
  for (const auto& group : FGroups)
    group->Forget();
  FChecks.Reset();
  for (TkListItem* item : items) {
    item->FDestroying = true;
    FOwner.ItemDestroying(*item);
    delete item;
  }
}

void TkListModel::AlphaSort() {
  if (const TListItems::TCompare compare = FOwner.RowCompare())
    FItems.Sort(compare);
  else
    FItems.SortByText(0, &QString::localeAwareCompare);
}

// From the end, so that little moves. A row may take others with it.
void TkListModel::DeleteSelected() {
  const TListUpdate update(FItems);
  for (int row = FItems.Count() - 1; row >= 0; --row) {
    row = std::min(row, FItems.Count() - 1);
    TkListItem* const item = FItems.Item(row);
    if (item == nullptr || !item->Selected()) continue;
    const bool needed =
        item->IsGroupHeader() && item->Group() != nullptr && item->Group()->Items().Count() > 0;
    if (!needed) FItems.Delete(row);
  }
}

void TkListModel::Loaded() {
  const TListUpdate update(FItems);
  FPlacing.DeleteStrayHeaders();
  FPlacing.GroupDrawChanged();
  FChecks.Recount();
}
