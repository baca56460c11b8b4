// A surface in memory with a widget of known palette beside it, for tests that read pixels.
#pragma once

#include "controls/list/rd/skin/RdSkinValues.h"
#include "controls/picture/Pictures.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QWidget>

// A picture with an edge of one pixel.
inline TPicture FramedPicture(QSize size, const QColor& edge, const QColor& inside) {
  QImage image = Filled(size, edge);
  QPainter(&image).fillRect(image.rect().adjusted(1, 1, -1, -1), inside);
  return TPicture(image);
}

class TPaintSurface : public ::testing::Test {
 protected:
  TPaintSurface() {
    UsePalette(QPalette(Qt::black, Qt::lightGray, Qt::white, Qt::gray, Qt::darkGray, Qt::black, Qt::white));
  }

  void UsePalette(const QPalette& palette) { Widget.setPalette(palette); }
  void UseDarkPalette() {
    const QColor page(0x20, 0x23, 0x27);
    UsePalette(QPalette(Qt::white, page, page.lighter(), page.darker(), page, Qt::white, page));
  }

  // Starts afresh on magenta, which no test paints.
  QPainter& Start(QSize size, qreal density = 1) {
    if (Painter.isActive()) Painter.end();
    Surface = Filled(size * density, Qt::magenta);
    Surface.setDevicePixelRatio(density);
    Painter.begin(&Surface);
    return Painter;
  }

  [[nodiscard]] QColor At(int x, int y) const { return Surface.pixelColor(x, y); }

  // How many pixels of the area have that colour. Scaling may be off by one.
  [[nodiscard]] int Count(const QRect& area, const QColor& color) const {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
      for (int x = area.left(); x <= area.right(); ++x)
        if (IsNear(Surface.pixel(x, y), color.rgb())) ++count;
    return count;
  }
  [[nodiscard]] bool IsAll(const QRect& area, const QColor& color) const {
    return Count(area, color) == area.width() * area.height();
  }

  // The darkest and the lightest pixel, 0 to 255.
  [[nodiscard]] int Darkest(const QRect& area) const {
    return Extreme(area, [](int a, int b) { return a < b; });
  }
  [[nodiscard]] int Lightest(const QRect& area) const {
    return Extreme(area, [](int a, int b) { return a > b; });
  }

  QWidget Widget;
  TListSkin Skin;
  QImage Surface;
  QPainter Painter;

 private:
  static bool IsNear(QRgb a, QRgb b) {
    return qAbs(qRed(a) - qRed(b)) < 2 && qAbs(qGreen(a) - qGreen(b)) < 2 && qAbs(qBlue(a) - qBlue(b)) < 2;
  }

  template <class TBefore>
  [[nodiscard]] int Extreme(const QRect& area, TBefore before) const {
    int found = qGray(Surface.pixel(area.topLeft()));
    for (int y = area.top(); y <= area.bottom(); ++y)
      for (int x = area.left(); x <= area.right(); ++x)
        if (const int gray = qGray(Surface.pixel(x, y)); before(gray, found)) found = gray;
    return found;
  }
};
