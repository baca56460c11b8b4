// What an image button shows in which state, and where.
#include "controls/buttons/ButtonLook.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "controls/picture/Pictures.h"

namespace {

using enum TButtonAlign;
using TState = TImageButtonState;
using TIcon = TButtonIconState;

constexpr QSize kButton(100, 40);

// Pictures that are told apart by their width.
const auto Wide = [](int width) { return PictureOf({width, 3}, Qt::red); };
const auto WidthOf = [](const TPicture& picture) { return picture.Size().width(); };

}  // namespace

TEST(ButtonPictures, TheFirstThatAppliesInThisOrder) {
  enum { kNone, kNormal, kDown, kOver, kDisabled, kSelected, kExpand };
  const TSlicedPictures sliced{{Wide(1), Wide(2), Wide(3)}, {{}, Wide(4), {}}, {{}, {}, Wide(5)}, {}};
  const struct {
    TButtonMood Mood;
    bool Expand;
    int Shown, WithoutIt;  // the picture, and the one that stands in if that is missing
    int Slices;            // left, middle and right, a digit each
  } cases[] = {{{.State = TState::Normal}, false, kNormal, kNone, 123},
               {{.State = TState::Normal, .Over = true}, false, kOver, kNormal, 103},
               {{.State = TState::Down, .Over = true}, false, kDown, kOver, 105},
               {{.State = TState::Down}, false, kNormal, kNone, 123},  // drawn off
               {{.State = TState::Disabled, .Over = true, .Enabled = false}, false, kDisabled, kNormal, 143},
               {{.State = TState::Selected}, false, kSelected, kNormal, 123},
               {{.State = TState::Selected, .Over = true}, false, kOver, kSelected, 103},
               {{.State = TState::Normal}, true, kDown, kExpand, 105},
               {{.State = TState::Disabled, .Enabled = false}, true, kDown, kDisabled, 105}};
  for (const auto& row : cases) {
    TButtonPictures pictures{Wide(1), Wide(2), Wide(3), Wide(4), Wide(5), {}};
    TButtonLook look;
    look.Expand = row.Expand;
    look.ExpandImage = Wide(kExpand);
    EXPECT_EQ(WidthOf(ImageOf(pictures, look, row.Mood)), row.Shown) << &row - cases;
    const_cast<TPicture&>(ImageOf(pictures, look, row.Mood)) = {};
    EXPECT_EQ(WidthOf(ImageOf(pictures, look, row.Mood)), row.WithoutIt) << &row - cases;
    const TShownSlices slices = SlicesOf(sliced, look, row.Mood);
    const int shown = 100 * WidthOf(slices.Left) + 10 * WidthOf(slices.Middle) + WidthOf(slices.Right);
    EXPECT_EQ(shown, row.Slices) << &row - cases;
  }
}

TEST(ButtonPictures, TheIconIsOfTheFoldAndTheState) {
  TButtonLook look;
  look.Up = {Wide(1), Wide(2), Wide(3), Wide(4)};
  look.Dn = {Wide(5), {}, Wide(7), {}};
  const std::pair<TIcon, int> cases[] = {// of the expanded and of the collapsed, a digit each
                                         {TIcon::Normal, 15},
                                         {TIcon::Down, 25},
                                         {TIcon::Hover, 37},
                                         {TIcon::Disabled, 45}};
  for (const auto& [state, icons] : cases) {
    look.Expand = true;
    const int expanded = WidthOf(IconOf(look, state));
    look.Expand = false;
    EXPECT_EQ(10 * expanded + WidthOf(IconOf(look, state)), icons);
  }
  // Only the one that is made up for loses its colour: 77 of 256 of pure red.
  EXPECT_EQ(IconOf(look, TIcon::Disabled).ImageFor(1).pixelColor(0, 0), QColor(76, 76, 76));
  look.Expand = true;
  EXPECT_EQ(IconOf(look, TIcon::Disabled).ImageFor(1).pixelColor(0, 0), QColor(Qt::red));
  look.IconVisible = false;
  EXPECT_TRUE(IconOf(look, TIcon::Hover).Empty());
}

TEST(ButtonPlaces, IconAndCheckBox) {
  TButtonLook look;
  look.IconOffset = 7;
  look.ShowCheckBox = true;
  look.CheckBoxNormalImage = PictureOf({9, 12}, Qt::red);
  look.CheckBoxOffset = 4;
  look.CheckBoxOffsetY = 3;
  const std::tuple<TButtonAlign, TCheckAlignY, int, int> cases[] = {
      {Left, TCheckAlignY::Top, 7, 3},
      {Right, TCheckAlignY::Bottom, 100 - 16 - 7, 40 - 12 - 3},
      {Center, TCheckAlignY::Center, 42 + 7, 14 + 3}};
  for (const auto& [icon, box, x, y] : cases) {
    look.IconAlign = icon;
    look.CheckBoxAlignY = box;
    EXPECT_EQ(IconRect(look, {16, 10}, kButton), QRect(x, 15, 16, 10));
    EXPECT_EQ(CheckBoxRect(look, kButton), QRect(4, y, 9, 12));
  }
  look.CheckState = TButtonCheck::Grayed;
  EXPECT_TRUE(CheckBoxRect(look, kButton).isEmpty()) << "no picture, no box";
}

TEST(ButtonPlaces, TheCaptionKeepsClearOfTheIcon) {
  const QFontMetrics metrics{QFont()};
  const int w = metrics.horizontalAdvance(u"Text"_qs);
  const QRect none, left(10, 15, 16, 10), right(74, 15, 16, 10);
  const std::tuple<TButtonAlign, TButtonAlign, QRect, int, int> cases[] = {
      {Left, Right, none, 0, 20},       {Right, Right, none, 0, 80 - w},
      {Left, Left, left, 0, 26},        {Center, Left, left, 0, 26 + (74 - w) / 2},
      {Right, Right, right, 0, 74 - w}, {Center, Center, right, 0, (100 - w) / 2},
      {Left, Right, none, 33, 33}};
  TButtonLook look;
  look.Caption = u"Text"_qs;
  look.TextTopOffset = 6;
  for (const auto& [caption, icon, rect, margin, x] : cases) {
    look.TextLeftMargin = margin;
    look.ButtonCaptionAlignment = caption;
    look.IconAlign = icon;
    const QPoint expected(x, (40 - metrics.height()) / 2 + 6);
    EXPECT_EQ(TextRect(look, kButton, rect, metrics).topLeft(), expected) << x;
  }
  EXPECT_EQ(SlicedTextRect(look, kButton, metrics).topLeft(), QPoint(20, 6 + (34 - metrics.height()) / 2));
  look.Caption = QString(60, u'W');
  look.ButtonCaptionAlignment = Center;
  EXPECT_EQ(TextRect(look, kButton, none, metrics).right(), 99) << "cut at the button's end";
  look.Caption = u"One\r\nTwo\rThree"_qs;
  look.WordWrap = true;
  EXPECT_GT(TextRect(look, kButton, none, metrics).height(), 2 * metrics.lineSpacing());
}
