#include "controls/skin/RdBitmap.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

#include "controls/picture/Picture.h"

namespace {

int Pixels(int length, qreal density) {
  constexpr double kMost = std::numeric_limits<int>::max();  // which no image takes
  return static_cast<int>(std::min(std::ceil(length * density), kMost));
}

// The weights of blue, green and red add up to 256.
QImage Gray(QImage image) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb color = image.pixel(x, y);
      const int light = (28 * qBlue(color) + 151 * qGreen(color) + 77 * qRed(color)) / 256;
      image.setPixel(x, y, qRgba(light, light, light, qAlpha(color)));
    }
  }
  return image;
}

}  // namespace

bool TRdBitmap::SetSize(QSize size, qreal density) {
  if (size.isEmpty()) {
    FImage = {};
    return false;
  }
  const QSize pixels(Pixels(size.width(), density), Pixels(size.height(), density));
  if (FImage.size() != pixels) FImage = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
  // Pixels are kept where only the density differs.
  if (!FImage.isNull()) FImage.setDevicePixelRatio(density);
  return !FImage.isNull();
}

void TRdBitmap::Blit(QPainter& painter, QPoint at, const QRect& area) const {
  if (Empty()) return;
  // Clipped rather than cut out of the image: no rounding, so no scaling, at any density.
  painter.save();
  painter.setClipRect(QRect(at, area.size()), Qt::IntersectClip);
  painter.drawImage(at - area.topLeft(), FImage);
  painter.restore();
}

QImage TRdBitmap::Picture() const {
  if (!FTransparentColor || Empty()) return FImage;
  QImage picture = FImage.convertToFormat(QImage::Format_ARGB32);
  const QRgb color = FTransparentColor->rgb();
  for (int y = 0; y < picture.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < picture.width(); ++x)
      if ((line[x] | 0xFF000000) == color) line[x] = 0;
  }
  return picture;
}

QImage PicturePixels(const TPicture& picture, int density) {
  if (picture.Empty()) return {};
  QImage image(picture.Size() * density, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return {};
  image.setDevicePixelRatio(density);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  picture.Draw(painter, QRect(QPoint(), picture.Size()));
  painter.end();
  image.setDevicePixelRatio(1);
  return image.convertToFormat(QImage::Format_ARGB32);
}

TPicture GrayPicture(const TPicture& picture) {
  if (picture.Empty()) return {};
  return TPicture(Gray(PicturePixels(picture)), Gray(PicturePixels(picture, 2)));
}
