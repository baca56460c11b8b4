#include "controls/list/rd/model/RdListGroup.h"

#include "controls/list/ListTypes.h"
#include "controls/list/rd/model/RdListItem.h"
#include "controls/list/rd/model/RdListModel.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace {

template <typename T>
int Order(const T& a, const T& b) {
  return std::less<T>()(a, b) ? -1 : std::less<T>()(b, a) ? 1 : 0;
}

}  // namespace

// Serials are unique in a list, for a row's whole life.
int BySerial(const TkListItem& a, const TkListItem& b) {
  return Order(a.Serial(), b.Serial());
}

// Stamps are unique in a group until their counter has gone round; then the address decides, so that the
// order stays an order.
int ByGroupOrder(const TkListItem& a, const TkListItem& b) {
  const int byStamp = Order(a.GroupOrder(), b.GroupOrder());
  return byStamp != 0 ? byStamp : Order(&a, &b);
}

// New rows have the highest serial or stamp, so the end is tried first.
TkItemQuickList::TPlace TkItemQuickList::Find(const TkListItem& item) const {
  if (FList.empty() || FCompare(*FList.back(), item) < 0) return {FList.size(), false};
  size_t low = 0;
  size_t end = FList.size();
  while (low < end) {
    const size_t middle = (low + end) / 2;
    if (FCompare(*FList[middle], item) < 0)
      low = middle + 1;
    else
      end = middle;
  }
  return {low, FList[low] == &item};
}

// 0 is the stamp of a row that has none.
int TkItemQuickList::NextStamp() {
  if (++FStampCounter == 0) ++FStampCounter;
  return FStampCounter;
}

bool TkItemQuickList::Add(TkListItem& item) {
  if (FStamping && !Contains(item)) item.FGroupOrder = NextStamp();
  const TPlace place = Find(item);
  if (place.Found) return false;
  FList.insert(FList.begin() + static_cast<std::ptrdiff_t>(place.Index), &item);
  return true;
}

int TkItemQuickList::Remove(const TkListItem& item) {
  const int index = IndexOf(item);
  if (index >= 0) FList.erase(FList.begin() + index);
  return index;
}

int TkItemQuickList::IndexOf(const TkListItem& item) const {
  const TPlace place = Find(item);
  return place.Found ? static_cast<int>(place.Index) : -1;
}

// `order` may lack rows that came while it was made, and hold rows that have left: the former keep their
// order behind the others, the latter are passed over.
void TkItemQuickList::Restamp(const std::vector<TkListItem*>& order) {
  if (FList.empty()) return;
  int stamp = FList.front()->FGroupOrder;
  std::vector<TkListItem*> rows;
  std::ranges::copy_if(order, std::back_inserter(rows), [this](TkListItem* row) { return Contains(*row); });
  if (rows.size() < FList.size()) {
    std::vector<TkListItem*> known = rows;
    std::ranges::sort(known);
    std::ranges::copy_if(FList, std::back_inserter(rows),
                         [&known](TkListItem* row) { return !std::ranges::binary_search(known, row); });
  }
  FList = std::move(rows);
  for (TkListItem* item : FList)
    item->FGroupOrder = stamp++;
  FStampCounter = std::max(FStampCounter, stamp - 1);
}

TkListModel& TkListGroup::Model() const {
  return FOwner.Model();
}

void TkListGroup::Redraw() {
  if (FHeaderItem != nullptr && Model().ItemShows(*FHeaderItem)) Model().ListView().RedrawRow(*FHeaderItem);
}

void TkListGroup::SetGroupCheckboxes(bool boxes) {
  if (Gone() || boxes == FGroupCheckboxes) return;
  FGroupCheckboxes = boxes;
  if (!Model().Items().Updating()) Model().ListView().RedrawList();
}

void TkListGroup::SetGroupExpand(bool expand) {
  if (Gone() || (!expand && !Model().State().GroupCanExpand)) return;
  if (expand == FGroupExpand && !Collapsed()) return;
  const TEventScope scope(Model().Life());
  const bool before = Collapsed();
  if (expand)
    Model().Placing().Expand(*this, false);
  else
    Model().Placing().Collapse(*this, false);
  if (!scope.ListGone() && !Gone() && Collapsed() != before) Redraw();
}

void TkListGroup::SetGroupChecked(bool checked) {
  if (!Gone()) Model().Checks().SetGroup(*this, checked);
}

TkListGroup& TkListGroups::Add(const QString& header) {
  FGroups.push_back(std::make_unique<TkListGroup>(*this, Count()));
  TkListGroup& added = *FGroups.back();
  added.FHeader = header;
  FModel.Placing().GroupAdded(added);
  return added;
}

// Dissolved while it still has its id, as rows are looked up by it; only then the later groups take theirs.
void TkListGroups::Delete(int index) {
  FModel.Placing().Dissolve((*this)[index]);
  std::unique_ptr<TkListGroup> gone = std::move(FGroups[static_cast<size_t>(index)]);
  FGroups.erase(FGroups.begin() + index);
  for (int id = index; id < Count(); ++id)
    FModel.Placing().Renumber(*FGroups[static_cast<size_t>(id)], id);
  // A handler up the stack may still hold the group.
  gone->FGroupID = -1;
  FModel.Life()->Bury(std::move(gone));
}

void TkListGroups::Clear() {
  const TListUpdate update(FModel.Items());
  while (Count() > 0)
    Delete(Count() - 1);
}

TkListGroup& TkListGroups::operator[](int index) const {
  if (TkListGroup* const group = Find(index)) return *group;
  throw EListError("TkListGroups: index out of range");
}

TkListGroup* TkListGroups::Find(int groupID) const {
  return groupID >= 0 && groupID < Count() ? FGroups[static_cast<size_t>(groupID)].get() : nullptr;
}
