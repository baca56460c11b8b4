#include "controls/list/rd/painter/ReadableText.h"

#include "controls/list/painter/ReadableColor.h"

#include <QPainter>

void DrawTextBlock(QPainter& painter, const TTextBlock& block, TAlignment alignment, const TTextLook& look,
                   const QRect& behind) {
  if (block.Rect.isEmpty()) return;
  const Qt::AlignmentFlag horizontal = alignment == TAlignment::RightJustify ? Qt::AlignRight
                                       : alignment == TAlignment::Center     ? Qt::AlignHCenter
                                                                             : Qt::AlignLeft;
  painter.setFont(look.Font);
  const QColor background = BackgroundBehind(painter, behind.isEmpty() ? block.Rect : behind);
  painter.setPen(ReadableOn(background, look.Color, look.Pale));
  QRect line = block.Rect;
  line.setHeight(block.LineHeight);
  for (const QString& text : block.Lines) {
    // The room is the text's own, rounded: it must not cut.
    painter.drawText(line, horizontal | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, text);
    line.translate(0, block.LineHeight);
  }
}
