// The console program, beside a catalogue of its own, on a home folder made for it.
#include "CatalogueMaker.h"
#include "fixtures/TempTree.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>

namespace {

class DownloadProgram : public testing::Test {
 protected:
  DownloadProgram() {
    FTree.MakeFolder("program");
    FTree.MakeFolder("home");
    QFile::copy(QStringLiteral(REPORT_PROGRAM), FTree.Path("program/report"));
    FTree.WriteFile("home/.mozilla/firefox/profiles.ini", "[Profile0]\nPath=p.default\n");
    FTree.WriteFile("home/.mozilla/firefox/p.default/prefs.js",
                    "user_pref(\"browser.download.dir\", \"" + FHome + "/Fire fox \xc3\xa9\");\n");
    FTree.MakeFile("home/Fire fox \xc3\xa9/a b.iso", 900);
  }

  void WriteCatalogue(const QByteArray& content) {
    FTree.WriteFile("program/DownloadApplication.xml", content);
  }

  // The lines behind the heading of the download files, each without its size and the path of the home
  // folder. Nothing but the report may come out, in any case.
  QByteArrayList DownloadFiles(const QStringList& paths) {
    QProcess process;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(u"HOME"_qs, FTree.Path("home"));
    for (const QString& name : {u"XDG_CONFIG_HOME"_qs, u"HOMEPATH"_qs, u"XDG_DATA_HOME"_qs})
      variables.remove(name);
    process.setProcessEnvironment(variables);
    process.start(FTree.Path("program/report"), paths);
    EXPECT_TRUE(process.waitForFinished(60'000)) << qPrintable(process.errorString());
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardError(), "");
    const QByteArray text = process.readAllStandardOutput();
    const qsizetype heading = text.indexOf("\nDownload files\n");
    QByteArrayList files = heading < 0 ? QByteArrayList() : text.mid(heading + 16).split('\n');
    for (QByteArray& file : files)
      file = file.mid(file.indexOf(FHome) + FHome.size() + 1);
    if (!files.isEmpty()) files.removeLast();
    return files;
  }

  QByteArrayList DownloadFilesAtHome() { return DownloadFiles({FTree.Path("home")}); }

  TTempTree FTree;
  const QByteArray FHome = NameToBytes(FTree.Path("home"));
};

constexpr char kFirefoxFile[] = "Fire fox \xc3\xa9/a b.iso";

}  // namespace

TEST_F(DownloadProgram, ListsTheFilesOfAllApplicationsOnceAndLargestFirst) {
  FTree.WriteFile("home/.config/google-chrome/Default/Preferences", "{\"download\":{}}\n");
  FTree.WriteFile("home/.config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Down loads\"\n");
  FTree.MakeFile("home/Down loads/chrome", 800);
  FTree.MakeFile("home/Down loads/in/ini", 700);
  FTree.MakeFile("home/Down loads/in/deeper/key", 600);
  FTree.MakeFile("home/\xe6\x97\xa5\xe6\x9c\xac/bad\xff name", 500);
  FTree.MakeFile("home/registry/r", 1000);
  FTree.MakeFile("home/torrents/t", 400);
  FTree.MakeFile("home/torrents other/no", 5000);
  FTree.MakeFile("elsewhere/no", 5000);
  FTree.WriteFile("home/set/a.ini", "[s]\nk=" + FHome + "/Down loads/in\n");
  FTree.WriteFile("home/set/b.ini", "[s]\nk=" + FHome + "/../elsewhere\nj=" + FHome + "/torrents\n");
  FTree.WriteFile("home/set/a.dat",
                  "d1:k" + QByteArray::number(FHome.size() + 9) + ":" + FHome + "/torrentse");
  FTree.WriteFile("home/set/a.cfg", "K=" + FHome + "/Down loads/in/deeper\n");
  FTree.WriteFile("home/set/a.xml", "<c><k>" + FHome + "/\xe6\x97\xa5\xe6\x9c\xac</k></c>");
  const QByteArray set = "%UserProfile%/set";
  WriteCatalogue(
      MakeCatalogue({{.Kind = "keyvalue", .Directory = set, .Path = "a.cfg", .Name = "k"},
                     {.Kind = "ini", .Directory = set, .Path = "a.ini", .Section = "s", .Name = "k"},
                     {.Kind = "dat", .Directory = set, .Path = "a.dat", .Name = "k"},
                     {.Kind = "ini", .Directory = set, .Path = "b.ini", .Section = "s", .Name = "j"},
                     {.Kind = "xml", .Directory = set, .Path = "a.xml", .Section = "k"},
                     {.Kind = "reg", .Default = "%HOMEPATH%/registry"},
                     {.Kind = "reg", .Default = NameToBytes(FTree.Path("elsewhere"))}}));
  const QByteArrayList expected = {"registry/r",
                                   kFirefoxFile,
                                   "Down loads/chrome",
                                   "Down loads/in/ini",
                                   "Down loads/in/deeper/key",
                                   "\xe6\x97\xa5\xe6\x9c\xac/bad\xff name",
                                   "torrents/t"};
  EXPECT_EQ(DownloadFilesAtHome(), expected);
  EXPECT_EQ(DownloadFiles({u"--folder"_qs, FTree.Path("home")}), expected) << "by the folder route";
  EXPECT_EQ(DownloadFiles({FTree.Path("home/torrents")}), QByteArrayList({"torrents/t"}));
  EXPECT_EQ(DownloadFiles({FTree.Path("program")}), QByteArrayList());
}

TEST_F(DownloadProgram, BrokenSettingsTakeNothingFromWhatWasFoundBefore) {
  FTree.MakeFile("home/before/b", 1);
  FTree.WriteFile("home/broken.xml", "<c>");
  FTree.WriteFile("home/broken.dat", "d99999999999:x");
  FTree.MakeFifo("home/pipe");
  const TCatalogueEntry before{.Kind = "reg", .Default = FHome + "/before"};
  for (const TCatalogueEntry& broken :
       {TCatalogueEntry{.Kind = "xml", .Directory = FHome, .Path = "broken.xml"},
        {.Kind = "dat", .Directory = FHome, .Path = "broken.dat"},
        {.Kind = "keyvalue", .Directory = FHome, .Path = "pipe"}}) {
    WriteCatalogue(MakeCatalogue({before, broken}));
    EXPECT_EQ(DownloadFilesAtHome(), QByteArrayList({kFirefoxFile, "before/b"})) << broken.Path;
  }
}

TEST_F(DownloadProgram, ACatalogueThatIsNoneLeavesTheBrowsers) {
  EXPECT_EQ(DownloadFilesAtHome(), QByteArrayList({kFirefoxFile})) << "no catalogue at all";
  for (const char* catalogue : {"", "no XML", "<Applications/>"}) {
    WriteCatalogue(catalogue);
    EXPECT_EQ(DownloadFilesAtHome(), QByteArrayList({kFirefoxFile})) << catalogue;
  }
}
