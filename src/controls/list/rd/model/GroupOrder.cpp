#include "controls/list/rd/model/GroupOrder.h"

#include "controls/list/rd/model/RdListItem.h"

#include <algorithm>
#include <limits>

namespace {

int GroupOf(const TListItem* row) {
  return static_cast<const TkListItem*>(row)->GroupID();
}

int Rank(int groupID) {
  return groupID < 0 ? std::numeric_limits<int>::max() : groupID;
}

bool Before(const TListItem* a, const TListItem* b) {
  return Rank(GroupOf(a)) < Rank(GroupOf(b));
}

}  // namespace

bool TkGroupOrder::Ordered(int first, int last) const {
  return std::is_sorted(FRows.begin() + first, FRows.begin() + last + 1, Before);
}

void TkGroupOrder::Changed(int first, int last) {
  const int end = static_cast<int>(FRows.size()) - 1;
  FOrdered = FOrdered && Ordered(std::max(0, first - 1), std::min(end, last + 1));
}

void TkGroupOrder::AllChanged() {
  FOrdered = std::is_sorted(FRows.begin(), FRows.end(), Before);
}

int TkGroupOrder::LastOf(int groupID) const {
  const auto inGroup = [groupID](const TListItem* row) { return GroupOf(row) == groupID; };
  const auto notAfter = [groupID](const TListItem* row) { return Rank(GroupOf(row)) <= Rank(groupID); };
  if (FOrdered) {
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
  const auto from = FOrdered ? std::partition_point(FRows.begin(), FRows.end(), before) : FRows.begin();
  const auto found = FOrdered && (from == FRows.end() || !inGroup(*from))
                         ? FRows.end()
                         : std::find_if(from, FRows.end(), inGroup);
  return found == FRows.end() ? -1 : static_cast<int>(found - FRows.begin());
}
