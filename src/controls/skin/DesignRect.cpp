#include "controls/skin/DesignRect.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "controls/picture/Picture.h"
#include "controls/skin/RdBitmap.h"

namespace {

constexpr int kAlmostSameSize = 2;  // a picture that differs by less is not sliced in that axis
constexpr int kLargestUntiled = 3;  // pixels: smaller parts are stretched even when filling

// One third of an axis: where it begins and how long it is.
struct TSpan {
  int Start = 0;
  int Length = 0;
};

using TSpans = std::array<TSpan, 3>;

TSpans SpansOf(int start, int length, int first, int last) {
  return {{{start, first}, {start + first, length - first - last}, {start + length - last, last}}};
}

struct TAxis {
  TSpans Source;
  TSpans Target;
};

TAxis Axis(int picture, int targetStart, int targetLength, int first, int last) {
  if (last == kSameSlice) last = first;
  if (std::abs(targetLength - picture) < kAlmostSameSize) first = last = 0;
  return {SpansOf(0, picture, first, last), SpansOf(targetStart, targetLength, first, last)};
}

QRect RectOf(const TSpan& x, const TSpan& y) {
  return {x.Start, y.Start, x.Length, y.Length};
}

// Copies `source` over and over; what would leave the target is cut.
void Tile(QPainter& painter, const TDesignPart& part, const QImage& image, qreal density) {
  const QRect& to = part.Target;
  for (int y = to.y(); y < to.y() + to.height(); y += part.Source.height()) {
    for (int x = to.x(); x < to.x() + to.width(); x += part.Source.width()) {
      const QSize size = part.Source.size().boundedTo({to.x() + to.width() - x, to.y() + to.height() - y});
      painter.drawImage(QRectF(QPointF(x, y), size), image,
                        QRectF(part.Source.topLeft() * density, QSizeF(size) * density));
    }
  }
}

void DrawImage(QPainter& painter, const QRect& target, const QImage& image, const TDesignSlices& slices) {
  const qreal density = image.devicePixelRatio();
  painter.save();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  for (const TDesignPart& part : DesignParts(image.deviceIndependentSize().toSize(), target, slices)) {
    if (part.Tiled)
      Tile(painter, part, image, density);
    else
      painter.drawImage(QRectF(part.Target), image,
                        QRectF(part.Source.topLeft() * density, QSizeF(part.Source.size()) * density));
  }
  painter.restore();
}

}  // namespace

TDesignSlices TDesignSlices::ThirdsOf(QSize picture, TSuperStretchMode mode) {
  const int x = picture.width() / 3;
  const int y = picture.height() / 3;
  return {x, y, x, y, mode};
}

void TDesignRect::SetSlices(const TDesignSlices& slices) {
  if (slices == FSlices) return;
  FSlices = slices;
  Changed();
}

void TDesignRect::SetStretchMode(TSuperStretchMode mode) {
  TDesignSlices slices = FSlices;
  slices.StretchMode = mode;
  SetSlices(slices);
}

void TDesignRect::Set(int TDesignSlices::*side, int value) {
  TDesignSlices slices = FSlices;
  slices.*side = value;
  SetSlices(slices);
}

void TDesignRect::SetEmpty(bool empty) {
  if (empty) FSlices = {0, 0, 0, 0, FSlices.StretchMode};
  FAutoFill = !empty && Empty();
  if (OnChange) OnChange(*this);
  FAutoFill = false;
}

void TDesignRect::Changed() {
  // The seeding of the slices is part of the event that asked for it.
  if (OnChange && !FAutoFill) OnChange(*this);
}

std::vector<TDesignPart> DesignParts(QSize picture, const QRect& target, const TDesignSlices& slices) {
  const TAxis x = Axis(picture.width(), target.x(), target.width(), slices.Left, slices.Right);
  const TAxis y = Axis(picture.height(), target.y(), target.height(), slices.Top, slices.Bottom);
  constexpr std::array<std::array<std::size_t, 2>, 9> kOrder{
      {{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 2}, {2, 0}, {2, 1}, {2, 2}, {1, 1}}};

  const bool fill = slices.StretchMode == sdmFill && !slices.Empty();
  std::vector<TDesignPart> parts;
  parts.reserve(kOrder.size());
  for (const auto& [column, row] : kOrder) {
    TDesignPart part{RectOf(x.Source[column], y.Source[row]), RectOf(x.Target[column], y.Target[row])};
    if (part.Source.isEmpty() || part.Target.isEmpty()) continue;
    // Corners have the same size on both sides, so there is nothing to fill.
    const bool corner = column != 1 && row != 1;
    part.Tiled =
        fill && !corner && part.Source.width() > kLargestUntiled && part.Source.height() > kLargestUntiled;
    parts.push_back(part);
  }
  return parts;
}

void DrawDesignRect(QPainter& painter, const QRect& target, const TPicture& picture,
                    const TDesignSlices& slices) {
  if (picture.Empty() || target.isEmpty()) return;
  DrawImage(painter, target, picture.ImageFor(painter.device()->devicePixelRatioF()), slices);
}

void DrawDesignRect(QPainter& painter, const QRect& target, const TRdBitmap& bitmap,
                    const TDesignSlices& slices) {
  if (bitmap.Empty() || target.isEmpty()) return;
  DrawImage(painter, target, bitmap.Picture(), slices);
}
