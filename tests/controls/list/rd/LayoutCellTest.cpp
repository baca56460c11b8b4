// Where the content of rows and cells lies, by hand-computed rectangles.

#include "controls/list/rd/layout/RdCellLayout.h"
#include "controls/list/rd/painter/RdHeaderPainter.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "PaintSurface.h"

namespace {

TEST(LayoutText, MarginsFollowTheAlignmentAndTheMiddleIsTruncated) {
  const QFont font;
  const QFontMetrics metrics(font);
  const QString text = u"Size"_qs;
  const int width = metrics.horizontalAdvance(text);
  const QRect rect(10, 3, 200, metrics.height() + 5);
  const struct {
    TAlignment Alignment;
    int Left;
  } rows[] = {{TAlignment::LeftJustify, 10},
              {TAlignment::RightJustify, 205 - width},
              {TAlignment::Center, 15 + (190 - width) / 2}};
  for (const auto& row : rows)
    EXPECT_EQ(LayoutText(text, font, rect, row.Alignment).Rect, QRect(row.Left, 5, width, metrics.height()));
  EXPECT_EQ(CentredIn({0, 0, 5, 5}, {8, 8}).topLeft(), QPoint(-1, -1)) << "half of -3 goes towards zero";
}

TEST(LayoutText, LongTextIsCutOrBrokenAndLinesEndAsWritten) {
  const QFont font;
  const QFontMetrics metrics(font);
  const QString text = u"several words that need more room"_qs;
  const QRect rect(0, 0, 5 + metrics.horizontalAdvance(u"several words that"_qs), 200);
  const TTextBlock cut = LayoutText(text, font, rect, TAlignment::LeftJustify);
  ASSERT_EQ(cut.Lines.size(), 1);
  EXPECT_TRUE(cut.Lines[0].endsWith(u'…'));
  EXPECT_LE(metrics.horizontalAdvance(cut.Lines[0]), rect.width() - 5);

  const TTextBlock broken = LayoutText(text, font, rect, TAlignment::LeftJustify, true);
  EXPECT_GT(broken.Lines.size(), 1);
  EXPECT_EQ(broken.Lines.join(u' '), text);
  EXPECT_EQ(MeasureText(u"a\r\nbb\rc"_qs, font, 0),
            QSize(metrics.horizontalAdvance(u"bb"_qs), 3 * metrics.height()));
}

TEST(LayoutRow, CheckBoxGrowsWithItsPicture) {
  TItemSkin skin;
  const QRect row(0, 100, 300, 27);
  EXPECT_EQ(RowCheckBoxRect(row, skin), QRect(10, 105, 16, 16));
  EXPECT_EQ(FirstCellRect({0, 100, 120, 27}, true, skin), QRect(21, 100, 99, 27));
  skin.ItemPic_CheckBox = PlainPicture({20, 12}, Qt::red);
  EXPECT_EQ(RowCheckBoxRect(row, skin), QRect(10, 105, 20, 16));
  EXPECT_EQ(FirstCellRect({0, 100, 120, 27}, true, skin).left(), 25);
  EXPECT_EQ(FirstCellRect({0, 100, 120, 27}, false, skin).left(), 0);
}

TEST(LayoutRow, BitmapHoldsWhatShows) {
  EXPECT_EQ(PaintedRow({-40, 26, 300, 26}, 200, 26), QRect(0, 26, 200, 26));
  EXPECT_EQ(PaintedRow({-40, 26, 100, 90}, 200, 26), QRect(0, 26, 60, 52));
  EXPECT_TRUE(PaintedRow({-40, 0, 30, 26}, 200, 26).isEmpty());
}

TEST(LayoutRow, StepAlternates) {
  const struct {
    int Step;
    const char* Second;  // rows 0 to 6
  } rows[] = {{0, "......."}, {1, ".x.x.x."}, {2, ".xx.xx."}, {-1, "xxxxxxx"}, {-2, "x.x.x.x"}};
  for (const auto& row : rows)
    for (int index = 0; index < 7; ++index)
      EXPECT_EQ(HasSecondLook(index, row.Step), row.Second[index] == 'x') << row.Step << " " << index;
}

TEST(LayoutCell, ButtonsAreCappedCentredAndLeftOut) {
  TItemSkin skin;
  EXPECT_EQ(ButtonRect({50, 0, 120, 26}, 1, {}, skin), QRect(60, 3, 100, 20));
  EXPECT_EQ(ButtonRect({50, 0, 400, 26}, 1, {}, skin), QRect(60, 3, 150, 20));
  EXPECT_EQ(ButtonRect({50, 0, 120, 26}, 1, {64, 24}, skin), QRect(60, 1, 64, 24));
  EXPECT_TRUE(ButtonRect({50, 0, 34, 26}, 1, {}, skin).isEmpty());
  EXPECT_FALSE(ButtonRect({50, 0, 35, 26}, 1, {}, skin).isEmpty());
  EXPECT_TRUE(ButtonRect({50, 0, 4, 26}, 1, {64, 24}, skin).isEmpty());
  skin.ItemLeftOffset = 7;
  EXPECT_EQ(ButtonRect({50, 0, 120, 26}, 0, {}, skin).left(), 67);
}

TEST(LayoutCell, StarsRoundByTenths) {
  const struct {
    const char* Text;
    int Max;
    const char* Stars;
  } rows[] = {{"3.6", 5, "LLLH."},  {"3.61", 5, "LLLL."}, {"0.01", 5, "H...."}, {"0", 5, "....."},
              {"-2", 5, "....."},   {"9", 5, "LLLLL"},    {"6", 10, "LLL.."},   {"7.2", 10, "LLLH."},
              {"many", 5, "....."}, {"nan", 5, "....."},  {"3", 0, "....."}};
  for (const auto& row : rows) {
    std::string stars;
    for (const TStar star : StarsOf(QString::fromLatin1(row.Text), row.Max))
      stars += star == TStar::Light ? 'L' : star == TStar::Half ? 'H' : '.';
    EXPECT_EQ(stars, row.Stars) << row.Text;
  }
  const QRect cell(100, 0, 160, 27);
  EXPECT_EQ(StarRect(cell, 4), QRect(164, 7, 16, 16));
  EXPECT_EQ(StarCaptionRect(cell).left(), 195);
  EXPECT_EQ(StarCaptionArea(cell).left(), 184);
}

TEST(LayoutCell, ProgressFillsTheTruncatedPart) {
  const QRect cell(20, 0, 113, 26);
  const struct {
    const char* Value;
    int Filled;
    const char* Text;
  } rows[] = {{"0", 0, "0 %"},       {"-7.5", 0, "-7 %"},   {"-0.5", 0, "0 %"},    {"33.9", 34, "33 %"},
              {"99.9", 102, "99 %"}, {"100", 103, "100 %"}, {"250", 103, "250 %"}, {"none", 0, "0 %"}};
  for (const auto& row : rows) {
    const TProgressParts parts = LayoutProgress(cell, QString::fromLatin1(row.Value));
    EXPECT_EQ(parts.Bar, QRect(25, 8, 103, 10));
    EXPECT_EQ(parts.Frame, QRect(23, 6, 107, 14));
    EXPECT_EQ(parts.Filled, QRect(25, 8, row.Filled, 10)) << row.Value;
    EXPECT_EQ(parts.Text, QString::fromLatin1(row.Text));
  }
}

TEST(LayoutCell, EditAndComboBoxShareTheBand) {
  const QRect cell(100, 50, 120, 26);
  const TEditParts combo = LayoutEdit(cell, 20, true);
  EXPECT_EQ(LayoutEdit(cell, 20, false).Text, QRect(112, 57, 96, 12));
  EXPECT_EQ(combo.Text, QRect(112, 57, 82, 12));
  EXPECT_EQ(combo.Button, QRect(194, 55, 16, 16));
  const TEditParts sliver = LayoutEdit({100, 50, 29, 26}, 20, true);
  EXPECT_EQ(sliver.Frame.width(), 1);
  EXPECT_TRUE(sliver.Band.isEmpty() && sliver.Text.isEmpty() && sliver.Button.isEmpty());
  EXPECT_FALSE(LayoutEdit({100, 50, 30, 26}, 20, false).Band.isEmpty());
}

TEST(LayoutIconText, PrefixesDecideWhatIsALabel) {
  const TItemSkin skin;
  const struct {
    const char* Text;
    TIconTextKind Kind;
    const char* Labels;
  } rows[] = {{"one", TIconTextKind::IconCaption, "L"},
              {"//one", TIconTextKind::IconCaption, "."},
              {"one\r\rtwo\r\r@@three", TIconTextKind::IconCaption, "L.L"},
              {"//one\r\r//two", TIconTextKind::IconCaption, ".."},
              {"one", TIconTextKind::NormalIconCaption, "."},
              {"@@one", TIconTextKind::NormalIconCaption, "L"},
              {"one\r\rtwo", TIconTextKind::NormalIconCaption, ".."}};
  for (const auto& row : rows) {
    std::string labels;
    for (const TIconTextLine& line : SplitIconText(QString::fromLatin1(row.Text), row.Kind, QFont(), skin)) {
      labels += line.Label ? 'L' : '.';
      EXPECT_FALSE(line.Text.startsWith(u'/') || line.Text.startsWith(u'@'));
    }
    EXPECT_EQ(labels, row.Labels) << row.Text;
  }
}

TEST(LayoutIconText, BlockIsCentredAndHitsByLine) {
  const TItemSkin skin;
  const int height = QFontMetrics(QFont()).height();
  const QRect cell(100, 0, 200, 2 * height + skin.LabelLineHeight + 20);
  const auto lines = SplitIconText(u"label\r\rcomment"_qs, TIconTextKind::IconCaption, QFont(), skin);
  const TIconTextParts parts = LayoutIconText(cell, 1, {16, 16}, lines, skin);
  EXPECT_EQ(parts.Icon, QRect(110, (cell.height() - 16) / 2, 16, 16));
  EXPECT_EQ(parts.Lines[0].Block.Rect.topLeft(), QPoint(131, 10));
  EXPECT_EQ(parts.Lines[1].Block.Rect.topLeft(), QPoint(131, 10 + height + skin.LabelLineHeight));
  EXPECT_EQ(HitIconText(parts, parts.Icon.center()), kIconHit);
  EXPECT_EQ(HitIconText(parts, parts.Lines[0].Block.Rect.center()), 0);
  EXPECT_EQ(HitIconText(parts, parts.Lines[1].Block.Rect.center()), kNoIconTextHit);
  EXPECT_EQ(LayoutIconText(cell, 1, {}, lines, skin).Lines[0].Block.Rect.left(), 110);
}

TEST(AutoColumns, ShareTheRestUntilAllAccept) {
  const auto fixed = [](int width) { return TAutoColumn{false, width, 0, 0}; };
  const auto shared = [](int min, int max) { return TAutoColumn{true, 50, min, max}; };
  const struct {
    const char* What;
    std::vector<TAutoColumn> Columns;
    int Room;
    std::vector<int> Widths;
  } rows[] = {
      {"none", {fixed(80), fixed(90)}, 300, {80, 90}},
      {"remainder to the first",
       {fixed(100), shared(0, 0), shared(0, 0), shared(0, 0)},
       300,
       {100, 68, 66, 66}},
      {"a refusal gives to the others", {shared(0, 40), shared(0, 0), shared(0, 0)}, 300, {40, 130, 130}},
      {"refusals in turn", {shared(90, 0), shared(0, 0), shared(108, 0)}, 300, {96, 96, 108}},
      {"a second round refuses", {shared(0, 0), shared(160, 0), shared(75, 0)}, 300, {65, 160, 75}},
      {"all refuse", {shared(0, 30), shared(0, 30)}, 300, {30, 30}},
      {"no room", {fixed(400), shared(0, 0), shared(20, 0)}, 300, {400, 0, 20}}};
  for (const auto& row : rows)
    EXPECT_EQ(ShareColumnWidths(row.Columns, row.Room), row.Widths) << row.What;
}

}  // namespace
