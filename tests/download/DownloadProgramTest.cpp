// The console program, beside a catalogue of its own, on a home folder made for it.
#include "CatalogueMaker.h"
#include "fixtures/SystemTest.h"

// Texts in files that tell no encoding are in that of the system. Nothing but the report may come out.
TEST(DownloadProgram, ListsTheFilesOfAllApplicationsOnceAndLargestFirst) {
  TTempTree programs;
  TTestUser user;
  TTempTree& home = user.Home;
  const auto atHome = [&home](const QByteArray& name) { return NameToBytes(home.Path(name)); };
  programs.MakeFile("program/of the program", 1);
  const QFileInfo program(QStringLiteral(REPORT_PROGRAM));
  QFile::copy(program.filePath(), programs.Path("program/report.exe"));
  QFile::copy(program.path() + u"/Volindex.dll"_qs, programs.Path("program/Volindex.dll"));
  const QByteArray web = "From the web \xc3\xa9",
                   odd = HasDrives() ? "\xe6\x97\xa5/odd" : "\xe6\x97\xa5/bad\xff";
  const QByteArrayList expected = {"torrents/t", web + "/a b.iso", "Down loads/key", "Down loads/in/deeper",
                                   odd};
  for (int i = 0; i < expected.size(); ++i)
    home.MakeFile(expected[i], 1000 - i);
  home.MakeFile("torrents other/no", 5000);
  const QString escaped = home.Path(web).replace(u"\\"_qs, u"\\\\"_qs);
  home.WriteFile(TTestUser::Chrome + "/Default/Preferences",
                 "{\"default_directory\": \"" + escaped.toLocal8Bit() + "\"}\n");
  home.WriteFile("set/a.ini",
                 "[s]\nno=" + NameToBytes(programs.Path()) + "\nall=" + atHome("Down loads") + '\n');
  home.WriteFile("set/a.cfg", "K=" + atHome("Down loads/in") + '\n');
  home.WriteFile("set/a.xml", "<c><k>" + atHome("\xe6\x97\xa5") + "</k></c>");
  const QByteArray set = HasDrives() ? "%UserProfile%\\set" : "%UserProfile%/set";
  programs.WriteFile(
      "program/DownloadApplication.xml",
      MakeCatalogue({{.Kind = "keyvalue", .Directory = set, .Path = "a.cfg", .Name = "k"},
                     {.Kind = "ini", .Directory = set, .Path = "a.ini", .Section = "s", .Name = "all"},
                     {.Kind = "ini", .Directory = set, .Path = "a.ini", .Section = "s", .Name = "no"},
                     {.Kind = "xml", .Directory = set, .Path = "a.xml", .Section = "k"},
                     {.Kind = "reg", .Default = atHome("torrents")}}));
  const std::pair<QStringList, QByteArrayList> runs[] = {{{home.Path()}, expected},
                                                         {{u"--folder"_qs, home.Path()}, expected},
                                                         {{home.Path("torrents")}, {"torrents/t"}},
                                                         {{home.Path("set")}, {}}};
  for (const auto& [arguments, files] : runs) {
    QProcess process;
    process.start(programs.Path("program/report.exe"), arguments);
    ASSERT_TRUE(process.waitForFinished(60'000)) << qPrintable(process.errorString());
    EXPECT_EQ(process.readAllStandardError() + QByteArray::number(process.exitCode()), "0");
    const QByteArray text = process.readAllStandardOutput(), heading = "\nDownload files\n";
    QByteArrayList listed;
    if (const qsizetype at = text.indexOf(heading); at >= 0)
      listed = text.mid(at + heading.size()).chopped(1).split('\n');
    for (QByteArray& file : listed)
      file = file.mid(file.indexOf(atHome("")) + atHome("").size()).replace(HasDrives() ? '\\' : '/', '/');
    EXPECT_EQ(listed, files) << qPrintable(arguments.join(u' '));
  }
}
