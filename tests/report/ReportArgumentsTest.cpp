#include "report/ReportArguments.h"

#include "fixtures/Completions.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

TEST(ReportArguments, AreTakenApart) {
  const QStringList a = {u"a"_qs};
  constexpr auto kText = TReportFormat::Text;
  struct {
    QStringList Arguments;
    TReportAction Action;
    TReportFormat Format;
    bool Folder;
    QStringList Paths;
  } const cases[] = {
      {{u"a"_qs}, TReportAction::Scan, kText, false, a},
      {{u"--json"_qs, u"a"_qs, u"--folder"_qs}, TReportAction::Scan, TReportFormat::Json, true, a},
      {{u"--csv"_qs, u"a"_qs}, TReportAction::Scan, TReportFormat::Csv, false, a},
      {{u"a"_qs, u"b"_qs, u"a"_qs}, TReportAction::Scan, kText, false, {u"a"_qs, u"b"_qs, u"a"_qs}},
      {{u"--"_qs, u"--json"_qs}, TReportAction::Scan, kText, false, {u"--json"_qs}},
      {{u"-"_qs}, TReportAction::Scan, kText, false, {u"-"_qs}},
      {{u"--help"_qs}, TReportAction::Help, kText, false, {}},
      {{u"--version"_qs, u"--nonsense"_qs}, TReportAction::Version, kText, false, {}},
  };
  for (const auto& [arguments, action, format, folder, paths] : cases) {
    const TReportArguments result = ParseReportArguments(arguments);
    EXPECT_EQ(std::tie(result.Action, result.Format, result.Folder, result.Paths),
              std::tie(action, format, folder, paths))
        << qPrintable(arguments.join(u' '));
  }
}

TEST(ReportArguments, EveryOptionOfTheHelpIsCompletedByTheShells) {
  EXPECT_EQ(MissingInCompletions(u"tallyscope-report"_qs, ReportHelp().toUtf8()), QStringList());
}

TEST(ReportArguments, RelativePathsAreJoinedAndNothingIsResolved) {
  const std::tuple<QString, QString, QString> cases[] = {
      {u"/a/./b/"_qs, u"/home"_qs, u"/a/./b/"_qs},
      {u"x"_qs, u"/home"_qs, u"/home/x"_qs},
      {u"."_qs, u"/home"_qs, u"/home"_qs},
      {u"./x//y/"_qs, u"/home"_qs, u"/home/x/y"_qs},
      {u"link/../x"_qs, u"/"_qs, u"/link/../x"_qs},
      {u""_qs, u"/home"_qs, u"/home"_qs},
      {u"x/y"_qs, u""_qs, u"x/y"_qs},
  };
  for (const auto& [path, folder, result] : cases)
    EXPECT_EQ(MakeAbsolutePath(NativePath(path), NativePath(folder)), NativePath(result));
}

TEST(ReportArguments, DrivesSharesAndTwoDelimitersAreWindowsOwn) {
  const struct {
    QString Path, OnLinux, OnWindows;
  } rows[] = {
      {u"C:/a/b"_qs, u"/home/C:/a/b"_qs, u"C:\\a\\b"_qs},
      {u"C:"_qs, u"/home/C:"_qs, u"C:"_qs},
      {u"a/b\\c"_qs, u"/home/a/b\\c"_qs, u"C:\\home\\a\\b\\c"_qs},
      {u"\\a\\.\\b"_qs, u"/home/\\a\\.\\b"_qs, u"C:\\a\\b"_qs},
      {u"/a"_qs, u"/a"_qs, u"C:\\a"_qs},
      {u"/"_qs, u"/"_qs, u"C:\\"_qs},
      {u"//server/share/x"_qs, u"//server/share/x"_qs, u"\\\\server\\share\\x"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(MakeAbsolutePath(row.Path, NativePath(u"/home"_qs)), HasDrives() ? row.OnWindows : row.OnLinux);
}
