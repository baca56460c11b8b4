#include "controls/buttons/ButtonLook.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

#include "controls/skin/RdBitmap.h"

namespace {

// Pixels: higher than any caption that is broken at words.
constexpr int kAnyHeight = 1 << 20;
const TPicture kNoPicture;

const TPicture& Or(const TPicture& picture, const TPicture& other) {
  return picture.Empty() ? other : picture;
}

const TPicture& IconIn(const TButtonIcons& icons, TButtonIconState state) {
  switch (state) {
    case TButtonIconState::Down:
      return icons.Down;
    case TButtonIconState::Hover:
      return icons.Hover;
    case TButtonIconState::Disabled:
      return icons.Disable;
    case TButtonIconState::Normal:
      break;
  }
  return icons.Normal;
}

int Aligned(TButtonAlign align, int start, int room, int length) {
  if (align == TButtonAlign::Left) return start;
  return start + (align == TButtonAlign::Right ? room - length : (room - length) / 2);
}

// Without the icon's share.
QRect AlignedRoom(const TButtonLook& look, QSize button) {
  QRect room(QPoint(), button);
  if (look.ButtonCaptionAlignment == TButtonAlign::Left) room.setLeft(look.TextOffset);
  if (look.ButtonCaptionAlignment == TButtonAlign::Right) room.setWidth(room.width() - look.TextOffset);
  return room;
}

// Lines end as in an edit control, by any of the three line ends.
QString WrappedCaption(const TButtonLook& look) {
  return QString(look.Caption).replace(u"\r\n"_qs, u"\n"_qs).replace(u'\r', u'\n');
}

QSize CaptionSize(const TButtonLook& look, int room, const QFontMetrics& metrics) {
  if (!look.WordWrap) return {metrics.horizontalAdvance(look.Caption), metrics.height()};
  const QRect area(0, 0, std::max(room, 1), kAnyHeight);
  return metrics.boundingRect(area, Qt::TextWordWrap, WrappedCaption(look)).size();
}

void PaintLine(QPainter& painter, QPoint at, const QString& text) {
  painter.drawText(at + QPoint(0, painter.fontMetrics().ascent()), text);
}

}  // namespace

const TPicture& ImageOf(const TButtonPictures& pictures, const TButtonLook& look, const TButtonMood& mood) {
  if ((mood.Pressed() || look.Expand) && !pictures.ImageDown.Empty()) return pictures.ImageDown;
  if (mood.Over && mood.Enabled && !pictures.ImageOver.Empty()) return pictures.ImageOver;
  if (mood.State == TImageButtonState::Disabled && !pictures.ImageDisabled.Empty())
    return pictures.ImageDisabled;
  if (mood.State == TImageButtonState::Selected && !pictures.ImageSelected.Empty())
    return pictures.ImageSelected;
  return look.Expand ? Or(look.ExpandImage, pictures.ImageNormal) : pictures.ImageNormal;
}

TShownSlices SlicesOf(const TSlicedPictures& pictures, const TButtonLook& look, const TButtonMood& mood) {
  const TButtonSlices* set = &pictures.Normal;
  if (mood.Pressed() || look.Expand)
    set = &pictures.Down;
  else if (mood.Over && mood.Enabled)
    set = &pictures.Over;
  else if (mood.State == TImageButtonState::Disabled)
    set = &pictures.Disabled;
  return {Or(set->Left, pictures.Normal.Left), set->Middle, Or(set->Right, pictures.Normal.Right)};
}

const TPicture& IconSourceOf(const TButtonLook& look, TButtonIconState state) {
  if (!look.IconVisible) return kNoPicture;
  const TButtonIcons& own = look.Expand ? look.Up : look.Dn;
  const TButtonIcons& other = look.Expand ? look.Dn : look.Up;
  return Or(IconIn(own, state), Or(own.Normal, other.Normal));
}

TPicture IconOf(const TButtonLook& look, TButtonIconState state) {
  const TPicture& icon = IconSourceOf(look, state);
  const TButtonIcons& own = look.Expand ? look.Up : look.Dn;
  const bool gray = state == TButtonIconState::Disabled && look.GrayIcon && own.Disable.Empty();
  return gray ? GrayPicture(icon) : icon;
}

QRect IconRect(const TButtonLook& look, QSize icon, QSize button) {
  if (icon.isEmpty()) return {};
  int x = Aligned(look.IconAlign, 0, button.width(), icon.width());
  x += look.IconAlign == TButtonAlign::Right ? -look.IconOffset : look.IconOffset;
  return {QPoint(x, (button.height() - icon.height()) / 2), icon};
}

