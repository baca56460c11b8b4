// A sorted list of rows that finds a row by binary search. It owns none of them.
#pragma once

#include <functional>
#include <vector>

class TkListItem;

// -1, 0 or 1 as the first row comes before, with or after the second.
using TkItemOrder = int (*)(const TkListItem& a, const TkListItem& b);
[[nodiscard]] int BySerial(const TkListItem& a, const TkListItem& b);
[[nodiscard]] int ByGroupOrder(const TkListItem& a, const TkListItem& b);

class TkItemQuickList {
 public:
  // In stamping mode each added row gets the next GroupOrder stamp, so that it goes to the end.
  explicit TkItemQuickList(TkItemOrder compare = &BySerial, bool stamping = false)
      : FCompare(compare), FStamping(stamping) {}

  // False if the row stands in the list already.
  bool Add(TkListItem& item);
  // The place that the row had, -1 if it was not in the list.
  int Remove(const TkListItem& item);
  void Clear() { FList.clear(); }
  void Reserve(int count) { FList.reserve(static_cast<size_t>(count)); }

  [[nodiscard]] int IndexOf(const TkListItem& item) const;
  [[nodiscard]] bool Contains(const TkListItem& item) const { return IndexOf(item) >= 0; }
  [[nodiscard]] int Count() const { return static_cast<int>(FList.size()); }
  [[nodiscard]] TkListItem* operator[](int index) const { return FList[static_cast<size_t>(index)]; }
  [[nodiscard]] auto begin() const { return FList.begin(); }
  [[nodiscard]] auto end() const { return FList.end(); }

  // Sorts a stamping list by another comparison; the rows keep that order by new stamps.
  void Restamp(const std::function<int(TkListItem& a, TkListItem& b)>& compare);

 private:
  struct TPlace {
    size_t Index;
    bool Found;
  };
  [[nodiscard]] TPlace Find(const TkListItem& item) const;
  [[nodiscard]] int NextStamp();

  std::vector<TkListItem*> FList;
  TkItemOrder FCompare;
  bool FStamping;
  int FStampCounter = 0;
};
