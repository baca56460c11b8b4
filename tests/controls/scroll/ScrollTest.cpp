// The range, the layout and the sizes of a scroll bar, without the bar.
#include "controls/scroll/ScrollTrack.h"

#include <gtest/gtest.h>

#include <climits>
#include <tuple>

#include "controls/picture/Pictures.h"
#include "controls/scroll/RdScrollBarImages.h"

namespace {

TScrollRange RangeOf(int min, int max, int pageSize, int position = 0) {
  TScrollRange range;
  range.SetParams(min, max, pageSize, position);
  return range;
}

// A vertical bar 16 wide with arrows of 10 and 14.
TScrollRoom RoomOf(int length) {
  TScrollRoom room;
  room.Bar = {16, length};
  room.Screen = {1000, 1000};
  room.Sizes.TopArrow = 10;
  room.Sizes.BottomArrow = 14;
  room.Sizes.MinThumb = 21;
  return room;
}

}  // namespace

TEST(ScrollRange, TheLaterOfMinAndMaxGivesWayAndThePositionFollows) {
  TScrollRange range = RangeOf(10, 50, 0, 40);
  range.SetMax(5);
  EXPECT_EQ(range, RangeOf(10, 10, 0, 10));
  range.SetMax(90);
  range.SetMin(95);
  EXPECT_EQ(range, RangeOf(90, 90, 0, 90));

  range = RangeOf(0, 99, 0, 99);
  range.SetPageSize(-1);
  EXPECT_EQ(range, RangeOf(0, 99, 0, 99));
  range.SetPageSize(30);
  EXPECT_EQ(range.Position, 70) << "the last page begins there";
  range.SetPosition(99);
  EXPECT_EQ(range.Position, 99) << "set directly it may go beyond";
  range.SetPageSize(500);
  EXPECT_EQ(range.Position, 0);

  EXPECT_EQ(RangeOf(7, 3, -4, 100), RangeOf(7, 7, 0, 7));
}

TEST(ScrollRange, StepsAndScaleComeFromPageAndRange) {
  const std::tuple<int, int, int, int, int, qint64, qint64, bool> cases[] = {
      {0, 100, 0, 3, 10, 100, 100, true},
      {0, 5, 0, 1, 1, 5, 5, true},
      {0, 1000, 1, 1, 4, 1000, 1000, true},
      {0, 1000, 100, 9, 90, 901, 901, true},
      {0, 1000, 24, 2, 21, 977, 977, true},
      {10, 20, 10, 1, 9, 1, 11, true},  // a page as large as the way still scrolls
      {10, 20, 11, 1, 9, 0, 10, false},
      {10, 20, 40, 3, 36, -29, -19, false},
      {INT_MIN, INT_MAX, 0, 143165576, 429496729, 4294967295, INT_MAX, true}};
  for (const auto& [min, max, pageSize, small, large, scale, largest, canScroll] : cases) {
    const TScrollRange range = RangeOf(min, max, pageSize);
    EXPECT_EQ(std::tuple(range.SmallStep(), range.LargeStep(), range.ScaleLength(), range.LargestPosition(),
                         range.CanScroll()),
              std::tuple(small, large, scale, largest, canScroll))
        << max << ' ' << pageSize;
  }
}

TEST(ScrollLayout, TheThumbShowsTheShareAndTheWay) {
  const std::tuple<int, int, int, int, int> cases[] = {
      {224, 0, 0, 10, 21},                               // track 200
      {224, 0, 50, 100, 21},                             // 10 + round(179 x 50 / 100)
      {224, 0, 100, 189, 21},  {224, 51, 0, 10, 101},    // round(200 x 51 / 101)
      {224, 51, 20, 50, 101},                            // 10 + round(99 x 20 / 50)
      {224, 51, 50, 109, 101}, {224, 51, 80, 109, 101},  // beyond the last page
      {224, 1, 0, 10, 21},                               // never below the smallest
      {46, 0, 100, 11, 21}                               // one pixel of way
  };
  for (const auto& [length, pageSize, position, thumbStart, thumbLength] : cases) {
    const TScrollLayout layout = ScrollLayout(RangeOf(0, 100, pageSize, position), RoomOf(length));
    EXPECT_EQ(layout.ThumbRect, QRect(0, thumbStart, 16, thumbLength)) << position;
    EXPECT_EQ(layout.PageUpRect, QRect(0, 10, 16, thumbStart - 10)) << position;
    const int end = thumbStart + thumbLength;
    EXPECT_EQ(layout.PageDownRect, QRect(0, end, 16, length - 14 - end)) << position;
  }
}

TEST(ScrollLayout, WithoutRoomOrNeedForAThumbTheTrackIsOne) {
  TScrollRoom disabled = RoomOf(224);
  disabled.Enabled = false;
  const std::tuple<TScrollRoom, int, QRect> cases[] = {
      {RoomOf(45), 0, {0, 10, 16, 21}},      // not above thumb and arrows together
      {RoomOf(224), 101, {0, 10, 16, 200}},  // all is visible
      {disabled, 20, {0, 10, 16, 200}},
      {RoomOf(24), 0, {}},    // the arrows take all
      {RoomOf(2001), 0, {}},  // beyond twice the screen
      {RoomOf(-5), 0, {}}};
  for (const auto& [room, pageSize, track] : cases) {
    const TScrollLayout layout = ScrollLayout(RangeOf(0, 100, pageSize), room);
    EXPECT_EQ(layout.ThumbRect, QRect(-1, -1, 0, 0));
    EXPECT_EQ(layout.PageUpRect, track) << room.Bar.height();
    EXPECT_EQ(layout.PageDownRect, track) << room.Bar.height();
    EXPECT_EQ(layout.PartAt({8, 25}), TScrollBarPos::None);
  }
  disabled.Bar = {16, 224};
  EXPECT_EQ(ScrollLayout(RangeOf(0, 100, 0), disabled).ThumbRect, QRect(0, 10, 16, 21));
}

