#include "controls/list/layout/HeaderLayout.h"

#include <algorithm>

THeaderParts LayoutHeaderSection(const QRect& section, int textWidth, QSize mark, TAlignment alignment,
                                 int margin, int gap) {
  QRect room = section.adjusted(margin, 0, -margin, 0);
  if (mark.isEmpty() || mark.width() > room.width()) return {room, {}};

  const int textRoom = std::max(0, room.width() - mark.width() - gap);
  const int text = std::min(textWidth, textRoom);
  const int unused = textRoom - text;
  int left = room.left();
  if (alignment == TAlignment::RightJustify) left += unused;
  if (alignment == TAlignment::Center) left += unused / 2;

  THeaderParts parts;
  parts.Text = QRect(left, room.top(), text, room.height());
  const int markLeft = std::min(left + text + gap, room.right() + 1 - mark.width());
  parts.Mark = QRect(markLeft, room.top() + (room.height() - mark.height()) / 2, mark.width(), mark.height());
  return parts;
}
