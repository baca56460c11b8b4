// The console program from outside: what it prints, where, and its exit status.
#include "fixtures/TempTree.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace {

struct TRun {
  int ExitCode = -1;
  QByteArray Out;
  QByteArray Err;
};

TRun Finish(QProcess& process) {
  if (!process.waitForFinished(120'000) || process.exitStatus() != QProcess::NormalExit) {
    ADD_FAILURE() << qPrintable(process.errorString());
    return {};
  }
  return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

TRun RunProgram(const QStringList& arguments, const QString& folder = {}) {
  QProcess process;
  process.setWorkingDirectory(folder);
  process.start(QStringLiteral(REPORT_PROGRAM), arguments);
  return Finish(process);
}

// Runs a line of the shell, which alone can pass bytes that are no text; "$0" is the program.
TRun RunLine(const QByteArray& line, const QString& folder) {
  TTempTree scripts;
  scripts.WriteFile("line", line);
  QProcess process;
  process.setWorkingDirectory(folder);
  process.start(u"bash"_qs, {u"-c"_qs, u". \"$1\""_qs, QStringLiteral(REPORT_PROGRAM), scripts.Path("line")});
  return Finish(process);
}

void MakeFiles(TTempTree& tree) {
  for (int i = 0; i < 100; ++i)
    tree.MakeHole("sub/" + QByteArray::number(i), 1);
}

// Scans the tree many times over, so that it takes a while, on a terminal of 80 columns whose output and
// keys are the process's.
void StartOnTerminal(QProcess& process, const TTempTree& tree, int times, const QString& options,
                     const QString& output) {
  const QString command = QStringLiteral(REPORT_PROGRAM " %1 %2 > %3")
                              .arg(options, QStringList(times, u"."_qs).join(u' '), output);
  process.setWorkingDirectory(tree.Path());
  process.start(u"script"_qs, {u"-qec"_qs, command, u"/dev/null"_qs});
}

QJsonObject Parsed(const QByteArray& json) {
  QJsonParseError error;
  const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
  EXPECT_EQ(error.error, QJsonParseError::NoError) << json.constData();
  return object;
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
  EXPECT_EQ(json[u"paths"][1], QJsonObject({{u"path"_qs, tree.Path("b")},
                                            {u"files"_qs, 1},
                                            {u"folders"_qs, 0},
                                            {u"bytes"_qs, (qint64{1} << 40) + 1}}));
  EXPECT_EQ(json[u"largestFiles"][0][u"name"], u"huge"_qs);
  EXPECT_EQ(json[u"largestFiles"][1][u"path"], tree.Path("a/x/"));
  EXPECT_EQ(json[u"largestFolders"][0][u"size"], 5000);
  EXPECT_EQ(json[u"stopped"], false);
}

TEST(ReportProgram, PrintsTextUnlessToldOtherwise) {
  TTempTree tree;
  tree.MakeFile("a/x/file", 5000);
  const TRun run = RunProgram({u"./a"_qs}, tree.Path());
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_TRUE(run.Out.startsWith(NameToBytes(tree.Path("a")) + "\n  1 file, 1 folder, 5000 bytes ("));
}

TEST(ReportProgram, BothRoutesGiveTheTotalsOfFind) {
  const QString root = u"/usr/share/doc"_qs;
  QProcess find;
  find.start(u"find"_qs, {root, u"-xdev"_qs, u"-mindepth"_qs, u"1"_qs, u"-printf"_qs, u"%y %s\n"_qs});
  const TRun truth = Finish(find);
  qint64 files = 0;
  qint64 folders = 0;
  qint64 bytes = 0;
  for (const QByteArray& line : truth.Out.split('\n')) {
    if (line.startsWith('d')) ++folders;
    if (!line.startsWith('f') && !line.startsWith('l')) continue;
    ++files;
    bytes += line.mid(2).toLongLong();
  }
  ASSERT_GT(files, 0);
  for (const auto& arguments : {QStringList{u"--json"_qs, root}, {u"--json"_qs, u"--folder"_qs, root}}) {
    const QJsonValue path = Parsed(RunProgram(arguments).Out)[u"paths"][0];
    EXPECT_EQ(
        path,
        QJsonObject(
            {{u"path"_qs, root}, {u"files"_qs, files}, {u"folders"_qs, folders}, {u"bytes"_qs, bytes}}));
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
  } const cases[] = {
      {{u"--help"_qs}, 0, "Usage:", ""},
      {{u"--version"_qs}, 0, "tallyscope-report ", ""},
      {{missing}, 1, "", "missing: no such folder\n"},
      {{file}, 1, "", "file: not a folder\n"},
      {{tree.Path(), missing}, 1, "", "missing: no such folder\n"},
      {{}, 2, "", "no path given\nUsage:"},
      {{u"--nonsense"_qs}, 2, "", "unknown option --nonsense\n"},
      {{u"--folder"_qs, tree.Path(), tree.Path()}, 2, "", "exactly one path\n"},
  };
  for (const auto& [arguments, exitCode, out, err] : cases) {
    const TRun run = RunProgram(arguments);
    EXPECT_EQ(run.ExitCode, exitCode) << qPrintable(arguments.join(u' '));
    EXPECT_TRUE(run.Out.contains(out) && run.Out.isEmpty() == out.isEmpty()) << run.Out.constData();
    EXPECT_TRUE(run.Err.contains(err) && run.Err.isEmpty() == err.isEmpty()) << run.Err.constData();
    EXPECT_LE(exitCode == 1 ? run.Err.count('\n') : 0, 1);
  }
}

TEST(ReportProgram, NamesThatAreNoTextGoInAndOut) {
  TTempTree tree;
  tree.MakeFile("bad\xff/n\xfe", 3);
  const TRun text = RunLine("\"$0\" --folder $'bad\\xff'", tree.Path());
  EXPECT_EQ(text.ExitCode, 0) << text.Err.constData();
  EXPECT_TRUE(text.Out.endsWith("bad\xff/n\xfe\n")) << text.Out.constData();
  const TRun json = RunLine("\"$0\" --json $'bad\\xff'", tree.Path());
  EXPECT_EQ(Parsed(json.Out)[u"largestFiles"][0][u"name"], u"n\\xfe"_qs);
}

TEST(ReportProgram, OutputThatCantBeWrittenIsAnError) {
  TTempTree tree;
  const TRun run = RunLine("\"$0\" . > /dev/full", tree.Path());
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_TRUE(run.Err.contains("the output can't be written")) << run.Err.constData();
}

TEST(ReportProgram, CtrlCStopsTheScan) {
  TTempTree tree;
  TTempTree results;
  MakeFiles(tree);
  QProcess process;
  StartOnTerminal(process, tree, 10'000, u"--json"_qs, results.Path("out"));
  while (!process.peek(1 << 20).contains("% ") && process.waitForReadyRead(60'000))
    continue;
  process.write("\x03");
  const TRun run = Finish(process);
  EXPECT_EQ(run.ExitCode, 130);
  EXPECT_TRUE(run.Out.endsWith("tallyscope-report: stopped\r\n")) << run.Out.constData();
  const QJsonObject json = Parsed(ReadWholeFile(results.Path("out")).value_or(QByteArray()));
  EXPECT_EQ(json[u"stopped"], true);
  EXPECT_LT(json[u"paths"].toArray().size(), 10'000);
}

TEST(ReportProgram, ShowsItsProgressOnATerminalAndTakesItOff) {
  TTempTree tree;
  MakeFiles(tree);
  QProcess process;
  StartOnTerminal(process, tree, 3, u""_qs, u"/dev/null"_qs);
  const TRun run = Finish(process);
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_TRUE(run.Out.contains("% " + NameToBytes(tree.Path()))) << run.Out.constData();
  EXPECT_TRUE(run.Out.endsWith(" \r")) << run.Out.constData();
  for (const QByteArray& line : run.Out.split('\r'))
    EXPECT_LT(line.size(), 80);
}
