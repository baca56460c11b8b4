// Walks over the entries of a folder within one block or one piece of inline data.
//
// An entry (kernel documentation, "ext4 Data Structures and Algorithms", Directory Entries):
//
//   0 u32  inode, 0 where unused     6 u8  length of the name
//   4 u16  length of the entry       7 u8  kind of file, or the upper half of the name's length
//   8      the name
//
// Old volumes have a length of 16 bits, whose upper half is 0 as no name has more than 255 bytes. The kind is
// not looked at: the inode tables have been read before and tell it for sure.
#pragma once

#include <string_view>

#include "volindex/readers/DiskBytes.h"

namespace volindex::ext4 {

// Calls take(inode number, name) for each entry that is in use, but not for "." and "..". Blocks that index a
// hashed folder and the checksum at a block's end look like unused entries. False as soon as an entry is
// damaged.
template <class TTake>
[[nodiscard]] bool ForEachEntry(TBytes bytes, TTake&& take) {
  constexpr std::size_t kHeaderSize = 8;
  std::size_t at = 0;
  while (at < bytes.size()) {
    if (bytes.size() - at < kHeaderSize) return false;
    const auto inode = Load<std::uint32_t>(bytes, at);
    std::size_t length = Load<std::uint16_t>(bytes, at + 4);
    // The only length that does not fit into 16 bits is that of one entry which fills a block of 64 KiB.
    if (bytes.size() > 0xFFFF && (length == 0xFFFF || length == 0)) length = 0x10000;
    const std::size_t nameLength = Load<std::uint8_t>(bytes, at + 6);
    if (length < kHeaderSize + nameLength || length % 4 != 0 || length > bytes.size() - at) return false;
    if (inode != 0) {
      if (nameLength == 0) return false;
      const std::string_view name(reinterpret_cast<const char*>(bytes.data() + at + kHeaderSize), nameLength);
      if (name != "." && name != ".." && !take(inode, name)) return false;
    }
    at += length;
  }
  return true;
}

}  // namespace volindex::ext4
