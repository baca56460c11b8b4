#include "download/BrowserSettings.h"

#include "download/SettingsFile.h"
#include "fixtures/NativePath.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TestUser.h"

#include <gtest/gtest.h>

namespace {

constexpr char kProfile0[] =
    "[Profile0]\nName=a\nIsRelative=1\nPath=Profiles/abc.default\n[Profile1]\nPath=b\n";

class BrowserSettings : public testing::Test {
 protected:
  const QByteArray FProfiles = TTestUser::Firefox + "/profiles.ini";
  const QByteArray FFirefoxPrefs = TTestUser::Firefox + "/Profiles/abc.default/prefs.js";
  const QByteArray FChromePrefs = TTestUser::Chrome + "/Default/Preferences";
  TTestUser FUser;
  TTempTree& FHome = FUser.Home;
  const QString FDownloads = FHome.Path(TTestUser::Downloads);
};

QString LineValue(QByteArrayView text) {
  return FindLineValue(text, "key: \"", '"').value_or(u"none"_qs);
}

}  // namespace

TEST(FindLineValue, FindsTheFirstLineWithMarkerAndTerminator) {
  const struct {
    const char* Text;
    QString Value;
  } rows[] = {
      {"", u"none"_qs},
      {"key: \"v\"", u"v"_qs},
      {"a\nb key: \"v\" key: \"w\"\nkey: \"x\"", u"v"_qs},
      {"KEY: \"v\"\r\nkey:\"w\"\r\nkey: \"x\"\r\n", u"x"_qs},
      {"key: \"runs\non\"\nkey: \"x\"", u"x"_qs},
      {"key: \"never ends", u"none"_qs},
      {"key: \"\"\nkey: \"x\"", QString()},
      {"key: \"a \\\"quoted\\\" b\"", u"a \\"_qs},
      {"key: \"caf\xc3\xa9\"", QString::fromLocal8Bit("caf\xc3\xa9")},
      {"key: ", u"none"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(LineValue(row.Text), row.Value) << row.Text;
  if (!HasDrives()) {
    EXPECT_EQ(LineValue("key: \"\xff\""), u"\xdcff"_qs) << "a byte that is no text";
  }
}

TEST_F(BrowserSettings, WithoutABrowserThereIsNothing) {
  EXPECT_EQ(GetFirefoxDownloadDir(), QString());
  EXPECT_EQ(GetChromeDownloadDir(), QString());
}

TEST_F(BrowserSettings, FirefoxIsAskedInItsFirstProfileOnly) {
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
    EXPECT_EQ(GetFirefoxPrefsPath(), found ? FHome.Path(FFirefoxPrefs) : QString()) << profiles;
    EXPECT_EQ(GetFirefoxDownloadDir(), found ? FDownloads : QString()) << profiles;
  }
}

TEST_F(BrowserSettings, FirefoxNamesItsFolderInThePreferences) {
  FHome.WriteFile(FProfiles, kProfile0);
  const struct {
    const char* Prefs;
    QString Folder;
  } rows[] = {
      {"// no\nuser_pref(\"browser.download.dir\", \"/srv/d l \xc3\xa9\");\n",
       QString::fromLocal8Bit("/srv/d l \xc3\xa9")},
      {"user_pref(\"browser.download.dir\", \"C:\\\\Users\\\\me\");\n", u"C:\\Users\\me"_qs},
      {"user_pref(\"browser.download.dir\", \"\");\n", FDownloads},
      {"user_pref(\"browser.download.lastDir\", \"/x\");\n", FDownloads},
  };
  for (const auto& row : rows) {
    FHome.WriteFile(FFirefoxPrefs, row.Prefs);
    EXPECT_EQ(GetFirefoxDownloadDir(), row.Folder) << row.Prefs;
  }
}

TEST_F(BrowserSettings, ChromeNamesItsFolderInOneLongLine) {
  const QByteArray before = "{\"a\":" + QByteArray(5 << 20, '1') + ",";
  const struct {
    QByteArray Value;
    QString Folder;
  } rows[] = {
      {"\"default_directory\": \"/srv/\xc3\xbc\"", QString::fromLocal8Bit("/srv/\xc3\xbc")},
      {"\"default_directory\":\"/srv/a\"", FDownloads},
      {"\"default_directory\": \"\"", FDownloads},
  };
  for (const auto& row : rows) {
    FHome.WriteFile(FChromePrefs, before + row.Value + "}");
    EXPECT_EQ(GetChromeDownloadDir(), row.Folder) << row.Value.constData();
  }
}

TEST_F(BrowserSettings, PreferencesThatCantBeReadAreAnError) {
  FHome.WriteFile(FProfiles, kProfile0);
  FHome.WriteFile(FFirefoxPrefs, "");
  FHome.WriteFile(FChromePrefs, "");
  FHome.MakeUnreadable(FFirefoxPrefs);
  FHome.MakeUnreadable(FChromePrefs);
  const TOrdinaryUser user;
  EXPECT_THROW((void)GetFirefoxDownloadDir(), TSettingsError);
  EXPECT_THROW((void)GetChromeDownloadDir(), TSettingsError);
}
