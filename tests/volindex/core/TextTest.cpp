#include "volindex/index/Utf16.h"

#include <gtest/gtest.h>

#include <random>

namespace volindex {
namespace {

struct TTextCase {
  std::string Bytes;
  std::u16string Text;
};

TEST(Utf16, InvalidBytesBecomeLoneSurrogatesAndComeBack) {
  const TTextCase cases[] = {
      {"plain", u"plain"},
      {"\xc3\xa4\xe2\x82\xac", u"\u00e4\u20ac"},
      {"\xf0\x9f\x98\x80", u"\U0001F600"},
      {"a\xff", {u'a', 0xDCFF}},
      {"\xc0\x80", {0xDCC0, 0xDC80}},                          // longer than need be
      {"\xed\xa0\x80", {0xDCED, 0xDCA0, 0xDC80}},              // a surrogate
      {"\xf4\x90\x80\x80", {0xDCF4, 0xDC90, 0xDC80, 0xDC80}},  // beyond the last character
      {"\xe2\x82", {0xDCE2, 0xDC82}},                          // cut
  };
  for (const TTextCase& each : cases) {
    EXPECT_EQ(ToUtf16(each.Bytes), each.Text) << each.Bytes;
    EXPECT_EQ(ToBytes(each.Text), each.Bytes);
  }
  EXPECT_EQ(ToBytes(std::u16string{0xD800, u'a', 0xDC01}), "?a?");
}

TEST(Utf16, AnyBytesComeBack) {
  std::mt19937 random(1);
  for (unsigned round = 0; round < 20'000; ++round) {
    std::string bytes(round % 12, '\0');
    for (char& byte : bytes)
      byte = static_cast<char>(random() % 3 == 0 ? random() : 0x80 | (random() & 0x7F));
    ASSERT_EQ(ToBytes(ToUtf16(bytes)), bytes);
  }
}

}  // namespace
}  // namespace volindex
