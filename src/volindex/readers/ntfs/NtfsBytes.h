// Reading little-endian numbers and UTF-16 names out of foreign bytes. Nothing here allocates.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace volindex::ntfs {

using TBytes = std::span<const std::byte>;

static_assert(std::endian::native == std::endian::little, "on-disk numbers are loaded as they stand");

// The caller has checked that offset + sizeof(T) lies within the bytes.
template <class T>
[[nodiscard]] inline T Load(TBytes bytes, std::size_t offset) {
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

// True if length bytes from offset lie within a whole of size bytes; safe against overflow.
[[nodiscard]] constexpr bool Fits(std::uint64_t offset, std::uint64_t length, std::uint64_t size) {
  return offset <= size && length <= size - offset;
}

// Appends UTF-16LE as UTF-8. A lone surrogate becomes its own three bytes, so that no two names fall
// together.
void AppendWtf8(TBytes utf16, std::string& text);

// The number of bytes that AppendWtf8 would add.
[[nodiscard]] std::size_t Wtf8Length(TBytes utf16);

}  // namespace volindex::ntfs
