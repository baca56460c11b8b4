// How a row is found in the order of the rows: by the index that it remembers, and the rows of a group by its
// id. Both watch the one vector of rows and hold nothing of their own but a flag. Main thread.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

class TListItem;
class TkListItem;

// Outside a bracket every row knows its index. Inside one, rows that come and go leave the others' numbers as
// they are: a new row takes the number of the row that it pushes down, and an order among the rows with that
// number. So the rows stay sorted by number and order, and a row is found by binary search.
//
// Asked for an index at each event and each change of a row, and so kept in the row.
class TkRowNumbers {
 public:
  explicit TkRowNumbers(const std::vector<TListItem*>& rows) : FRows(rows) {}

  [[nodiscard]] int IndexOf(const TkListItem& item) const;

  // Rows came to a place, or left one, or a stretch was reordered; batch says that a bracket is open.
  void Inserted(int index, int count, bool batch);
  void Removed(int index, bool batch);
  void Reordered(int first, int last);
  void Exchanged(int a, int b);

  // Numbers all rows, Settle only if that is due.
  void Settle();
  void RenumberAll();

 private:
  [[nodiscard]] TkListItem& Row(size_t index) const;
  [[nodiscard]] static bool Before(const TkListItem& a, const TkListItem& b);
  void Number(size_t row, int number, int order);
  void Renumber(size_t first, size_t end);
  void NumberAppended(size_t first);
  void NumberBetween(size_t first, size_t end);

  const std::vector<TListItem*>& FRows;
  bool FNeedsRenumber = false;
};

// Finds the rows of a group by its id, by binary search as long as the rows lie in the order of their groups,
// those without group last. A sort, or a row moved by itself, can end that; then the rows are walked.
class TkGroupOrder {
 public:
  explicit TkGroupOrder(const std::vector<TListItem*>& rows) : FRows(rows) {}

  // Rows first to last are new in their places, or have other groups now; or all are.
  void Changed(int first, int last);
  void AllChanged() { FOrdered.reset(); }

  // The last row of the group. If it has none, the last row of what comes before it; -1 if nothing does.
  [[nodiscard]] int LastOf(int groupID) const;
  // -1 if the group has no row.
  [[nodiscard]] int FirstOf(int groupID) const;

 private:
  [[nodiscard]] bool Ordered(int first, int last) const;
  [[nodiscard]] bool AllOrdered() const;

  const std::vector<TListItem*>& FRows;
  mutable std::optional<bool> FOrdered = true;  // unknown after a change of all, until somebody asks
};
