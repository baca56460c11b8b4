// Blocks of text in a shade of their colour that can be read on whatever was painted before.
#pragma once

#include "controls/list/rd/layout/TextBlock.h"

#include <QColor>

class QPainter;

struct TTextLook {
  QFont Font;
  QColor Color;
  bool Pale = false;  // disabled: it may be faint, as long as it shows
};

// On the lines of the block, in a shade of the colour that can be read on what is behind: the whole block,
// or the part that is given.
void DrawTextBlock(QPainter& painter, const TTextBlock& block, TAlignment alignment, const TTextLook& look,
                   const QRect& behind = {});
