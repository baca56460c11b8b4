// What is read out of the settings of browsers and applications.
#include "download/BrowserSettings.h"
#include "download/ConfigReaders.h"
#include "download/DatStream.h"
#include "download/SettingsFile.h"
#include "fixtures/NativePath.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TestUser.h"
#include "platform/ComThread.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

namespace {

struct TRow {
  QByteArray Content;
  QString Value;
};

QByteArray Utf16(const QString& text) {
  return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

class Settings : public testing::Test {
 protected:
  const TComThread FComponents;
  TTestUser FUser;
  TTempTree& FHome = FUser.Home;
  const QString FDownloads = FHome.Path(TTestUser::Downloads);
  const QByteArray FProfiles = TTestUser::Firefox + "/profiles.ini";
  const QByteArray FFirefoxPrefs = TTestUser::Firefox + "/Profiles/abc.default/prefs.js";
  const QByteArray FChromePrefs = TTestUser::Chrome + "/Default/Preferences";
};

constexpr char kProfile0[] = "[Profile0]\nPath=Profiles/abc.default\n[Profile1]\nPath=b\n";

}  // namespace

TEST_F(Settings, FindLineValueTakesTheFirstLineWithMarkerAndTerminator) {
  const TRow rows[] = {
      {"", u"none"_qs},
      {"a\nb key: \"v\" key: \"w\"\nkey: \"x\"", u"v"_qs},
      {"KEY: \"v\"\r\nkey:\"w\"\r\nkey: \"x\"\r\n", u"x"_qs},
      {"key: \"runs\non\"\nkey: \"x\"", u"x"_qs},
      {"key: \"never ends", u"none"_qs},
      {"key: \"\"\nkey: \"x\"", QString()},
      {"key: \"a \\\"quoted\\\" b\"", u"a \\"_qs},
      {"key: \"caf\xc3\xa9\"", QString::fromLocal8Bit("caf\xc3\xa9")},
      {HasDrives() ? "key: \"w\"" : "key: \"\xff\"", HasDrives() ? u"w"_qs : QString(QChar(0xdcff))},
  };
  for (const auto& [content, value] : rows)
    EXPECT_EQ(FindLineValue(content, "key: \"", '"').value_or(u"none"_qs), value) << content.constData();
}

TEST_F(Settings, DatStreamsGiveTheStringBehindTheKey) {
  const TRow rows[] = {
      {"d4:name3:abc4:path5:C:\\dle", u"C:\\dl"_qs},
      {"d4:listl1:ai12e1:be4:dictd1:ki-3eee4:path2:/dd4:path2:/xe", u"/d"_qs},
      {"d4:pathi7e3:abci8ee", u"abc"_qs},               // a number is stepped over
      {"d4:path5:caf\xc3\xa9", u"caf\u00c3\u00a9"_qs},  // the length counts bytes, which are not decoded
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
  for (const auto& [content, value] : rows)
    EXPECT_EQ(FindDatValue(content, u"path"_qs, u"default"_qs), value) << content.constData();
  EXPECT_THROW((void)FindDatValue("d2147483648:x", u"path"_qs, {}), TSettingsError);
}

TEST_F(Settings, KeyValueFilesGiveTheFirstLineOfTheKeyAsItStands) {
  const TRow rows[] = {
      {"a=1\nDIR=/d l\ndir=/x\n", u"/d l"_qs},
      {"dir =/x\n dir=/y\r\ndir=  /z \r\n", u"  /z "_qs},
      {"dir\n=dir\nxdir=/x\n", QString()},
      {"dir=a=b", u"a=b"_qs},
      {"dir=\ndir=/x", QString()},
      {"dir=C\\:\\\\a\\\\b\\:", u"C:\\a\\b:"_qs},
      {"dir=C:\\a;D:\\b", u"C:\\a;"_qs},
      {"dir=/caf\xc3\xa9", QString::fromLocal8Bit("/caf\xc3\xa9")},
      {"\xff\xfe" + Utf16(u"a=b\r\ndir=/日本\r\n"_qs), u"/日本"_qs},
  };
  for (const auto& [content, value] : rows)
    EXPECT_EQ(FindKeyValue(content, u"dir"_qs), value) << content.constData();
}

TEST_F(Settings, WhatIsMissingGivesTheDefaultWhereItsKindSaysSo) {
  const QString fallback = u"/default"_qs;
  const auto values = [&](const char* suffix) {
    const auto file = [&](const QByteArray& kind) { return FHome.Path(kind + suffix); };
    return QStringList{
        ReadFromIni(file("ini"), u"s"_qs, u"k"_qs, fallback), ReadFromDat(file("dat"), u"k"_qs, fallback),
        ReadFromKeyValue(file("keyvalue"), u"k"_qs), ReadFromXml(file("xml"), u"k"_qs, fallback)}
        .join(u'|');
  };
  FHome.WriteFile("ini", "[s]\nother=1\n");
  FHome.WriteFile("dat", "d5:other1:1e");
  FHome.WriteFile("keyvalue", "other=1\n");
  FHome.WriteFile("xml", "<a><other>1</other><empty/></a>");
  EXPECT_EQ(values(""), u"/default|/default||/default"_qs) << "a missing key";
  EXPECT_EQ(values(" missing"), u"|||"_qs) << "a missing file";
  EXPECT_EQ(ReadFromXml(FHome.Path("xml"), u"empty"_qs, fallback), QString()) << "found, and empty";
  EXPECT_EQ(ReadFromRegistry(u"HKEY_LOCAL_MACHINE"_qs, u"Software\\none"_qs, u"no"_qs, fallback), fallback);
}

TEST_F(Settings, WhatCantBeReadIsAnErrorButInIniFiles) {
  for (const QByteArray& name : {FFirefoxPrefs, FChromePrefs, QByteArray("shut")}) {
    FHome.WriteFile(name, "[s]\nk=v\n");
    FHome.MakeUnreadable(name);
  }
  FHome.WriteFile(FProfiles, kProfile0);
  const QString shut = FHome.Path("shut");
  const TOrdinaryUser user;
  EXPECT_EQ(ReadFromIni(shut, u"s"_qs, u"k"_qs, u"/default"_qs), u"/default"_qs);
  EXPECT_THROW((void)ReadFromDat(shut, u"k"_qs, {}), TSettingsError);
  EXPECT_THROW((void)ReadFromKeyValue(shut, u"k"_qs), TSettingsError);
  EXPECT_THROW((void)ReadFromXml(shut, u"k"_qs, {}), TXmlError);
  EXPECT_THROW((void)GetFirefoxDownloadDir(), TSettingsError);
  EXPECT_THROW((void)GetChromeDownloadDir(), TSettingsError);
}

TEST_F(Settings, FirefoxIsAskedInItsFirstProfileOnly) {
  EXPECT_EQ(GetFirefoxDownloadDir(), QString());
  FHome.WriteFile(FFirefoxPrefs, "");
  const struct {
    const char* Profiles;
    bool Found;
  } rows[] = {
      {kProfile0, true},
      {"[profile0]\nPATH = \"Profiles/abc.default\"\n", true},
      {"[Profile1]\nPath=Profiles/abc.default\nDefault=1\n", false},
      {"[Profile0]\nPath=\n", false},
      {"[Profile0]\nPath=Profiles/other\n", false},
  };
  for (const auto& [profiles, found] : rows) {
    FHome.WriteFile(FProfiles, profiles);
    EXPECT_EQ(GetFirefoxDownloadDir(), found ? FDownloads : QString()) << profiles;
  }
}

TEST_F(Settings, BrowsersNameTheirFolderOrUseTheUsers) {
  FHome.WriteFile(FProfiles, kProfile0);
  const TRow firefox[] = {
      {"// no\nuser_pref(\"browser.download.dir\", \"/srv/d l\");\n", u"/srv/d l"_qs},
      {"user_pref(\"browser.download.dir\", \"C:\\\\Users\\\\me\");\n", u"C:\\Users\\me"_qs},
      {"user_pref(\"browser.download.dir\", \"\");\n", FDownloads},
      {"user_pref(\"browser.download.lastDir\", \"/x\");\n", FDownloads},
  };
  for (const auto& [content, folder] : firefox) {
    FHome.WriteFile(FFirefoxPrefs, content);
    EXPECT_EQ(GetFirefoxDownloadDir(), folder) << content.constData();
  }
  EXPECT_EQ(GetChromeDownloadDir(), QString());
  const QByteArray longLine = "{\"a\":" + QByteArray(5 << 20, '1') + ",";
  const TRow chrome[] = {{"\"default_directory\": \"/srv/a\"", u"/srv/a"_qs},
                         {"\"default_directory\":\"/srv/a\"", FDownloads},
                         {"\"default_directory\": \"\"", FDownloads}};
  for (const auto& [content, folder] : chrome) {
    FHome.WriteFile(FChromePrefs, longLine + content + "}");
    EXPECT_EQ(GetChromeDownloadDir(), folder) << content.constData();
  }
}
