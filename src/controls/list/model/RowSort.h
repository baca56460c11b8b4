// The program's quicksort over a vector of rows, safe from comparisons that contradict themselves.
#pragma once

#include "support/Prefetch.h"
#include "support/TList.h"

#include <functional>
#include <utility>
#include <vector>

// How many rows ahead of a comparison the memory of a row is fetched: rows lie all over, and the waiting for
// them is most of a sort.
inline constexpr std::ptrdiff_t kRowsAhead = 8;

// The quicksort trusts its comparison to stop it at the pivot. A handler may not deserve that: a row always
// equals itself here, and the places beside the list equal everything.
template <typename Row, typename Compare>
void QuickSortRows(std::vector<Row*>& rows, const Compare& compare) {
  const auto count = static_cast<std::ptrdiff_t>(rows.size());
  const auto begin = rows.begin();
  const auto at = [&](std::ptrdiff_t i) -> Row* {
    if (i + kRowsAhead < count) Prefetch(begin[i + kRowsAhead]);
    if (i >= kRowsAhead) Prefetch(begin[i - kRowsAhead]);
    return i >= 0 && i < count ? begin[i] : nullptr;
  };
  QuickSort<std::ptrdiff_t>(
      0, count - 1, at, [&](std::ptrdiff_t a, std::ptrdiff_t b) { std::swap(begin[a], begin[b]); },
      [&](Row* a, Row* b) { return a == b || a == nullptr || b == nullptr ? 0 : compare(*a, *b); });
}