TEST(ScrollLayout, APointFindsItsPartInEitherKind) {
  TScrollRoom across = RoomOf(224);
  across.Kind = TScrollBarKind::Horizontal;
  across.Bar = {224, 16};
  const TScrollLayout vertical = ScrollLayout(RangeOf(0, 100, 0, 50), RoomOf(224));
  const TScrollLayout horizontal = ScrollLayout(RangeOf(0, 100, 0, 50), across);
  const std::tuple<int, int, TScrollBarPos> cases[] = {
      {-1, -1, TScrollBarPos::None},       {0, 9, TScrollBarPos::TopButton},
      {10, 99, TScrollBarPos::PageUp},     {100, 120, TScrollBarPos::Thumb},
      {121, 209, TScrollBarPos::PageDown}, {210, 223, TScrollBarPos::BottomButton},
      {224, 224, TScrollBarPos::None}};
  for (const auto& [from, to, part] : cases)
    for (const int along : {from, to}) {
      EXPECT_EQ(vertical.PartAt({15, along}), part) << along;
      EXPECT_EQ(horizontal.PartAt({along, 15}), part) << along;
      EXPECT_EQ(vertical.PartAt({16, along}), TScrollBarPos::None) << along;
    }
}

TEST(ScrollSizes, ArrowsFollowTheirPicturesAndTheFlags) {
  const std::tuple<const char*, bool, bool, bool, bool, bool, int, int> cases[] = {
      {"none allowed", false, true, true, true, true, 0, 0},
      {"pictures give the size", true, true, true, true, true, 7, 9},
      {"a missing one takes no room", true, true, true, true, false, 7, 0},
      {"or the default", true, true, false, true, false, 7, 30},
      {"both by default", true, true, false, false, false, 30, 30},
      {"default size for pictures", true, false, true, true, true, 30, 30},
      {"one alone doesn't show", true, false, true, false, true, 0, 0},
      {"the platform's arrows", true, false, false, false, false, 30, 30}};
  for (const auto& [what, allowArrow, autoSize, autoArrow, left, right, top, bottom] : cases) {
    TScrollSkin skin;
    if (left) skin.Pictures[BtnLeft] = PictureOf({11, 7}, Qt::red);
    if (right) skin.Pictures[BtnRight] = PictureOf({13, 9}, Qt::red);
    skin.AllowArrow = allowArrow;
    skin.AutoSize = autoSize;
    skin.AutoArrow = autoArrow;
    const TScrollSizes sizes = ScrollSizes(skin, TScrollBarKind::Vertical, {16, 30, 21});
    EXPECT_EQ(sizes.TopArrow, top) << what;
    EXPECT_EQ(sizes.BottomArrow, bottom) << what;
  }
}

TEST(ScrollSizes, ThicknessAndSmallestThumbComeFromThePictures) {
  const TScrollDefaults defaults{16, 30, 21};
  TScrollSkin skin;
  skin.Pictures[TrackTop] = PictureOf({12, 18}, Qt::blue);
  skin.Pictures[TrackBottom] = PictureOf({14, 10}, Qt::blue);
  skin.Pictures[ScrollBg] = PictureOf({19, 5}, Qt::blue);
  TScrollSizes sizes = ScrollSizes(skin, TScrollBarKind::Vertical, defaults);
  EXPECT_EQ(std::tuple(sizes.Thickness, sizes.MinThumb, sizes.ThumbThickness), std::tuple(19, 28, 14));
  sizes = ScrollSizes(skin, TScrollBarKind::Horizontal, defaults);
  EXPECT_EQ(std::tuple(sizes.Thickness, sizes.MinThumb), std::tuple(18, 26));
  skin.AutoSize = skin.AutoCenter = false;
  sizes = ScrollSizes(skin, TScrollBarKind::Vertical, defaults);
  EXPECT_EQ(sizes.Thickness + sizes.ThumbThickness, 0) << "the bar keeps its own, and the thumb is as thick";
  EXPECT_EQ(ScrollSizes({}, TScrollBarKind::Vertical, defaults).Thickness, 16);
}

TEST(ScrollTrack, DraggingReachesTheLastPageAndNeedsRoom) {
  TScrollTrack track;
  track.SetRange(RangeOf(0, 99, 30, 0));
  track.Arrange(RoomOf(224));
  EXPECT_TRUE(track.DragThumb(999));
  EXPECT_EQ(track.Range().Position, 70);
  EXPECT_FALSE(track.DragThumb(999));
  track.Arrange(RoomOf(40));
  track.DragThumb(30);
  EXPECT_EQ(track.Range().Position, 0) << "a track without room keeps it at Min";
}
