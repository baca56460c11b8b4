#include "controls/list/rd/painter/Gradient.h"

#include <QLinearGradient>
#include <QPainter>

namespace {

// Between the middles of the first and the last pixel.
QLinearGradient GradientOver(const QRectF& rect, bool vertical) {
  const QPointF half(0.5, 0.5);
  return vertical ? QLinearGradient(rect.topLeft() + half, rect.bottomLeft() + QPointF(0.5, -0.5))
                  : QLinearGradient(rect.topLeft() + half, rect.topRight() + QPointF(-0.5, 0.5));
}

}  // namespace

void FillGradient(QPainter& painter, const QRect& rect, const QColor& from, const QColor& to, bool vertical) {
  if (rect.isEmpty()) return;
  if (!from.isValid() && !to.isValid()) return;
  QLinearGradient gradient = GradientOver(rect, vertical);
  gradient.setColorAt(0, from.isValid() ? from : to);
  gradient.setColorAt(1, to.isValid() ? to : from);
  painter.fillRect(rect, gradient);
}

void FillTwoPartGradient(QPainter& painter, const QRect& rect, const QColor& from, const QColor& middle,
                         const QColor& to) {
  const int half = rect.width() / 2;
  FillGradient(painter, rect.adjusted(0, 0, half - rect.width(), 0), from, middle, false);
  FillGradient(painter, rect.adjusted(half, 0, 0, 0), middle, to, false);
}
