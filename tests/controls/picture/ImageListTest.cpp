#include "controls/picture/ImageList.h"

#include <gtest/gtest.h>

#include <QPainter>

#include "controls/picture/Pictures.h"

namespace {

constexpr QSize kSize(8, 8);

class ImageListTest : public ::testing::Test {
 protected:
  void Add(Qt::GlobalColor color) { List.Add(TPicture(Filled(kSize, color), Filled(kSize * 2, color))); }

  // A white canvas of 20 x 20 with the picture drawn in the middle.
  [[nodiscard]] QImage Drawn(int index, bool enabled = true, qreal ratio = 1.0) const {
    QImage canvas = Filled(QSize(20, 20) * ratio, Qt::white);
    canvas.setDevicePixelRatio(ratio);
    QPainter painter(&canvas);
    List.Draw(painter, QRect(0, 0, 20, 20), index, enabled);
    return canvas;
  }

  TImageList List{kSize};
};

}  // namespace

TEST_F(ImageListTest, DrawsByIndexAndMovesDownOnDelete) {
  Add(Qt::red);
  Add(Qt::green);
  EXPECT_EQ(List.AddIcon(TPicture(Filled(kSize, Qt::blue)).ToIcon()), 2);
  List.Delete(7);
  List.Delete(-1);
  EXPECT_EQ(List.Count(), 3);
  List.Delete(0);
  EXPECT_EQ(List.Count(), 2);
  EXPECT_EQ(Drawn(0).pixelColor(10, 10), QColor(Qt::green));
  EXPECT_EQ(Drawn(1).pixelColor(10, 10), QColor(Qt::blue));
}

TEST_F(ImageListTest, IsCentredInItsOwnSizeAtEveryDensity) {
  Add(Qt::red);
  for (const int ratio : {1, 2}) {
    const QImage canvas = Drawn(0, true, ratio);
    EXPECT_EQ(canvas.pixelColor(6 * ratio, 6 * ratio), QColor(Qt::red));
    EXPECT_EQ(canvas.pixelColor(14 * ratio - 1, 14 * ratio - 1), QColor(Qt::red));
    EXPECT_EQ(canvas.pixelColor(6 * ratio - 1, 10 * ratio), QColor(Qt::white));
    EXPECT_EQ(canvas.pixelColor(14 * ratio, 10 * ratio), QColor(Qt::white));
  }
}

TEST_F(ImageListTest, IndexesOutOfRangeAndEmptyPicturesDrawNothing) {
  Add(Qt::red);
  EXPECT_EQ(List.Add(TPicture()), 1) << "an empty picture keeps its place";
  const QImage blank = Filled(QSize(20, 20), Qt::white);
  for (const int index : {-1, 1, 2, 1000})
    EXPECT_EQ(Drawn(index), blank) << index;
}

TEST_F(ImageListTest, DisabledLooksDifferent) {
  Add(Qt::red);
  EXPECT_NE(Drawn(0, false).pixelColor(10, 10), QColor(Qt::red));
  EXPECT_NE(Drawn(0, false).pixelColor(10, 10), QColor(Qt::white));
}

TEST_F(ImageListTest, LinksHearEveryChangeUntilRemoved) {
  int first = 0;
  int second = 0;
  int secondLink = 0;
  const int firstLink = List.AddChangeLink([&] {
    ++first;
    if (first == 2) List.RemoveChangeLink(secondLink);
  });
  secondLink = List.AddChangeLink([&] { ++second; });
  Add(Qt::red);
  Add(Qt::red);
  List.Delete(0);
  List.Clear();
  List.Clear();
  EXPECT_EQ(first, 4) << "clearing an empty list is no change";
  EXPECT_EQ(second, 1) << "removed while the second change was told";
  List.RemoveChangeLink(firstLink);
  Add(Qt::red);
  EXPECT_EQ(first, 4);
}
