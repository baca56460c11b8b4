// What is read out of the settings of browsers and applications.
#include "download/DownloadSettings.h"
#include "fixtures/SystemTest.h"
#include "platform/Process.h"
#include "platform/XmlDocument.h"

namespace {

using TRow = std::pair<QByteArray, QString>;  // content and value

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

// Of settings' content alone: the first line with marker and terminator; the string behind the key, where
// bytes are counted and not decoded, the first byte is never part of a length, no digits are one of 0, and a
// key may stand without a whole value; the first line of the key as it stands.
TEST_F(Settings, ValuesAreFoundInTheContent) {
  const TRow lines[] = {
      {"", u"none"_qs},
      {"a\nb key: \"v\" key: \"w\"\nkey: \"x\"", u"v"_qs},
      {"KEY: \"v\"\r\nkey:\"w\"\r\nkey: \"x\"\r\n", u"x"_qs},
      {"key: \"runs\non\"\nkey: \"x\"", u"x"_qs},
      {"key: \"never ends", u"none"_qs},
      {"key: \"\"\nkey: \"x\"", {}},
      {"key: \"a \\\"quoted\\\" b\"", u"a \\"_qs},
      {"key: \"caf\xc3\xa9\"", QString::fromLocal8Bit("caf\xc3\xa9")},
      {HasDrives() ? "key: \"\"" : "key: \"\xff\"", HasDrives() ? QString() : QChar(0xdcff)}};
  for (const auto& [content, value] : lines)
    EXPECT_EQ(FindLineValue(content, "key: \"", '"').value_or(u"none"_qs), value) << content.constData();
  const TRow streams[] = {{"d4:name3:abc4:path5:C:\\dle", u"C:\\dl"_qs},
                          {"d4:listl1:ai12e1:be4:dictd1:ki-3eee4:path2:/dd4:path2:/xe", u"/d"_qs},
                          {"d4:pathi7e3:abci8ee", u"abc"_qs},
                          {"d4:path5:caf\xc3\xa9", u"caf\u00c3\u00a9"_qs},
                          {"d4:Path2:/de", u"none"_qs},
                          {"4:path2:/de", u"none"_qs},
                          {"d4:pat", u"none"_qs},
                          {"d4:path", {}},
                          {"d4:path9:/d", {}},
                          {"d4:pathx:4:path2:/de", {}},
                          {"d2147483647:x4:path2:/d", u"none"_qs}};
  for (const auto& [content, value] : streams)
    EXPECT_EQ(FindDatValue(content, u"path"_qs, u"none"_qs), value) << content.constData();
  EXPECT_THROW((void)FindDatValue("d2147483648:x", u"path"_qs, {}), TSettingsError);
  const TRow keys[] = {{"a=1\nDIR=/d l\ndir=/x\n", u"/d l"_qs},
                       {"dir =/x\n dir=/y\r\ndir=  /z \r\n", u"  /z "_qs},
                       {"dir\n=dir\nxdir=/x\n", {}},
                       {"dir=a=b", u"a=b"_qs},
                       {"dir=\ndir=/x", {}},
                       {"dir=C\\:\\\\a\\\\b\\:", u"C:\\a\\b:"_qs},
                       {"dir=C:\\a;D:\\b", u"C:\\a;"_qs},
                       {"dir=/caf\xc3\xa9", QString::fromLocal8Bit("/caf\xc3\xa9")},
                       {QByteArray("\xff\xfe\x64\0i\0r\0=\0\xe5\x65", 12), u"日"_qs}};
  for (const auto& [content, value] : keys)
    EXPECT_EQ(FindKeyValue(content, u"dir"_qs), value) << content.constData();
}

TEST_F(Settings, WhatIsMissingGivesTheDefaultWhereItsKindSaysSo) {
  const QString none = u"none"_qs;
  FHome.WriteFile("ini", "[s]\nother=1\n");
  FHome.WriteFile("dat", "d5:other1:1e");
  FHome.WriteFile("keyvalue", "other=1\n");
  FHome.WriteFile("xml", "<a><other>1</other><empty/></a>");
  for (const auto& [suffix, expected] : {std::pair("", u"none|none||none"_qs), {" missing", u"|||"_qs}}) {
    const auto file = [&, end = suffix](const QByteArray& kind) { return FHome.Path(kind + end); };
    const QStringList values{
        ReadFromIni(file("ini"), u"s"_qs, u"k"_qs, none), ReadFromDat(file("dat"), u"k"_qs, none),
        ReadFromKeyValue(file("keyvalue"), u"k"_qs), ReadFromXml(file("xml"), u"k"_qs, none)};
    EXPECT_EQ(values.join(u'|'), expected) << suffix;
  }
  EXPECT_EQ(ReadFromXml(FHome.Path("xml"), u"empty"_qs, none), QString()) << "found, and empty";
  EXPECT_EQ(ReadFromRegistry(u"HKEY_LOCAL_MACHINE"_qs, u"Software\\none"_qs, u"no"_qs, none), none);
}

TEST_F(Settings, WhatCantBeReadIsAnErrorButInIniFiles) {
  for (const QByteArray& name : {FFirefoxPrefs, FChromePrefs, QByteArray("shut")}) {
    FHome.WriteFile(name, "[s]\nk=v\n");
    FHome.MakeUnreadable(name);
  }
  FHome.WriteFile(FProfiles, kProfile0);
  const QString shut = FHome.Path("shut");
  const TOrdinaryUser user;
  EXPECT_EQ(ReadFromIni(shut, u"s"_qs, u"k"_qs, u"none"_qs), u"none"_qs);
  EXPECT_THROW((void)ReadFromDat(shut, u"k"_qs, {}), TSettingsError);
  EXPECT_THROW((void)ReadFromKeyValue(shut, u"k"_qs), TSettingsError);
  EXPECT_THROW((void)ReadFromXml(shut, u"k"_qs, {}), TXmlError);
  EXPECT_THROW((void)GetFirefoxDownloadDir(), TSettingsError);
  EXPECT_THROW((void)GetChromeDownloadDir(), TSettingsError);
}

TEST_F(Settings, FirefoxIsAskedInItsFirstProfileOnly) {
  EXPECT_EQ(GetFirefoxDownloadDir(), QString());
  FHome.WriteFile(FFirefoxPrefs, "");
  const std::pair<const char*, bool> rows[] = {{kProfile0, true},
                                               {"[profile0]\nPATH = \"Profiles/abc.default\"\n", true},
                                               {"[Profile1]\nPath=Profiles/abc.default\nDefault=1\n", false},
                                               {"[Profile0]\nPath=\n", false},
                                               {"[Profile0]\nPath=Profiles/other\n", false}};
  for (const auto& [profiles, found] : rows) {
    FHome.WriteFile(FProfiles, profiles);
    EXPECT_EQ(GetFirefoxDownloadDir(), found ? FDownloads : QString()) << profiles;
  }
}

TEST_F(Settings, BrowsersNameTheirFolderOrUseTheUsers) {
  FHome.WriteFile(FProfiles, kProfile0);
  EXPECT_EQ(GetChromeDownloadDir(), QString());
  const QByteArray firefox = "// no\nuser_pref(\"browser.download.";
  const QByteArray chrome = "{\"a\":" + QByteArray(5 << 20, '1') + ",\"default_directory\":";
  const TRow rows[] = {{firefox + "dir\", \"/srv/d l\");\n", u"/srv/d l"_qs},
                       {firefox + "dir\", \"C:\\\\Users\\\\me\");\n", u"C:\\Users\\me"_qs},
                       {firefox + "dir\", \"\");\n", FDownloads},
                       {firefox + "lastDir\", \"/x\");\n", FDownloads},
                       {chrome + " \"/srv/a\"}", u"/srv/a"_qs},
                       {chrome + "\"/srv/a\"}", FDownloads},
                       {chrome + " \"\"}", FDownloads}};
  for (const auto& [content, folder] : rows) {
    const bool ofFirefox = content.startsWith('/');
    FHome.WriteFile(ofFirefox ? FFirefoxPrefs : FChromePrefs, content);
    EXPECT_EQ(ofFirefox ? GetFirefoxDownloadDir() : GetChromeDownloadDir(), folder)
        << content.right(40).constData();
  }
}
