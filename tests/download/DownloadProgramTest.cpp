// The console program, beside a catalogue of its own, on a home folder made for it.
#include "CatalogueMaker.h"
#include "fixtures/NativePath.h"
#include "fixtures/TestUser.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

// Texts in files that tell no encoding are in that of the system.
QByteArray Local(const QByteArray& utf8) {
  return QString::fromUtf8(utf8).toLocal8Bit();
}

class DownloadProgram : public testing::Test {
 protected:
  DownloadProgram() {
    FPrograms.MakeFolder("program");
    const QFileInfo program(QStringLiteral(REPORT_PROGRAM));
    QFile::copy(program.filePath(), FPrograms.Path("program/report.exe"));
    QFile::copy(program.path() + u"/Volindex.dll"_qs, FPrograms.Path("program/Volindex.dll"));
    QByteArray folder = AtHome("From the web \xc3\xa9");
    FHome.WriteFile(TTestUser::Chrome + "/Default/Preferences",
                    "{\"default_directory\": \"" + Local(folder.replace("\\", "\\\\")) + "\"}\n");
    FHome.MakeFile("From the web \xc3\xa9/a b.iso", 900);
  }

  [[nodiscard]] QByteArray AtHome(const QByteArray& name) const { return NameToBytes(FHome.Path(name)); }

  // The lines behind the heading of the download files, each without its size and the path of the home
  // folder and with "/" for the delimiter. Nothing but the report may come out, in any case.
  QByteArrayList DownloadFiles(const QStringList& paths) {
    QProcess process;
    process.start(FPrograms.Path("program/report.exe"), paths);
    EXPECT_TRUE(process.waitForFinished(60'000)) << qPrintable(process.errorString());
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardError(), "");
    const QByteArray text = process.readAllStandardOutput();
    const qsizetype heading = text.indexOf("\nDownload files\n");
    QByteArrayList files = heading < 0 ? QByteArrayList() : text.mid(heading + 16).split('\n');
    for (QByteArray& file : files)
      file = file.mid(file.indexOf(AtHome("")) + AtHome("").size()).replace(HasDrives() ? '\\' : '/', '/');
    if (!files.isEmpty()) files.removeLast();
    return files;
  }

  TTempTree FPrograms;
  TTestUser FUser;
  TTempTree& FHome = FUser.Home;
};

}  // namespace

TEST_F(DownloadProgram, ListsTheFilesOfAllApplicationsOnceAndLargestFirst) {
  FHome.MakeFile("Down loads/browser", 800);
  FHome.MakeFile("Down loads/in/deeper/key", 600);
  const QByteArray oddFile = HasDrives() ? "\xe6\x97\xa5/odd name" : "\xe6\x97\xa5/bad\xff name";
  FHome.MakeFile(oddFile, 500);
  FHome.MakeFile("torrents/t", 1000);
  FHome.MakeFile("torrents other/no", 5000);
  FPrograms.MakeFile("elsewhere/no", 5000);
  FHome.WriteFile("broken.xml", "<c>");
  FHome.WriteFile("set/a.ini", "[s]\nno=" + NameToBytes(FPrograms.Path("elsewhere")) +
                                   "\nall=" + AtHome("Down loads") + '\n');
  FHome.WriteFile("set/a.cfg", "K=" + AtHome("Down loads/in/deeper") + '\n');
  FHome.WriteFile("set/a.xml", "<c><k>" + AtHome("\xe6\x97\xa5") + "</k></c>");
  const QByteArray set = HasDrives() ? "%UserProfile%\\set" : "%UserProfile%/set";
  FPrograms.WriteFile(
      "program/DownloadApplication.xml",
      MakeCatalogue({{.Kind = "keyvalue", .Directory = set, .Path = "a.cfg", .Name = "k"},
                     {.Kind = "xml", .Directory = AtHome(""), .Path = "broken.xml"},
                     {.Kind = "ini", .Directory = set, .Path = "a.ini", .Section = "s", .Name = "all"},
                     {.Kind = "ini", .Directory = set, .Path = "a.ini", .Section = "s", .Name = "no"},
                     {.Kind = "xml", .Directory = set, .Path = "a.xml", .Section = "k"},
                     {.Kind = "reg", .Default = AtHome("torrents")}}));
  const QByteArrayList expected = {"torrents/t", "From the web \xc3\xa9/a b.iso", "Down loads/browser",
                                   "Down loads/in/deeper/key", oddFile};
  EXPECT_EQ(DownloadFiles({FHome.Path()}), expected);
  EXPECT_EQ(DownloadFiles({u"--folder"_qs, FHome.Path()}), expected) << "by the folder route";
  EXPECT_EQ(DownloadFiles({FHome.Path("torrents")}), QByteArrayList({"torrents/t"}));
  EXPECT_EQ(DownloadFiles({FPrograms.Path("program")}), QByteArrayList());
}
