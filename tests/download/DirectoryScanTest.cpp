// The browsers and the catalogue's applications of one made home folder.
#include "download/DownloadDirectoryScan.h"

#include "CatalogueMaker.h"
#include "download/SettingsFile.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TestUser.h"
#include "platform/ComThread.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class DirectoryScan : public testing::Test {
 protected:
  void Scan(std::initializer_list<TCatalogueEntry> entries) {
    FTree.WriteFile("catalogue.xml", MakeCatalogue(entries));
    FScan.ScanDirectories(FTree.Path("catalogue.xml"));
  }

  // Chrome is at home here, with no folder named.
  void MakeBrowser() {
    FTree.MakeFolder(TTestUser::Downloads);
    FTree.WriteFile(TTestUser::Chrome + "/Default/Preferences", "{}");
  }

  // What was found, relative to the home folder and with "/" for the delimiter.
  [[nodiscard]] QStringList Found() const {
    QStringList names;
    for (const QString& dir : FScan.FDirectories)
      names.append(dir.mid(FTree.Path().size() + 1).replace(PathDelim, u'/'));
    return names;
  }

  // A folder at home by its name on Linux, as settings have it.
  [[nodiscard]] QByteArray AtHome(const QByteArray& name) const { return NameToBytes(FTree.Path(name)); }

  const TComThread FComponents;
  TTestUser FUser;
  TTempTree& FTree = FUser.Home;
  const QByteArray FHome = NameToBytes(FTree.Path());
  TDownloadDirectoryScan FScan;
};

}  // namespace

TEST_F(DirectoryScan, EachKindOfSettingsIsReadAndBrowsersComeFirst) {
  for (const char* name : {"ini", "reg d\xc3\xa9", "dat", "key", "xml"})
    FTree.MakeFolder(name);
  FTree.WriteFile("set/a.ini", "[Main]\nDir = \"" + AtHome("ini") + "\"\n");
  FTree.WriteFile("set/a.dat", "d3:dir" + QByteArray::number(FHome.size() + 4) + ":" + AtHome("dat") + 'e');
  FTree.WriteFile("set/a.properties", "dir=" + AtHome("key") + '\n');
  FTree.WriteFile("set/a.xml", "<c><dir>" + AtHome("xml") + "</dir></c>");
  MakeBrowser();
  const QByteArray set = "%HOMEDRIVE%%HOMEPATH%" + AtHome("set").mid(FHome.size());
  Scan({{.Kind = "xml", .Directory = set, .Path = "a.xml", .Section = "dir"},
        {.Kind = "keyvalue", .Directory = set, .Path = "a.properties", .Name = "dir"},
        {.Kind = "dat", .Directory = set, .Path = "a.dat", .Name = "dir"},
        {.Kind = "reg", .Default = "%HOMEDRIVE%" + AtHome("reg d\xc3\xa9").mid(HasDrives() ? 2 : 0)},
        {.Kind = "ini", .Directory = AtHome("set/"), .Path = "a.ini", .Section = "main", .Name = "dir"},
        {.Kind = "INI", .Directory = set, .Path = "a.ini", .Default = FHome}});
  EXPECT_EQ(Found(),
            QStringList({u"Downloads/"_qs, u"xml/"_qs, u"key/"_qs, u"dat/"_qs, u"reg dé/"_qs, u"ini/"_qs}));
}

TEST_F(DirectoryScan, AnotherScanBeginsAnew) {
  FTree.MakeFolder("a");
  Scan({{.Kind = "reg", .Default = AtHome("a")}});
  Scan({});
  EXPECT_EQ(Found(), QStringList());
}

TEST_F(DirectoryScan, WhatIsNotAbsoluteGetsTheLetterInFront) {
  FTree.MakeFolder("drive/a");
  FTree.MakeFolder("drive/b");
  FTree.WriteFile("set.ini", "[s]\nk=a\n");
  Scan({{.Kind = "ini",
         .Directory = FHome,
         .Path = "set.ini",
         .Section = "s",
         .Name = "k",
         .Letter = AtHome("drive/")},
        {.Kind = "reg", .Default = AtHome("drive/b"), .Letter = AtHome("nowhere")}});
  EXPECT_EQ(Found(), QStringList({u"drive/a/"_qs, u"drive/b/"_qs}));
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
  EXPECT_EQ(Found(), QStringList({u"a/"_qs}));
}

TEST_F(DirectoryScan, ExpandedPathsEndAt259Characters) {
  const QByteArray part(259 - FHome.size() - 1, 'x');
  const QByteArray name = part.left(150) + "/" + part.mid(151);
  FTree.MakeFolder(name);
  ASSERT_EQ(AtHome(name).size(), 259);
  Scan({{.Kind = "reg", .Default = AtHome(name) + "-and-more"}});
  EXPECT_EQ(FScan.FDirectories, QStringList({FTree.Path(name) + PathDelim}));
}

TEST_F(DirectoryScan, ACatalogueThatIsNoneLeavesTheBrowsers) {
  MakeBrowser();
  const QByteArray good = MakeCatalogue({{.Kind = "reg", .Default = FHome}});
  for (const QByteArray& catalogue :
       {QByteArray(), QByteArray("no XML"), good.chopped(10), QByteArray(good).replace("DownloadA", "A")}) {
    FTree.WriteFile("catalogue.xml", catalogue);
    FScan.ScanDirectories(FTree.Path("catalogue.xml"));
    EXPECT_EQ(Found(), QStringList({u"Downloads/"_qs})) << catalogue.constData();
  }
  FScan.ScanDirectories(FTree.Path("missing"));
  EXPECT_EQ(Found(), QStringList({u"Downloads/"_qs}));
}

TEST_F(DirectoryScan, BrokenSettingsEndTheScanAndLeaveWhatWasFound) {
  for (const char* name : {"before", "after"})
    FTree.MakeFolder(name);
  FTree.WriteFile("broken.xml", "<c><dir>");
  FTree.WriteFile("broken.dat", "d99999999999:");
  const TCatalogueEntry before{.Kind = "reg", .Default = AtHome("before")};
  const TCatalogueEntry after{.Kind = "reg", .Default = AtHome("after")};
  EXPECT_THROW(Scan({before, {.Kind = "xml", .Directory = FHome, .Path = "broken.xml"}, after}), TXmlError);
  EXPECT_EQ(Found(), QStringList({u"before/"_qs}));
  EXPECT_THROW(Scan({before, {.Kind = "dat", .Directory = FHome, .Path = "broken.dat"}, after}),
               TSettingsError);
  EXPECT_EQ(Found(), QStringList({u"before/"_qs}));
}
