#include "download/ConfigReaders.h"

#include "download/DatStream.h"
#include "download/SettingsFile.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "platform/ComThread.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

namespace {

QByteArray Utf16(const QString& text) {
  return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

}  // namespace

TEST(DatReader, FindsTheStringBehindTheKey) {
  const struct {
    QByteArray Bytes;
    QString Value;
  } rows[] = {
      {"d4:name3:abc4:path5:C:\\dle", u"C:\\dl"_qs},
      {"d4:listl1:ai12e1:be4:dictd1:ki-3eee4:path2:/dd4:path2:/xe", u"/d"_qs},
      {"d4:path0:e", QString()},
      {"d4:pathi7e3:abci8ee", u"abc"_qs},               // a number is stepped over
      {"d4:path3:caf\xc3\xa9", u"caf"_qs},              // the length counts bytes
      {"d4:path5:caf\xc3\xa9", u"caf\u00c3\u00a9"_qs},  // which are not decoded
      {"d4:Path2:/de", u"default"_qs},
      {"4:path2:/de", u"default"_qs},  // the first byte is never part of a length
      {"", u"default"_qs},
      {"d", u"default"_qs},
      {"d4:pat", u"default"_qs},
      {"d4:path", QString()},      // the key without a value
      {"d4:path9:/d", QString()},  // a value that runs past the end
      {"d2147483647:x4:path2:/d", u"default"_qs},
      {"d4:pathx:4:path2:/de", QString()},  // no digits are a length of 0
  };
  for (const auto& row : rows)
    EXPECT_EQ(FindDatValue(row.Bytes, u"path"_qs, u"default"_qs), row.Value) << row.Bytes.constData();
}

TEST(DatReader, ALengthBeyondAllBoundsIsAnError) {
  EXPECT_EQ(TrailingNumber("i-1e2147483647"), 2147483647);
  EXPECT_THROW((void)TrailingNumber("2147483648"), TSettingsError);
  EXPECT_THROW((void)FindDatValue("d99999999999999999999999:x", u"path"_qs, {}), TSettingsError);
}

TEST(KeyValueReader, TakesTheFirstLineOfTheKeyAsItStands) {
  const struct {
    QByteArray Content;
    QString Value;
  } rows[] = {
      {"", QString()},
      {"a=1\nDIR=/d l\ndir=/x\n", u"/d l"_qs},
      {"dir =/x\n dir=/y\r\ndir=  /z \r\n", u"  /z "_qs},
      {"dir\n=dir\nxdir=/x\n", QString()},
      {"dir=a=b", u"a=b"_qs},
      {"dir=\ndir=/x", QString()},
      {"dir=C\\:\\\\a\\\\b\\:", u"C:\\a\\b:"_qs},
      {"dir=C:\\a;D:\\b", u"C:\\a;"_qs},
      {"dir=;", u";"_qs},
      {"dir=/caf\xc3\xa9", QString::fromLocal8Bit("/caf\xc3\xa9")},
      {"\xef\xbb\xbf"
       "dir=/caf\xc3\xa9",
       u"/café"_qs},
      {"\xff\xfe" + Utf16(u"a=b\r\ndir=/日本\r\n"_qs), u"/日本"_qs},
      {QByteArray("\xfe\xff\0d\0i\0r\0=\0/", 12), u"/"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(FindKeyValue(row.Content, u"dir"_qs), row.Value) << row.Content.constData();
}

TEST(RegistryReader, AMissingValueGivesTheDefault) {
  const QString key = u"Software\\Tallyscope\\no such key"_qs;
  EXPECT_EQ(ReadRegistryValue(u"HKEY_CURRENT_USER"_qs, key, u"no"_qs), QString());
  EXPECT_EQ(ReadFromRegistry(u"HKEY_LOCAL_MACHINE"_qs, key, u"no"_qs, u"/default"_qs), u"/default"_qs);
}

TEST(ConfigFiles, AMissingFileGivesNothingInEveryKind) {
  const QString file = TTempTree().Path("missing");
  const QString fallback = u"/default"_qs;
  EXPECT_EQ(ReadFromIni(file, u"s"_qs, u"k"_qs, fallback), QString());
  EXPECT_EQ(ReadFromDat(file, u"k"_qs, fallback), QString());
  EXPECT_EQ(ReadFromKeyValue(file, u"k"_qs), QString());
  EXPECT_EQ(ReadFromXml(file, u"k"_qs, fallback), QString());
}

TEST(ConfigFiles, AMissingKeyGivesTheDefaultButInKeyValueFiles) {
  const TComThread components;
  TTempTree tree;
  const QString fallback = u"/default"_qs;
  tree.WriteFile("ini", "[s]\nother=1\n");
  tree.WriteFile("dat", "d5:other1:1e");
  tree.WriteFile("keyvalue", "other=1\n");
  tree.WriteFile("xml", "<a><other>1</other><empty/></a>");
  EXPECT_EQ(ReadFromIni(tree.Path("ini"), u"s"_qs, u"k"_qs, fallback), fallback);
  EXPECT_EQ(ReadFromDat(tree.Path("dat"), u"k"_qs, fallback), fallback);
  EXPECT_EQ(ReadFromKeyValue(tree.Path("keyvalue"), u"k"_qs), QString());
  EXPECT_EQ(ReadFromXml(tree.Path("xml"), u"k"_qs, fallback), fallback);
  EXPECT_EQ(ReadFromXml(tree.Path("xml"), u"empty"_qs, fallback), QString()) << "found, and empty";
}

TEST(ConfigFiles, AFileThatCantBeReadOrIsBrokenIsAnErrorButInIniFiles) {
  const TComThread components;
  TTempTree tree;
  tree.WriteFile("shut", "[s]\nk=v\n");
  tree.MakeUnreadable("shut");
  tree.WriteFile("broken", "<a>");
  const TOrdinaryUser user;
  EXPECT_EQ(ReadFromIni(tree.Path("shut"), u"s"_qs, u"k"_qs, u"/default"_qs), u"/default"_qs);
  EXPECT_THROW((void)ReadFromDat(tree.Path("shut"), u"k"_qs, {}), TSettingsError);
  EXPECT_THROW((void)ReadFromKeyValue(tree.Path("shut"), u"k"_qs), TSettingsError);
  EXPECT_THROW((void)ReadFromXml(tree.Path("shut"), u"k"_qs, {}), TXmlError);
  EXPECT_THROW((void)ReadFromXml(tree.Path("broken"), u"k"_qs, {}), TXmlError);
}
