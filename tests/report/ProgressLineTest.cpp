#include "report/ProgressLine.h"

#include "report/TextColumns.h"
#include "scan/ScanMessages.h"

#include <gtest/gtest.h>

TEST(TextColumns, CountsWhatATerminalShows) {
  const std::pair<QString, int> cases[] = {
      {{}, 0},           {u"abc"_qs, 3},          {u"é"_qs, 1}, {u"e\u0301"_qs, 1},
      {u"資料集"_qs, 6}, {u"\U0001F3B5 a"_qs, 4}, {u"한"_qs, 2}};
  for (const auto& [text, columns] : cases)
    EXPECT_EQ(TextColumns(text), columns) << qPrintable(text);
}

TEST(TextColumns, ALongTextKeepsItsEndWithinTheColumns) {
  const std::tuple<QString, int, QString> cases[] = {{u"/usr/share"_qs, 10, u"/usr/share"_qs},
                                                     {u"/usr/share"_qs, 9, u".../share"_qs},
                                                     {u"資料集"_qs, 5, u"...集"_qs},
                                                     {u"資料集"_qs, 4, u"..."_qs},
                                                     {u"abcde\u0301f"_qs, 4, u"...f"_qs},
                                                     {u"abcdef"_qs, 3, u"..."_qs},
                                                     {u"abcdef"_qs, 2, u".."_qs},
                                                     {u"abcdef"_qs, -5, {}}};
  for (const auto& [text, columns, result] : cases)
    EXPECT_EQ(FitToColumns(text, columns), result) << columns;
}

namespace {

class TProgressLineTest : public testing::Test {
 protected:
  QByteArray Draw(const QString& path) {
    FWritten.clear();
    FLine.SetPath(path);
    FLine.Draw(80);
    return FWritten;
  }

  QByteArray FWritten;
  TProgressLine FLine{[this](const QByteArray& bytes) { FWritten += bytes; }};
};

}  // namespace

TEST_F(TProgressLineTest, ShowsTheWholeScanInPercent) {
  const struct {
    int Total, Step, Phase;
    const char* Percent;
  } cases[] = {{1, 0, 0, "  0%"},   {1, 0, 150, " 50%"},  {2, 1, 0, " 50%"},  {5, 1, 150, " 30%"},
               {1, 0, 300, "100%"}, {2, 0, 9999, " 50%"}, {2, 3, 300, "100%"}};
  for (const auto& [total, step, phase, percent] : cases) {
    FLine.TakeProgress(ScanStepWord(total, step), 0);
    FLine.TakeProgress(0, phase);
    EXPECT_TRUE(FLine.Text(80).contains(QLatin1String(percent))) << percent << qPrintable(FLine.Text(80));
  }
}

TEST_F(TProgressLineTest, StaysWithinTheWindowAndLeavesNothingOfALongerLineBehind) {
  const QByteArray longer = Draw(u"/a/very/long/path/to/the/資料集/file"_qs);
  for (int columns = 1; columns < 90; ++columns)
    EXPECT_LE(TextColumns(FLine.Text(columns)), columns);
  EXPECT_TRUE(longer.endsWith("% /a/very/long/path/to/the/資料集/file"));
  EXPECT_TRUE(FLine.Text(50).endsWith(u"資料集/file"_qs));
  const QByteArray shorter = Draw(u"/x"_qs);
  EXPECT_EQ(TextColumns(QString::fromUtf8(shorter)), TextColumns(QString::fromUtf8(longer)));
  EXPECT_TRUE(shorter.trimmed().endsWith("% /x"));
  EXPECT_EQ(Draw(u"/x"_qs), "") << "nothing has changed";
}
