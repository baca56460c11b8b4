// The bitmap that a row, a header section or the blank area is painted in before it goes to the screen in
// one blit. It is reused: a canvas lives for one row. Main thread.
#pragma once

#include "controls/scroll/RdBitmap.h"

#include <QPainter>
#include <QRect>

class TRowCanvas {
 public:
  // area: what the bitmap stands for, in the coordinates of `target`. The painter uses the same coordinates.
  TRowCanvas(QPainter& target, TRdBitmap& bitmap, const QRect& area);

  // False for an empty area, or if memory lacks: then nothing may be painted.
  [[nodiscard]] bool Valid() const { return FPainter.isActive(); }
  [[nodiscard]] QPainter& Painter() { return FPainter; }

  // Ends the painting and copies it to the target.
  void Blit();

 private:
  QPainter& FTarget;
  TRdBitmap& FBitmap;
  QRect FArea;
  QPainter FPainter;
};
