#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <random>

namespace {

QString Text(const char16_t* text) {
  return QString::fromUtf16(text);
}

TEST(Names, BytesToTextAsExpected) {
  const struct {
    QByteArray Bytes;
    QString Name;
  } rows[] = {
      {"plain", Text(u"plain")},
      {"caf\xc3\xa9", Text(u"caf\u00e9")},
      {"\xe2\x82\xac", Text(u"\u20ac")},
      {"\xf0\x9f\x93\x81", Text(u"\U0001F4C1")},
      {"a\xff", QStringLiteral("a") + QChar(0xdcff)},
      {"\xc3", QString(QChar(0xdcc3))},
      {"\xc0\xaf", QString(QChar(0xdcc0)) + QChar(0xdcaf)},
      {"\xed\xb2\x80", QString(QChar(0xdced)) + QChar(0xdcb2) + QChar(0xdc80)},
      {"\xf4\x90\x80\x80", QString(QChar(0xdcf4)) + QChar(0xdc90) + QChar(0xdc80) + QChar(0xdc80)},
      {"\xf0\x9f\x93\x81\x81", Text(u"\U0001F4C1") + QChar(0xdc81)},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(NameFromBytes(row.Bytes), row.Name) << row.Bytes.toHex().data();
    EXPECT_EQ(NameToBytes(row.Name), row.Bytes);
  }
}

// Short texts from a small alphabet of the bytes that decide reach every branch of the decoder.
TEST(Names, AnyBytesComeBack) {
  const QByteArray alphabet("a/\x7f\x80\x81\x9f\xa0\xbf\xc0\xc1\xc2\xdf\xe0\xed\xef\xf0\xf4\xf5\xff");
  std::mt19937 random(1);
  for (int i = 0; i < 200000; ++i) {
    QByteArray bytes;
    for (auto length = random() % 12; length > 0; --length)
      bytes += i % 2 == 0 ? alphabet[static_cast<qsizetype>(random() % 19)] : static_cast<char>(random());
    ASSERT_EQ(NameToBytes(NameFromBytes(bytes)), bytes) << bytes.toHex().data();
  }
}

TEST(Names, EscapesWhatIsNoText) {
  EXPECT_EQ(EscapeUndecodable(NameFromBytes("caf\xc3\xa9 \xf0\x9f\x93\x81")), Text(u"caf\u00e9 \U0001F4C1"));
  EXPECT_EQ(EscapeUndecodable(NameFromBytes("a\xe9\x80z")), Text(u"a\\xe9\\x80z"));
  EXPECT_EQ(EscapeUndecodable(NameFromBytes("a\\xe9")), Text(u"a\\\\xe9")) << "told from the byte";
  EXPECT_EQ(EscapeUndecodable(QString(QChar(0xd83d)) + QChar(0xdc05) + QChar(0xdc05)),
            QString(QChar(0xd83d)) + QChar(0xdc05) + Text(u"\\udc05"));
  EXPECT_EQ(EscapeUndecodable(QString(QChar(0xd800))), Text(u"\\ud800"));
}

}  // namespace
