// Where the content of rows, cells, group rows and header sections lies, by hand-computed rectangles.
#include "controls/list/rd/layout/RdCellLayout.h"
#include "controls/list/rd/painter/RdGroupPainter.h"
#include "controls/list/rd/painter/RdHeaderPainter.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "controls/picture/Pictures.h"

namespace {

TEST(LayoutText, MarginsFollowTheAlignmentAndTheMiddleIsTruncated) {
  const QFont font;
  const QFontMetrics metrics(font);
  const QString text = u"Size"_qs;
  const int width = metrics.horizontalAdvance(text);
  const QRect rect(10, 3, 200, metrics.height() + 5);
  const std::pair<TAlignment, int> rows[] = {{TAlignment::LeftJustify, 10},
                                             {TAlignment::RightJustify, 205 - width},
                                             {TAlignment::Center, 15 + (190 - width) / 2}};
  for (const auto& [alignment, left] : rows)
    EXPECT_EQ(LayoutText(text, font, rect, alignment).Rect, QRect(left, 5, width, metrics.height()));
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

TEST(LayoutRow, CheckBoxGrowsWithItsPictureAndTheBitmapHoldsWhatShows) {
  TItemSkin skin;
  const QRect row(0, 100, 300, 27);
  EXPECT_EQ(RowCheckBoxRect(row, skin), QRect(10, 105, 16, 16));
  EXPECT_EQ(FirstCellRect({0, 100, 120, 27}, true, skin), QRect(21, 100, 99, 27));
  skin.ItemPic_CheckBox = PictureOf({20, 12}, Qt::red);
  EXPECT_EQ(RowCheckBoxRect(row, skin), QRect(10, 105, 20, 16));
  EXPECT_EQ(FirstCellRect({0, 100, 120, 27}, true, skin).left(), 25);
  EXPECT_EQ(FirstCellRect({0, 100, 120, 27}, false, skin).left(), 0);

  EXPECT_EQ(PaintedRow({-40, 26, 300, 26}, 200, 26), QRect(0, 26, 200, 26));
  EXPECT_EQ(PaintedRow({-40, 26, 100, 90}, 200, 26), QRect(0, 26, 60, 52));
  EXPECT_TRUE(PaintedRow({-40, 0, 30, 26}, 200, 26).isEmpty());
}

TEST(LayoutRow, StepAlternates) {
  const std::pair<int, const char*> rows[] = {
      {0, "......."}, {1, ".x.x.x."}, {2, ".xx.xx."}, {-1, "xxxxxxx"}, {-2, "x.x.x.x"}};
  for (const auto& [step, second] : rows)
    for (int index = 0; index < 7; ++index)
      EXPECT_EQ(HasSecondLook(index, step), second[index] == 'x') << step << " " << index;
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
  const std::tuple<const char*, int, const char*> rows[] = {
      {"3.6", 5, "LLLH."},  {"3.61", 5, "LLLL."}, {"0.01", 5, "H...."}, {"0", 5, "....."},
      {"-2", 5, "....."},   {"9", 5, "LLLLL"},    {"6", 10, "LLL.."},   {"7.2", 10, "LLLH."},
      {"many", 5, "....."}, {"nan", 5, "....."},  {"3", 0, "....."}};
  for (const auto& [text, max, expected] : rows) {
    std::string stars;
    for (const TStar star : StarsOf(QString::fromLatin1(text), max))
      stars += star == TStar::Light ? 'L' : star == TStar::Half ? 'H' : '.';
    EXPECT_EQ(stars, expected) << text;
  }
  const QRect cell(100, 0, 160, 27);
  EXPECT_EQ(StarCaptionRect(cell).left(), 195);
  EXPECT_EQ(StarCaptionArea(cell).left(), 184);
}

TEST(LayoutCell, ProgressFillsTheTruncatedPart) {
  const QRect cell(20, 0, 113, 26);
  const std::tuple<const char*, int, const char*> rows[] = {
      {"0", 0, "0 %"},       {"-7.5", 0, "-7 %"},   {"-0.5", 0, "0 %"},    {"33.9", 34, "33 %"},
      {"99.9", 102, "99 %"}, {"100", 103, "100 %"}, {"250", 103, "250 %"}, {"none", 0, "0 %"}};
  for (const auto& [value, filled, text] : rows) {
    const TProgressParts parts = LayoutProgress(cell, QString::fromLatin1(value));
    EXPECT_EQ(parts.Bar, QRect(25, 8, 103, 10));
    EXPECT_EQ(parts.Frame, QRect(23, 6, 107, 14));
    EXPECT_EQ(parts.Filled, QRect(25, 8, filled, 10)) << value;
    EXPECT_EQ(parts.Text, QString::fromLatin1(text));
  }
}

TEST(LayoutCell, EditAndComboBoxShareTheBand) {
  const QRect cell(100, 50, 120, 26);
  const TEditParts combo = LayoutEdit(cell, 20, true);
  EXPECT_EQ(LayoutEdit(cell, 20, false).Text, QRect(112, 57, 96, 12));
  EXPECT_EQ(combo.Text, QRect(112, 57, 82, 12));
  const TEditParts sliver = LayoutEdit({100, 50, 29, 26}, 20, true);
  EXPECT_EQ(sliver.Frame.width(), 1);
  EXPECT_TRUE(sliver.Band.isEmpty() && sliver.Text.isEmpty() && sliver.Button.isEmpty());
  EXPECT_FALSE(LayoutEdit({100, 50, 30, 26}, 20, false).Band.isEmpty());
}

TEST(LayoutIconText, PrefixesDecideWhatIsALabel) {
  const TItemSkin skin;
  const std::tuple<const char*, TIconTextKind, const char*> rows[] = {
      {"one", TIconTextKind::IconCaption, "L"},
      {"//one", TIconTextKind::IconCaption, "."},
      {"one\r\rtwo\r\r@@three", TIconTextKind::IconCaption, "L.L"},
      {"//one\r\r//two", TIconTextKind::IconCaption, ".."},
      {"one", TIconTextKind::NormalIconCaption, "."},
      {"@@one", TIconTextKind::NormalIconCaption, "L"},
      {"one\r\rtwo", TIconTextKind::NormalIconCaption, ".."}};
  for (const auto& [text, kind, expected] : rows) {
    std::string labels;
    for (const TIconTextLine& line : SplitIconText(QString::fromLatin1(text), kind, QFont(), skin)) {
      labels += line.Label ? 'L' : '.';
      EXPECT_FALSE(line.Text.startsWith(u'/') || line.Text.startsWith(u'@'));
    }
    EXPECT_EQ(labels, expected) << text;
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
  const std::tuple<const char*, std::vector<TAutoColumn>, int, std::vector<int>> rows[] = {
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
  for (const auto& [what, columns, room, widths] : rows)
    EXPECT_EQ(ShareColumnWidths(columns, room), widths) << what;
}

const QRect kRow(0, 0, 400, 30);

TGroupRowContent Content(TkGroupBtnAlign button, bool checkBoxes, bool hasCheckBox) {
  TGroupRowContent content;
  content.Header = u"Videos"_qs;
  content.CheckBoxes = checkBoxes;
  content.HasCheckBox = hasCheckBox;
  content.ButtonAlign = button;
  content.Button = QSize(16, 16);
  return content;
}

TEST(LayoutGroup, TextStandsBehindBoxAndButton) {
  const TListSkin skin;
  // -1: none
  const std::tuple<TkGroupBtnAlign, bool, bool, int, int, int> rows[] = {
      {tkgNone, false, false, 10, -1, -1},  {tkgRight, false, false, 10, -1, 369},
      {tkgRight, true, false, 10, -1, 369}, {tkgRight, true, true, 31, 5, 369},
      {tkgLeft, true, true, 52, 21, 5},     {tkgLeft, true, false, 31, -1, 5},
      {tkgLeft, false, false, 47, -1, 5}};
  for (const auto& [button, checkBoxes, hasCheckBox, text, box, buttonX] : rows) {
    const TGroupRowParts parts = LayoutGroupRow(kRow, Content(button, checkBoxes, hasCheckBox), skin);
    EXPECT_EQ(parts.Header.Rect.left(), text);
    EXPECT_EQ(parts.CheckBox.isNull() ? -1 : parts.CheckBox.left(), box);
    EXPECT_EQ(parts.Button.isNull() ? -1 : parts.Button.left(), buttonX);
    EXPECT_EQ(parts.Button.top(), buttonX < 0 ? 0 : 7);
  }
  TListSkin moved;
  moved.Group.GroupLeftOffSet = 6;
  TGroupRowContent content = Content(tkgNone, false, false);
  content.TitleImage = QSize(24, 24);
  const TGroupRowParts parts = LayoutGroupRow(kRow, content, moved);
  EXPECT_EQ(parts.TitleImage, QRect(16, 3, 24, 24));
  EXPECT_EQ(parts.Header.Rect.left(), 45);
}

// The room of the text runs from 10 to 400, or with a button at the right to 367; a right-aligned text also
// leaves 15.
TEST(LayoutGroup, LinesSpanTheRoomBesideTheText) {
  const int width = QFontMetrics(QFont()).horizontalAdvance(u"Videos"_qs);
  const int centred = 15 + (347 - width) / 2;
  const struct {
    TAlignment Align;
    int Percent;
    int Before[2];  // from and to; from = to: none
    int After[2];
  } rows[] = {
      {TAlignment::LeftJustify, 100, {0, 0}, {10 + width + 15 + 1, 352}},
      {TAlignment::RightJustify, 100, {10 + 1, 352 - 5 - width - 20}, {0, 0}},
      {TAlignment::Center, 100, {10 + 1, centred - 20}, {centred + width + 15 + 1, 352}},
      {TAlignment::LeftJustify, 50, {0, 0}, {10 + width + 16, 10 + width + 15 + (352 - 25 - width) / 2}},
      {TAlignment::RightJustify, 50, {327 - width - (317 - width) / 2 + 1, 327 - width}, {0, 0}},
      {TAlignment::Center, 0, {0, 0}, {0, 0}}};
  for (const auto& row : rows) {
    TListSkin skin;
    skin.Group.GroupLineRightPer = row.Percent;
    TGroupRowContent content = Content(tkgRight, false, false);
    content.HeaderAlign = row.Align;
    const TGroupRowParts parts = LayoutGroupRow(kRow, content, skin);
    for (const auto& [line, span] :
         {std::pair(parts.LineBefore, row.Before), std::pair(parts.LineAfter, row.After)}) {
      if (span[0] == span[1])
        EXPECT_TRUE(line.isEmpty());
      else
        EXPECT_EQ(line, QRect(span[0], 14, span[1] - span[0], 2)) << row.Percent;
    }
  }
}

TEST(LayoutGroup, MissingButtonPicturesFallBack) {
  TGroupSkin skin;
  EXPECT_EQ(GroupButtonSize(skin, true), QSize(16, 16));
  skin.GroupDownHoverImage = PictureOf({11, 11}, Qt::red);
  EXPECT_EQ(GroupButtonSize(skin, true, TPartState::Pressed), QSize(11, 11)) << "the other one";
  EXPECT_EQ(GroupButtonSize(skin, false), QSize(16, 16)) << "an expanded group has its own";
  skin.GroupDownImage = PictureOf({12, 12}, Qt::red);
  EXPECT_EQ(GroupButtonSize(skin, true, TPartState::Pressed), QSize(12, 12)) << "the normal one";
  EXPECT_EQ(GroupButtonSize(skin, true, TPartState::Hot), QSize(11, 11));
}

TEST(LayoutHeader, PartsOfASection) {
  TListSkin skin;
  skin.Header.HeaderLeftOffSet = 4;
  skin.Header.HeaderUnChecked = PictureOf({18, 10}, Qt::red);
  const QRect section(100, 0, 120, 25);
  const auto textOf = [&](bool first, bool box, QSize arrow, TAlignment alignment) {
    const QRect text = LayoutRdHeader(section, {first, box, arrow, alignment}, skin).Text;
    return std::pair(text.left() - 100, text.left() + text.width() - 100);
  };
  EXPECT_EQ(textOf(false, true, {}, TAlignment::LeftJustify), std::pair(10, 120));
  EXPECT_EQ(textOf(true, false, {}, TAlignment::LeftJustify), std::pair(14, 120));
  EXPECT_EQ(textOf(true, false, {}, TAlignment::RightJustify), std::pair(10, 116));
  EXPECT_EQ(textOf(true, false, {}, TAlignment::Center), std::pair(0, 120));
  EXPECT_EQ(textOf(true, true, {}, TAlignment::LeftJustify), std::pair(37, 120));
  EXPECT_EQ(textOf(false, false, {16, 16}, TAlignment::RightJustify), std::pair(10, 104));
  EXPECT_EQ(LayoutRdHeader(section, {true, true, {}, {}}, skin).CheckBox, QRect(105, 4, 18, 16));
  EXPECT_TRUE(LayoutRdHeader(section, {false, true, {}, {}}, skin).CheckBox.isNull());
}

}  // namespace
