// Joins scattered pieces of a volume into few large reads in disk order.
#pragma once

#include <algorithm>
#include <atomic>
#include <functional>
#include <vector>

#include "volindex/readers/DiskBytes.h"

namespace volindex::ext4 {

// Bytes: what each thread has room for, and what lies between two looks at the stop flag.
inline constexpr std::uint64_t kLargestRead = 1u << 20;

// One read and the pieces that it brings, by their indices.
struct TReadBatch {
  std::uint64_t Offset = 0;  // bytes
  std::uint32_t Length = 0;  // bytes, at most kLargestRead
  std::uint32_t First = 0;
  std::uint32_t Count = 0;
};

// Sorts by rising keys; false when the stop flag was seen, the order is then any.
template <class TItem, class TKey>
[[nodiscard]] bool SortUnlessStopped(std::vector<TItem>& items, TKey key, const std::atomic<bool>& stop) {
  constexpr std::uint64_t kInterval = 4096;  // comparisons between two looks at the flag
  struct TStopSeen {};
  std::uint64_t compared = 0;
  try {
    std::ranges::sort(items, [&](const TItem& a, const TItem& b) {
      if (++compared % kInterval == 0 && stop.load(std::memory_order_relaxed)) throw TStopSeen();
      return std::invoke(key, a) < std::invoke(key, b);
    });
  } catch (const TStopSeen&) {
    return false;
  }
  return true;
}

// pieces: sorted by the offset that place(piece) gives as {offset, length}, with no length above
// kLargestRead. What lies between two pieces is read as well where that costs less than another read.
// Pieces may overlap, as two folders of a damaged volume may claim one block: both get their bytes.
template <class TPiece, class TPlace>
[[nodiscard]] std::vector<TReadBatch> PlanReads(std::span<const TPiece> pieces, TPlace&& place) {
  constexpr std::uint64_t kWidestGap = 32u << 10;
  std::vector<TReadBatch> batches;
  for (std::uint32_t i = 0; i < pieces.size(); ++i) {
    const auto [offset, length] = place(pieces[i]);
    if (!batches.empty()) {
      TReadBatch& last = batches.back();
      const std::uint64_t end = last.Offset + last.Length;
      const std::uint64_t joined = std::max<std::uint64_t>(end, offset + length) - last.Offset;
      if (offset <= end + kWidestGap && joined <= kLargestRead) {
        last.Length = static_cast<std::uint32_t>(joined);
        ++last.Count;
        continue;
      }
    }
    batches.push_back({offset, static_cast<std::uint32_t>(length), i, 1});
  }
  return batches;
}

}  // namespace volindex::ext4
