// What is stored as data or as a reparse point but shown as a link, device or socket: its length.
//
// The value of a reparse point ([MS-FSCC], Reparse Data Buffers):
//
//    0 u32  tag                                  8 u16  where the target lies, behind the header of the names
//    4 u16  length of what follows at 8         10 u16  length of the target in bytes, UTF-16
//   16      the names of a junction, or u32 flags and the names of a symbolic link at 20
//
// That of a subsystem's link has a version of four bytes at 8, then the target in UTF-8.
#pragma once

#include <optional>

#include "volindex/readers/DiskBytes.h"

namespace volindex::ntfs {

// The longest value of a reparse point that the format allows, and of data that may describe a link.
inline constexpr std::size_t kMaxReparseValue = 16u << 10;
inline constexpr std::size_t kMaxSpecialData = 8u + 2 * 4096;

// The bytes of a link's target as a path of this system: of a relative symbolic link just what the system
// shows; of an absolute one and of a junction the stored path without its "\??\" (a mount shows it behind its
// own mount point). 0 for a socket, pipe or device. Nothing if the tag is none of these or the value is
// broken.
[[nodiscard]] std::optional<std::uint64_t> ReparseTargetLength(TBytes value);

// The same for the data of a file with the system attribute: a link or device made by Interix and by ntfs-3g.
[[nodiscard]] std::optional<std::uint64_t> SpecialDataSize(TBytes data);

// Whether folders with that reparse tag, or with that reparse value, may hold files of their own: those of a
// store in the cloud do, a junction does not.
// The bit of a tag that says so ([MS-FSCC], Reparse Tags, the D bit).
[[nodiscard]] constexpr bool TagHoldsFiles(std::uint32_t tag) {
  return (tag & 0x10000000) != 0;
}
[[nodiscard]] bool ReparseHoldsFiles(TBytes value);

}  // namespace volindex::ntfs
