#include "platform/KnownFolders.h"

#include "fixtures/TempTree.h"
#include "fixtures/Variables.h"
#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <pwd.h>
#include <unistd.h>

namespace {

QString Text(const char16_t* text) {
  return QString::fromUtf16(text);
}

TEST(XdgFolders, BaseDirectoriesFromTheEnvironment) {
  const TVariables set{{"HOME", "/h/me/"},
                       {"XDG_CONFIG_HOME", "/c\xff/"},
                       {"XDG_DATA_HOME", "/d"},
                       {"XDG_CONFIG_DIRS", ":relative:/first/:/second"}};
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::Profile), Text(u"/h/me"));
  EXPECT_EQ(NameToBytes(GetKnownFolder(TSpecialFolder::AppData)), "/c\xff");
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::LocalAppData), Text(u"/d"));
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::CommonAppData), Text(u"/first"));
}

TEST(XdgFolders, BaseDirectoriesThatAreNotSetOrNotAbsolute) {
  const TVariables set{
      {"HOME", "/h"}, {"XDG_CONFIG_HOME", "relative"}, {"XDG_DATA_HOME", nullptr}, {"XDG_CONFIG_DIRS", ""}};
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::AppData), Text(u"/h/.config"));
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::LocalAppData), Text(u"/h/.local/share"));
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::CommonAppData), Text(u"/etc/xdg"));
}

TEST(XdgFolders, WithoutHomeTheUserDatabaseKnowsIt) {
  const TVariables unset{{"HOME", nullptr}};
  if (getpwuid(getuid()) == nullptr) GTEST_SKIP() << "the user database does not have this user";
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::Profile), NameFromBytes(getpwuid(getuid())->pw_dir));
}

TEST(XdgFolders, FoldersOfTheBrowsers) {
  const TVariables set{{"HOME", "/h"}, {"XDG_CONFIG_HOME", "/c"}};
  EXPECT_EQ(GetBrowserFolder(TBrowser::Firefox), Text(u"/h/.mozilla/firefox"));
  EXPECT_EQ(GetBrowserFolder(TBrowser::Chrome), Text(u"/c/google-chrome"));
}

TEST(XdgFolders, DownloadsAreWhereTheUserDirectoriesSay) {
  TTempTree tree;
  const QByteArray home = NameToBytes(tree.Path());
  const TVariables set{{"HOME", home.constData()}, {"XDG_CONFIG_HOME", nullptr}};
  const QString byDefault = tree.Path("Downloads");
  const struct {
    const char* Line;
    QString Folder;
  } rows[] = {
      {"", byDefault},
      {"XDG_DOWNLOAD_DIR=\"$HOME/T\xc3\xa9l\xc3\xa9 chargements\"\n",
       tree.Path("T\xc3\xa9l\xc3\xa9 chargements")},
      {"XDG_DOWNLOAD_DIR=\"/srv/dl\"\n", Text(u"/srv/dl")},
      {"XDG_DOWNLOAD_DIR=\"$HOME/\"\n", byDefault},
  };
  EXPECT_EQ(GetDownloadsFolder(), byDefault) << "no user directories at all";
  for (const auto& row : rows) {
    tree.WriteFile(".config/user-dirs.dirs", row.Line);
    EXPECT_EQ(GetDownloadsFolder(), row.Folder) << row.Line;
  }
}

TEST(XdgFolders, PlacesOfTheSystemAndTheProgram) {
  EXPECT_EQ(GetWindowsFolder(), Text(u"/"));
  EXPECT_EQ(GetSystemFolder(), Text(u"/"));
  EXPECT_EQ(SystemVolumeRoot(), Text(u"/"));
  EXPECT_EQ(ProgramFolder(), QCoreApplication::applicationDirPath() + PathDelim);
}

TEST(XdgFolders, NamesOfOtherSystemsAreKnown) {
  const TVariables set{{"HOME", "/h"},
                       {"HOMEPATH", nullptr},
                       {"USERPROFILE", "/profile"},
                       {"HOMEDRIVE", "X:"},
                       {"APPDATA", nullptr},
                       {"LOCALAPPDATA", nullptr},
                       {"XDG_CONFIG_HOME", nullptr},
                       {"XDG_DATA_HOME", nullptr},
                       {"TALLYSCOPE_A", "v"},
                       {"TALLYSCOPE_EMPTY", ""}};
  const struct {
    const char16_t* Text;
    const char16_t* Expanded;
  } rows[] = {
      {u"<%TALLYSCOPE_EMPTY%>", u"<>"},      {u"50% of %TALLYSCOPE_A%", u"50% of v"},
      {u"%HOMEDRIVE%%HOMEPATH%/d", u"/h/d"}, {u"%homedrive%%HomePath%/d", u"/h/d"},
      {u"%UserProfile%", u"/profile"},       {u"%APPDATA%|%LocalAppData%", u"/h/.config|/h/.local/share"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(ExpandEnvironment(Text(row.Text)), Text(row.Expanded));
}

}  // namespace
