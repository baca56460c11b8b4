// What is used of the superblock (kernel documentation, "ext4 Data Structures and Algorithms", The Super
// Block):
//
//   0x00 u32  inodes in all                 0x5C u32  compatible features: may be ignored by everybody
//   0x04 u32  blocks, lower half            0x60 u32  incompatible: who does not know one must not read
//   0x14 u32  first block of group 0        0x64 u32  read-only: who does not know one must not write
//   0x18 u32  log2 of the block size - 10   0x68 16   identity of the volume
//   0x1C u32  log2 of the cluster size - 10 0xFE u16  size of a group descriptor, with 64-bit numbers
//   0x20 u32  blocks per group              0x104 u32 first group with its descriptors in itself
//   0x28 u32  inodes per group              0x150 u32 blocks, upper half, with 64-bit numbers
//   0x38 u16  0xEF53                        0x24C u32 and 0x250 u32: the two groups with a backup
//   0x4C u32  revision                      0x270 u32 seed of checksums, if it is not made of the identity
//   0x54 u32  first inode of files          0x3FC u32 checksum of all before it
//   0x58 u16  size of an inode
//
// Nothing here is believed: each number is bounded by the device's size or by what the format allows before
// another one is made of it, so that no product or shift of later steps can overflow and no table is longer
// than the device.
#include "volindex/readers/ext4/Superblock.h"

#include <algorithm>
#include <limits>

#include "volindex/readers/ext4/Checksum.h"

