#include "volindex/system/Utf16.h"

#include "volindex/index/Wtf8.h"

#include <algorithm>

namespace volindex {

std::u16string ToUtf16(std::string_view bytes) {
  constexpr char32_t kReplacement = 0xFFFD;  // for bytes that no text was made into
  std::u16string text;
  text.reserve(bytes.size());
  for (size_t at = 0, length = 0; at < bytes.size(); at += length) {
    const char32_t character = DecodeAt(bytes, at, length);
    if (character == kNoCodePoint) length = 1;
    AppendCodePoint(character == kNoCodePoint ? kReplacement : character, text);
  }
  std::replace(text.begin(), text.end(), u'/', u'\\');
  return text;
}

std::string ToBytes(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  AppendWtf8(std::as_bytes(std::span(text)), bytes);
  std::replace(bytes.begin(), bytes.end(), '\\', '/');
  return bytes;
}

}  // namespace volindex
