// What an image button shows in which state, and where.
#include "controls/buttons/ButtonLook.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "controls/picture/Pictures.h"

namespace {

using enum TImageButtonState;
using TCheck = TButtonCheck;

constexpr QSize kButton(100, 40);
constexpr QSize kIcon(16, 10);

// Pictures that are told apart by their width.
TPicture Wide(int width) {
  return PictureOf({width, 3}, Qt::red);
}

TButtonPictures AllPictures() {
  return {Wide(1), Wide(2), Wide(3), Wide(4), Wide(5), {}};
}

}  // namespace

TEST(ImageOfButton, TheFirstThatAppliesInThisOrder) {
  constexpr int kNormal = 1, kDown = 2, kOver = 3, kDisabled = 4, kSelected = 5, kExpand = 6;
  const struct {
    TButtonMood Mood;
    bool Expand;
    int Shown;
    int WithoutIt;  // the picture that stands in if that one is missing
  } cases[] = {
      {{.State = Normal}, false, kNormal, 0},
      {{.State = Normal, .Over = true}, false, kOver, kNormal},
      {{.State = Down, .Over = true}, false, kDown, kOver},
      {{.State = Down}, false, kNormal, 0},  // drawn off
      {{.State = Disabled, .Enabled = false}, false, kDisabled, kNormal},
      {{.State = Disabled, .Over = true, .Enabled = false}, false, kDisabled, kNormal},
      {{.State = Selected}, false, kSelected, kNormal},
      {{.State = Selected, .Over = true}, false, kOver, kSelected},
      {{.State = Normal}, true, kDown, kExpand},
      {{.State = Disabled, .Enabled = false}, true, kDown, kDisabled},
      {{.State = Normal, .Over = true}, true, kDown, kOver},
  };
  for (const auto& row : cases) {
    const auto trace = static_cast<int>(&row - cases);
    TButtonPictures pictures = AllPictures();
    TButtonLook look;
    look.Expand = row.Expand;
    look.ExpandImage = Wide(kExpand);
    EXPECT_EQ(ImageOf(pictures, look, row.Mood).Size().width(), row.Shown) << trace;
    const_cast<TPicture&>(ImageOf(pictures, look, row.Mood)) = {};
    EXPECT_EQ(ImageOf(pictures, look, row.Mood).Size().width(), row.WithoutIt) << trace;
  }
}

TEST(SlicesOfButton, ASetForEachStateWithTheEndsOfTheNormalOne) {
  const TSlicedPictures pictures{{Wide(1), Wide(2), Wide(3)}, {{}, Wide(4), {}}, {{}, {}, Wide(5)}, {}};
  const struct {
    TButtonMood Mood;
    bool Expand;
    int Left, Middle, Right;
  } cases[] = {
      {{.State = Normal}, false, 1, 2, 3},
      {{.State = Normal, .Over = true}, false, 1, 0, 3},
      {{.State = Down, .Over = true}, false, 1, 0, 5},
      {{.State = Normal}, true, 1, 0, 5},
      {{.State = Disabled, .Over = true, .Enabled = false}, false, 1, 4, 3},
  };
  for (const auto& row : cases) {
    TButtonLook look;
    look.Expand = row.Expand;
    const TShownSlices shown = SlicesOf(pictures, look, row.Mood);
    EXPECT_EQ(shown.Left.Size().width(), row.Left) << &row - cases;
    EXPECT_EQ(shown.Middle.Size().width(), row.Middle) << &row - cases;
    EXPECT_EQ(shown.Right.Size().width(), row.Right) << &row - cases;
  }
}

TEST(ButtonIcon, TheSetOfTheFoldAndTheOneOfTheState) {
  TButtonLook look;
  look.Up = {Wide(1), Wide(2), Wide(3), Wide(4)};
  look.Dn = {Wide(5), {}, Wide(7), {}};
  using enum TButtonIconState;
  const struct {
    bool Expand;
    TButtonIconState State;
    int Icon;
  } cases[] = {{true, TButtonIconState::Normal, 1},
               {true, TButtonIconState::Down, 2},
               {true, Hover, 3},
               {true, TButtonIconState::Disabled, 4},
               {false, TButtonIconState::Normal, 5},
               {false, TButtonIconState::Down, 5},
               {false, Hover, 7},
               {false, TButtonIconState::Disabled, 5}};
  for (const auto& row : cases) {
    look.Expand = row.Expand;
    EXPECT_EQ(IconOf(look, row.State).Size().width(), row.Icon) << &row - cases;
  }
  // Only the one that is made up for loses its colour: 77 of 256 of pure red.
  EXPECT_EQ(IconOf(look, TButtonIconState::Disabled).ImageFor(1).pixelColor(0, 0), QColor(76, 76, 76));
  look.Expand = true;
  EXPECT_EQ(IconOf(look, TButtonIconState::Disabled).ImageFor(1).pixelColor(0, 0), QColor(Qt::red));
  look.Up = {};
  EXPECT_EQ(IconOf(look, Hover).Size().width(), 5) << "the other set, if there is but one";
  look.IconVisible = false;
  EXPECT_TRUE(IconOf(look, Hover).Empty());
}

