#include "controls/list/rd/model/RdRowOrder.h"

#include "controls/list/rd/model/RdListItem.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

int GroupOf(const TListItem* row) {
  return static_cast<const TkListItem*>(row)->GroupID();
}

// Rows without group come last.
int Rank(int groupID) {
  return groupID < 0 ? std::numeric_limits<int>::max() : groupID;
}

bool Before(const TListItem* a, const TListItem* b) {
  return Rank(GroupOf(a)) < Rank(GroupOf(b));
}

}  // namespace

TkListItem& TkRowNumbers::Row(size_t index) const {
  return static_cast<TkListItem&>(*FRows[index]);
}

bool TkRowNumbers::Before(const TkListItem& a, const TkListItem& b) {
  if (&a == &b) return false;
  const auto key = [](const TkListItem& item) {
    return std::make_tuple(item.CachedIndex(), item.FSameIndexOrder, item.Serial());
  };
  if (key(a) == key(b)) throw EListError("LV\\ShowItems\\: Same Index Y");
  return key(a) < key(b);
}

int TkRowNumbers::IndexOf(const TkListItem& item) const {
  const int cached = item.CachedIndex();
  if (cached < 0 || !FNeedsRenumber) return cached;
  const auto before = [](const TListItem* a, const TkListItem* b) {
    return Before(static_cast<const TkListItem&>(*a), *b);
  };
  const auto found = std::lower_bound(FRows.begin(), FRows.end(), &item, before);
  return found != FRows.end() && *found == &item ? static_cast<int>(found - FRows.begin()) : -1;
}

// Within a bracket rows come by the thousand: there each is numbered without touching those behind it, and
// the numbers are made whole when it closes.
void TkRowNumbers::Inserted(int index, int count, bool batch) {
  const auto first = static_cast<size_t>(index);
  const size_t end = first + static_cast<size_t>(count);
  if (!batch)
    Renumber(first, FRows.size());
  else if (end == FRows.size())
    NumberAppended(first);
  else
    NumberBetween(first, end);
}

void TkRowNumbers::NumberAppended(size_t first) {
  const int after = first == 0 ? -1 : Row(first - 1).CachedIndex();
  const int number = std::max(static_cast<int>(first), after + 1);
  for (size_t row = first; row < FRows.size(); ++row)
    Number(row, number + static_cast<int>(row - first), 0);
}

// The new rows share the number of the row that they push down. They go on behind a row before them that has
// it too, else they come before the pushed one.
void TkRowNumbers::NumberBetween(size_t first, size_t end) {
  const int number = Row(end).CachedIndex();
  const bool goOn = first > 0 && Row(first - 1).CachedIndex() == number;
  int order =
      goOn ? Row(first - 1).FSameIndexOrder + 1 : Row(end).FSameIndexOrder - static_cast<int>(end - first);
  for (size_t row = first; row < end; ++row)
    Number(row, number, order++);
  for (size_t row = end; row < FRows.size(); ++row, ++order) {
    if (Row(row).CachedIndex() != number || Row(row).FSameIndexOrder >= order) break;
    Row(row).FSameIndexOrder = order;
  }
  FNeedsRenumber = true;
}

void TkRowNumbers::Removed(int index, bool batch) {
  const auto first = static_cast<size_t>(index);
  if (!batch)
    Renumber(first, FRows.size());
  else if (first < FRows.size())
    FNeedsRenumber = true;
}

// The stretch keeps its numbers as a set; they go to its rows in their new order.
void TkRowNumbers::Reordered(int first, int last) {
  std::vector<std::pair<int, int>> numbers;
  for (auto row = static_cast<size_t>(first); row <= static_cast<size_t>(last); ++row)
    numbers.emplace_back(Row(row).CachedIndex(), Row(row).FSameIndexOrder);
  std::sort(numbers.begin(), numbers.end());
  auto row = static_cast<size_t>(first);
  for (const auto& [number, order] : numbers)
    Number(row++, number, order);
}

void TkRowNumbers::Exchanged(int a, int b) {
  TkListItem& first = Row(static_cast<size_t>(a));
  TkListItem& second = Row(static_cast<size_t>(b));
  const int number = first.CachedIndex();
  first.CacheIndex(second.CachedIndex());
  second.CacheIndex(number);
  std::swap(first.FSameIndexOrder, second.FSameIndexOrder);
}

void TkRowNumbers::Settle() {
  if (std::exchange(FNeedsRenumber, false)) RenumberAll();
}

void TkRowNumbers::RenumberAll() {
  Renumber(0, FRows.size());
  FNeedsRenumber = false;
}

void TkRowNumbers::Renumber(size_t first, size_t end) {
  for (size_t row = first; row < end; ++row)
    Number(row, static_cast<int>(row), 0);
}

void TkRowNumbers::Number(size_t row, int number, int order) {
  Row(row).CacheIndex(number);
  Row(row).FSameIndexOrder = order;
}

bool TkGroupOrder::Ordered(int first, int last) const {
  return std::is_sorted(FRows.begin() + first, FRows.begin() + last + 1, Before);
}

// Once out of order stays so until all is looked at again: to find out would cost a walk at each change.
void TkGroupOrder::Changed(int first, int last) {
  const int end = static_cast<int>(FRows.size()) - 1;
  if (FOrdered.value_or(false)) FOrdered = Ordered(std::max(0, first - 1), std::min(end, last + 1));
}

bool TkGroupOrder::AllOrdered() const {
  if (!FOrdered) FOrdered = std::is_sorted(FRows.begin(), FRows.end(), Before);
  return *FOrdered;
}

// The usual case, rows in the order of their groups, is found by halving; FOrdered remembers whether it
// holds, unset: not known.
int TkGroupOrder::LastOf(int groupID) const {
  const auto inGroup = [groupID](const TListItem* row) { return GroupOf(row) == groupID; };
  const auto notAfter = [groupID](const TListItem* row) { return Rank(GroupOf(row)) <= Rank(groupID); };
  if (AllOrdered()) {
    const auto end = std::partition_point(FRows.begin(), FRows.end(), notAfter);
    return static_cast<int>(end - FRows.begin()) - 1;
  }
  auto found = std::find_if(FRows.rbegin(), FRows.rend(), inGroup);
  if (found == FRows.rend()) found = std::find_if(FRows.rbegin(), FRows.rend(), notAfter);
  return static_cast<int>(FRows.rend() - found) - 1;
}

int TkGroupOrder::FirstOf(int groupID) const {
  const auto before = [groupID](const TListItem* row) { return Rank(GroupOf(row)) < Rank(groupID); };
  const auto inGroup = [groupID](const TListItem* row) { return GroupOf(row) == groupID; };
  const bool ordered = AllOrdered();
  const auto from = ordered ? std::partition_point(FRows.begin(), FRows.end(), before) : FRows.begin();
  const auto found = ordered && (from == FRows.end() || !inGroup(*from))
                         ? FRows.end()
                         : std::find_if(from, FRows.end(), inGroup);
  return found == FRows.end() ? -1 : static_cast<int>(found - FRows.begin());
}
