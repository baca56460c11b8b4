// The one text routine of the list: where a text goes in a rectangle, cut with an ellipsis or broken at
// words. Drawing and hit tests share its result. Any thread that may use fonts.
#pragma once

#include "controls/list/model/ListColumns.h"

#include <QFont>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

// A text as it is drawn.
struct TTextBlock {
  QStringList Lines;
  int LineHeight = 0;
  QRect Rect;        // what the lines take, at most as wide as the room
  bool Cut = false;  // a line is not shown whole
};

// A rectangle of that size in the middle of `outer`; half a difference is truncated towards zero.
[[nodiscard]] QRect CentredIn(const QRect& outer, QSize size);
// The same in height only, at the given x.
[[nodiscard]] QRect CentredInHeight(const QRect& outer, int x, QSize size);

// The rectangle without the margins that every text leaves, by its alignment.
[[nodiscard]] QRect TextRoom(const QRect& rect, TAlignment alignment);

// The whole text on its lines, uncut; broken at words where a line exceeds the width, if asked. "\r\n", "\r"
// and "\n" each end a line.
[[nodiscard]] QSize MeasureText(const QString& text, const QFont& font, int width, bool wordBreak = false);

// Centred in height; in width as the alignment says.
[[nodiscard]] TTextBlock LayoutText(const QString& text, const QFont& font, const QRect& rect,
                                    TAlignment alignment, bool wordBreak = false);
