#include "controls/list/rd/painter/RowCanvas.h"

TRowCanvas::TRowCanvas(QPainter& target, TRdBitmap& bitmap, const QRect& area)
    : FTarget(target), FBitmap(bitmap), FArea(area) {
  if (!FBitmap.SetSize(area.size(), target.device()->devicePixelRatioF())) return;
  FPainter.begin(&FBitmap.Image());
  FPainter.translate(-area.topLeft());
}

void TRowCanvas::Blit() {
  FPainter.end();
  FBitmap.Blit(FTarget, FArea.topLeft(), QRect(QPoint(), FArea.size()));
}
