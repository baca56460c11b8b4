#include "platform/windows/XmlProlog.h"

#include <gtest/gtest.h>

#include <QString>

namespace {

QByteArray Utf16(const QByteArray& text, bool bigEndian) {
  QByteArray units;
  for (const char c : text)
    units += bigEndian ? QByteArray(1, '\0') + c : QByteArray(1, c) + '\0';
  return units;
}

// In the rows "_" stands for a blank that was put there.
TEST(XmlProlog, TheDocumentTypeBecomesBlanks) {
  const struct {
    QByteArray Before;
    QByteArray Type;
    QByteArray After;
  } rows[] = {
      {"", "", "<a/>"},
      {"", "<!DOCTYPE a>", "<a/>"},
      {"\xef\xbb\xbf<?xml version='1.0'?>\r\n<!-- <!DOCTYPE x> --> <?x '>' ?>\t", "<!DOCTYPE a>", "<a/>"},
      {"", "<!DOCTYPE a SYSTEM 'x>y'>", "<a>></a>"},
      {"", "<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a b CDATA ']>'><!-- '[> --> <?x ]> ?> ] >", "<a/>"},
      {"<a>", "", "<![CDATA[<!DOCTYPE a>]]></a>"},
      {"x", "", "<!DOCTYPE a><a/>"},
      {"", "", ""},
  };
  for (const auto& row : rows) {
    const QByteArray document = row.Before + row.Type + row.After;
    const QByteArray expected = row.Before + QByteArray(row.Type.size(), ' ') + row.After;
    EXPECT_EQ(WithoutDocumentType(document), expected);
    if (document.startsWith('\xef')) continue;
    EXPECT_EQ(WithoutDocumentType(Utf16(document, false)), Utf16(expected, false));
    EXPECT_EQ(WithoutDocumentType("\xfe\xff" + Utf16(document, true)), "\xfe\xff" + Utf16(expected, true));
  }
}

TEST(XmlProlog, EntitiesOfItsOwnRefuseTheDocument) {
  for (const QByteArray type :
       {"<!DOCTYPE a [<!ENTITY e 'x'>]>", "<!DOCTYPE a [ <!ELEMENT a ANY> <!ENTITY % p ''> ]>",
        "<!-- x --><!DOCTYPE a [<!ENTITY e 'breaks off"}) {
    EXPECT_FALSE(WithoutDocumentType(type + "<a/>")) << type.constData();
    EXPECT_FALSE(WithoutDocumentType("\xff\xfe" + Utf16(type + "<a/>", false))) << type.constData();
  }
  EXPECT_FALSE(WithoutDocumentType("<!DOCTYPE a> <!DOCTYPE a [<!ENTITY e 'x'>]><a/>")) << "a second one";
  const QByteArray inComment = "<!DOCTYPE a [<!-- <!ENTITY e 'x'> -->]><a/>";
  EXPECT_TRUE(WithoutDocumentType(inComment));
}

}  // namespace
