// One inode of the table: what kind of thing it is, its length, and where a folder's entries are to be found.
#pragma once

#include <optional>

#include "volindex/readers/ext4/Superblock.h"

namespace volindex::ext4 {

inline constexpr std::size_t kMapSize = 60;

// Symbolic links, devices, sockets and pipes are files here: what counts is that a folder's entry names them.
enum class TInodeKind : std::uint8_t { Unused, File, Folder };

// Where the entries of a folder, as told by its inode, lie.
enum class TFolderLayout : std::uint8_t { Extents, BlockMap, Inline };

struct TInode {
  TInodeKind Kind = TInodeKind::Unused;
  TFolderLayout Layout = TFolderLayout::BlockMap;  // for folders only
  std::uint32_t Links = 0;
  std::uint64_t Size = 0;       // bytes; 0 for devices, sockets and pipes, which are files as well
  std::uint64_t Allocated = 0;  // bytes of the volume's blocks, those of extended attributes among them
};

// bytes: the super.InodeSize bytes of one inode. A deleted inode and one that is only kept open are Unused;
// one that holds an extended attribute is a file which no folder names. Nothing for an encrypted inode and
// for one that makes no sense.
[[nodiscard]] std::optional<TInode> ParseInode(TBytes bytes, const TSuperblock& super);

// The part of an inode that holds the block map, the extent root or the beginning of inline data.
[[nodiscard]] TBytes MapOf(TBytes inode);

// Inline data that did not fit into MapOf: the value of the attribute "system.data". Empty if there is none,
// nothing if the attributes are damaged.
[[nodiscard]] std::optional<TBytes> InlineRest(TBytes inode);

}  // namespace volindex::ext4
