// Files of which it is not known whether they have more names than one: 16 bytes each, so that those that
// were met more than once are found by their numbers.
#pragma once

#include "volindex/index/ContentKinds.h"
#include "volindex/index/FolderTable.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace volindex {

// Files below 512 MiB. Of larger ones, which are few, the system is asked at once.
inline constexpr unsigned kSeenSizeBits = 29;

struct TSeenFile {
  uint64_t Number = 0;
  // That it was added to by that name; none for a file whose names are all known as links.
  TFolderId Folder = kNoFolder;
  // Both in the four bytes that a size alone would take.
  uint32_t Size : kSeenSizeBits = 0;
  uint32_t KindNumber : 32 - kSeenSizeBits = 0;

  [[nodiscard]] TKind Kind() const { return static_cast<TKind>(KindNumber); }
};

// One thread at a time.
class TSeenFiles {
 public:
  static constexpr size_t kParts = 64;  // all that is seen of a file is in one part

  [[nodiscard]] static constexpr bool Takes(uint64_t size) { return size < uint64_t{1} << kSeenSizeBits; }

  // A file that was added as if it had one name; of a size that Takes.
  void AddSingle(uint64_t number, TFolderId folder, uint64_t size, TKind kind) {
    constexpr uint32_t kMost = (1U << kSeenSizeBits) - 1;
    FParts[number % kParts].push_back(
        {number, folder, static_cast<uint32_t>(size) & kMost, static_cast<uint32_t>(kind) & 7U});
  }
  // A name of a file that is known to have others.
  void AddLinked(uint64_t number) { FParts[number % kParts].push_back({number, kNoFolder, 0, 0}); }

  [[nodiscard]] bool Empty() const {
    return std::all_of(FParts.begin(), FParts.end(), [](const auto& part) { return part.empty(); });
  }
  [[nodiscard]] const std::vector<TSeenFile>& Part(size_t part) const { return FParts[part]; }

 private:
  std::array<std::vector<TSeenFile>, kParts> FParts;
};

}  // namespace volindex
