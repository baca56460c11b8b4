// The drawing of a skinned scroll bar's parts: values in, pixels out; and its thumb, composed once per size.
// Main thread.
#pragma once

#include <QColor>
#include <QPalette>
#include <QRect>

#include "controls/scroll/RdScrollBarImages.h"
#include "controls/scroll/ScrollTypes.h"
#include "controls/skin/RdBitmap.h"

class QPainter;

// The looks that all parts share.
struct TScrollPaint {
  const TScrollSkin& Skin;
  TScrollBarKind Kind;
  QPalette Palette;
  QColor Color;  // of the control; invalid if the parent shows through
};

// The colour fill and the background pictures. `bar` is the whole bar, `area` what has to be painted anew.
void PaintBackground(QPainter& painter, const TScrollPaint& paint, const QRect& bar, const QRect& area);
// A page part: shaded if there is no background picture.
void PaintPage(QPainter& painter, const TScrollPaint& paint, const QRect& rect, bool down,
               TButtonState state);
void PaintButton(QPainter& painter, const TScrollPaint& paint, const QRect& rect, bool bottom,
                 TButtonState state);
// The thumb without its state but hot: pictures or, without any, a raised face with a grip.
void PaintThumb(QPainter& painter, const TScrollPaint& paint, const QRect& rect, bool hot);
// Marks the bar that has the keyboard.
void PaintFocus(QPainter& painter, const TScrollPaint& paint, const QRect& rect);

// The platform's numbers of the direction of a scroll arrow, and the bits of its style.
enum class TArrowDirection { Up = 0, Down = 1, Left = 2, Right = 3 };
inline constexpr unsigned kArrowInactive = 256;
inline constexpr unsigned kArrowPushed = 512;
inline constexpr unsigned kArrowHot = 4096;
inline constexpr unsigned kArrowFlat = 16384;

// A scroll arrow as a button of its own. A flat one has no face unless it is pushed.
void DrawScrollArrow(QPainter& painter, const QRect& rect, TArrowDirection direction, unsigned style,
                     const QPalette& palette);

// Holds the thumb for the mouse elsewhere and for the mouse over it.
class TThumbBitmaps {
 public:
  // Forgets both; to be called when a picture, the colour, the palette or the kind has changed.
  void Clear();

  // The thumb in that size, composed if it is not at hand.
  [[nodiscard]] const TRdBitmap& Get(const TScrollPaint& paint, QSize size, qreal density, bool hot);

 private:
  TRdBitmap FThumbBitmap;
  TRdBitmap FThumbHotBitmap;
};
