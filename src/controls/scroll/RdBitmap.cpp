#include "controls/scroll/RdBitmap.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

int Pixels(int length, qreal density) {
  constexpr double kMost = std::numeric_limits<int>::max();  // which no image takes
  return static_cast<int>(std::min(std::ceil(length * density), kMost));
}

}  // namespace

bool TRdBitmap::SetSize(QSize size, qreal density) {
  if (size.isEmpty()) {
    FImage = {};
    return false;
  }
  const QSize pixels(Pixels(size.width(), density), Pixels(size.height(), density));
  if (FImage.size() != pixels) FImage = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
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
