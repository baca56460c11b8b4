// UTF-8 and UTF-16 that need not be valid, as file names: a lone surrogate becomes three bytes of its own, so
// that no two names fall together.
#pragma once

#include "volindex/readers/DiskBytes.h"

#include <string>
#include <string_view>

namespace volindex {

inline constexpr char32_t kNoCodePoint = 0xFFFFFFFF;

[[nodiscard]] constexpr bool IsHighSurrogate(char32_t unit) {
  return (unit & ~char32_t{0x3FF}) == 0xD800;
}
[[nodiscard]] constexpr bool IsLowSurrogate(char32_t unit) {
  return (unit & ~char32_t{0x3FF}) == 0xDC00;
}
[[nodiscard]] constexpr bool IsSurrogate(char32_t unit) {
  return IsHighSurrogate(unit) || IsLowSurrogate(unit);
}

// The code point that begins at `at`, surrogates included, and the bytes it takes; kNoCodePoint when the byte
// there begins none.
[[nodiscard]] char32_t DecodeAt(std::string_view text, std::size_t at, std::size_t& length);

void AppendCodePoint(char32_t codePoint, std::string& text);
void AppendCodePoint(char32_t codePoint, std::u16string& text);

// UTF-16LE.
void AppendWtf8(TBytes utf16, std::string& text);

// The number of bytes that AppendWtf8 would add.
[[nodiscard]] std::size_t Wtf8Length(TBytes utf16);

}  // namespace volindex
