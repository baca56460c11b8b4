#include "volindex/TestSystem.h"
#include "volindex/index/Wtf8.h"
#include "volindex/system/Utf16.h"

#include <gtest/gtest.h>

namespace volindex {
namespace {

TEST(Utf16, TextsAndTheirBytesStandForEachOther) {
  for (const TTextCase& each : kTexts) {
    EXPECT_EQ(ToUtf16(each.Bytes), each.Text) << each.Bytes;
    EXPECT_EQ(ToBytes(each.Text), each.Bytes);
  }
}

TEST(Wtf8, NamesBecomeBytesWithoutLoss) {
  const TTextCase cases[] = {
      {"plain", u"plain"},
      {"a longer one in ASCII \xC3\xA4\xE2\x82\xAC", u"a longer one in ASCII \u00E4\u20AC"},
      {"\xF0\x9F\x98\x80", u"\U0001F600"},
      {"\xED\xA0\xBD", {0xD83D}},         // a lone first half
      {"\xED\xB8\x80x", {0xDE00, u'x'}},  // a lone second half
      {"\xED\xA0\xBD\xF0\x9F\x98\x80", {0xD83D, 0xD83D, 0xDE00}}};
  for (const TTextCase& each : cases) {
    std::string bytes;
    AppendWtf8(std::as_bytes(std::span(each.Text)), bytes);
    EXPECT_EQ(bytes, each.Bytes);
    EXPECT_EQ(Wtf8Length(std::as_bytes(std::span(each.Text))), bytes.size());
  }
}

}  // namespace
}  // namespace volindex
