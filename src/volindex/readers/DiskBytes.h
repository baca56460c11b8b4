// Reading little-endian numbers out of foreign bytes. Nothing here allocates.
//
// Bytes are loaded by copying them, as a number on a disk need not lie where the processor wants it; it costs
// no more than a load.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace volindex {

using TBytes = std::span<const std::byte>;

static_assert(std::endian::native == std::endian::little, "on-disk numbers are loaded as they stand");

// The caller has checked that offset + sizeof(T) lies within the bytes.
template <class T>
[[nodiscard]] inline T Load(TBytes bytes, std::size_t offset) {
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

// A 64-bit number stored as two 32-bit halves in two places.
[[nodiscard]] constexpr std::uint64_t Join(std::uint32_t high, std::uint32_t low) {
  return std::uint64_t{high} << 32 | low;
}

// True if count units from first lie within a whole of total units; safe against overflow.
[[nodiscard]] constexpr bool Fits(std::uint64_t first, std::uint64_t count, std::uint64_t total) {
  return first <= total && count <= total - first;
}

}  // namespace volindex
