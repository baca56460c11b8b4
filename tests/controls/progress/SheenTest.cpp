// The sheen: its way over the filled part, and the ticks that move it.
#include <gtest/gtest.h>

#include <QTest>

#include "controls/notes/Image.h"
#include "controls/progress/PImageProgress.h"

namespace {

// The picture control of the sheen in a bar that is filled up to the right end `filled`.
struct TBar {
  explicit TBar(int filled) {
    Bar.resize(100, 10);
    for (int i = 0; i < kProgressItemCount; ++i)
      Bar.Items().Add();
    Bar.SetPosition(filled);
  }
  TImageProgress Bar;
  TImage& Sheen = *Bar.findChild<TImage*>(u"MoveImage"_qs);
};

}  // namespace

TEST(Sheen, EachMoveFollowsFromWhereItStands) {
  const std::tuple<TSheen, int, TSheenMove, TSheen> cases[] = {
      {{0, 0}, 100, TSheenMove::Advance, {10, 80}},   {{-20, 0}, 100, TSheenMove::Advance, {-10, 100}},
      {{10, 80}, 100, TSheenMove::Advance, {20, 70}}, {{90, 0}, 100, TSheenMove::Advance, {100, 0}},
      {{50, 50}, 100, TSheenMove::Shrink, {50, 30}},  {{90, 50}, 100, TSheenMove::Shrink, {90, 0}},
      {{100, 0}, 100, TSheenMove::Pause, {-20, 0}},   {{130, 40}, 100, TSheenMove::Pause, {-20, 0}},
      {{0, 0}, 0, TSheenMove::Pause, {-20, 0}},       {{-20, 0}, 0, TSheenMove::Advance, {-10, 0}}};
  for (const auto& [from, progressRight, move, to] : cases) {
    TSheen sheen = from;
    EXPECT_EQ(MoveSheen(sheen, progressRight), move) << from.Left << ", " << from.Width;
    EXPECT_EQ(sheen, to) << from.Left << ", " << from.Width;
  }
}

TEST(Sheen, MovesOnlyWhileItIsOpenHoweverOftenItWasOpened) {
  TBar bar(100);
  EXPECT_TRUE(bar.Sheen.isHidden());
  EXPECT_EQ(bar.Sheen.pos(), QPoint(0, 11));
  bar.Bar.SetOpenAnimate(true);
  bar.Bar.SetOpenAnimate(true);
  ASSERT_TRUE(QTest::qWaitFor([&] { return bar.Sheen.x() >= 30; }));
  EXPECT_EQ(bar.Sheen.width(), 100 - bar.Sheen.x() - 10);
  bar.Bar.SetOpenAnimate(false);
  const QRect stopped = bar.Sheen.geometry();
  QTest::qWait(100);
  EXPECT_EQ(bar.Sheen.geometry(), stopped) << "a second worker was left behind";
}

TEST(Sheen, ShowsItselfAfterThePauseUnlessTheBarIsFull) {
  TBar half(50);
  TBar full(100);
  half.Bar.SetOpenAnimate(true);
  full.Bar.SetOpenAnimate(true);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !half.Sheen.isHidden(); }));
  ASSERT_TRUE(QTest::qWaitFor([&] { return full.Sheen.x() == -20; }));
  ASSERT_TRUE(QTest::qWaitFor([&] { return full.Sheen.x() > -20; }));
  EXPECT_TRUE(full.Sheen.isHidden());
}
