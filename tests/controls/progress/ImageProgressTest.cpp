#include "controls/progress/PImageProgress.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QVBoxLayout>

#include <climits>

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
}

TEST_F(ImageProgressTest, WithoutARangeOrAllItemsPositionIsOnlyStored) {
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

TEST_F(ImageProgressTest, ManyPositionsInOneGoPaintOnce) {
  Bar.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&Bar));
  QApplication::processEvents();
  TPaintCounter paints(Bar);
  for (int position = 0; position <= 100; ++position)
    Bar.SetPosition(position);
  ASSERT_TRUE(QTest::qWaitFor([&] { return paints.Count > 0; }));
  EXPECT_EQ(paints.Count, 1);
}

TEST_F(ImageProgressTest, AssistiveToolsSeeAProgressBar) {
  Bar.SetMax(300);
  Bar.SetPosition(120);
  QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&Bar);
  ASSERT_NE(told, nullptr);
  EXPECT_EQ(told->role(), QAccessible::ProgressBar);
  ASSERT_NE(told->valueInterface(), nullptr);
  EXPECT_EQ(told->valueInterface()->currentValue(), 120);
  EXPECT_EQ(told->valueInterface()->maximumValue(), 300);
}
