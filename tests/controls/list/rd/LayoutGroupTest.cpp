// Where the parts of group rows and header sections lie, by hand-computed rectangles.

#include "controls/list/rd/painter/RdGroupPainter.h"
#include "controls/list/rd/painter/RdHeaderPainter.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "PaintSurface.h"

namespace {

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
  const struct {
    TkGroupBtnAlign Button;
    bool CheckBoxes;
    bool HasCheckBox;
    int Text;
    int Box;  // -1: none
    int ButtonX;
  } rows[] = {{tkgNone, false, false, 10, -1, -1},  {tkgRight, false, false, 10, -1, 369},
              {tkgRight, true, false, 10, -1, 369}, {tkgRight, true, true, 31, 5, 369},
              {tkgLeft, true, true, 52, 21, 5},     {tkgLeft, true, false, 31, -1, 5},
              {tkgLeft, false, false, 47, -1, 5}};
  for (const auto& row : rows) {
    const TGroupRowParts parts =
        LayoutGroupRow(kRow, Content(row.Button, row.CheckBoxes, row.HasCheckBox), skin);
    EXPECT_EQ(parts.Header.Rect.left(), row.Text);
    EXPECT_EQ(parts.CheckBox.isNull() ? -1 : parts.CheckBox.left(), row.Box);
    EXPECT_EQ(parts.Button.isNull() ? -1 : parts.Button.left(), row.ButtonX);
    EXPECT_EQ(parts.Button.top(), row.ButtonX < 0 ? 0 : 7);
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
  skin.GroupDownHoverImage = PlainPicture({11, 11}, Qt::red);
  EXPECT_EQ(GroupButtonSize(skin, true, TPartState::Pressed), QSize(11, 11)) << "the other one";
  EXPECT_EQ(GroupButtonSize(skin, false), QSize(16, 16)) << "an expanded group has its own";
  skin.GroupDownImage = PlainPicture({12, 12}, Qt::red);
  EXPECT_EQ(GroupButtonSize(skin, true, TPartState::Pressed), QSize(12, 12)) << "the normal one";
  EXPECT_EQ(GroupButtonSize(skin, true, TPartState::Hot), QSize(11, 11));
}

TEST(LayoutHeader, PartsOfASection) {
  TListSkin skin;
  skin.Header.HeaderLeftOffSet = 4;
  skin.Header.HeaderUnChecked = PlainPicture({18, 10}, Qt::red);
  const QRect section(100, 0, 120, 25);
  const auto textOf = [&](bool first, bool box, QSize arrow, TAlignment alignment) {
    const QRect text = LayoutRdHeader(section, {first, box, arrow, alignment}, skin).Text;
    return std::pair(text.left() - 100, text.left() + text.width() - 100);
  };
  using TSpan = std::pair<int, int>;
  EXPECT_EQ(textOf(false, true, {}, TAlignment::LeftJustify), TSpan(10, 120));
  EXPECT_EQ(textOf(true, false, {}, TAlignment::LeftJustify), TSpan(14, 120));
  EXPECT_EQ(textOf(true, false, {}, TAlignment::RightJustify), TSpan(10, 116));
  EXPECT_EQ(textOf(true, false, {}, TAlignment::Center), TSpan(0, 120));
  EXPECT_EQ(textOf(true, true, {}, TAlignment::LeftJustify), TSpan(37, 120));
  EXPECT_EQ(textOf(false, false, {16, 16}, TAlignment::RightJustify), TSpan(10, 104));
  EXPECT_EQ(LayoutRdHeader(section, {true, true, {}, {}}, skin).CheckBox, QRect(105, 4, 18, 16));
  EXPECT_TRUE(LayoutRdHeader(section, {false, true, {}, {}}, skin).CheckBox.isNull());
}

}  // namespace
