#include "controls/scroll/ScrollPainter.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPolygonF>
#include <QRegion>

#include <algorithm>
#include <array>

namespace {

// Added to red, green and blue of the bar's colour.
constexpr int kPageDownShade = 10;
constexpr int kPageUpShade = -20;
constexpr int kPageHotShade = 50;
constexpr int kPagePressedShade = -80;

constexpr int kHotTint = 56;        // of 255: how much of the highlight a hot face takes
constexpr int kShortThumb = 10;     // pixels: a longer thumb has a grip of four lines
constexpr int kGripPitch = 3;       // pixels from line to line
constexpr int kDisabledTint = 140;  // of 255: how much of the face the arrow of a disabled button takes

// What a raised face is shaded by, from its light side to its dark one.
struct TRelief {
  int Light;
  int Dark;
};

TRelief ReliefOf(const QColor& face, bool pushed) {
  if (pushed) return {-30, -14};
  // A dark face has to rise from its ground by more light, a light one by shade.
  return face.lightness() < 128 ? TRelief{58, 34} : TRelief{4, -34};
}

QColor FaceOf(const TScrollPaint& paint) {
  return paint.Color.isValid() ? paint.Color : paint.Palette.color(QPalette::Button);
}

// A face with a frame of one pixel; its light comes from the left for a vertical thumb, else from the top.
void PaintRaised(QPainter& painter, const QRect& rect, const QColor& face, const QColor& frame,
                 TRelief relief, bool lightFromLeft) {
  const QRectF area(rect);
  QLinearGradient light(area.topLeft(), lightFromLeft ? area.topRight() : area.bottomLeft());
  light.setColorAt(0, Shaded(face, relief.Light));
  light.setColorAt(1, Shaded(face, relief.Dark));
  painter.fillRect(area, frame);
  painter.fillRect(rect.adjusted(1, 1, -1, -1), light);
}

// Short lines across the middle of the thumb, each with its light beside it.
void PaintGrip(QPainter& painter, const TScrollPaint& paint, const QRect& rect, const QColor& face) {
  const bool vertical = paint.Kind == TScrollBarKind::Vertical;
  const int along = vertical ? rect.height() : rect.width();
  const int across = vertical ? rect.width() : rect.height();
  const int lines = along > kShortThumb ? 4 : 3;
  const int length = across / 2;
  const int first = (along - (lines - 1) * kGripPitch - 2) / 2;
  const int side = (across - length) / 2;
  const TRelief relief = ReliefOf(face, false);
  for (int line = 0; line < lines; ++line) {
    const int start = first + line * kGripPitch;
    const QRect dark = vertical ? QRect(side, start, length, 1) : QRect(start, side, 1, length);
    const QPoint beside = vertical ? QPoint(0, 1) : QPoint(1, 0);
    painter.fillRect(dark.translated(rect.topLeft()), Shaded(face, relief.Dark - 50));
    painter.fillRect(dark.translated(rect.topLeft() + beside), Shaded(face, relief.Light + 30));
  }
}

void PaintPlainThumb(QPainter& painter, const TScrollPaint& paint, const QRect& rect, bool hot) {
  QColor face = FaceOf(paint);
  if (hot) face = Mixed(face, paint.Palette.color(QPalette::Highlight), kHotTint);
  PaintRaised(painter, rect, face, ToQColor(clWindowFrame, paint.Palette), ReliefOf(face, false),
              paint.Kind == TScrollBarKind::Vertical);
  PaintGrip(painter, paint, rect, face);
}

// The hot picture if it is wanted and there is one, else the normal one.
const TPicture& Choose(const TScrollSkin& skin, TScrollPicture normal, TScrollPicture hot, bool wantHot) {
  return wantHot && !skin[hot].Empty() ? skin[hot] : skin[normal];
}

// A picture for each end in its own length and one stretched between, along the bar. With AutoCenter, each
// is centred across if it is thinner.
void PaintEndsAndMiddle(QPainter& painter, const TScrollPaint& paint, const QRect& rect,
                        const TPicture& first, const TPicture& middle, const TPicture& last) {
  const bool vertical = paint.Kind == TScrollBarKind::Vertical;
  const auto along = [vertical](QSize size) { return vertical ? size.height() : size.width(); };
  const auto draw = [&](const TPicture& picture, int start, int length) {
    const int thick = along(rect.size().transposed());
    const int own = along(picture.Size().transposed());
    const int used = paint.Skin.AutoCenter ? std::min(own, thick) : thick;
    const QRect part = vertical ? QRect((thick - used) / 2, start, used, length)
                                : QRect(start, (thick - used) / 2, length, used);
    picture.Draw(painter, part.translated(rect.topLeft()), true);
  };
  const int length = along(rect.size());
  const int firstLength = along(first.Size());
  const int lastLength = along(last.Size());
  draw(first, 0, firstLength);
  draw(middle, firstLength, length - firstLength - lastLength);
  draw(last, length - lastLength, lastLength);
}

unsigned ArrowStyle(TButtonState state) {
  switch (state) {
    case TButtonState::Hot:
      return kArrowHot;
    case TButtonState::Disabled:
      return kArrowInactive;
    case TButtonState::Down:
      return kArrowFlat | kArrowHot | kArrowPushed;
    case TButtonState::Normal:
      break;
  }
  return 0;
}

TArrowDirection DirectionOf(TScrollBarKind kind, bool bottom) {
  if (kind == TScrollBarKind::Vertical) return bottom ? TArrowDirection::Down : TArrowDirection::Up;
  return bottom ? TArrowDirection::Right : TArrowDirection::Left;
}

void PaintTriangle(QPainter& painter, const QRect& rect, TArrowDirection direction, const QColor& color) {
  const qreal half = std::clamp(std::min(rect.width(), rect.height()) / 4, 2, 5);
  QPolygonF triangle({{-half, half / 2}, {0, -half / 2}, {half, half / 2}});
  constexpr std::array<int, 4> kTurns{0, 180, 270, 90};  // degrees from "up", by direction
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(QRectF(rect).center());
  painter.rotate(kTurns[static_cast<std::size_t>(direction)]);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawPolygon(triangle);
  painter.restore();
}

}  // namespace

