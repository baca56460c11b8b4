#include "volindex/system/Utf16.h"

#include "volindex/index/Wtf8.h"

namespace volindex {

namespace {

constexpr char16_t kByteBase = 0xDC00;

void AppendLoneSurrogate(std::string& bytes, char16_t unit) {
  const bool isByte = unit >= kByteBase + 0x80 && unit <= kByteBase + 0xFF;
  bytes += isByte ? static_cast<char>(unit - kByteBase) : '?';
}

}  // namespace

std::u16string ToUtf16(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (size_t at = 0, length = 0; at < bytes.size(); at += length) {
    const char32_t character = DecodeAt(bytes, at, length);
    if (character == kNoCodePoint || IsSurrogate(character)) {
      length = 1;
      text += static_cast<char16_t>(kByteBase + static_cast<unsigned char>(bytes[at]));
    } else {
      AppendCodePoint(character, text);
    }
  }
  return text;
}

std::string ToBytes(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
      AppendCodePoint(0x10000 + ((char32_t{unit} - 0xD800) << 10) + (text[++i] - char32_t{0xDC00}), bytes);
    else if (IsSurrogate(unit))
      AppendLoneSurrogate(bytes, unit);
    else
      AppendCodePoint(char32_t{unit}, bytes);
  }
  return bytes;
}

}  // namespace volindex
