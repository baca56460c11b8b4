// Images and pictures of one colour, for the tests of all controls.
#pragma once

#include <QColor>
#include <QImage>

#include "controls/picture/Picture.h"

inline QImage Filled(QSize size, const QColor& color) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(color);
  return image;
}

inline TPicture PictureOf(QSize size, const QColor& color) {
  return TPicture(Filled(size, color));
}
