#include "controls/picture/ImageList.h"

#include <gtest/gtest.h>

#include <QPainter>

#include "controls/picture/Pictures.h"

namespace {

constexpr QSize kSize(8, 6);

TPicture RedAndDenseBlue() {
  return TPicture(Filled(kSize, Qt::red), Filled(kSize * 2, Qt::blue));
}

// A white canvas of 40 x 30 device-independent pixels with the picture drawn at 10, 10.
QImage DrawnAt10(const TPicture& picture, qreal ratio, QSize target = kSize, bool stretch = false) {
  QImage canvas = Filled((QSizeF(40, 30) * ratio).toSize(), Qt::white);
  canvas.setDevicePixelRatio(ratio);
  QPainter painter(&canvas);
  picture.Draw(painter, QRect(QPoint(10, 10), target), stretch);
  return canvas;
}

// The area of all pixels that are not white.
QRect Painted(const QImage& image) {
  QRect area;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixelColor(x, y) != Qt::white) area |= QRect(x, y, 1, 1);
  return area;
}

constexpr QSize kImage(8, 8);

class ImageListTest : public ::testing::Test {
 protected:
  void Add(Qt::GlobalColor color) { List.Add(TPicture(Filled(kImage, color), Filled(kImage * 2, color))); }

  // A white canvas of 20 x 20 with the picture drawn in the middle.
  [[nodiscard]] QImage Drawn(int index, bool enabled = true, qreal ratio = 1.0) const {
    QImage canvas = Filled(QSize(20, 20) * ratio, Qt::white);
    canvas.setDevicePixelRatio(ratio);
    QPainter painter(&canvas);
    List.Draw(painter, QRect(0, 0, 20, 20), index, enabled);
    return canvas;
  }

  TImageList List{kImage};
};

}  // namespace

TEST(Picture, DevicePixelRatioChoosesTheImage) {
  const TPicture onlyDense({}, Filled(kSize * 2, Qt::blue));
  const TPicture onlyPlain(Filled(kSize, Qt::red));
  const std::tuple<TPicture, qreal, QColor> cases[] = {
      {RedAndDenseBlue(), 1.0, Qt::red},  {RedAndDenseBlue(), 1.5, Qt::blue},
      {RedAndDenseBlue(), 2.0, Qt::blue}, {RedAndDenseBlue(), 3.0, Qt::blue},
      {onlyPlain, 2.0, Qt::red},          {onlyDense, 1.0, Qt::blue}};
  for (const auto& [picture, ratio, expected] : cases) {
    EXPECT_EQ(picture.Size(), kSize);
    const QImage canvas = DrawnAt10(picture, ratio);
    const auto at = [&](int place) { return qRound((place + 0.5) * ratio); };
    EXPECT_EQ(canvas.pixelColor(at(13), at(12)), expected) << "ratio " << ratio;
    EXPECT_EQ(canvas.pixelColor(at(19), at(12)), QColor(Qt::white)) << "ratio " << ratio;
  }
}

TEST(Picture, StretchedFillsTheTargetElseItKeepsItsSize) {
  EXPECT_EQ(Painted(DrawnAt10(RedAndDenseBlue(), 1.0, QSize(20, 3))), QRect(10, 10, 8, 6));
  EXPECT_EQ(Painted(DrawnAt10(RedAndDenseBlue(), 1.0, QSize(20, 3), true)), QRect(10, 10, 20, 3));
  EXPECT_EQ(Painted(DrawnAt10(RedAndDenseBlue(), 2.0, QSize(20, 3), true)), QRect(20, 20, 40, 6));
  EXPECT_TRUE(Painted(DrawnAt10(RedAndDenseBlue(), 1.0, QSize(0, 3), true)).isEmpty());
  EXPECT_TRUE(Painted(DrawnAt10(TPicture(), 1.0)).isEmpty());
}

TEST(Picture, ResourcesBringTheirDenseImage) {
  const TPicture picture = TPicture::FromResource(u"sample"_qs);
  EXPECT_EQ(picture.Size(), kSize);
  EXPECT_EQ(DrawnAt10(picture, 1.0).pixelColor(12, 12), QColor(Qt::red));
  EXPECT_EQ(DrawnAt10(picture, 2.0).pixelColor(24, 24), QColor(Qt::blue));
  EXPECT_TRUE(TPicture::FromResource(u"no such picture"_qs).Empty());
}

TEST(Picture, AnIconKeepsSizeAndDensitiesBothWays) {
  const QIcon icon = RedAndDenseBlue().ToIcon();
  EXPECT_EQ(icon.actualSize(kSize), kSize);
  const TPicture back = TPicture::FromIcon(icon, kSize);
  EXPECT_EQ(back.Size(), kSize);
  EXPECT_EQ(DrawnAt10(back, 1.0).pixelColor(12, 12), QColor(Qt::red));
  EXPECT_EQ(DrawnAt10(back, 2.0).pixelColor(24, 24), QColor(Qt::blue));
}

TEST_F(ImageListTest, DrawsByIndexAndMovesDownOnDelete) {
  Add(Qt::red);
  Add(Qt::green);
  EXPECT_EQ(List.AddIcon(TPicture(Filled(kImage, Qt::blue)).ToIcon()), 2);
  List.Delete(7);
  List.Delete(-1);
  EXPECT_EQ(List.Count(), 3);
  List.Delete(0);
  EXPECT_EQ(List.Count(), 2);
  EXPECT_EQ(Drawn(0).pixelColor(10, 10), QColor(Qt::green));
  EXPECT_EQ(Drawn(1).pixelColor(10, 10), QColor(Qt::blue));
}

TEST_F(ImageListTest, IsCentredAtEveryDensityAndDisabledLooksDifferent) {
  Add(Qt::red);
  for (const int ratio : {1, 2}) {
    const QImage canvas = Drawn(0, true, ratio);
    EXPECT_EQ(canvas.pixelColor(6 * ratio, 6 * ratio), QColor(Qt::red));
    EXPECT_EQ(canvas.pixelColor(14 * ratio - 1, 14 * ratio - 1), QColor(Qt::red));
    EXPECT_EQ(canvas.pixelColor(6 * ratio - 1, 10 * ratio), QColor(Qt::white));
    EXPECT_EQ(canvas.pixelColor(14 * ratio, 10 * ratio), QColor(Qt::white));
  }

  EXPECT_NE(Drawn(0, false).pixelColor(10, 10), QColor(Qt::red));
  EXPECT_NE(Drawn(0, false).pixelColor(10, 10), QColor(Qt::white));

  EXPECT_EQ(List.Add(TPicture()), 1) << "an empty picture keeps its place";
  const QImage blank = Filled(QSize(20, 20), Qt::white);
  for (const int index : {-1, 1, 2, 1000})
    EXPECT_EQ(Drawn(index), blank) << index;
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
