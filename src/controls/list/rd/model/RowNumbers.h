// The index that each row remembers, and how it stays findable while an update bracket is open. Main thread.
//
// Outside a bracket every row knows its index. Inside one, rows that come and go leave the others' numbers as
// they are: a new row takes the number of the row that it pushes down, and an order among the rows with that
// number. So the rows stay sorted by number and order, and a row is found by binary search.
#pragma once

#include <cstddef>
#include <vector>

class TListItem;
class TkListItem;

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
