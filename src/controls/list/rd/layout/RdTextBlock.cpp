#include "controls/list/rd/layout/RdTextBlock.h"

#include <QFontMetrics>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>

namespace {

constexpr int kMargin = 5;

QStringList Paragraphs(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text.replace(u'\r', u'\n');
  return text.split(u'\n');
}

QStringList BrokenAtWords(const QString& paragraph, const QFont& font, int width) {
  QTextLayout layout(paragraph, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WordWrap);
  layout.setTextOption(option);
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(std::max(1, width));
    QString text = paragraph.mid(line.textStart(), line.textLength());
    while (text.endsWith(u' '))
      text.chop(1);
    lines << text;
  }
  layout.endLayout();
  return lines.isEmpty() ? QStringList{QString()} : lines;
}

QStringList LinesOf(const QString& text, const QFont& font, int width, bool wordBreak) {
  const QStringList paragraphs = Paragraphs(text);
  if (!wordBreak) return paragraphs;
  QStringList lines;
  for (const QString& paragraph : paragraphs)
    lines << BrokenAtWords(paragraph, font, width);
  return lines;
}

int WidestOf(const QStringList& lines, const QFontMetrics& metrics) {
  int widest = 0;
  for (const QString& line : lines)
    widest = std::max(widest, metrics.horizontalAdvance(line));
  return widest;
}

int PlacedLeft(const QRect& room, int width, TAlignment alignment) {
  switch (alignment) {
    case TAlignment::RightJustify:
      return room.left() + room.width() - width;
    case TAlignment::Center:
      return room.left() + (room.width() - width) / 2;
    case TAlignment::LeftJustify:
      break;
  }
  return room.left();
}

}  // namespace

QRect CentredIn(const QRect& outer, QSize size) {
  return CentredInHeight(outer, outer.left() + (outer.width() - size.width()) / 2, size);
}

QRect CentredInHeight(const QRect& outer, int x, QSize size) {
  return {QPoint(x, outer.top() + (outer.height() - size.height()) / 2), size};
}

QRect TextRoom(const QRect& rect, TAlignment alignment) {
  return rect.adjusted(alignment == TAlignment::Center ? kMargin : 0, 0, -kMargin, 0);
}

QSize MeasureText(const QString& text, const QFont& font, int width, bool wordBreak) {
  const QFontMetrics metrics(font);
  const QStringList lines = LinesOf(text, font, width, wordBreak);
  return {WidestOf(lines, metrics), metrics.height() * static_cast<int>(lines.size())};
}

TTextBlock LayoutText(const QString& text, const QFont& font, const QRect& rect, TAlignment alignment,
                      bool wordBreak) {
  const QRect room = TextRoom(rect, alignment);
  if (room.width() <= 0) return {{}, 0, {}, !text.isEmpty()};
  const QFontMetrics metrics(font);
  TTextBlock block{LinesOf(text, font, room.width(), wordBreak), metrics.height(), {}, false};
  const int widest = WidestOf(block.Lines, metrics);
  block.Cut = widest > room.width();
  if (block.Cut)
    for (QString& line : block.Lines)
      line = metrics.elidedText(line, Qt::ElideRight, room.width());
  const QSize size(std::min(widest, room.width()), block.LineHeight * static_cast<int>(block.Lines.size()));
  block.Rect = CentredInHeight(room, PlacedLeft(room, size.width(), alignment), size);
  return block;
}
