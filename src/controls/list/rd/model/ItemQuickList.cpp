#include "controls/list/rd/model/ItemQuickList.h"

#include <functional>
#include "controls/list/model/ListItems.h"
#include "controls/list/rd/model/RdListItem.h"

namespace {

template <typename T>
int Order(const T& a, const T& b) {
  return std::less<T>()(a, b) ? -1 : std::less<T>()(b, a) ? 1 : 0;
}

}  // namespace

int BySerial(const TkListItem& a, const TkListItem& b) {
  return Order(a.Serial(), b.Serial());
}

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

void TkItemQuickList::Restamp(const std::function<int(TkListItem& a, TkListItem& b)>& compare) {
  if (FList.empty()) return;
  int stamp = FList.front()->FGroupOrder;
  QuickSortRows(FList, compare);
  for (TkListItem* item : FList)
    item->FGroupOrder = stamp++;
}
