#include "report/ProgressLine.h"

#include "report/TextColumns.h"
#include "scan/ScanMessages.h"

#include <gtest/gtest.h>

namespace {

class TProgressLineTest : public testing::Test {
 protected:
  QByteArray Draw(int columns) {
    FWritten.clear();
    FLine.Draw(columns);
    return FWritten;
  }

  QByteArray FWritten;
  TProgressLine FLine{[this](const QByteArray& bytes) { FWritten += bytes; }};
};

}  // namespace

TEST_F(TProgressLineTest, ShowsTheWholeScanInPercent) {
  struct {
    int Total, Step, Phase;
    const char* Percent;
  } const cases[] = {{1, 0, 0, "  0%"},   {1, 0, 150, " 50%"},  {2, 1, 0, " 50%"},  {5, 1, 150, " 30%"},
                     {1, 0, 300, "100%"}, {2, 0, 9999, " 50%"}, {2, 3, 300, "100%"}};
  for (const auto& [total, step, phase, percent] : cases) {
    FLine.TakeProgress(ScanStepWord(total, step), 0);
    FLine.TakeProgress(0, phase);
    EXPECT_TRUE(FLine.Text(80).contains(QLatin1String(percent))) << percent << qPrintable(FLine.Text(80));
  }
}

TEST_F(TProgressLineTest, StaysWithinTheWindow) {
  FLine.SetPath(u"/a/very/long/path/to/the/資料集/file"_qs);
  for (int columns = 1; columns < 90; ++columns)
    EXPECT_LE(TextColumns(FLine.Text(columns)), columns);
  EXPECT_TRUE(FLine.Text(80).endsWith(u"% /a/very/long/path/to/the/資料集/file"_qs));
  EXPECT_TRUE(FLine.Text(50).endsWith(u"資料集/file"_qs));
}

TEST_F(TProgressLineTest, LeavesNothingOfALongerLineBehind) {
  FLine.SetPath(u"/long/path"_qs);
  const QByteArray longer = Draw(80);
  FLine.SetPath(u"/x"_qs);
  const QByteArray shorter = Draw(80);
  EXPECT_EQ(shorter.size(), longer.size());
  EXPECT_TRUE(shorter.endsWith("% /x        "));
  EXPECT_EQ(Draw(80), "") << "nothing has changed";
}
