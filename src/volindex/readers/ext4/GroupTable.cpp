// A group descriptor has 32 bytes, or more where the volume has 64-bit numbers (kernel documentation, "ext4
// Data Structures and Algorithms", Block Group Descriptors):
//
//   0x08 u32  block of the inode table, lower half     0x1E u16  checksum
//   0x12 u16  flags                                    0x28 u32  block of the inode table, upper half
//   0x1C u16  inodes never used, lower half            0x32 u16  inodes never used, upper half
//
// The count of inodes never used is what spares most of the reading on a volume that is not full. It is
// believed only where a checksum covers it; else whole tables are read.
#include "volindex/readers/ext4/GroupTable.h"

#include <algorithm>

#include "volindex/readers/ext4/Checksum.h"

namespace volindex::ext4 {
namespace {

constexpr std::size_t kChecksumOffset = 0x1E;
constexpr std::uint16_t kInodesNeverUsed = 0x1;

// Of the seed, the number of the group and the descriptor with its checksum field as 0. Only the lower half
// of the sum is stored.
[[nodiscard]] std::uint32_t Chain32(TBytes bytes, TBytes group, const TSuperblock& super) {
  constexpr std::byte kNoChecksum[2]{};
  std::uint32_t sum = Crc32c(super.ChecksumSeed, group);
  sum = Crc32c(sum, bytes.first(kChecksumOffset));
  sum = Crc32c(sum, kNoChecksum);
  return Crc32c(sum, bytes.subspan(kChecksumOffset + 2));
}

// Here the checksum field is left out instead of taken as 0.
[[nodiscard]] std::uint16_t Chain16(TBytes bytes, TBytes group, const TSuperblock& super) {
  std::uint16_t sum = Crc16(0xFFFF, super.Uuid);
  sum = Crc16(sum, group);
  sum = Crc16(sum, bytes.first(kChecksumOffset));
  return Crc16(sum, bytes.subspan(kChecksumOffset + 2));
}

[[nodiscard]] bool ChecksumHolds(TBytes bytes, std::uint32_t group, const TSuperblock& super) {
  const TBytes number = std::as_bytes(std::span(&group, 1));
  const auto stored = Load<std::uint16_t>(bytes, kChecksumOffset);
  if (super.HasMetadataChecksums) return (Chain32(bytes, number, super) & 0xFFFF) == stored;
  if (super.HasGroupChecksums) return Chain16(bytes, number, super) == stored;
  return true;
}

[[nodiscard]] std::uint32_t UsedInodes(TBytes bytes, const TSuperblock& super) {
  if (!super.TablesMayBeUnused()) return super.InodesPerGroup;
  if ((Load<std::uint16_t>(bytes, 0x12) & kInodesNeverUsed) != 0) return 0;
  const std::uint32_t high = super.DescriptorSize >= 64 ? Load<std::uint16_t>(bytes, 0x32) : 0;
  const std::uint32_t unused = high << 16 | Load<std::uint16_t>(bytes, 0x1C);
  return super.InodesPerGroup - std::min(unused, super.InodesPerGroup);
}

// The block that holds the index-th block full of descriptors.
[[nodiscard]] std::uint64_t DescriptorBlock(const TSuperblock& super, std::uint32_t index) {
  // The table lies in one piece behind the superblock, or from the first meta group on each of its blocks
  // lies in the first of the groups that it describes, there behind a backup of the superblock if that group
  // has one.
  const std::uint64_t superBlock = super.BlockSize == 1024 ? 1 : 0;
  if (!super.HasMetaGroups || index < super.FirstMetaGroup) return superBlock + 1 + index;
  const std::uint64_t group = std::uint64_t{index} * (super.BlockSize / super.DescriptorSize);
  std::uint64_t behind = super.HoldsBackup(static_cast<std::uint32_t>(group)) ? 1 : 0;
  // Group 0 then begins with the boot block, one block before the superblock.
  if (super.BlockSize == 1024 && super.FirstDataBlock == 0 && group == 0) ++behind;
  return super.GroupStart(static_cast<std::uint32_t>(group)) + behind;
}

[[nodiscard]] bool ReadDescriptors(const TByteSource& source, const TSuperblock& super, std::uint32_t index,
                                   std::span<std::byte> block) {
  const std::uint64_t at = DescriptorBlock(super, index);
  return at < super.BlockCount && source.ReadAt(at * super.BlockSize, block);
}

[[nodiscard]] TBytes DescriptorIn(TBytes block, const TSuperblock& super, std::uint32_t within) {
  return block.subspan(std::size_t{within} * super.DescriptorSize, super.DescriptorSize);
}

}  // namespace

std::optional<TGroup> ParseGroup(TBytes bytes, std::uint32_t group, const TSuperblock& super) {
  if (bytes.size() != super.DescriptorSize || !ChecksumHolds(bytes, group, super)) return std::nullopt;
  const std::uint32_t high = super.DescriptorSize >= 64 ? Load<std::uint32_t>(bytes, 0x28) : 0;
  const TGroup result{Join(high, Load<std::uint32_t>(bytes, 0x08)), UsedInodes(bytes, super)};
  const std::uint64_t tableBytes = std::uint64_t{result.UsedInodes} * super.InodeSize;
  const std::uint64_t blocks = (tableBytes + super.BlockSize - 1) / super.BlockSize;
  if (blocks > 0 &&
      (result.InodeTable <= super.FirstDataBlock || !Fits(result.InodeTable, blocks, super.BlockCount)))
    return std::nullopt;
  return result;
}

// The count of groups is no promise of room: the vector grows as descriptors are read, so that groups which
// are only claimed cost nothing. The first descriptor that does not hold together is the end.
std::optional<std::vector<TGroup>> ReadGroups(const TByteSource& source, const TSuperblock& super,
                                              const std::atomic<bool>& stop) {
  const std::uint32_t perBlock = super.BlockSize / super.DescriptorSize;
  std::vector<std::byte> block(super.BlockSize);
  std::vector<TGroup> groups;
  for (std::uint32_t group = 0; group < super.GroupCount; ++group) {
    const std::uint32_t within = group % perBlock;
    if (within == 0 && (stop || !ReadDescriptors(source, super, group / perBlock, block)))
      return std::nullopt;
    const auto parsed = ParseGroup(DescriptorIn(block, super, within), group, super);
    if (!parsed) return std::nullopt;
    groups.push_back(*parsed);
  }
  return groups;
}

std::optional<TGroup> ReadGroup(const TByteSource& source, const TSuperblock& super, std::uint32_t group) {
  const std::uint32_t perBlock = super.BlockSize / super.DescriptorSize;
  std::vector<std::byte> block(super.BlockSize);
  if (!ReadDescriptors(source, super, group / perBlock, block)) return std::nullopt;
  return ParseGroup(DescriptorIn(block, super, group % perBlock), group, super);
}

}  // namespace volindex::ext4
