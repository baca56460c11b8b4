// The superblock of an ext2, ext3 or ext4 volume: its geometry and the features that its parsing depends on.
#pragma once

#include <array>
#include <optional>

#include "volindex/readers/DiskBytes.h"

namespace volindex::ext4 {

inline constexpr std::uint64_t kSuperblockOffset = 1024;
inline constexpr std::size_t kSuperblockSize = 1024;
inline constexpr std::uint32_t kRootInode = 2;

struct TSuperblock {
  std::uint32_t BlockSize = 0;       // bytes, a power of two, 1 to 64 KiB
  std::uint64_t BlockCount = 0;      // all of them lie on the device
  std::uint32_t FirstDataBlock = 0;  // the block that group 0 begins with
  std::uint32_t BlocksPerGroup = 0;
  std::uint32_t InodesPerGroup = 0;
  std::uint32_t InodeCount = 0;      // InodesPerGroup in each group
  std::uint32_t FirstInode = 0;      // lower numbers but the root's are the file system's own
  std::uint32_t InodeSize = 0;       // bytes, a power of two, 128 up to a block
  std::uint32_t DescriptorSize = 0;  // bytes of a group descriptor
  std::uint32_t GroupCount = 0;
  std::uint32_t FirstMetaGroup = 0;  // descriptor blocks from here on lie in their own groups (HasMetaGroups)
  std::array<std::uint32_t, 2> BackupGroups{};  // with HasTwoBackups
  std::uint32_t ChecksumSeed = 0;
  std::array<std::byte, 16> Uuid{};
  bool HasMetaGroups = false;
  bool HasSparseBackups = false;
  bool HasTwoBackups = false;
  bool HasLargeFolders = false;
  bool HasLargeFiles = false;  // inodes may count their blocks by more than 32 bits, and by blocks
  bool HasMetadataChecksums = false;
  bool HasGroupChecksums = false;  // the older kind
  bool NeedsRecovery = false;      // the journal holds changes, as it always does while mounted

  // Descriptors say how much of each inode table was ever used.
  [[nodiscard]] bool TablesMayBeUnused() const { return HasMetadataChecksums || HasGroupChecksums; }
  [[nodiscard]] std::uint64_t GroupStart(std::uint32_t group) const {
    return FirstDataBlock + std::uint64_t{group} * BlocksPerGroup;
  }
  [[nodiscard]] bool HoldsBackup(std::uint32_t group) const;
};

// bytes: the kSuperblockSize bytes at kSuperblockOffset. Nothing if this is no such volume, if it has a
// feature that changes the layout in an unknown way, a wrong checksum, or a number that can't be true on a
// device of deviceSize bytes.
[[nodiscard]] std::optional<TSuperblock> ParseSuperblock(TBytes bytes, std::uint64_t deviceSize);

}  // namespace volindex::ext4