const TPicture& CheckBoxImageOf(const TButtonLook& look) {
  if (!look.ShowCheckBox) return kNoPicture;
  if (look.CheckState == TButtonCheck::Grayed) return look.CheckBoxGrayedImage;
  return look.CheckState == TButtonCheck::On ? look.CheckBoxCheckedImage : look.CheckBoxNormalImage;
}

QRect CheckBoxRect(const TButtonLook& look, QSize button) {
  const QSize size = CheckBoxImageOf(look).Size();
  if (size.isEmpty()) return {};
  int y = look.CheckBoxOffsetY;
  if (look.CheckBoxAlignY == TCheckAlignY::Bottom) y = button.height() - size.height() - y;
  if (look.CheckBoxAlignY == TCheckAlignY::Center) y += (button.height() - size.height()) / 2;
  return {QPoint(look.CheckBoxOffset, y), size};
}

// An icon whose place reaches beyond the aligned room at the right does not widen it.
QRect TextRoom(const TButtonLook& look, QSize button, const QRect& icon) {
  QRect room = AlignedRoom(look, button);
  if (icon.isEmpty()) return room;
  if (look.IconAlign == TButtonAlign::Left) room.setLeft(icon.right() + 1);
  if (look.IconAlign == TButtonAlign::Right) room.setRight(std::min(room.right(), icon.left() - 1));
  return room;
}

QRect TextRect(const TButtonLook& look, QSize button, const QRect& icon, const QFontMetrics& metrics) {
  const QRect room = TextRoom(look, button, icon);
  const QSize size = CaptionSize(look, room.width(), metrics);
  const int x = Aligned(look.ButtonCaptionAlignment, room.x(), room.width(), size.width());
  QRect text({x, (button.height() - size.height()) / 2 + look.TextTopOffset}, size);
  if (x >= look.TextLeftMargin) return text;
  text.moveLeft(look.TextLeftMargin);
  text.setRight(std::min(text.right(), button.width() - 1));
  return text;
}

QRect SlicedTextRect(const TButtonLook& look, QSize button, const QFontMetrics& metrics) {
  const QRect room = AlignedRoom(look, button);
  const QSize size = CaptionSize(look, room.width(), metrics);
  const int below = button.height() - look.TextTopOffset;
  return {{Aligned(look.ButtonCaptionAlignment, room.x(), room.width(), size.width()),
           look.TextTopOffset + (below - size.height()) / 2},
          size};
}

void PaintTexts(QPainter& painter, const TButtonLook& look, const QRect& text, const QFont& font,
                const QColor& color) {
  painter.setPen(color);
  painter.setFont(font);
  if (look.WordWrap) {
    const Qt::AlignmentFlag align = look.ButtonCaptionAlignment == TButtonAlign::Left    ? Qt::AlignLeft
                                    : look.ButtonCaptionAlignment == TButtonAlign::Right ? Qt::AlignRight
                                                                                         : Qt::AlignHCenter;
    painter.drawText(text, align | Qt::TextWordWrap | Qt::TextDontClip, WrappedCaption(look));
  } else {
    painter.drawText(text, Qt::TextSingleLine | Qt::TextDontClip, look.Caption);
  }
  if (look.SubCaption.isEmpty() && look.SubCaptionData.isEmpty()) return;
  // The second line hangs from the caption, not from the button: it goes where the caption goes.
  QPoint at(text.left() + look.SubCaptionOffset, text.bottom() + 1);
  painter.setFont(look.SubCaptionFont.resolve(font));
  PaintLine(painter, at, look.SubCaption);
  at.rx() += painter.fontMetrics().horizontalAdvance(look.SubCaption);
  painter.setFont(look.SubCaptionDataFont.resolve(font));
  PaintLine(painter, at, look.SubCaptionData);
}

void PaintSlices(QPainter& painter, const TShownSlices& slices, QSize button) {
  const int left = slices.Left.Size().width();
  const int right = slices.Right.Size().width();
  slices.Middle.Draw(painter, {left, 0, button.width() - left - right, slices.Middle.Size().height()}, true);
  slices.Left.Draw(painter, {{0, 0}, slices.Left.Size()});
  slices.Right.Draw(painter, {{button.width() - right, 0}, slices.Right.Size()});
}
