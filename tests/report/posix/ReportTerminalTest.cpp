// The console program on a terminal and with names that are no text.
#include "fixtures/TempTree.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "report/ProgramRun.h"

#include <gtest/gtest.h>

#include <QJsonArray>

namespace {

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

}  // namespace

TEST(ReportTerminal, NamesThatAreNoTextGoInAndOut) {
  TTempTree tree;
  tree.MakeFile("bad\xff/n\xfe", 3);
  const TRun text = RunLine("\"$0\" --folder $'bad\\xff'", tree.Path());
  EXPECT_EQ(text.ExitCode, 0) << text.Err.constData();
  EXPECT_TRUE(text.Out.endsWith("bad\xff/n\xfe\n")) << text.Out.constData();
  const TRun json = RunLine("\"$0\" --json $'bad\\xff'", tree.Path());
  EXPECT_EQ(Parsed(json.Out)[u"largestFiles"][0][u"name"], u"n\\xfe"_qs);
}

TEST(ReportTerminal, OutputThatCantBeWrittenIsAnError) {
  TTempTree tree;
  const TRun run = RunLine("\"$0\" . > /dev/full", tree.Path());
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_TRUE(run.Err.contains("the output can't be written")) << run.Err.constData();
}

TEST(ReportTerminal, CtrlCStopsTheScan) {
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

TEST(ReportTerminal, ShowsItsProgressOnATerminalAndTakesItOff) {
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

TEST(ReportSchema, IsKeptByAReportOfOddNames) {
  TTempTree tree;
  for (const char* name : {"plain/file", "odd/\xff\"\\\n", "caf\xc3\xa9/n\xc3\xa9"})
    tree.MakeFile(name, 9);
  const QByteArray schema = qgetenv("TALLYSCOPE_SOURCE_DIR") + "/docs/report.schema.json";
  const QByteArray check = "/usr/bin/python3 -m jsonschema --instance /dev/stdin '" + schema + "'";
  const TRun good = RunLine("set -o pipefail; \"$0\" --json . | " + check, tree.Path());
  EXPECT_EQ(good.ExitCode, 0) << good.Out.constData() << good.Err.constData();
  const TRun bad = RunLine("\"$0\" --json . | sed 's/\"size\": 9/\"size\": -9/' | " + check, tree.Path());
  EXPECT_NE(bad.ExitCode, 0) << "a validator that takes anything proves nothing";
}
