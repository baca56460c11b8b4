// The console program from outside: what it prints, where, and its exit status.
#include "fixtures/NativePath.h"
#include "fixtures/TempTree.h"
#include "report/ProgramRun.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>

namespace {

TRun RunProgram(const QStringList& arguments, const QString& folder = {}) {
  QProcess process;
  process.setWorkingDirectory(folder);
  process.start(QStringLiteral(REPORT_PROGRAM), arguments);
  return Finish(process);
}

}  // namespace

TEST(ReportProgram, ReportsEachPathAndTheLargestOfAll) {
  TTempTree tree;
  tree.MakeFile("a/x/file", 5000);
  tree.MakeHole("b/huge", (qint64{1} << 40) + 1);
  const TRun run = RunProgram({u"--json"_qs, u"a"_qs, u"b"_qs}, tree.Path());
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Err, "") << "no progress line but on a terminal";
  const QJsonObject json = Parsed(run.Out);
  QJsonObject second = json[u"paths"][1].toObject();
  EXPECT_LT(second.take(u"allocated").toInteger(-1), qint64{1} << 30) << "holes take nothing";
  EXPECT_EQ(second, QJsonObject({{u"path"_qs, tree.Path("b")},
                                 {u"files"_qs, 1},
                                 {u"folders"_qs, 0},
                                 {u"bytes"_qs, (qint64{1} << 40) + 1},
                                 {u"unreadable"_qs, 0}}));
  EXPECT_EQ(json[u"largestFiles"][0][u"name"], u"huge"_qs);
  EXPECT_EQ(json[u"largestFiles"][1][u"path"], tree.Path("a/x/"));
  EXPECT_EQ(json[u"largestFolders"][0][u"size"], 5000);
  EXPECT_EQ(json[u"stopped"], false);
}

// The output is the same on every system: UTF-8, and no line ends but line feeds.
TEST(ReportProgram, NamesGoInAndOutAsUtf8) {
  TTempTree tree;
  const QByteArray name = "caf\xc3\xa9 \xe6\x97\xa5 \xf0\x9f\x93\x81";
  tree.MakeFile(name + "/n\xc3\xa9", 3);
  for (const QString& path : {tree.Path(name), NameFromBytes(name)}) {
    const TRun text = RunProgram({u"--folder"_qs, path}, tree.Path());
    EXPECT_EQ(text.ExitCode, 0) << text.Err.constData();
    EXPECT_TRUE(text.Out.startsWith(NameToBytes(tree.Path(name)) + "\n  1 file, 0 folders, 3 bytes ("));
    EXPECT_TRUE(text.Out.endsWith(NameToBytes(tree.Path(name + "/n\xc3\xa9")) + '\n'))
        << text.Out.constData();
    EXPECT_FALSE(text.Out.contains('\r'));
    EXPECT_EQ(Parsed(RunProgram({u"--json"_qs, path}, tree.Path()).Out)[u"largestFiles"][0][u"name"],
              u"né"_qs);
  }
}

TEST(ReportProgram, AnswersWithItsExitStatus) {
  TTempTree tree;
  tree.MakeFile("file", 1);
  const QString file = tree.Path("file");
  const QString missing = tree.Path("missing");
  struct {
    QStringList Arguments;
    int ExitCode;
    QByteArray Out, Err;  // what must be there
  } const cases[] = {{{u"--help"_qs}, 0, "Usage:", ""},
                     {{u"--version"_qs}, 0, "tallyscope-report ", ""},
                     {{missing}, 1, "", "missing: no such folder\n"},
                     {{file}, 1, "", "file: not a folder\n"},
                     {{tree.Path(), missing}, 1, "", "missing: no such folder\n"},
                     {{}, 2, "", "no path given\nUsage:"},
                     {{u"--nonsense"_qs}, 2, "", "unknown option --nonsense\n"},
                     {{u"--html"_qs}, 2, "", "--html needs a file\n"},
                     {{u"--folder"_qs, tree.Path(), tree.Path()}, 2, "", "exactly one path\n"}};
  for (const auto& [arguments, exitCode, out, err] : cases) {
    const TRun run = RunProgram(arguments);
    EXPECT_EQ(run.ExitCode, exitCode) << qPrintable(arguments.join(u' '));
    EXPECT_TRUE(run.Out.contains(out) && run.Out.isEmpty() == out.isEmpty()) << run.Out.constData();
    EXPECT_TRUE(run.Err.contains(err) && run.Err.isEmpty() == err.isEmpty()) << run.Err.constData();
    EXPECT_LE(exitCode == 1 ? run.Err.count('\n') : 0, 1);
  }
}

// The map is the same whoever has read the folders.
TEST(ReportProgram, APageIsWrittenWholeOrNotAtAll) {
  TTempTree tree;
  tree.MakeFile("scanned/a/one.png", 5000);
  tree.MakeFile("scanned/a/b/two.mp3", 2000);
  tree.MakeFile("scanned/c/three", 1000);
  tree.MakeFile("page.html", 3);
  const QString page = tree.Path("page.html");
  const QString scanned = tree.Path("scanned");
  const TRun written = RunProgram({u"--html"_qs, page, scanned});
  EXPECT_EQ(std::tuple(written.ExitCode, written.Out, written.Err), std::tuple(0, "", ""));
  const TRun printed = RunProgram({u"--folder"_qs, u"--html"_qs, u"-"_qs, scanned});
  const auto map = [](const QByteArray& html) {
    return html.mid(html.indexOf("<svg"), html.lastIndexOf("</svg>") - html.indexOf("<svg"));
  };
  QFile file(page);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray html = file.readAll();
  EXPECT_TRUE(html.endsWith("</html>\n") && html.contains("pictures, 4.88") && html.contains("(5000 bytes)"));
  EXPECT_EQ(map(html), map(printed.Out));
  for (const QString& target : {scanned, tree.Path("missing/page.html")}) {
    const TRun refused = RunProgram({u"--html"_qs, target, scanned});
    EXPECT_EQ(refused.ExitCode, 1);
    EXPECT_TRUE(refused.Err.contains("the page can't be written")) << refused.Err.constData();
  }
  EXPECT_EQ(QDir(tree.Path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
            QStringList({u"page.html"_qs, u"scanned"_qs}));
}
