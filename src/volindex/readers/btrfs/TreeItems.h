// The items of a Btrfs subvolume's tree as a search hands them out. Each has a key of three numbers and lies
// in the order of the keys: behind an inode its names, behind a folder's names its entries.
//
// The head of an item that a search hands out (Btrfs documentation, "On-disk Format", and its tree search
// request):
//
//   0 u64  generation      16 u64  offset of the key      28 u32  bytes of content behind the head
//   8 u64  number          24 u32  type
//
// What the offset means is the type's: of names the folder's number, of a folder's entry its place in the
// order, of a piece of a file where in the file it begins. Layouts of the contents stand at their parsers. A
// name stands in a folder twice, by its hash and by the order of names; only the latter are taken.
#pragma once

#include "volindex/readers/DiskBytes.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

namespace volindex::btrfs {

inline constexpr std::uint64_t kRootNumber = 256;                  // the root folder's, and the lowest of all
inline constexpr std::uint64_t kLastNumber = -std::uint64_t{256};  // above are the file system's own

struct TKey {
  std::uint64_t Number = 0;  // the inode's
  std::uint32_t Type = 0;
  std::uint64_t Offset = 0;

  auto operator<=>(const TKey&) const = default;

  // The lowest key above.
  [[nodiscard]] TKey Next() const;
};

// Types of items: an inode, its names in one folder, further names for which there is no room in one item, a
// name in a folder by the order in which names were added, and a piece of a file's data. Others are of no
// interest.
inline constexpr std::uint32_t kInode = 1;
inline constexpr std::uint32_t kNames = 12;
inline constexpr std::uint32_t kFurtherNames = 13;
inline constexpr std::uint32_t kFolderEntry = 96;
inline constexpr std::uint32_t kExtent = 108;

// What a search has found: that many items, each with a head, one behind the other.
struct TFound {
  std::uint64_t Items;
  TBytes Bytes;
};
inline constexpr std::size_t kHeadSize = 32;

// Calls take(key, content) for each item as long as it answers true. False too when the items do not lie
// within the bytes or their keys do not rise from `from` to the number `last`. `from` becomes the key behind
// the last item.
template <class TTake>
[[nodiscard]] bool ForEachItem(const TFound& found, TKey& from, std::uint64_t last, TTake&& take) {
  TBytes rest = found.Bytes;
  for (std::uint64_t i = 0; i < found.Items; ++i) {
    if (rest.size() < kHeadSize) return false;
    const TKey key{Load<std::uint64_t>(rest, 8), Load<std::uint32_t>(rest, 24),
                   Load<std::uint64_t>(rest, 16)};
    const std::size_t length = Load<std::uint32_t>(rest, 28);
    // Rising keys are what makes every walk over the tree end: the next search begins behind the last key.
    if (length > rest.size() - kHeadSize || key < from || key.Number > last) return false;
    if (!take(key, rest.subspan(kHeadSize, length))) return false;
    rest = rest.subspan(kHeadSize + length);
    from = key.Next();
  }
  return true;
}

enum class TKind : std::uint8_t { None, File, Folder };

struct TInode {
  TKind Kind = TKind::None;
  std::uint64_t Changed = 0;  // the generation of its last change
  std::uint64_t Size = 0;     // what counts: of files and symbolic links
  std::uint32_t Links = 0;
};

// None when it is of no known kind or too short.
[[nodiscard]] std::optional<TInode> ParseInode(TBytes content);

// A name that a folder may hold.
[[nodiscard]] bool IsName(std::string_view name);

// Calls take(folder's number, name) for each name of an item of the type kNames or kFurtherNames as long as
// it answers true. False too when the item is damaged.
template <class TTake>
[[nodiscard]] bool ForEachName(const TKey& key, TBytes content, TTake&& take) {
  // Layout: u64 folder, in further names alone; u64 place among the folder's entries, u16 length, the name.
  const std::size_t folderSize = key.Type == kFurtherNames ? 8 : 0;
  const std::size_t headSize = folderSize + 10;
  while (!content.empty()) {
    if (content.size() < headSize) return false;
    const std::uint64_t folder = folderSize != 0 ? Load<std::uint64_t>(content, 0) : key.Offset;
    const std::size_t length = Load<std::uint16_t>(content, headSize - 2);
    if (length > content.size() - headSize) return false;
    const std::string_view name(reinterpret_cast<const char*>(content.data() + headSize), length);
    if (!take(folder, name)) return false;
    content = content.subspan(headSize + length);
  }
  return true;
}

struct TEntry {
  std::uint64_t Number;  // of the inode
  bool IsSubvolume;      // another tree's root then, or what a snapshot has kept of one
  std::string_view Name;
};

[[nodiscard]] std::optional<TEntry> ParseEntry(TBytes content);

// The bytes that a piece of a file occupies: of one that is compressed fewer than it holds, of a hole and of
// data within the tree none. A piece that other files share counts in full. None when it is too short.
[[nodiscard]] std::optional<std::uint64_t> ParseExtent(TBytes content);

}  // namespace volindex::btrfs
