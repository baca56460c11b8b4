// Text that can be read on whatever was painted before it.
//
// Skins name backgrounds by fixed colours and pictures, most of them light, while text has the palette's
// colour, which is light on a dark desktop. So the text looks at the pixels behind it: if its own colour
// stands out too little there, it is mixed with black or white, whichever is farther from the background,
// just as much as it takes. On the palettes that a skin was drawn for nothing changes.
#pragma once

#include "controls/list/rd/layout/TextBlock.h"

#include <QColor>

class QPainter;

// The colour behind that area, from a sample of its pixels. Invalid unless the painter paints on an image.
[[nodiscard]] QColor BackgroundBehind(const QPainter& painter, const QRect& area);

struct TTextLook {
  QFont Font;
  QColor Color;
  bool Pale = false;  // disabled: it may be faint, as long as it shows
};

// The colour itself, or one of its shades with enough contrast.
[[nodiscard]] QColor ReadableOn(const QColor& background, const QColor& text, bool pale = false);

// On the lines of the block, in a shade of the colour that can be read on what is behind: the whole block,
// or the part that is given.
void DrawTextBlock(QPainter& painter, const TTextBlock& block, TAlignment alignment, const TTextLook& look,
                   const QRect& behind = {});
