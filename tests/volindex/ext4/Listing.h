// What a tree holds, found by a plain walk, and its comparison with an index of the same tree.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "volindex/index/VolumeIndex.h"

namespace volindex::ext4 {

struct TListing {
  std::map<std::string, std::uint64_t> Totals;             // by relative path; "" is the root
  std::vector<std::pair<std::uint64_t, std::string>> Top;  // the largest first, then by path
  std::uint64_t Files = 0;
};

// Follows no links and enters no other file system.
[[nodiscard]] TListing WalkTree(const std::string& root);

// Adds the empty folder that mke2fs makes.
void AddLostFound(TListing& listing);

// The same files, folders and sizes, all folders one by one.
void ExpectSame(const TVolumeIndex& index, const TListing& listing);

}  // namespace volindex::ext4
