// The block groups of a volume: where each inode table lies and how much of it was ever used.
#pragma once

#include <atomic>
#include <optional>
#include <vector>

#include "volindex/readers/ByteSource.h"
#include "volindex/readers/ext4/Superblock.h"

namespace volindex::ext4 {

struct TGroup {
  std::uint64_t InodeTable = 0;  // block; the used part of the table lies on the volume
  std::uint32_t UsedInodes = 0;  // leading inodes of the table that may be in use
};

// Nothing if a descriptor can't be read, has a wrong checksum or places a table outside of the volume, or
// when the stop flag was seen.
[[nodiscard]] std::optional<std::vector<TGroup>> ReadGroups(const TByteSource& source,
                                                            const TSuperblock& super,
                                                            const std::atomic<bool>& stop);

// One group as its descriptor tells it now.
[[nodiscard]] std::optional<TGroup> ReadGroup(const TByteSource& source, const TSuperblock& super,
                                              std::uint32_t group);

// One descriptor of super.DescriptorSize bytes, as group's.
[[nodiscard]] std::optional<TGroup> ParseGroup(TBytes bytes, std::uint32_t group, const TSuperblock& super);

}  // namespace volindex::ext4
