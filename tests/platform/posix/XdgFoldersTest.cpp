// Folders by the user's environment, as the desktop's rules have it.
#include "platform/KnownFolders.h"

#include "fixtures/SystemTest.h"

#include <pwd.h>
#include <unistd.h>

TEST(XdgFolders, BaseDirectoriesFromTheEnvironment) {
  {
    const TVariables set{{"HOME", "/h/me/"},
                         {"XDG_CONFIG_HOME", "/c\xff/"},
                         {"XDG_DATA_HOME", "/d"},
                         {"XDG_CONFIG_DIRS", ":relative:/first/:/second"}};
    EXPECT_EQ(GetKnownFolder(TSpecialFolder::Profile), u"/h/me"_qs);
    EXPECT_EQ(NameToBytes(GetKnownFolder(TSpecialFolder::AppData)), "/c\xff");
    EXPECT_EQ(GetKnownFolder(TSpecialFolder::LocalAppData), u"/d"_qs);
    EXPECT_EQ(GetKnownFolder(TSpecialFolder::CommonAppData), u"/first"_qs);
    EXPECT_EQ(NameToBytes(GetBrowserFolder(TBrowser::Chrome)), "/c\xff/google-chrome");
  }
  const TVariables notSet{
      {"HOME", "/h"}, {"XDG_CONFIG_HOME", "relative"}, {"XDG_DATA_HOME", nullptr}, {"XDG_CONFIG_DIRS", ""}};
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::AppData), u"/h/.config"_qs);
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::LocalAppData), u"/h/.local/share"_qs);
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::CommonAppData), u"/etc/xdg"_qs);
  EXPECT_EQ(GetBrowserFolder(TBrowser::Firefox), u"/h/.mozilla/firefox"_qs);
}

TEST(XdgFolders, WithoutHomeTheUserDatabaseKnowsIt) {
  const TVariables unset{{"HOME", nullptr}};
  if (getpwuid(getuid()) == nullptr) GTEST_SKIP() << "the user database does not have this user";
  EXPECT_EQ(GetKnownFolder(TSpecialFolder::Profile), NameFromBytes(getpwuid(getuid())->pw_dir));
}

TEST(XdgFolders, DownloadsAreWhereTheUserDirectoriesSay) {
  TTempTree tree;
  const QByteArray home = NameToBytes(tree.Path());
  const TVariables set{{"HOME", home.constData()}, {"XDG_CONFIG_HOME", nullptr}};
  EXPECT_EQ(GetDownloadsFolder(), tree.Path("Downloads")) << "no user directories at all";
  const std::pair<const char*, QString> rows[] = {
      {"", tree.Path("Downloads")},
      {"XDG_DOWNLOAD_DIR=\"$HOME/\"\n", tree.Path("Downloads")},
      {"XDG_DOWNLOAD_DIR=\"/srv/dl\"\n", u"/srv/dl"_qs},
      {"XDG_DOWNLOAD_DIR=\"$HOME/T\xc3\xa9l\xc3\xa9 chargements\"\n",
       tree.Path("T\xc3\xa9l\xc3\xa9 chargements")}};
  for (const auto& [line, folder] : rows) {
    tree.WriteFile(".config/user-dirs.dirs", line);
    EXPECT_EQ(GetDownloadsFolder(), folder) << line;
  }
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
  const std::pair<QString, QString> rows[] = {
      {u"<%TALLYSCOPE_EMPTY%>"_qs, u"<>"_qs},
      {u"50% of %TALLYSCOPE_A%"_qs, u"50% of v"_qs},
      {u"%HOMEDRIVE%%HOMEPATH%/d"_qs, u"/h/d"_qs},
      {u"%homedrive%%HomePath%/d"_qs, u"/h/d"_qs},
      {u"%UserProfile%"_qs, u"/profile"_qs},
      {u"%APPDATA%|%LocalAppData%"_qs, u"/h/.config|/h/.local/share"_qs}};
  for (const auto& [text, expanded] : rows)
    EXPECT_EQ(ExpandEnvironment(text), expanded) << text.toStdString();
}
