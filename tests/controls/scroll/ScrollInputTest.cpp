#include "controls/scroll/ScrollInput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "controls/scroll/ScrollTrack.h"

namespace {

using ::testing::ElementsAre;

constexpr QPoint kTopButton(8, 5);
constexpr QPoint kBottomButton(8, 214);
constexpr QPoint kOutside(-40, 5);

// A bar 16 by 220 with arrows of 10, so the track is 200, the thumb 20 and its way 180.
class ScrollInputTest : public ::testing::Test, protected TScrollInputHost {
 protected:
  ScrollInputTest() : Input(Track, *this) {
    TScrollRoom room;
    room.Bar = {16, 220};
    room.Screen = {1000, 1000};
    room.Sizes.TopArrow = room.Sizes.BottomArrow = 10;
    room.Sizes.MinThumb = 20;
    Track.Arrange(room);
    SetRange(90, 0);
  }

  void SetRange(int max, int position, int pageSize = 0) {
    TScrollRange range;
    range.SetParams(0, max, pageSize, position);
    range.SmallChange = 3;
    range.LargeChange = 20;
    Track.SetRange(range);
    Track.Arrange();
  }

  void StartTimer(int milliseconds) override { Interval = milliseconds; }
  void StopTimer() override { Interval = 0; }
  void Scrolled(const TScrollStep& step) override {
    Steps.push_back(step);
    Events += "s";
  }
  void Changed() override { Events += "c"; }
  void TrackEnded() override { Events += "e"; }
  void RepaintPart(TScrollBarPos part) override {
    if (part != TScrollBarPos::None) Painted.push_back(part);
  }
  void RepaintAll() override {}

  [[nodiscard]] int Position() const { return Track.Range().Position; }

  TScrollTrack Track;
  TScrollInput Input;
  int Interval = 0;  // of the running timer
  std::string Events;
  std::vector<TScrollStep> Steps;
  std::vector<TScrollBarPos> Painted;
};

}  // namespace

TEST_F(ScrollInputTest, AHeldButtonStepsOnceWaitsThenRepeatsEveryFiftyMilliseconds) {
  Input.SetWaitInterval(320);
  Input.Press(kBottomButton);
  EXPECT_EQ(Interval, 320);
  Input.Tick();
  EXPECT_EQ(Interval, 50);
  Input.Tick();
  Input.Release(kBottomButton);
  EXPECT_EQ(Interval, 0);
  EXPECT_EQ(Events, "scscsce");
  constexpr TScrollMode mode = kScrollByButton | kScrollDown;
  const TScrollStep repeated{false, TIScrollCode::LineDown, mode, 3};
  EXPECT_THAT(Steps, ElementsAre(TScrollStep{true, TIScrollCode::LineDown, mode, 3}, repeated, repeated));
}

TEST_F(ScrollInputTest, RepeatsRestWhileTheMouseIsElsewhere) {
  SetRange(90, 50);
  Input.Press(kTopButton);
  Input.Move(kOutside);
  Input.Tick();
  EXPECT_EQ(Position(), 47);
  EXPECT_EQ(Input.StateOf(TScrollBarPos::TopButton), TButtonState::Normal);
  Input.Move(kTopButton);
  Input.Tick();
  EXPECT_EQ(Position(), 44);
  EXPECT_EQ(Input.StateOf(TScrollBarPos::TopButton), TButtonState::Down);
}

TEST_F(ScrollInputTest, TheThumbUnderTheMouseEndsPaging) {
  // The thumb moves 40 a page, from 10 to 50 to 90, and covers 100 then.
  Input.Press({8, 100});
  for (int i = 0; i < 5; ++i)
    Input.Tick();
  EXPECT_EQ(Position(), 40);
  EXPECT_EQ(Input.HotPart(), TScrollBarPos::Thumb);
  EXPECT_EQ(Steps[0], (TScrollStep{true, TIScrollCode::PageDown, kScrollByPage | kScrollDown, 20}));
}

TEST_F(ScrollInputTest, StepsEndWhereTheLastPageBegins) {
  const std::tuple<int, QPoint, int, const char*> cases[] = {
      {59, kBottomButton, 61, "sce"},  // 90 - 30 + 1
      {61, kBottomButton, 61, ""},
      {90, kBottomButton, 61, "sce"},  // set beyond it, led back
      {2, kTopButton, 0, "sce"},
      {0, kTopButton, 0, ""}};
  for (const auto& [position, at, after, events] : cases) {
    SetRange(90, position, 30);
    Events.clear();
    Input.Press(at);
    Input.Release(at);
    EXPECT_EQ(Position(), after) << position;
    EXPECT_EQ(Events, events) << position;
  }
}

TEST_F(ScrollInputTest, TheThumbFollowsTheMouseUntilTheRelease) {
  Input.Press({8, 15});
  EXPECT_EQ(Interval, 0);
  Input.Move({300, 76});  // 61 pixels of 180: 30.5 of 90
  EXPECT_EQ(Position(), 31);
  EXPECT_EQ(Track.ThumbStart(), 71);
  Input.Move({8, -500});
  EXPECT_EQ(Position(), 0);
  Input.Move({8, 77});
  EXPECT_EQ(Input.StateOf(TScrollBarPos::Thumb), TButtonState::Down) << "wherever the mouse is";
  Input.Release({8, 77});
  EXPECT_EQ(Events, "scscsce");
  EXPECT_EQ(Steps[1], (TScrollStep{false, TIScrollCode::Track, kScrollByThumb | kScrollUp, -31}));
}

TEST_F(ScrollInputTest, MovingPaintsTheOldAndTheNewPartOnly) {
  Input.Move(kTopButton);
  EXPECT_EQ(Input.StateOf(TScrollBarPos::TopButton), TButtonState::Hot);
  for (const int y : {15, 16})
    Input.Move({8, y});
  Input.Leave();
  using enum TScrollBarPos;
  EXPECT_THAT(Painted, ElementsAre(TopButton, TopButton, Thumb, Thumb));
}

TEST_F(ScrollInputTest, WheelAndKeysStep) {
  // Key 0: the wheel.
  const std::tuple<int, int, int, TIScrollCode, TScrollMode> cases[] = {
      {0, -1, 34, TIScrollCode::LineUp, 20},
      {0, 1, 46, TIScrollCode::LineDown, 36},
      {Qt::Key_Right, 0, 43, TIScrollCode::LineDown, kScrollByKey | kScrollDown},
      {Qt::Key_PageUp, 0, 20, TIScrollCode::PageUp, kScrollByKey | kScrollUp},
      {Qt::Key_Home, 0, 0, TIScrollCode::Top, kScrollByKey | kScrollUp},
      {Qt::Key_End, 0, 81, TIScrollCode::Bottom, kScrollByKey | kScrollDown}};
  for (const auto& [key, direction, after, code, mode] : cases) {
    SetRange(90, 40, 10);
    if (key == 0)
      Input.Wheel(direction);
    else
      EXPECT_TRUE(Input.Key(key));
    EXPECT_EQ(Position(), after) << key;
    EXPECT_EQ(Steps.back(), (TScrollStep{true, code, mode, after - 40})) << key;
  }
  EXPECT_FALSE(Input.Key(Qt::Key_Tab));
}
