#include "report/ReportArguments.h"

#include "fixtures/Completions.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"

#include <gtest/gtest.h>

TEST(ReportArguments, AreTakenApart) {
  constexpr auto kText = TReportFormat::Text;
  const struct {
    QString Arguments;
    TReportAction Action;
    TReportFormat Format;
    bool Folder;
    QString Paths;
  } cases[] = {{u"a"_qs, TReportAction::Scan, kText, false, u"a"_qs},
               {u"--json a --folder"_qs, TReportAction::Scan, TReportFormat::Json, true, u"a"_qs},
               {u"--csv a"_qs, TReportAction::Scan, TReportFormat::Csv, false, u"a"_qs},
               {u"--html -- a"_qs, TReportAction::Scan, TReportFormat::Html, false, u"a"_qs},
               {u"a b a"_qs, TReportAction::Scan, kText, false, u"a b a"_qs},
               {u"-- --json"_qs, TReportAction::Scan, kText, false, u"--json"_qs},
               {u"-"_qs, TReportAction::Scan, kText, false, u"-"_qs},
               {u"--help"_qs, TReportAction::Help, kText, false, {}},
               {u"--version --nonsense"_qs, TReportAction::Version, kText, false, {}}};
  for (const auto& [arguments, action, format, folder, paths] : cases) {
    const TReportArguments result = ParseReportArguments(arguments.split(u' '));
    EXPECT_EQ(std::tuple(result.Action, result.Format, result.Folder, result.Paths.join(u' ')),
              std::tuple(action, format, folder, paths))
        << qPrintable(arguments);
  }
}

TEST(ReportArguments, EveryOptionOfTheHelpIsCompletedByTheShells) {
  EXPECT_EQ(MissingInCompletions(u"tallyscope-report"_qs, ReportHelp().toUtf8()), QStringList());
}

// Relative ones are joined to the folder and nothing is resolved. Drives, shares and two delimiters are
// Windows' own.
TEST(ReportArguments, PathsBecomeAbsolute) {
  const struct {
    QString Path, Folder, OnLinux, OnWindows;
  } rows[] = {{u"/a/./b/"_qs, u"/home"_qs, u"/a/./b/"_qs, u"C:\\a\\b"_qs},
              {u"x"_qs, u"/home"_qs, u"/home/x"_qs, u"C:\\home\\x"_qs},
              {u"."_qs, u"/home"_qs, u"/home"_qs, u"C:\\home"_qs},
              {u"./x//y/"_qs, u"/home"_qs, u"/home/x/y"_qs, u"C:\\home\\x\\y"_qs},
              {u"link/../x"_qs, u"/"_qs, u"/link/../x"_qs, u"C:\\link\\..\\x"_qs},
              {{}, u"/home"_qs, u"/home"_qs, u"C:\\home"_qs},
              {u"x/y"_qs, {}, u"x/y"_qs, u"x\\y"_qs},
              {u"C:/a/b"_qs, u"/home"_qs, u"/home/C:/a/b"_qs, u"C:\\a\\b"_qs},
              {u"C:"_qs, u"/home"_qs, u"/home/C:"_qs, u"C:"_qs},
              {u"a/b\\c"_qs, u"/home"_qs, u"/home/a/b\\c"_qs, u"C:\\home\\a\\b\\c"_qs},
              {u"\\a\\.\\b"_qs, u"/home"_qs, u"/home/\\a\\.\\b"_qs, u"C:\\a\\b"_qs},
              {u"/"_qs, u"/home"_qs, u"/"_qs, u"C:\\"_qs},
              {u"//server/share/x"_qs, u"/home"_qs, u"//server/share/x"_qs, u"\\\\server\\share\\x"_qs}};
  for (const auto& row : rows)
    EXPECT_EQ(MakeAbsolutePath(row.Path, row.Folder.isEmpty() ? row.Folder : NativePath(row.Folder)),
              HasDrives() ? row.OnWindows : row.OnLinux);
}