namespace volindex::ext4 {
namespace {

constexpr std::uint16_t kMagic = 0xEF53;

constexpr std::uint32_t kCompatTwoBackups = 0x200;

constexpr std::uint32_t kIncompatFileType = 0x2;
constexpr std::uint32_t kIncompatRecover = 0x4;
constexpr std::uint32_t kIncompatMetaGroups = 0x10;
constexpr std::uint32_t kIncompatExtents = 0x40;
constexpr std::uint32_t kIncompat64Bit = 0x80;
constexpr std::uint32_t kIncompatMultiMount = 0x100;
constexpr std::uint32_t kIncompatFlexGroups = 0x200;
constexpr std::uint32_t kIncompatValueInodes = 0x400;
constexpr std::uint32_t kIncompatChecksumSeed = 0x2000;
constexpr std::uint32_t kIncompatLargeFolders = 0x4000;
constexpr std::uint32_t kIncompatInlineData = 0x8000;
constexpr std::uint32_t kIncompatEncrypt = 0x10000;
constexpr std::uint32_t kIncompatCasefold = 0x20000;
// Left out are compression, a journal on a device of its own and data in folder entries, which change what is
// parsed. Of the read-only features none is refused: whoever only reads may pass over those that he does not
// know.
constexpr std::uint32_t kKnownIncompat =
    kIncompatFileType | kIncompatRecover | kIncompatMetaGroups | kIncompatExtents | kIncompat64Bit |
    kIncompatMultiMount | kIncompatFlexGroups | kIncompatValueInodes | kIncompatChecksumSeed |
    kIncompatLargeFolders | kIncompatInlineData | kIncompatEncrypt | kIncompatCasefold;

constexpr std::uint32_t kReadOnlySparseBackups = 0x1;
constexpr std::uint32_t kReadOnlyHugeFiles = 0x8;
constexpr std::uint32_t kReadOnlyGroupChecksums = 0x10;
constexpr std::uint32_t kReadOnlyBigAlloc = 0x200;
constexpr std::uint32_t kReadOnlyMetadataChecksums = 0x400;

struct TFeatures {
  std::uint32_t Compat;
  std::uint32_t Incompat;
  std::uint32_t ReadOnly;
};

[[nodiscard]] TFeatures LoadFeatures(TBytes bytes) {
  if (Load<std::uint32_t>(bytes, 0x4C) == 0) return {0, 0, 0};  // the first revision had none
  return {Load<std::uint32_t>(bytes, 0x5C), Load<std::uint32_t>(bytes, 0x60),
          Load<std::uint32_t>(bytes, 0x64)};
}

void SetFeatures(const TFeatures& features, TSuperblock& super) {
  super.HasTwoBackups = (features.Compat & kCompatTwoBackups) != 0;
  super.HasMetaGroups = (features.Incompat & kIncompatMetaGroups) != 0;
  super.HasLargeFolders = (features.Incompat & kIncompatLargeFolders) != 0;
  super.NeedsRecovery = (features.Incompat & kIncompatRecover) != 0;
  super.HasLargeFiles = (features.ReadOnly & kReadOnlyHugeFiles) != 0;
  super.HasSparseBackups = (features.ReadOnly & kReadOnlySparseBackups) != 0;
  super.HasMetadataChecksums = (features.ReadOnly & kReadOnlyMetadataChecksums) != 0;
  super.HasGroupChecksums = !super.HasMetadataChecksums && (features.ReadOnly & kReadOnlyGroupChecksums) != 0;
}

[[nodiscard]] bool ChecksumHolds(TBytes bytes) {
  constexpr std::size_t kChecksumOffset = 0x3FC;
  return Crc32c(~0u, bytes.first(kChecksumOffset)) == Load<std::uint32_t>(bytes, kChecksumOffset);
}

void LoadSeed(TBytes bytes, std::uint32_t incompat, TSuperblock& super) {
  std::copy_n(bytes.begin() + 0x68, super.Uuid.size(), super.Uuid.begin());
  super.ChecksumSeed =
      (incompat & kIncompatChecksumSeed) != 0 ? Load<std::uint32_t>(bytes, 0x270) : Crc32c(~0u, super.Uuid);
}

// An inode table fills at least a block, and its bitmap, one bit per inode, no more than one.
[[nodiscard]] bool LoadInodeLayout(TBytes bytes, TSuperblock& super) {
  super.InodeCount = Load<std::uint32_t>(bytes, 0x00);
  super.InodesPerGroup = Load<std::uint32_t>(bytes, 0x28);
  const bool firstRevision = Load<std::uint32_t>(bytes, 0x4C) == 0;
  super.FirstInode = firstRevision ? 11 : Load<std::uint32_t>(bytes, 0x54);
  super.InodeSize = firstRevision ? 128 : Load<std::uint16_t>(bytes, 0x58);
  return std::has_single_bit(super.InodeSize) && super.InodeSize >= 128 &&
         super.InodeSize <= super.BlockSize && super.InodesPerGroup >= super.BlockSize / super.InodeSize &&
         super.InodesPerGroup <= super.BlockSize * 8 && super.FirstInode > kRootInode &&
         super.FirstInode <= super.InodeCount;
}

[[nodiscard]] bool LoadDescriptorSize(TBytes bytes, bool is64Bit, TSuperblock& super) {
  super.DescriptorSize = is64Bit ? Load<std::uint16_t>(bytes, 0xFE) : 32;
  return std::has_single_bit(super.DescriptorSize) && super.DescriptorSize >= (is64Bit ? 64u : 32u) &&
         super.DescriptorSize <= std::min(super.BlockSize, 1024u);
}

// What is kept of a group must be little beside what the group holds; none is ever made smaller.
constexpr std::uint32_t kLeastBlocksPerGroup = 256;

// Whole clusters make up a group where blocks are handed out in clusters.
[[nodiscard]] bool LoadGroupLayout(TBytes bytes, bool clusters, TSuperblock& super) {
  super.FirstDataBlock = Load<std::uint32_t>(bytes, 0x14);
  super.BlocksPerGroup = Load<std::uint32_t>(bytes, 0x20);
  const auto logCluster = Load<std::uint32_t>(bytes, 0x1C);
  const auto logBlock = Load<std::uint32_t>(bytes, 0x18);
  const bool clusterSane = clusters ? logCluster >= logBlock && logCluster <= 19 : true;
  const std::uint32_t ratio = clusters && clusterSane ? 1u << (logCluster - logBlock) : 1;
  return clusterSane && super.FirstDataBlock <= 1 && super.FirstDataBlock < super.BlockCount &&
         super.BlocksPerGroup >= kLeastBlocksPerGroup && super.BlocksPerGroup % ratio == 0 &&
         super.BlocksPerGroup / ratio <= super.BlockSize * 8;
}

// The last group may have fewer blocks than the others, but never fewer inodes; so the count is exact.
[[nodiscard]] bool CountGroups(TSuperblock& super) {
  const std::uint64_t blocks = super.BlockCount - super.FirstDataBlock;
  const std::uint64_t groups = (blocks - 1) / super.BlocksPerGroup + 1;
  if (groups > std::numeric_limits<std::uint32_t>::max()) return false;
  super.GroupCount = static_cast<std::uint32_t>(groups);
  const bool tablesFit = super.InodeCount <= super.BlockCount * (super.BlockSize / super.InodeSize);
  return tablesFit && groups * super.InodesPerGroup == super.InodeCount;
}

[[nodiscard]] bool LoadBlocks(TBytes bytes, bool is64Bit, std::uint64_t deviceSize, TSuperblock& super) {
  const auto logBlock = Load<std::uint32_t>(bytes, 0x18);
  if (logBlock > 6) return false;
  super.BlockSize = 1024u << logBlock;
  super.BlockCount = Join(is64Bit ? Load<std::uint32_t>(bytes, 0x150) : 0, Load<std::uint32_t>(bytes, 0x04));
  return super.BlockCount > 0 && super.BlockCount <= deviceSize / super.BlockSize;
}

[[nodiscard]] bool IsPowerOf(std::uint32_t number, std::uint32_t base) {
  while (number > 1 && number % base == 0)
    number /= base;
  return number == 1;
}

}  // namespace

bool TSuperblock::HoldsBackup(std::uint32_t group) const {
  if (group == 0) return true;
  if (HasTwoBackups) return group == BackupGroups[0] || group == BackupGroups[1];
  if (group == 1 || !HasSparseBackups) return true;
  return IsPowerOf(group, 3) || IsPowerOf(group, 5) || IsPowerOf(group, 7);
}

std::optional<TSuperblock> ParseSuperblock(TBytes bytes, std::uint64_t deviceSize) {
  if (bytes.size() < kSuperblockSize || Load<std::uint16_t>(bytes, 0x38) != kMagic) return std::nullopt;
  const TFeatures features = LoadFeatures(bytes);
  if ((features.Incompat & ~kKnownIncompat) != 0) return std::nullopt;
  TSuperblock super;
  SetFeatures(features, super);
  if (super.HasMetadataChecksums && !ChecksumHolds(bytes.first(kSuperblockSize))) return std::nullopt;
  LoadSeed(bytes, features.Incompat, super);
  super.BackupGroups = {Load<std::uint32_t>(bytes, 0x24C), Load<std::uint32_t>(bytes, 0x250)};
  super.FirstMetaGroup = Load<std::uint32_t>(bytes, 0x104);
  const bool is64Bit = (features.Incompat & kIncompat64Bit) != 0;
  const bool sane = LoadBlocks(bytes, is64Bit, deviceSize, super) && LoadInodeLayout(bytes, super) &&
                    LoadDescriptorSize(bytes, is64Bit, super) &&
                    LoadGroupLayout(bytes, (features.ReadOnly & kReadOnlyBigAlloc) != 0, super) &&
                    CountGroups(super);
  return sane ? std::optional(super) : std::nullopt;
}

}  // namespace volindex::ext4
