// The browsers and the catalogue's applications of one made home folder.
#include "download/DownloadDirectoryScan.h"

#include "CatalogueMaker.h"
#include "download/SettingsFile.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "fixtures/Variables.h"
#include "platform/Paths.h"
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
    FTree.MakeFolder("Downloads");
    FTree.WriteFile(".config/google-chrome/Default/Preferences", "{}");
  }

  // What was found, relative to the home folder.
  [[nodiscard]] QStringList Found() const {
    QStringList names = FScan.FDirectories;
    return names.replaceInStrings(FTree.Path() + u'/', QString());
  }

  TTempTree FTree;
  const QByteArray FHome = NameToBytes(FTree.Path());
  const TVariables FVariables{
      {"HOME", FHome.constData()}, {"XDG_CONFIG_HOME", nullptr}, {"HOMEPATH", nullptr}};
  TDownloadDirectoryScan FScan;
};

}  // namespace

TEST_F(DirectoryScan, EachKindOfSettingsIsReadAndBrowsersComeFirst) {
  for (const char* name : {"ini", "reg d\xc3\xa9", "dat", "key", "xml"})
    FTree.MakeFolder(name);
  FTree.WriteFile("set/a.ini", "[Main]\nDir = \"" + FHome + "/ini\"\n");
  FTree.WriteFile("set/a.dat", "d3:dir" + QByteArray::number(FHome.size() + 4) + ":" + FHome + "/date");
  FTree.WriteFile("set/a.properties", "dir=" + FHome + "/key\n");
  FTree.WriteFile("set/a.xml", "<c><dir>" + FHome + "/xml</dir></c>");
  MakeBrowser();
  const QByteArray set = "%HOMEDRIVE%%HOMEPATH%/set";
  Scan({{.Kind = "xml", .Directory = set, .Path = "a.xml", .Section = "dir"},
        {.Kind = "keyvalue", .Directory = set, .Path = "a.properties", .Name = "dir"},
        {.Kind = "dat", .Directory = set, .Path = "a.dat", .Name = "dir"},
        {.Kind = "reg", .Default = "%HOMEPATH%/reg d\xc3\xa9"},
        {.Kind = "ini", .Directory = FHome + "/set/", .Path = "a.ini", .Section = "main", .Name = "dir"},
        {.Kind = "INI", .Directory = set, .Path = "a.ini", .Default = FHome}});
  EXPECT_EQ(Found(),
            QStringList({u"Downloads/"_qs, u"xml/"_qs, u"key/"_qs, u"dat/"_qs, u"reg dé/"_qs, u"ini/"_qs}));
}

TEST_F(DirectoryScan, AnotherScanBeginsAnew) {
  FTree.MakeFolder("a");
  Scan({{.Kind = "reg", .Default = FHome + "/a"}});
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
         .Letter = FHome + "/drive/"},
        {.Kind = "reg", .Default = FHome + "/drive/b", .Letter = "/nowhere"}});
  EXPECT_EQ(Found(), QStringList({u"drive/a/"_qs, u"drive/b/"_qs}));
}

// With no installation folder known, the path of the settings stands alone.
TEST_F(DirectoryScan, TheInstallFolderComesFromTheRegistryAlone) {
  FTree.MakeFolder("a");
  FTree.WriteFile("installfolder/set", "k=/\n");
  FTree.WriteFile("set", "k=" + FHome + "/a\n");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(FHome.toStdString());
  Scan({{.Kind = "keyvalue", .Directory = "installfolder", .Path = "set", .Name = "k"}});
  std::filesystem::current_path(before);
  EXPECT_EQ(Found(), QStringList({u"a/"_qs}));
}

TEST_F(DirectoryScan, ExpandedPathsEndAt259Characters) {
  const QByteArray part(259 - FHome.size() - 1, 'x');
  FTree.MakeFolder(part.left(200) + "/" + part.mid(201));
  const QByteArray fits = FHome + "/" + part.left(200) + "/" + part.mid(201);
  ASSERT_EQ(fits.size(), 259);
  Scan({{.Kind = "reg", .Default = fits + "-and-more"}});
  EXPECT_EQ(FScan.FDirectories, QStringList({NameFromBytes(fits) + u'/'}));
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
  const TCatalogueEntry before{.Kind = "reg", .Default = FHome + "/before"};
  const TCatalogueEntry after{.Kind = "reg", .Default = FHome + "/after"};
  EXPECT_THROW(Scan({before, {.Kind = "xml", .Directory = FHome, .Path = "broken.xml"}, after}), TXmlError);
  EXPECT_EQ(Found(), QStringList({u"before/"_qs}));
  EXPECT_THROW(Scan({before, {.Kind = "dat", .Directory = FHome, .Path = "broken.dat"}, after}),
               TSettingsError);
  EXPECT_EQ(Found(), QStringList({u"before/"_qs}));
}
