// Which folders are found by the browsers and a catalogue in one made home folder, and which of them stay.
#include "download/DownloadDirectoryScan.h"

#include "CatalogueMaker.h"
#include "fixtures/SystemTest.h"
#include "platform/Process.h"

#include <filesystem>

namespace {

class DirectoryScan : public testing::Test {
 protected:
  void ScanCatalogue(const QByteArray& catalogue) {
    FTree.WriteFile("catalogue.xml", catalogue);
    FScan.ScanDirectories(FTree.Path("catalogue.xml"));
  }
  void Scan(std::initializer_list<TCatalogueEntry> entries) { ScanCatalogue(MakeCatalogue(entries)); }

  // Chrome is at home here, with no folder named.
  void MakeBrowser() {
    FTree.MakeFolder(TTestUser::Downloads);
    FTree.WriteFile(TTestUser::Chrome + "/Default/Preferences", "{}");
  }

  void Add(std::initializer_list<const char*> names) {
    for (const char* name : names)
      TDownloadDirectoryScan::AddDirectory(FScan.FDirectories, FTree.Path(name));
  }

  // What was found, relative to the home folder and with "/" for the delimiter.
  [[nodiscard]] QString Found() const {
    QStringList names;
    for (const QString& dir : FScan.FDirectories)
      names.append(dir.mid(FTree.Path().size() + 1).replace(PathDelim, u'/'));
    return names.join(u' ');
  }

  // A folder at home as settings have it.
  [[nodiscard]] QByteArray AtHome(const QByteArray& name) const { return NameToBytes(FTree.Path(name)); }

  const TComThread FComponents;
  TTestUser FUser;
  TTempTree& FTree = FUser.Home;
  const QByteArray FHome = NameToBytes(FTree.Path());
  TDownloadDirectoryScan FScan;
};

QStringList Native(const QString& paths) {
  QStringList list = paths.split(u' ', Qt::SkipEmptyParts);
  for (QString& path : list)
    path = NativePath(path);
  return list;
}

}  // namespace

TEST_F(DirectoryScan, EachKindOfSettingsIsReadAndBrowsersComeFirst) {
  for (const char* name : {"ini", "reg\xc3\xa9", "dat", "key", "xml", "drive/a"})
    FTree.MakeFolder(name);
  FTree.WriteFile("set/a.ini", "[Main]\nDir = \"" + AtHome("ini") + "\"\nk=a\n");
  FTree.WriteFile("set/a.dat", "d3:dir" + QByteArray::number(FHome.size() + 4) + ":" + AtHome("dat") + 'e');
  FTree.WriteFile("set/a.properties", "dir=" + AtHome("key") + '\n');
  FTree.WriteFile("set/a.xml", "<c><dir>" + AtHome("xml") + "</dir></c>");
  MakeBrowser();
  const QByteArray set = "%HOMEDRIVE%%HOMEPATH%" + AtHome("set").mid(FHome.size());
  const QByteArray drive = AtHome("drive/"), no = AtHome("nowhere");
  Scan({{.Kind = "xml", .Directory = set, .Path = "a.xml", .Section = "dir"},
        {.Kind = "keyvalue", .Directory = set, .Path = "a.properties", .Name = "dir", .Letter = no},
        {.Kind = "dat", .Directory = set, .Path = "a.dat", .Name = "dir"},
        {.Kind = "reg", .Default = "%HOMEDRIVE%" + AtHome("reg\xc3\xa9").mid(HasDrives() ? 2 : 0)},
        {.Kind = "ini", .Directory = AtHome("set/"), .Path = "a.ini", .Section = "main", .Name = "dir"},
        {.Kind = "ini", .Directory = set, .Path = "a.ini", .Section = "main", .Name = "k", .Letter = drive},
        {.Kind = "INI", .Directory = set, .Path = "a.ini", .Default = FHome}});
  EXPECT_EQ(Found(), u"Downloads/ xml/ key/ dat/ regé/ ini/ drive/a/"_qs);
  Scan({});
  EXPECT_EQ(Found(), u"Downloads/"_qs) << "another scan begins anew";
}

// With no installation folder known, the path of the settings stands alone.
TEST_F(DirectoryScan, TheInstallFolderComesFromTheRegistryAlone) {
  FTree.MakeFolder("a");
  FTree.WriteFile("installfolder/set", "k=" + FHome + '\n');
  FTree.WriteFile("set", "k=" + AtHome("a") + '\n');
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(FHome.toStdString());
  Scan({{.Kind = "keyvalue", .Directory = "installfolder", .Path = "set", .Name = "k"}});
  std::filesystem::current_path(before);
  EXPECT_EQ(Found(), u"a/"_qs);
}

TEST_F(DirectoryScan, ExpandedPathsEndAt259Characters) {
  const QByteArray part(259 - FHome.size() - 1, 'x');
  const QByteArray name = part.left(150) + "/" + part.mid(151);
  FTree.MakeFolder(name);
  Scan({{.Kind = "reg", .Default = AtHome(name) + "-and-more"}});
  EXPECT_EQ(FScan.FDirectories, QStringList({FTree.Path(name) + PathDelim}));
}

