#include "controls/list/rd/layout/IconTextLayout.h"

#include "controls/list/rd/layout/CellLayout.h"

#include <utility>

namespace {

constexpr int kIconGap = 5;

// The label state that a prefix gives, which is taken off; `other` without one.
bool TakePrefix(QString& line, bool other) {
  const bool plain = line.startsWith(QLatin1String("//"));
  const bool label = line.startsWith(QLatin1String("@@"));
  if (plain || label) line.remove(0, 2);
  return label || (other && !plain);
}

int BlockHeight(const std::vector<TIconTextLine>& lines, const std::vector<int>& heights, int gap) {
  int height = gap * (static_cast<int>(lines.size()) - 1);
  for (const int line : heights)
    height += line;
  return height;
}

}  // namespace

std::vector<TIconTextLine> SplitIconText(const QString& text, TIconTextKind kind, const QFont& font,
                                         const TItemSkin& skin) {
  std::vector<TIconTextLine> lines;
  if (text.isEmpty()) return lines;
  const bool labels = kind == TIconTextKind::IconCaption;
  for (const QString& part : text.split(QLatin1String("\r\r"))) {
    TIconTextLine line{part, false, font, {}};
    line.Label = TakePrefix(line.Text, labels && lines.empty());
    if (line.Label && labels && !skin.LabelFontParent) line.Font = skin.LabelFont;
    lines.push_back(std::move(line));
  }
  return lines;
}

TIconTextParts LayoutIconText(const QRect& cell, int column, QSize icon, std::vector<TIconTextLine> lines,
                              const TItemSkin& skin) {
  TIconTextParts parts;
  QRect room = ContentRect(cell, column, skin);
  if (!icon.isEmpty()) {
    parts.Icon = CentredInHeight(cell, room.left(), icon);
    room.setLeft(room.left() + icon.width() + kIconGap);
  }
  const int width = TextRoom(room, skin.LabelAlignment).width();
  std::vector<int> heights;
  for (const TIconTextLine& line : lines)
    heights.push_back(MeasureText(line.Text, line.Font, width, skin.IconCommentWordBreak).height());

  // Each line has half of LabelLineHeight above and below it, so that the outer halves keep the middle.
  int top = CentredIn(room, {0, BlockHeight(lines, heights, skin.LabelLineHeight)}).top();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const QRect place(room.left(), top, room.width(), heights[i]);
    lines[i].Block =
        LayoutText(lines[i].Text, lines[i].Font, place, skin.LabelAlignment, skin.IconCommentWordBreak);
    top += heights[i] + skin.LabelLineHeight;
  }
  parts.Lines = std::move(lines);
  return parts;
}

int HitIconText(const TIconTextParts& parts, QPoint pos) {
  if (parts.Icon.contains(pos)) return kIconHit;
  for (std::size_t i = 0; i < parts.Lines.size(); ++i)
    if (parts.Lines[i].Label && parts.Lines[i].Block.Rect.contains(pos)) return static_cast<int>(i);
  return kNoIconTextHit;
}
