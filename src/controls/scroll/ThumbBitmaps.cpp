#include "controls/scroll/ThumbBitmaps.h"

#include <QPainter>

#include "controls/scroll/ScrollPainter.h"

void TThumbBitmaps::Clear() {
  FThumbBitmap = {};
  FThumbHotBitmap = {};
}

const TRdBitmap& TThumbBitmaps::Get(const TScrollPaint& paint, QSize size, qreal density, bool hot) {
  TRdBitmap& bitmap = hot ? FThumbHotBitmap : FThumbBitmap;
  const bool atHand = bitmap.Size() == size && bitmap.Image().devicePixelRatio() == density;
  if (atHand || !bitmap.SetSize(size, density)) return bitmap;
  bitmap.Image().fill(Qt::transparent);
  QPainter painter(&bitmap.Image());
  PaintThumb(painter, paint, QRect(QPoint(), size), hot);
  return bitmap;
}