TEST_F(DirectoryScan, BrowsersApplicationsAndTheCatalogueFailAlone) {
  MakeBrowser();
  const QByteArray good = MakeCatalogue({{.Kind = "reg", .Default = FHome}});
  for (const QByteArray& catalogue :
       {QByteArray(), QByteArray("no XML"), good.chopped(10), QByteArray(good).replace("DownloadA", "A")}) {
    ScanCatalogue(catalogue);
    EXPECT_EQ(Found(), u"Downloads/"_qs) << catalogue.constData();
  }
  FScan.ScanDirectories(FTree.Path("missing"));
  EXPECT_EQ(Found(), u"Downloads/"_qs);
  FTree.MakeFolder("after");
  FTree.WriteFile(TTestUser::Firefox + "/profiles.ini", "[Profile0]\nPath=p\n");
  FTree.WriteFile("broken.xml", "<c><dir>");
  FTree.WriteFile("broken.dat", "d99999999999:");
  for (const QByteArray& shut : {TTestUser::Firefox + "/p/prefs.js", QByteArray("shut")}) {
    FTree.WriteFile(shut, "k=v\n");
    FTree.MakeUnreadable(shut);
  }
  FTree.WriteFile("catalogue.xml",
                  MakeCatalogue({{.Kind = "xml", .Directory = FHome, .Path = "broken.xml"},
                                 {.Kind = "dat", .Directory = FHome, .Path = "broken.dat"},
                                 {.Kind = "keyvalue", .Directory = FHome, .Path = "shut", .Name = "k"},
                                 {.Kind = "reg", .Default = AtHome("after")}}));
  const TOrdinaryUser user;
  FScan.ScanDirectories(FTree.Path("catalogue.xml"));
  EXPECT_EQ(Found(), u"Downloads/ after/"_qs);
}

TEST_F(DirectoryScan, OfNestedFoldersTheOuterStaysAndMovesToTheEnd) {
  for (const char* name : {"dl/sub/deep", "d", "a", "A"})
    FTree.MakeFolder(name);
  FTree.MakeFile("file", 1);
  Add({"dl/sub/deep", "a", "dl/sub/", "missing", "file", "dl/sub/deep", "dl/sub"});
  TDownloadDirectoryScan::AddDirectory(FScan.FDirectories, {});
  EXPECT_EQ(Found(), u"a/ dl/sub/"_qs);
  Add({"d", "dl/", "A"});
  EXPECT_EQ(Found(), HasDrives() ? u"a/ d/ dl/"_qs : u"a/ d/ dl/ A/"_qs) << "where case tells names apart";
  // In the Japanese code page the katakana so ends in the byte of the delimiter and gets none.
  FScan.FDirectories.clear();
  FTree.MakeFolder("\xe3\x82\xbd");
  Add({"\xe3\x82\xbd"});
  EXPECT_EQ(Found(), u"ソ"_qs.toLocal8Bit() == "\x83\x5c" ? u"ソ"_qs : u"ソ/"_qs);
}

// Another volume below a location is no part of it. None of the folders needs to exist.
TEST_F(DirectoryScan, OnlyWhatBeginsWithALocationStaysAndOfNestedFoldersTheOuter) {
  const QString all = u"/d/abc/ /d/abcdef/ /d/x/ /e/y/ "_qs, home = u"/home/m/ /homework/"_qs;
  const std::array<QString, 4> rows[] = {
      {all, u"/d/abc"_qs, u"/"_qs, u"/d/abc/ /d/abcdef/"_qs},
      {all, u"/e/ /d/abc/"_qs, u"/"_qs, u"/d/abc/ /e/y/"_qs},
      {all, u"/d/x/deeper"_qs, u"/"_qs, {}},
      {all, {}, u"/"_qs, {}},
      {u"/d/a/b/ /d/a/ /d/a/b/c/ /e/"_qs, u"/"_qs, u"/"_qs, u"/d/a/ /e/"_qs},
      {home, u"/"_qs, u"/ /home/"_qs, u"/homework/"_qs},
      {home, u"/home/"_qs, u"/ /home/"_qs, u"/home/m/"_qs},
      {home, u"/home"_qs, u"/ /home/"_qs, home},
      {home, u"/ /home/"_qs, u"/ /home/"_qs, home},
      {u"/d/A/ /d/\u00c4/"_qs, u"/D/a /d/\u00e4"_qs, u"/"_qs, HasDrives() ? u"/d/A/"_qs : QString()}};
  for (const auto& [folders, locations, volumes, kept] : rows) {
    FScan.FDirectories = Native(folders);
    FScan.FilterByLocations(Native(locations), Native(volumes));
    EXPECT_EQ(FScan.FDirectories, Native(kept)) << qPrintable(folders + locations);
  }
}
