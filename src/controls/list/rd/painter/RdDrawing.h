// What all painters of a TRdListView draw with: the bitmap of a row, gradients, the pieces of the window
// style, and text that can be read on whatever is behind it. Main thread.
#pragma once

#include "controls/list/rd/layout/RdCellLayout.h"
#include "controls/skin/RdBitmap.h"

#include <QColor>
#include <QPainter>
#include <QRect>

class QWidget;

// The bitmap that a row, a header section or the blank area is painted in before it goes to the screen in
// one blit. It is reused: a canvas lives for one row.
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

// Fills from one colour to another: the first line (or, if not vertical, the first column) has the one, the
// last the other. A colour that is not valid, as for clNone, counts as the other one.
void FillGradient(QPainter& painter, const QRect& rect, const QColor& from, const QColor& to, bool vertical);

// From left to right in two halves, 50 per cent each.
void FillTwoPartGradient(QPainter& painter, const QRect& rect, const QColor& from, const QColor& middle,
                         const QColor& to);

// Check boxes, buttons and arrows as the window style draws them, for skins without pictures.
void DrawThemeCheckBox(QPainter& painter, const QRect& rect, bool checked, bool enabled,
                       const QWidget& widget);
void DrawThemeButton(QPainter& painter, const QRect& rect, TPartState state, bool enabled,
                     const QWidget& widget);
// The button at the right end of a combo box.
void DrawThemeDropButton(QPainter& painter, const QRect& rect, TPartState state, bool enabled,
                         const QWidget& widget);
// A flat button with an arrow; up or down.
void DrawThemeExpandButton(QPainter& painter, const QRect& rect, bool up, TPartState state,
                           const QWidget& widget);

// Blocks of text in a shade of their colour that can be read on whatever was painted before.

struct TTextLook {
  QFont Font;
  QColor Color;
  bool Pale = false;  // disabled: it may be faint, as long as it shows
};

// On the lines of the block, in a shade of the colour that can be read on what is behind: the whole block,
// or the part that is given.
void DrawTextBlock(QPainter& painter, const TTextBlock& block, TAlignment alignment, const TTextLook& look,
                   const QRect& behind = {});
