#include "platform/XmlDocument.h"

#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"

#include <gtest/gtest.h>

namespace {

QByteArray Utf16(const QString& text) {
  return "\xff\xfe" + QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

TEST(XmlDocument, EncodingsAreAsDeclared) {
  const struct {
    QByteArray Document;
    QString Value;
  } rows[] = {
      {"<a v='caf\xc3\xa9 \xf0\x9f\x8e\xb5'/>", u"café 🎵"_qs},
      {"\xef\xbb\xbf<a v='caf\xc3\xa9'/>", u"café"_qs},
      {"<?xml version='1.0' encoding='ISO-8859-1'?><a v='caf\xe9'/>", u"café"_qs},
      {"<?xml version='1.0' encoding='windows-1252'?><a v='5 \x80'/>", u"5 €"_qs},
      {Utf16(u"<?xml version='1.0' encoding='UTF-16'?><a v='日本'/>"_qs), u"日本"_qs},
      {"<a v='&lt;&#233;&amp;'/>", u"<é&"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(ParseXml(row.Document).Attribute(u"v"_qs), row.Value);
}

TEST(XmlDocument, WhatIsMissingReadsAsEmptyAndCanBeSet) {
  const TXmlElement root = ParseXml("<root><child/></root>");
  EXPECT_EQ(root.Child(u"child"_qs).Attribute(u"v"_qs), QString());
  EXPECT_EQ(root.Child(u"other"_qs).Child(u"deeper"_qs).Attribute(u"v"_qs), QString());
  root.Child(u"other"_qs).Child(u"deeper"_qs).SetAttribute(u"v"_qs, u"é & <"_qs);
  EXPECT_EQ(root.Child(u"other"_qs).Child(u"deeper"_qs).Attribute(u"v"_qs), u"é & <"_qs);
  EXPECT_EQ(root.ChildCount(u"other"_qs), 1);
}

TEST(XmlDocument, ChildrenOfANameComeInTheirOrder) {
  const TXmlElement root =
      ParseXml("<r>x<a v='1'/><!-- a --><b v='2'><a v='3'/></b><a v='4'/><A v='5'/></r>");
  EXPECT_EQ(root.Name(), u"r"_qs);
  EXPECT_EQ(root.ChildCount(u"a"_qs), 2);
  EXPECT_EQ(root.Child(u"a"_qs).Attribute(u"v"_qs), u"1"_qs);
  EXPECT_EQ(root.ChildAt(u"a"_qs, 1).Attribute(u"v"_qs), u"4"_qs);
  EXPECT_THROW((void)root.ChildAt(u"a"_qs, 2), std::out_of_range);
  EXPECT_THROW((void)root.ChildAt(u"a"_qs, -1), std::out_of_range);
}

TEST(XmlDocument, SelectsTheFirstNodeByItsPath) {
  const TXmlElement root = ParseXml(
      "<config><folder kind='x'>\n  /a b/<!-- no -->c&#233;<in> d</in><![CDATA[&]]>\n</folder>"
      "<empty/><folder>two</folder></config>");
  const struct {
    const char16_t* Path;
    std::optional<QString> Text;
  } rows[] = {
      {u"folder", u"/a b/cé d&"_qs},
      {u"/config/folder[2]", u"two"_qs},
      {u"//folder/@kind", u"x"_qs},
      {u"empty | folder[2]", QString()},
      {u"folder[2] | folder[1]/in", u"d"_qs},
      {u"config", std::nullopt},
      {u"folder/text()[1]", HasDrives() ? u"/a b/"_qs : u"\n  /a b/"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(root.SelectText(QString::fromUtf16(row.Path)), row.Text);
}

TEST(XmlDocument, AnExpressionThatSelectsNoNodesIsAnError) {
  const TXmlElement root = ParseXml("<a/>");
  for (const QString& expression : {u""_qs, u"a["_qs, u"count(a)"_qs, u"nothing:a"_qs, u"f()"_qs})
    EXPECT_THROW((void)root.SelectText(expression), TXmlError) << qPrintable(expression);
}

TEST(XmlDocument, WhatIsNotWellFormedIsAnError) {
  for (const QByteArray& document :
       {QByteArray(), QByteArray("text"), QByteArray("<a>"), QByteArray("<a/><b/>"),
        QByteArray("<a v='\xff'/>"), QByteArray("<a>&no;</a>"), QByteArray("<a\0/>", 5),
        QByteArray("<a>").repeated(100'000)})
    EXPECT_THROW((void)ParseXml(document), TXmlError) << document.left(20).constData();
}

TEST(XmlDocument, ADocumentWithEntitiesOfItsOwnIsRefused) {
  TTempTree tree;
  tree.WriteFile("secret", "secret");
  const QByteArray secret = "file://" + NameToBytes(tree.Path("secret"));
  QByteArray bomb = "<!DOCTYPE a [<!ENTITY e0 'ha'>";
  for (int i = 1; i < 30; ++i) {
    const QByteArray before = "&e" + QByteArray::number(i - 1) + ";";
    bomb += "<!ENTITY e" + QByteArray::number(i) + " '" + before.repeated(10) + "'>";
  }
  for (const QByteArray& document :
       {QByteArray("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"), bomb + "]><a>&e29;</a>",
        bomb + "]><a v='&e29;'/>", "<!DOCTYPE a [<!ENTITY e SYSTEM '" + secret + "'>]><a>&e;</a>",
        "<!DOCTYPE a [<!ENTITY % e SYSTEM '" + secret + "'> %e;]><a/>"})
    EXPECT_THROW((void)ParseXml(document), TXmlError);
}

// The outer document type would give the attribute its value.
TEST(XmlDocument, NothingIsReadBesideTheDocument) {
  TTempTree tree;
  tree.WriteFile("outer.dtd", "<!ATTLIST a v CDATA 'outer'><!ENTITY e 'outer'>");
  const QByteArray type = "<!DOCTYPE a SYSTEM 'file://" + NameToBytes(tree.Path("outer.dtd")) + "'>";
  EXPECT_EQ(ParseXml(type + "<a/>").Attribute(u"v"_qs), QString());
  const QByteArray unknown = type + "<r><a>&e;</a></r>";
  if (HasDrives()) {
    EXPECT_THROW((void)ParseXml(unknown), TXmlError);
  } else {
    EXPECT_EQ(ParseXml(unknown).SelectText(u"a"_qs), QString());
  }
}

}  // namespace
