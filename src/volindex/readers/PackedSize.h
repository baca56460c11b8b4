// A file's length and the blocks that it occupies in 60 bits, for tables that hold every inode of a volume.
//
// Nearly every file occupies about as many blocks as its length fills. So what is kept is the length, in the
// lower 44 bits, and above it how many blocks there are more or less than these, from -32,768 to 32,767.
//
// Lengths up to 16 TiB fit. A sparse file with larger holes, or one with far more blocks than it fills, does
// not; the reader then keeps it elsewhere (ext4) or asks for it again (XFS).
#pragma once

#include <cstdint>
#include <optional>

namespace volindex {

struct TFileSize {
  std::uint64_t Length = 0;     // bytes
  std::uint64_t Allocated = 0;  // bytes
};

class TPackedSize {
 public:
  static constexpr unsigned kBits = 60;

  // For a volume with blocks of 2 to the power of `blockBits` bytes, at most 16.
  explicit constexpr TPackedSize(unsigned blockBits) : FBlockBits(blockBits) {}

  // None when there is no room for it.
  [[nodiscard]] constexpr std::optional<std::uint64_t> Pack(std::uint64_t length,
                                                            std::uint64_t blocks) const {
    // Fewer blocks than the length fills wrap around below 0 and come back with the addition; what is out of
    // range either way is a large number.
    const std::uint64_t more = blocks - BlocksOf(length) + kMostLess;
    if (length > kLongest || more >= 2 * kMostLess) return std::nullopt;
    return more << kLengthBits | length;
  }

  // The same where what is allocated is told in bytes, which need not be whole blocks.
  [[nodiscard]] constexpr std::optional<std::uint64_t> PackBytes(std::uint64_t length,
                                                                 std::uint64_t allocated) const {
    const std::uint64_t blocks = allocated >> FBlockBits;
    return blocks << FBlockBits == allocated ? Pack(length, blocks) : std::nullopt;
  }

  [[nodiscard]] constexpr TFileSize Unpack(std::uint64_t packed) const {
    const std::uint64_t length = packed & kLongest;
    return {length, (BlocksOf(length) + (packed >> kLengthBits) - kMostLess) << FBlockBits};
  }

 private:
  static constexpr unsigned kLengthBits = 44;
  static constexpr std::uint64_t kLongest = (std::uint64_t{1} << kLengthBits) - 1;
  static constexpr std::uint64_t kMostLess = std::uint64_t{1} << (kBits - kLengthBits - 1);

  [[nodiscard]] constexpr std::uint64_t BlocksOf(std::uint64_t length) const {
    return (length + (std::uint64_t{1} << FBlockBits) - 1) >> FBlockBits;
  }

  unsigned FBlockBits;
};

}  // namespace volindex
