#include "volindex/index/Wtf8.h"

#include <array>

namespace volindex {

namespace {

unsigned char ByteAt(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

// 0xC0 and 0xC1 would begin what one byte says, 0xF5 and more lie beyond the last code point.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// Takes one code point off the bytes at the position.
char32_t NextCodePoint(TBytes utf16, std::size_t& position) {
  const char32_t unit = Load<std::uint16_t>(utf16, position);
  position += 2;
  if (!IsHighSurrogate(unit) || position + 2 > utf16.size()) return unit;
  const char32_t next = Load<std::uint16_t>(utf16, position);
  if (!IsLowSurrogate(next)) return unit;
  position += 2;
  return 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
}

std::size_t EncodedLength(char32_t codePoint) {
  return codePoint < 0x80 ? 1 : codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
}

// Four units at a time into four bytes; false if one of them is not ASCII.
bool NarrowFour(const std::byte* units, char* bytes) {
  std::uint64_t four;
  std::memcpy(&four, units, sizeof four);
  if ((four & 0xFF80'FF80'FF80'FF80) != 0) return false;
  four = (four | four >> 8) & 0x0000'FFFF'0000'FFFF;
  const auto narrow = static_cast<std::uint32_t>(four | four >> 16);
  std::memcpy(bytes, &narrow, sizeof narrow);
  return true;
}

// Appends the ASCII that the text begins with, nearly always all of it; the position behind.
std::size_t AppendAscii(TBytes utf16, std::string& text) {
  // Names have at most 255 units; longer texts go on unit by unit.
  std::array<char, 256> ascii;
  std::size_t length = 0;
  while (length + 4 <= ascii.size() && 2 * length + 8 <= utf16.size() &&
         NarrowFour(utf16.data() + 2 * length, ascii.data() + length))
    length += 4;
  // The last few once more with those before them, as four.
  const std::size_t units = utf16.size() / 2;
  if (length >= 4 && units - length < 4 && units <= ascii.size() &&
      NarrowFour(utf16.data() + 2 * (units - 4), ascii.data() + units - 4))
    length = units;
  text.append(ascii.data(), length);
  return 2 * length;
}

}  // namespace

char32_t DecodeAt(std::string_view text, std::size_t at, std::size_t& length) {
  static constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
  length = SequenceLength(ByteAt(text, at));
  if (length == 1) return ByteAt(text, at);
  if (length == 0 || length > text.size() - at) return kNoCodePoint;
  char32_t codePoint = ByteAt(text, at) & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((ByteAt(text, at + i) & 0xC0) != 0x80) return kNoCodePoint;
    codePoint = (codePoint << 6) | (ByteAt(text, at + i) & 0x3F);
  }
  return codePoint >= kSmallest[length] && codePoint <= 0x10FFFF ? codePoint : kNoCodePoint;
}

void AppendCodePoint(char32_t codePoint, std::string& text) {
  const auto add = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  const std::size_t length = EncodedLength(codePoint);
  if (length == 1) return add(codePoint);
  static constexpr char32_t kLead[] = {0, 0, 0xC0, 0xE0, 0xF0};
  add(kLead[length] | (codePoint >> (6 * (length - 1))));
  for (std::size_t rest = length - 1; rest-- > 0;)
    add(0x80 | ((codePoint >> (6 * rest)) & 0x3F));
}

void AppendCodePoint(char32_t codePoint, std::u16string& text) {
  if (codePoint < 0x10000) {
    text += static_cast<char16_t>(codePoint);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
    text += static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
  }
}

void AppendWtf8(TBytes utf16, std::string& text) {
  std::size_t position = AppendAscii(utf16, text);
  while (position + 2 <= utf16.size())
    AppendCodePoint(NextCodePoint(utf16, position), text);
}

std::size_t Wtf8Length(TBytes utf16) {
  std::size_t length = 0;
  for (std::size_t position = 0; position + 2 <= utf16.size();)
    length += EncodedLength(NextCodePoint(utf16, position));
  return length;
}

}  // namespace volindex
