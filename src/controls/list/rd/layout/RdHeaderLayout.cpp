#include "controls/list/rd/layout/RdHeaderLayout.h"

#include "controls/list/rd/layout/RowLayout.h"
#include "controls/list/rd/layout/TextBlock.h"

#include <algorithm>

namespace {

constexpr int kBoxGap = 5;

QRect DividerOf(const QRect& section, const THeaderSkin& skin) {
  const int width = skin.HeaderDividingPic.Empty() ? 1 : skin.HeaderDividingPic.Size().width();
  return {section.left(), section.top(), width, section.height()};
}

// The room of the caption: TextOffset is for captions that do not stand in the middle, HeaderLeftOffSet for
// the first of them.
QRect CaptionRoom(QRect room, const TRdHeaderContent& content, const TListSkin& skin) {
  if (content.Alignment == TAlignment::Center) return room;
  room.adjust(skin.Item.TextOffset, 0, 0, 0);
  if (!content.First) return room;
  const int offset = skin.Header.HeaderLeftOffSet;
  return content.Alignment == TAlignment::LeftJustify ? room.adjusted(offset, 0, 0, 0)
                                                      : room.adjusted(0, 0, -offset, 0);
}

}  // namespace

QSize HeaderCheckBoxSize(const THeaderSkin& skin) {
  return QSize(kLeastBox, kLeastBox)
      .expandedTo(skin.HeaderChecked.Size())
      .expandedTo(skin.HeaderUnChecked.Size());
}

TRdHeaderParts LayoutRdHeader(const QRect& section, const TRdHeaderContent& content, const TListSkin& skin) {
  TRdHeaderParts parts;
  QRect room = section;
  if (!content.First) parts.Divider = DividerOf(section, skin.Header);
  if (content.First && content.CheckBox) {
    parts.CheckBox = CentredInHeight(section, section.left() + skin.Header.HeaderCheckboxLeftOffset,
                                     HeaderCheckBoxSize(skin.Header));
    room.setLeft(room.left() + parts.CheckBox.width() + kBoxGap);
  }
  if (!content.Arrow.isEmpty() && content.Arrow.width() <= section.width()) {
    parts.Arrow = CentredInHeight(section, section.right() + 1 - content.Arrow.width(), content.Arrow);
    // A long or right-aligned caption gives way to the arrow.
    room.setRight(parts.Arrow.left() - 1);
  }
  parts.Text = CaptionRoom(room, content, skin);
  return parts;
}
