// Finds the rows of a group by its id, by binary search as long as the rows lie in the order of their groups,
// those without group last. A sort, or a row moved by itself, can end that; then the rows are walked.
// Main thread.
#pragma once

#include <vector>

class TListItem;

class TkGroupOrder {
 public:
  explicit TkGroupOrder(const std::vector<TListItem*>& rows) : FRows(rows) {}

  // Rows first to last are new in their places, or have other groups now; or all are.
  void Changed(int first, int last);
  void AllChanged();

  // The last row of the group. If it has none, the last row of what comes before it; -1 if nothing does.
  [[nodiscard]] int LastOf(int groupID) const;
  // -1 if the group has no row.
  [[nodiscard]] int FirstOf(int groupID) const;

 private:
  [[nodiscard]] bool Ordered(int first, int last) const;

  const std::vector<TListItem*>& FRows;
  bool FOrdered = true;
};