TEST(ButtonPlaces, IconAndCheckBox) {
  using enum TButtonAlign;
  TButtonLook look;
  look.IconOffset = 7;
  const std::pair<TButtonAlign, int> icons[] = {{Left, 7}, {Right, 100 - 16 - 7}, {Center, 42 + 7}};
  for (const auto& [align, x] : icons) {
    look.IconAlign = align;
    EXPECT_EQ(IconRect(look, kIcon, kButton), QRect(QPoint(x, 15), kIcon)) << x;
  }
  look.ShowCheckBox = true;
  look.CheckBoxNormalImage = PictureOf({9, 12}, Qt::red);
  look.CheckBoxCheckedImage = PictureOf({10, 12}, Qt::red);
  look.CheckBoxOffset = 4;
  look.CheckBoxOffsetY = 3;
  const std::pair<TCheckAlignY, int> boxes[] = {
      {TCheckAlignY::Top, 3}, {TCheckAlignY::Bottom, 40 - 12 - 3}, {TCheckAlignY::Center, 14 + 3}};
  for (const auto& [align, y] : boxes) {
    look.CheckBoxAlignY = align;
    EXPECT_EQ(CheckBoxRect(look, kButton), QRect(4, y, 9, 12)) << y;
  }
  look.CheckState = TCheck::On;
  EXPECT_EQ(CheckBoxRect(look, kButton).width(), 10);
  look.CheckState = TCheck::Grayed;
  EXPECT_TRUE(CheckBoxRect(look, kButton).isEmpty()) << "no picture, no box";
}

TEST(ButtonPlaces, TheCaptionKeepsClearOfTheIcon) {
  using enum TButtonAlign;
  const QFontMetrics metrics{QFont()};
  const int w = metrics.horizontalAdvance(u"Text"_qs);
  const QRect none, left(10, 15, 16, 10), right(74, 15, 16, 10);
  const struct {
    TButtonAlign Caption, Icon;
    QRect IconRect;
    int Margin, X;
  } cases[] = {
      {Left, Right, none, 0, 20},
      {Right, Right, none, 0, 80 - w},
      {Center, Right, none, 0, (100 - w) / 2},
      {Left, Left, left, 0, 26},
      {Center, Left, left, 0, 26 + (74 - w) / 2},
      {Right, Right, right, 0, 74 - w},
      {Center, Right, right, 0, (74 - w) / 2},
      {Center, Center, right, 0, (100 - w) / 2},
      {Left, Right, none, 33, 33},
  };
  for (const auto& row : cases) {
    TButtonLook look;
    look.Caption = u"Text"_qs;
    look.TextTopOffset = 5;
    look.TextLeftMargin = row.Margin;
    look.ButtonCaptionAlignment = row.Caption;
    look.IconAlign = row.Icon;
    const int y = (40 - metrics.height()) / 2 + 5;
    EXPECT_EQ(TextRect(look, kButton, row.IconRect, metrics).topLeft(), QPoint(row.X, y)) << &row - cases;
  }
  TButtonLook tooLong;
  tooLong.Caption = QString(60, u'W');
  tooLong.TextLeftMargin = 6;
  const QRect cut = TextRect(tooLong, kButton, none, metrics);
  EXPECT_EQ(cut.left(), 6);
  EXPECT_EQ(cut.right(), 99);
  tooLong.Caption = u"One\r\nTwo\rThree"_qs;
  tooLong.WordWrap = true;
  EXPECT_EQ(TextRect(tooLong, kButton, none, metrics).height(), 2 * metrics.lineSpacing() + metrics.height());
  tooLong.TextTopOffset = 8;
  tooLong.WordWrap = false;
  EXPECT_EQ(SlicedTextRect(tooLong, kButton, metrics).top(), 8 + (32 - metrics.height()) / 2);
}
