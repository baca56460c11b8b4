#include "volindex/index/Utf16.h"

#include <array>
#include <cstdint>

namespace volindex {

namespace {

constexpr char32_t kInvalid = 0xFFFFFFFF;
constexpr char16_t kByteBase = 0xDC00;

bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool IsSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xE000;
}

unsigned char At(std::string_view bytes, size_t i) {
  return static_cast<unsigned char>(bytes[i]);
}

size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// The character that begins at `at` and the bytes it takes; kInvalid when the byte there begins none.
char32_t Decode(std::string_view bytes, size_t at, size_t& length) {
  static constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
  length = SequenceLength(At(bytes, at));
  if (length == 1) return At(bytes, at);
  if (length == 0 || length > bytes.size() - at) return kInvalid;
  char32_t character = At(bytes, at) & (0xFFU >> (length + 1));
  for (size_t i = 1; i < length; ++i) {
    if ((At(bytes, at + i) & 0xC0) != 0x80) return kInvalid;
    character = (character << 6) | (At(bytes, at + i) & 0x3F);
  }
  const bool valid = character >= kSmallest[length] && character <= 0x10FFFF && !IsSurrogate(character);
  return valid ? character : kInvalid;
}

void AppendUtf8(std::string& bytes, char32_t character) {
  const auto trail = [character](unsigned shift) {
    return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
  };
  if (character < 0x80) {
    bytes += static_cast<char>(character);
  } else if (character < 0x800) {
    bytes += {static_cast<char>(0xC0 | (character >> 6)), trail(0)};
  } else if (character < 0x10000) {
    bytes += {static_cast<char>(0xE0 | (character >> 12)), trail(6), trail(0)};
  } else {
    bytes += {static_cast<char>(0xF0 | (character >> 18)), trail(12), trail(6), trail(0)};
  }
}

void AppendLoneSurrogate(std::string& bytes, char16_t unit) {
  const bool isByte = unit >= kByteBase + 0x80 && unit <= kByteBase + 0xFF;
  bytes += isByte ? static_cast<char>(unit - kByteBase) : '?';
}

}  // namespace

std::u16string ToUtf16(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (size_t at = 0, length = 0; at < bytes.size(); at += length) {
    const char32_t character = Decode(bytes, at, length);
    if (character == kInvalid) {
      length = 1;
      text += static_cast<char16_t>(kByteBase + At(bytes, at));
    } else if (character < 0x10000) {
      text += static_cast<char16_t>(character);
    } else {
      text += static_cast<char16_t>(0xD7C0 + (character >> 10));
      text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    }
  }
  return text;
}

std::string ToBytes(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const bool pair = IsHighSurrogate(unit) && i + 1 < text.size() && IsSurrogate(text[i + 1]) &&
                      !IsHighSurrogate(text[i + 1]);
    if (pair)
      AppendUtf8(bytes, 0x10000 + ((char32_t{unit} - 0xD800) << 10) + (text[++i] - char32_t{0xDC00}));
    else if (IsSurrogate(unit))
      AppendLoneSurrogate(bytes, unit);
    else
      AppendUtf8(bytes, unit);
  }
  return bytes;
}

}  // namespace volindex
