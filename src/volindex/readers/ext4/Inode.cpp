// What is used of an inode (kernel documentation, "ext4 Data Structures and Algorithms", Index Nodes):
//
//   0x00 u16  mode, the kind in its upper four bits    0x20 u32  flags
//   0x04 u32  length, lower half                       0x28 60   extent root, block map or inline data
//   0x1A u16  names                                    0x6C u32  length, upper half
//   0x1C u32  occupied, lower half                     0x74 u16  occupied, upper half
//   0x80 u16  bytes in use from here on, if the inode is longer than 128 bytes
//
// Behind these may stand attributes: the mark 0xEA020000, then entries, ended by four bytes of 0.
//
//   0 u8   length of the name                          4 u32  inode that holds the value, or 0
//   1 u8   what the name begins with; 7 is "system."   8 u32  length of the value
//   2 u16  where the value begins, from the first entry  16   the name, padded to four bytes
#include "volindex/readers/ext4/Inode.h"

#include <algorithm>
#include <string_view>

namespace volindex::ext4 {
namespace {

constexpr std::size_t kMapOffset = 0x28;
constexpr std::size_t kBaseSize = 128;

constexpr std::uint32_t kFlagEncrypted = 0x800;
constexpr std::uint32_t kFlagCountsBlocks = 0x40000;
constexpr std::uint32_t kFlagExtents = 0x80000;
constexpr std::uint32_t kFlagInline = 0x10000000;

// Bytes: far more than any block map or extent tree can describe.
constexpr std::uint64_t kLargestSize = std::uint64_t{1} << 60;

enum class TModeType : unsigned {
  Pipe = 1,
  Character = 2,
  Folder = 4,
  Block = 6,
  Regular = 8,
  Link = 10,
  Socket = 12
};

[[nodiscard]] bool IsKnown(TModeType type) {
  switch (type) {
    case TModeType::Pipe:
    case TModeType::Character:
    case TModeType::Folder:
    case TModeType::Block:
    case TModeType::Regular:
    case TModeType::Link:
    case TModeType::Socket:
      return true;
  }
  return false;
}

// The upper half has another meaning in old folders and in whatever has no data of its own.
[[nodiscard]] std::uint64_t LoadSize(TBytes bytes, TModeType type, const TSuperblock& super) {
  const auto low = Load<std::uint32_t>(bytes, 0x04);
  if (type == TModeType::Link) return low;
  if (type == TModeType::Regular || (type == TModeType::Folder && super.HasLargeFolders))
    return Join(Load<std::uint32_t>(bytes, 0x6C), low);
  return type == TModeType::Folder ? low : 0;
}

// In units of 512 bytes, or where the inode says so in blocks. None has more than the volume.
[[nodiscard]] std::uint64_t LoadAllocated(TBytes bytes, std::uint32_t flags, const TSuperblock& super) {
  constexpr std::uint64_t kUnit = 512;
  std::uint64_t units = Load<std::uint32_t>(bytes, 0x1C);
  if (super.HasLargeFiles) units = Join(Load<std::uint16_t>(bytes, 0x74), Load<std::uint32_t>(bytes, 0x1C));
  if (super.HasLargeFiles && (flags & kFlagCountsBlocks) != 0)
    return std::min(units, super.BlockCount) * super.BlockSize;
  return std::min(units, super.BlockCount * (super.BlockSize / kUnit)) * kUnit;
}

[[nodiscard]] TFolderLayout LayoutOf(std::uint32_t flags) {
  if ((flags & kFlagInline) != 0) return TFolderLayout::Inline;
  return (flags & kFlagExtents) != 0 ? TFolderLayout::Extents : TFolderLayout::BlockMap;
}

// A table of attributes: entries from the front, values at offsets counted from the first entry.
struct TAttribute {
  static constexpr std::size_t kHeaderSize = 16;
  static constexpr std::uint8_t kSystemNames = 7;

  std::uint8_t NameIndex;
  std::string_view Name;
  std::uint32_t ValueOffset;
  std::uint32_t ValueInode;
  std::uint32_t ValueSize;
  std::size_t Length;  // to the next entry
};

[[nodiscard]] std::optional<TAttribute> LoadAttribute(TBytes table, std::size_t at) {
  if (!Fits(at, TAttribute::kHeaderSize, table.size())) return std::nullopt;
  const auto nameLength = Load<std::uint8_t>(table, at);
  if (!Fits(at + TAttribute::kHeaderSize, nameLength, table.size())) return std::nullopt;
  const auto* name = reinterpret_cast<const char*>(table.data() + at + TAttribute::kHeaderSize);
  return TAttribute{.NameIndex = Load<std::uint8_t>(table, at + 1),
                    .Name = {name, nameLength},
                    .ValueOffset = Load<std::uint16_t>(table, at + 2),
                    .ValueInode = Load<std::uint32_t>(table, at + 4),
                    .ValueSize = Load<std::uint32_t>(table, at + 8),
                    .Length = (TAttribute::kHeaderSize + nameLength + 3) / 4 * 4};
}

[[nodiscard]] bool AtEnd(TBytes table, std::size_t at) {
  return Fits(at, 4, table.size()) && Load<std::uint32_t>(table, at) == 0;
}

// Comes to an end on any bytes: an entry is at least 16 long and must lie within the table, which is within
// one inode.
[[nodiscard]] std::optional<TBytes> FindInlineRest(TBytes table) {
  std::size_t at = 0;
  while (!AtEnd(table, at)) {
    const auto attribute = LoadAttribute(table, at);
    if (!attribute) return std::nullopt;
    if (attribute->NameIndex == TAttribute::kSystemNames && attribute->Name == "data") {
      if (attribute->ValueInode != 0 || !Fits(attribute->ValueOffset, attribute->ValueSize, table.size()))
        return std::nullopt;
      return table.subspan(attribute->ValueOffset, attribute->ValueSize);
    }
    at += attribute->Length;
  }
  return TBytes();
}

}  // namespace

std::optional<TInode> ParseInode(TBytes bytes, const TSuperblock& super) {
  const auto mode = Load<std::uint16_t>(bytes, 0x00);
  const auto links = Load<std::uint16_t>(bytes, 0x1A);
  const auto flags = Load<std::uint32_t>(bytes, 0x20);
  if (mode == 0 || links == 0) return TInode{};
  const auto type = static_cast<TModeType>(mode >> 12);
  if (!IsKnown(type) || (flags & kFlagEncrypted) != 0) return std::nullopt;
  const std::uint64_t size = LoadSize(bytes, type, super);
  if (size >= kLargestSize) return std::nullopt;
  const bool folder = type == TModeType::Folder;
  // A folder's count of names says 1 where it has too many subfolders to be counted; beyond 0 nobody looks at
  // it.
  return TInode{folder ? TInodeKind::Folder : TInodeKind::File, LayoutOf(flags), links, size,
                LoadAllocated(bytes, flags, super)};
}

TBytes MapOf(TBytes inode) {
  return inode.subspan(kMapOffset, kMapSize);
}

std::optional<TBytes> InlineRest(TBytes inode) {
  constexpr std::uint32_t kAttributeMagic = 0xEA020000;
  if (inode.size() < kBaseSize + 4) return TBytes();
  const std::size_t magicAt = kBaseSize + Load<std::uint16_t>(inode, kBaseSize);
  if (!Fits(magicAt, 4, inode.size())) return std::nullopt;
  if (Load<std::uint32_t>(inode, magicAt) != kAttributeMagic) return TBytes();
  return FindInlineRest(inode.subspan(magicAt + 4));
}

}  // namespace volindex::ext4
