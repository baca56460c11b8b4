// Settings in ini and XML files.
#include "fixtures/SystemTest.h"
#include "platform/SystemSettings.h"
#include "platform/XmlDocument.h"

namespace {

// The value as bytes, "?" for the default.
QByteArray Read(const QByteArray& content, const QString& section, const QString& key) {
  TTempTree tree;
  tree.WriteFile("settings.ini", content);
  return NameToBytes(ReadPrivateProfile(tree.Path("settings.ini"), section, key, u"?"_qs));
}

TEST(PrivateProfile, ValuesByTheRulesOfTheSystem) {
  const QByteArray content =
      "key=before any section\r\n; [Main]\r\n  [ Main ]  \r\n;Key=comment\r\nno equals sign\r\n"
      "  Key \t= a = b ; c  \r\nKey=second\r\nQuoted=\"  blanks kept \"\r\nSingle='it''\r\nHalf=\"open\r\n"
      "Lone=\"\r\nEmpty=\r\n[Other]\nKey=other\n[main]\nLate=never seen\n";
  const std::tuple<QString, QString, QByteArray> rows[] = {{u"Main"_qs, u"Key"_qs, "a = b ; c"},
                                                           {u"MAIN"_qs, u"kEY"_qs, "a = b ; c"},
                                                           {u"Main"_qs, u"Quoted"_qs, "  blanks kept "},
                                                           {u"Main"_qs, u"Single"_qs, "it'"},
                                                           {u"Main"_qs, u"Half"_qs, "\"open"},
                                                           {u"Main"_qs, u"Lone"_qs, "\""},
                                                           {u"Main"_qs, u"Empty"_qs, ""},
                                                           {u"Other"_qs, u"Key"_qs, "other"},
                                                           {u"Main"_qs, u"Late"_qs, "?"},
                                                           {u"Main"_qs, u"missing"_qs, "?"},
                                                           {u"Missing"_qs, u"Key"_qs, "?"},
                                                           {u"Main"_qs, u"no equals sign"_qs, "?"}};
  for (const auto& [section, key, value] : rows)
    EXPECT_EQ(Read(content, section, key), value) << section.toStdString() << ' ' << key.toStdString();
}

// Windows: as Wine's service answers, and the one of Windows may differ again.
TEST(PrivateProfile, OddLinesAndNames) {
  const QByteArray content =
      "key=before any section\n[Main]\n;Key=comment\nRaw=\xe9\xff\ncaf\xc3\xa9=name\n[no end\nKey=unfinished";
  const std::tuple<QString, QString, QByteArray, QByteArray> rows[] = {
      // the value on Linux, on Windows
      {u"Main"_qs, u"Raw"_qs, "\xe9\xff", "\xc3\xa9\xc3\xbf"},
      {u"Main"_qs, u"CAFÉ"_qs, "name", "?"},
      {u"no end"_qs, u"Key"_qs, "unfinished", "?"},
      {u""_qs, u"key"_qs, "?", "before any section"},
      {u"Main"_qs, u";Key"_qs, "?", "comment"}};
  for (const auto& [section, key, onLinux, onWindows] : rows)
    EXPECT_EQ(Read(content, section, key), HasDrives() ? onWindows : onLinux) << key.toStdString();
}

TEST(PrivateProfile, AByteOrderMarkDecidesTheEncoding) {
  const QString text = u"[Main]\r\nLanguage=Français\r\n"_qs;
  for (const QByteArray& content :
       {"\xef\xbb\xbf" + text.toUtf8(), MarkedUtf16(text), MarkedUtf16(text, true), TextToAnsi(text)})
    EXPECT_EQ(Read(content, u"Main"_qs, u"Language"_qs), u"Français"_qs.toUtf8()) << content.toHex().data();
}

TEST(PrivateProfile, WhatCantBeReadGivesTheDefault) {
  TTempTree tree;
  for (const QString& file : {tree.Path("missing.ini"), tree.Path(), QString()})
    EXPECT_EQ(ReadPrivateProfile(file, u"Main"_qs, u"Language"_qs, u" English "_qs), u" English "_qs);
}

TEST(XmlDocument, EncodingsAreAsDeclared) {
  const std::pair<QByteArray, QString> rows[] = {
      {"<a v='caf\xc3\xa9 \xf0\x9f\x8e\xb5'/>", u"café 🎵"_qs},
      {"\xef\xbb\xbf<a v='caf\xc3\xa9'/>", u"café"_qs},
      {"<?xml version='1.0' encoding='ISO-8859-1'?><a v='caf\xe9'/>", u"café"_qs},
      {"<?xml version='1.0' encoding='windows-1252'?><a v='5 \x80'/>", u"5 €"_qs},
      {MarkedUtf16(u"<?xml version='1.0' encoding='UTF-16'?><a v='日本'/>"_qs), u"日本"_qs},
      {"<a v='&lt;&#233;&amp;'/>", u"<é&"_qs}};
  for (const auto& [document, value] : rows)
    EXPECT_EQ(ParseXml(document).Attribute(u"v"_qs), value);
}

TEST(XmlDocument, WhatIsMissingReadsAsEmptyAndCanBeSet) {
  const TXmlElement root = ParseXml("<root><child/></root>");
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
  const std::pair<QString, std::optional<QString>> rows[] = {
      {u"folder"_qs, u"/a b/cé d&"_qs},
      {u"/config/folder[2]"_qs, u"two"_qs},
      {u"//folder/@kind"_qs, u"x"_qs},
      {u"empty | folder[2]"_qs, QString()},
      {u"folder[2] | folder[1]/in"_qs, u"d"_qs},
      {u"config"_qs, std::nullopt},
      {u"folder/text()[1]"_qs, HasDrives() ? u"/a b/"_qs : u"\n  /a b/"_qs}};
  for (const auto& [path, text] : rows)
    EXPECT_EQ(root.SelectText(path), text) << path.toStdString();
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
