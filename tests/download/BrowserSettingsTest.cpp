#include "download/BrowserSettings.h"

#include "download/SettingsFile.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "fixtures/Variables.h"
#include "platform/Paths.h"

#include <gtest/gtest.h>

namespace {

constexpr char kProfiles[] = ".mozilla/firefox/profiles.ini";
constexpr char kFirefoxPrefs[] = ".mozilla/firefox/Profiles/abc.default/prefs.js";
constexpr char kChromePrefs[] = ".config/google-chrome/Default/Preferences";
constexpr char kProfile0[] =
    "[Profile0]\nName=a\nIsRelative=1\nPath=Profiles/abc.default\n[Profile1]\nPath=b\n";

class BrowserSettings : public testing::Test {
 protected:
  TTempTree FHome;
  const TVariables FVariables{{"HOME", NameToBytes(FHome.Path()).constData()}, {"XDG_CONFIG_HOME", nullptr}};
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
      {"key: \"caf\xc3\xa9 \xff\"", u"café \xdcff"_qs},
      {"key: ", u"none"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(LineValue(row.Text), row.Value) << row.Text;
}

TEST_F(BrowserSettings, WithoutABrowserThereIsNothing) {
  EXPECT_EQ(GetFirefoxDownloadDir(), QString());
  EXPECT_EQ(GetChromeDownloadDir(), QString());
}

TEST_F(BrowserSettings, FirefoxIsAskedInItsFirstProfileOnly) {
  FHome.WriteFile(kFirefoxPrefs, "");
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
    FHome.WriteFile(kProfiles, profiles);
    EXPECT_EQ(GetFirefoxPrefsPath(), found ? FHome.Path(kFirefoxPrefs) : QString()) << profiles;
    EXPECT_EQ(GetFirefoxDownloadDir(), found ? FHome.Path("Downloads") : QString()) << profiles;
  }
}

TEST_F(BrowserSettings, FirefoxNamesItsFolderInThePreferences) {
  FHome.WriteFile(kProfiles, kProfile0);
  const struct {
    const char* Prefs;
    QString Folder;
  } rows[] = {
      {"// no\nuser_pref(\"browser.download.dir\", \"/srv/d l \xc3\xa9\");\n", u"/srv/d l é"_qs},
      {"user_pref(\"browser.download.dir\", \"C:\\\\Users\\\\me\");\n", u"C:\\Users\\me"_qs},
      {"user_pref(\"browser.download.dir\", \"\");\n", FHome.Path("Downloads")},
      {"user_pref(\"browser.download.lastDir\", \"/x\");\n", FHome.Path("Downloads")},
  };
  for (const auto& row : rows) {
    FHome.WriteFile(kFirefoxPrefs, row.Prefs);
    EXPECT_EQ(GetFirefoxDownloadDir(), row.Folder) << row.Prefs;
  }
}

TEST_F(BrowserSettings, ChromeNamesItsFolderInOneLongLine) {
  const QByteArray before = "{\"a\":" + QByteArray(5 << 20, '1') + ",";
  const struct {
    QByteArray Value;
    QString Folder;
  } rows[] = {
      {"\"default_directory\": \"/srv/\xc3\xbc\"", u"/srv/ü"_qs},
      {"\"default_directory\":\"/srv/a\"", FHome.Path("Downloads")},
      {"\"default_directory\": \"\"", FHome.Path("Downloads")},
  };
  for (const auto& row : rows) {
    FHome.WriteFile(kChromePrefs, before + row.Value + "}");
    EXPECT_EQ(GetChromeDownloadDir(), row.Folder) << row.Value.constData();
  }
}

TEST_F(BrowserSettings, PreferencesThatCantBeReadAreAnError) {
  FHome.WriteFile(kProfiles, kProfile0);
  FHome.WriteFile(kFirefoxPrefs, "");
  FHome.WriteFile(kChromePrefs, "");
  FHome.SetMode("", 0755);
  FHome.SetMode(kFirefoxPrefs, 0);
  FHome.SetMode(kChromePrefs, 0);
  const TOrdinaryUser user;
  EXPECT_THROW((void)GetFirefoxDownloadDir(), TSettingsError);
  EXPECT_THROW((void)GetChromeDownloadDir(), TSettingsError);
}
