#include "controls/list/rd/skin/PicturePixels.h"

#include <QPainter>

#include <algorithm>

namespace {

// The largest difference of red, green and blue.
int Difference(QRgb a, QRgb b) {
  return std::max({qAbs(qRed(a) - qRed(b)), qAbs(qGreen(a) - qGreen(b)), qAbs(qBlue(a) - qBlue(b))});
}

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

bool LooksFramed(const TPicture& picture) {
  const QImage image = PicturePixels(picture);
  if (image.isNull()) return false;
  const QRgb top = image.pixel(0, 0);
  return Difference(top, image.pixel(0, image.height() - 1)) < 2 &&
         Difference(top, image.pixel(0, image.height() / 2)) > 2;
}

TPicture GrayPicture(const TPicture& picture) {
  if (picture.Empty()) return {};
  return TPicture(Gray(PicturePixels(picture)), Gray(PicturePixels(picture, 2)));
}
