#include "controls/progress/PImageProgress.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QTest>

#include <climits>

#include "controls/notes/Image.h"
#include "controls/notes/PaintCounter.h"
#include "controls/picture/Pictures.h"

namespace {

constexpr int kLeftCap = 5;
constexpr int kRightCap = 7;
constexpr QSize kBarSize(200, 10);

class ImageProgressTest : public ::testing::Test {
 protected:
  ImageProgressTest() {
    Bar.resize(kBarSize);
    Add(PictureOf({1, 10}, Qt::white), true);
    Add(PictureOf({3, 10}, Qt::white), false);
    Add(PictureOf({3, 10}, Qt::white), false);
    Add(PictureOf({1, 10}, Qt::red), true);
    Add(PictureOf({kLeftCap, 10}, Qt::red), false);
    Add(PictureOf({kRightCap, 10}, Qt::red), false);
  }

  void Add(const TPicture& picture, bool stretch) {
    TImageItem& item = Bar.Items().Add();
    item.Picture = picture;
    item.Stretch = stretch;
  }

  // The filled pixels in the middle row, which stand at the left without a gap.
  int FilledPixels() {
    const QImage image = Bar.grab().toImage();
    int count = 0;
    while (count < image.width() && image.pixelColor(count, 5) == QColor(Qt::red))
      ++count;
    for (int x = count; x < image.width(); ++x)
      EXPECT_NE(image.pixelColor(x, 5), QColor(Qt::red)) << x;
    return count;
  }

  TImageProgress Bar;
};

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

TEST(FilledWidth, IsRoundedUpAndNotClamped) {
  const std::tuple<int, int, int, int, int> cases[] = {{0, 0, 99, 559, 0},
                                                       {1, 0, 99, 559, 6},
                                                       {98, 0, 99, 559, 554},
                                                       {99, 0, 99, 559, 559},
                                                       {100, 0, 99, 559, 565},
                                                       {50, 0, 100, 200, 100},
                                                       {15, 10, 20, 33, 17},
                                                       {10, 10, 20, 33, 0},
                                                       {-5, -10, 0, 10, 5},
                                                       {1, 0, INT_MAX, 100, 1},
                                                       {INT_MAX, 0, INT_MAX, 559, 559},
                                                       {0, INT_MIN, INT_MAX, 100, 51},
                                                       {INT_MAX, 0, 1, 559, QWIDGETSIZE_MAX}};
  for (const auto& [position, min, max, width, expected] : cases)
    EXPECT_EQ(FilledWidth(position, min, max, width), expected) << position;
}

TEST_F(ImageProgressTest, ThePixelsFollowThePosition) {
  const std::tuple<int, int, int> cases[] = {
      {0, 0, 12},   // at Min nothing shows
      {1, 12, 12},  // both caps at once
      {6, 12, 12},  // exactly the caps
      {7, 14, 14},     {50, 100, 100},  {99, 198, 198},
      {100, 200, 200}, {110, 200, 220},  // past the edge, cut off
      {-3, 12, 12}                       // below Min the caps are left
  };
  for (const auto& [position, pixels, progressRight] : cases) {
    Bar.SetPosition(position);
    EXPECT_EQ(FilledPixels(), pixels) << position;
    EXPECT_EQ(Bar.ProgressRight(), progressRight) << position;
  }

  Bar.SetPosition(50);
  Bar.SetMax(0);
  Bar.SetPosition(70);
  EXPECT_EQ(Bar.Position(), 70);
  EXPECT_EQ(FilledPixels(), 100);

  TImageProgress five;
  for (int i = 0; i < 5; ++i)
    five.Items().Add().Left = 33;
  five.SetPosition(40);
  EXPECT_EQ(five.Position(), 40);
  EXPECT_EQ(five.ProgressRight(), 0);
  EXPECT_EQ(five.Items()[4].Left, 33);
}

TEST_F(ImageProgressTest, ANewSizeOrBecomingVisibleAppliesThePosition) {
  QWidget form;
  Bar.setParent(&form);
  Bar.SetPosition(50);
  EXPECT_EQ(Bar.ProgressRight(), 100) << "a form that is not shown yet does not count as hidden";
  Bar.hide();
  Bar.SetPosition(75);
  EXPECT_EQ(Bar.ProgressRight(), 100);
  Bar.show();
  EXPECT_EQ(Bar.ProgressRight(), 150);
  Bar.resize(400, 10);
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
  EXPECT_EQ(Bar.ProgressRight(), 300);
  Bar.setParent(nullptr);
}

TEST_F(ImageProgressTest, ManyPositionsInOneGoPaintOnceAndToolsReadThem) {
  Bar.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&Bar));
  QApplication::processEvents();
  TPaintCounter paints(Bar);
  for (int position = 0; position <= 100; ++position)
    Bar.SetPosition(position);
  ASSERT_TRUE(QTest::qWaitFor([&] { return paints.Count > 0; }));
  EXPECT_EQ(paints.Count, 1);

  Bar.SetMax(300);
  Bar.SetPosition(120);
  QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&Bar);
  ASSERT_NE(told, nullptr);
  EXPECT_EQ(told->role(), QAccessible::ProgressBar);
  ASSERT_NE(told->valueInterface(), nullptr);
  EXPECT_EQ(told->valueInterface()->currentValue(), 120);
  EXPECT_EQ(told->valueInterface()->maximumValue(), 300);
}

TEST(ImageRect, AlignDecidesTheRectangleAndANewItemFillsTheControl) {
  const QRect client(0, 0, 100, 40);
  const std::pair<TImageAlign, QRect> cases[] = {
      {TImageAlign::None, {7, 5, 20, 10}},   {TImageAlign::Custom, {7, 5, 20, 10}},
      {TImageAlign::Top, {0, 0, 100, 10}},   {TImageAlign::Bottom, {0, 30, 100, 10}},
      {TImageAlign::Left, {0, 0, 20, 40}},   {TImageAlign::Right, {80, 0, 20, 40}},
      {TImageAlign::Client, {0, 0, 100, 40}}};
  TImageItem item;
  item.Left = 7;
  item.Top = 5;
  item.Width = 20;
  item.Height = 10;
  for (const auto& [align, expected] : cases) {
    item.Align = align;
    EXPECT_EQ(ImageItemRect(item, client), expected) << static_cast<int>(align);
  }

  TImageRect control;
  control.resize(30, 20);
  control.Items().Add();
  const TImageItem& added = control.Items().Add();
  EXPECT_EQ(added.Name, u"TImageItem2");
  EXPECT_EQ(QRect(added.Left, added.Top, added.Width, added.Height), control.rect());
}

TEST(ImageRect, PaintsInOrderAndSkipsTheHiddenAndTheEmpty) {
  TImageRect control;
  control.resize(30, 20);
  const std::pair<TPicture, bool> pictures[] = {{PictureOf({1, 1}, Qt::red), true},
                                                {PictureOf({4, 4}, Qt::blue), false},
                                                {PictureOf({30, 20}, Qt::green), true},
                                                {{}, true}};
  for (const auto& [picture, stretch] : pictures) {
    TImageItem& item = control.Items().Add();
    item.Picture = picture;
    item.Stretch = stretch;
  }
  control.Items()[2].Visible = false;
  const QImage image = control.grab().toImage();
  EXPECT_EQ(image.pixelColor(3, 3), QColor(Qt::blue)) << "drawn over the first, at the corner";
  EXPECT_EQ(image.pixelColor(4, 3), QColor(Qt::red)) << "in its own size";
  EXPECT_EQ(image.pixelColor(29, 19), QColor(Qt::red)) << "stretched to the end";
}

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
