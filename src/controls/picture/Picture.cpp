#include "controls/picture/Picture.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>

#include "controls/picture/PngDecoder.h"

namespace {

// The one other density that pictures come in; on a device in between the dense one is scaled down.
constexpr qreal kDense = 2.0;

QImage ReadPng(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return DecodePng(file.readAll());
}

QImage AtDensity(QImage image, qreal density) {
  image.setDevicePixelRatio(density);
  return image;
}

}  // namespace

TPicture::TPicture(const QImage& oneX, const QImage& twoX)
    : FOneX(AtDensity(oneX, 1.0)), FTwoX(AtDensity(twoX, kDense)) {}

TPicture TPicture::FromResource(const QString& name) {
  const QString base = u":/art/"_qs + name;
  return TPicture(ReadPng(base + u".png"_qs), ReadPng(base + u"@2x.png"_qs));
}

TPicture TPicture::FromIcon(const QIcon& icon, QSize size) {
  if (icon.isNull()) return {};
  const QImage oneX = icon.pixmap(size, 1.0).toImage();
  const QImage twoX = icon.pixmap(size, kDense).toImage();
  // An icon that has no more pixels to give answers with the same ones.
  return TPicture(oneX, twoX.width() > oneX.width() ? twoX : QImage());
}

QSize TPicture::Size() const {
  if (!FOneX.isNull()) return FOneX.size();
  return FTwoX.deviceIndependentSize().toSize();
}

const QImage& TPicture::ImageFor(qreal devicePixelRatio) const {
  const bool dense = devicePixelRatio > 1.0 ? !FTwoX.isNull() : FOneX.isNull();
  return dense ? FTwoX : FOneX;
}

void TPicture::Draw(QPainter& painter, const QRect& target, bool stretch) const {
  if (Empty()) return;
  const QRect area = stretch ? target : QRect(target.topLeft(), Size());
  if (area.isEmpty()) return;
  // As the caller had it, afterwards: a painter is handed through many hands.
  const bool smooth = painter.testRenderHint(QPainter::SmoothPixmapTransform);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(area, ImageFor(painter.device()->devicePixelRatioF()));
  painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
}

QIcon TPicture::ToIcon() const {
  QIcon icon;
  if (!FOneX.isNull()) icon.addPixmap(QPixmap::fromImage(FOneX));
  if (!FTwoX.isNull()) icon.addPixmap(QPixmap::fromImage(FTwoX));
  return icon;
}
