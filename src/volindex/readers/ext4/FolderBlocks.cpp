// The extent tree (kernel documentation, "ext4 Data Structures and Algorithms", The Contents of
// inode.i_block). A node is a header and entries of 12 bytes each; the root has room for four of them and
// lies in the inode.
//
//   header      0 u16  0xF30A   2 u16 entries   4 u16 room for entries   6 u16 depth, 0 in a leaf
//   of a node   0 u32  first block of the folder below   4 u32 child, lower half   8 u16 child, upper half
//   of a leaf   0 u32  first block of the folder   4 u16 count   6 u16 place, upper half   8 u32 lower half
//
// The walks over the tree and over the old block map keep the way down as a vector instead of recursing, so
// their depth is bounded by what is checked here and not by the stack: the root's depth by kDeepestTree, a
// child's by being one less than its parent's, that of a map by its span. The bounds of blocks and Count
// guard them; the checksums that nodes may carry are not looked at.
#include "volindex/readers/ext4/FolderBlocks.h"

#include <algorithm>
#include <limits>

namespace volindex::ext4 {
namespace {

constexpr std::size_t kEntrySize = 12;  // of extents, index entries and the header before them
constexpr std::uint16_t kExtentMagic = 0xF30A;
// Five levels of the smallest blocks hold more extents than a file has block numbers.
constexpr unsigned kDeepestTree = 5;
constexpr std::uint32_t kLongestExtent = 32768;  // longer ones are set aside, but not written

// The header of a node and a place in it.
struct TNode {
  std::vector<std::byte> Bytes;
  unsigned Entries = 0;
  unsigned Depth = 0;
  unsigned Next = 0;

  [[nodiscard]] bool Open();
  [[nodiscard]] std::size_t NextOffset() { return kEntrySize * ++Next; }
};

bool TNode::Open() {
  Next = 0;
  Entries = Load<std::uint16_t>(Bytes, 2);
  Depth = Load<std::uint16_t>(Bytes, 6);
  const unsigned room = Load<std::uint16_t>(Bytes, 4);
  return Load<std::uint16_t>(Bytes, 0) == kExtentMagic && Entries <= room &&
         (room + std::size_t{1}) * kEntrySize <= Bytes.size();
}

struct TExtent {
  std::uint64_t Logical;
  std::uint64_t Count;
  std::uint64_t First;
};

[[nodiscard]] TExtent LoadExtent(TBytes bytes, std::size_t at) {
  return {Load<std::uint32_t>(bytes, at), Load<std::uint16_t>(bytes, at + 4),
          Join(Load<std::uint16_t>(bytes, at + 6), Load<std::uint32_t>(bytes, at + 8))};
}

[[nodiscard]] std::uint64_t LoadChild(TBytes bytes, std::size_t at) {
  return Join(Load<std::uint16_t>(bytes, at + 8), Load<std::uint32_t>(bytes, at + 4));
}

// A block full of block numbers, and how many folder blocks each of them leads to.
struct TMapLevel {
  std::vector<std::byte> Numbers;
  std::size_t Next = 0;
  std::uint64_t Span = 1;

  [[nodiscard]] bool AtEnd() const { return Next == Numbers.size() / sizeof(std::uint32_t); }
  [[nodiscard]] std::uint32_t Take() { return Load<std::uint32_t>(Numbers, sizeof(std::uint32_t) * Next++); }
};

}  // namespace

bool TFolderBlocks::Find(const TInode& inode, TBytes map, std::vector<TBlockRun>& runs) {
  runs.clear();
  const std::uint64_t blocks = (inode.Size + FSuper.BlockSize - 1) / FSuper.BlockSize;
  if (blocks > FSuper.BlockCount) return false;
  return inode.Layout == TFolderLayout::Extents ? FindExtents(map, blocks, runs)
                                                : FindMapped(map, blocks, runs);
}

// Extents come in rising order of their logical blocks in a sound tree. Nodes other than the root are never
// empty.
bool TFolderBlocks::FindExtents(TBytes root, std::uint64_t blocks, std::vector<TBlockRun>& runs) {
  std::vector<TNode> path(1);
  path[0].Bytes.assign(root.begin(), root.end());
  if (!path[0].Open() || path[0].Depth > kDeepestTree) return false;
  std::uint64_t expected = 0;
  while (!path.empty()) {
    TNode& node = path.back();
    if (node.Next == node.Entries) {
      path.pop_back();
      continue;
    }
    const std::size_t at = node.NextOffset();
    if (node.Depth > 0) {
      TNode child;
      if (!ReadBlock(LoadChild(node.Bytes, at), child.Bytes) || !child.Open() || child.Entries == 0 ||
          child.Depth + 1 != node.Depth)
        return false;
      path.push_back(std::move(child));
      continue;
    }
    TExtent extent = LoadExtent(node.Bytes, at);
    if (extent.Count == 0 || extent.Count > kLongestExtent || extent.Logical < expected) return false;
    expected = extent.Logical + extent.Count;
    if (extent.Logical >= blocks) continue;
    extent.Count = std::min(extent.Count, blocks - extent.Logical);
    if (!Take(extent.First, extent.Count, runs)) return false;
  }
  return true;
}

// Twelve blocks, then a block of numbers, one of such blocks, and one of those. A number of 0 is a hole.
bool TFolderBlocks::FindMapped(TBytes map, std::uint64_t blocks, std::vector<TBlockRun>& runs) {
  constexpr std::size_t kDirect = 12;
  const std::uint64_t perBlock = FSuper.BlockSize / sizeof(std::uint32_t);
  std::vector<TMapLevel> path(1);
  path[0].Numbers.assign(map.begin(), map.end());
  std::uint64_t logical = 0;
  while (!path.empty() && logical < blocks) {
    TMapLevel& level = path.back();
    if (level.AtEnd()) {
      path.pop_back();
      continue;
    }
    if (path.size() == 1 && level.Next >= kDirect) level.Span *= perBlock;
    const std::uint64_t span = level.Span;
    const std::uint32_t number = level.Take();
    if (number == 0) {
      logical += span;
    } else if (span == 1) {
      if (!Take(number, 1, runs)) return false;
      ++logical;
    } else {
      TMapLevel next{.Numbers = {}, .Next = 0, .Span = span / perBlock};
      if (!ReadBlock(number, next.Numbers)) return false;
      path.push_back(std::move(next));
    }
  }
  return true;
}

// Blocks up to the first data block hold the superblock at best, so nothing that is followed can lie there.
bool TFolderBlocks::ReadBlock(std::uint64_t block, std::vector<std::byte>& bytes) {
  bytes.resize(FSuper.BlockSize);
  return !FStop && block > FSuper.FirstDataBlock && block < FSuper.BlockCount && Count(1) &&
         FSource.ReadAt(block * FSuper.BlockSize, bytes);
}

bool TFolderBlocks::Take(std::uint64_t first, std::uint64_t count, std::vector<TBlockRun>& runs) {
  if (first <= FSuper.FirstDataBlock || !Fits(first, count, FSuper.BlockCount) || !Count(count)) return false;
  if (!runs.empty() && runs.back().First + runs.back().Count == first)
    runs.back().Count += count;
  else
    runs.push_back({first, count});
  return true;
}

// Over all folders and threads. Each addition is at most the blocks of the volume (Fits, or 1), so the
// counter passes that bound long before it could wrap.
bool TFolderBlocks::Count(std::uint64_t blocks) {
  return FCounted.fetch_add(blocks, std::memory_order_relaxed) + blocks <= FSuper.BlockCount;
}

}  // namespace volindex::ext4
