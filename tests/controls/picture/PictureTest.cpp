#include "controls/picture/Picture.h"

#include <gtest/gtest.h>

#include <QPainter>

#include "controls/picture/Pictures.h"

namespace {

constexpr QSize kSize(8, 6);

TPicture RedAndDenseBlue() {
  return TPicture(Filled(kSize, Qt::red), Filled(kSize * 2, Qt::blue));
}

// A white canvas of 40 x 30 device-independent pixels with the picture drawn at 10, 10.
QImage Drawn(const TPicture& picture, qreal ratio, QSize target = kSize, bool stretch = false) {
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
    const QImage canvas = Drawn(picture, ratio);
    const auto at = [&](int place) { return qRound((place + 0.5) * ratio); };
    EXPECT_EQ(canvas.pixelColor(at(13), at(12)), expected) << "ratio " << ratio;
    EXPECT_EQ(canvas.pixelColor(at(19), at(12)), QColor(Qt::white)) << "ratio " << ratio;
  }
}

TEST(Picture, StretchedFillsTheTargetElseItKeepsItsSize) {
  EXPECT_EQ(Painted(Drawn(RedAndDenseBlue(), 1.0, QSize(20, 3))), QRect(10, 10, 8, 6));
  EXPECT_EQ(Painted(Drawn(RedAndDenseBlue(), 1.0, QSize(20, 3), true)), QRect(10, 10, 20, 3));
  EXPECT_EQ(Painted(Drawn(RedAndDenseBlue(), 2.0, QSize(20, 3), true)), QRect(20, 20, 40, 6));
  EXPECT_TRUE(Painted(Drawn(RedAndDenseBlue(), 1.0, QSize(0, 3), true)).isEmpty());
  EXPECT_TRUE(Painted(Drawn(TPicture(), 1.0)).isEmpty());
}

TEST(Picture, ResourcesBringTheirDenseImage) {
  const TPicture picture = TPicture::FromResource(u"sample"_qs);
  EXPECT_EQ(picture.Size(), kSize);
  EXPECT_EQ(Drawn(picture, 1.0).pixelColor(12, 12), QColor(Qt::red));
  EXPECT_EQ(Drawn(picture, 2.0).pixelColor(24, 24), QColor(Qt::blue));
  EXPECT_TRUE(TPicture::FromResource(u"no such picture"_qs).Empty());
}

TEST(Picture, AnIconKeepsSizeAndDensitiesBothWays) {
  const QIcon icon = RedAndDenseBlue().ToIcon();
  EXPECT_EQ(icon.actualSize(kSize), kSize);
  const TPicture back = TPicture::FromIcon(icon, kSize);
  EXPECT_EQ(back.Size(), kSize);
  EXPECT_EQ(Drawn(back, 1.0).pixelColor(12, 12), QColor(Qt::red));
  EXPECT_EQ(Drawn(back, 2.0).pixelColor(24, 24), QColor(Qt::blue));
}