void PaintBackground(QPainter& painter, const TScrollPaint& paint, const QRect& bar, const QRect& area) {
  if (paint.Color.isValid()) painter.fillRect(area, paint.Color);
  const TScrollSkin& skin = paint.Skin;
  // The whole bar and not the area alone: a stretched picture has to meet itself at the edges of each
  // repaint.
  PaintEndsAndMiddle(painter, paint, bar, skin[ScrollBgTop], skin[ScrollBg], skin[ScrollBgBottom]);
}

void PaintPage(QPainter& painter, const TScrollPaint& paint, const QRect& rect, bool down,
               TButtonState state) {
  if (!paint.Color.isValid() || !paint.Skin[ScrollBg].Empty()) return;
  int shade = down ? kPageDownShade : kPageUpShade;
  if (state == TButtonState::Hot) shade = kPageHotShade;
  if (state == TButtonState::Down) shade = kPagePressedShade;
  painter.fillRect(rect, Shaded(paint.Color, shade));
}

void PaintButton(QPainter& painter, const TScrollPaint& paint, const QRect& rect, bool bottom,
                 TButtonState state) {
  const bool hot = state == TButtonState::Hot || state == TButtonState::Down;
  const TPicture& picture =
      bottom ? Choose(paint.Skin, BtnRight, BtnRightHot, hot) : Choose(paint.Skin, BtnLeft, BtnLeftHot, hot);
  if (!picture.Empty()) return picture.Draw(painter, rect, true);
  DrawScrollArrow(painter, rect, DirectionOf(paint.Kind, bottom), ArrowStyle(state), paint.Palette);
}

void PaintThumb(QPainter& painter, const TScrollPaint& paint, const QRect& rect, bool hot) {
  const TScrollSkin& skin = paint.Skin;
  if (skin[TrackTop].Empty() && skin[TrackCenter].Empty() && skin[TrackBottom].Empty())
    return PaintPlainThumb(painter, paint, rect, hot);
  PaintEndsAndMiddle(painter, paint, rect, Choose(skin, TrackTop, TrackTopHot, hot),
                     Choose(skin, TrackCenter, TrackCenterHot, hot),
                     Choose(skin, TrackBottom, TrackBottomHot, hot));
}

void PaintFocus(QPainter& painter, const TScrollPaint& paint, const QRect& rect) {
  const QRegion frame = QRegion(rect) - QRegion(rect.adjusted(1, 1, -1, -1));
  for (const QRect& side : frame)
    painter.fillRect(side, paint.Palette.color(QPalette::Highlight));
}

void DrawScrollArrow(QPainter& painter, const QRect& rect, TArrowDirection direction, unsigned style,
                     const QPalette& palette) {
  if (rect.isEmpty()) return;
  const bool pushed = (style & kArrowPushed) != 0;
  QColor face = palette.color(QPalette::Button);
  if ((style & kArrowHot) != 0) face = Mixed(face, palette.color(QPalette::Highlight), kHotTint);
  if ((style & kArrowFlat) == 0 || pushed)
    PaintRaised(painter, rect, face, ToQColor(clWindowFrame, palette), ReliefOf(face, pushed), false);
  QColor arrow = palette.color(QPalette::ButtonText);
  if ((style & kArrowInactive) != 0) arrow = Mixed(arrow, face, kDisabledTint);
  PaintTriangle(painter, rect, direction, arrow);
}

void TThumbBitmaps::Clear() {
  FThumbBitmap = {};
  FThumbHotBitmap = {};
}

// A thumb is composed when it is shown at another size or density; dragging and hovering only copy it.
const TRdBitmap& TThumbBitmaps::Get(const TScrollPaint& paint, QSize size, qreal density, bool hot) {
  TRdBitmap& bitmap = hot ? FThumbHotBitmap : FThumbBitmap;
  const bool atHand = bitmap.Size() == size && bitmap.Image().devicePixelRatio() == density;
  if (atHand || !bitmap.SetSize(size, density)) return bitmap;
  bitmap.Image().fill(Qt::transparent);
  QPainter painter(&bitmap.Image());
  PaintThumb(painter, paint, QRect(QPoint(), size), hot);
  return bitmap;
}
