#include "controls/list/rd/painter/RdHeaderPainter.h"

#include "controls/list/rd/layout/RdCellLayout.h"
#include "controls/list/rd/painter/RdCellPainter.h"
#include "controls/list/rd/painter/RdDrawing.h"
#include "controls/picture/ImageList.h"

#include <QPainter>
#include <QWidget>

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

int Bounded(const TAutoColumn& column, int width) {
  if (column.MaxWidth > 0) width = std::min(width, column.MaxWidth);
  return std::max(width, column.MinWidth);
}

// Gives every auto column its share; says whether all took it. One that did not is fixed from now on.
bool Share(std::vector<TAutoColumn>& columns, int room) {
  int sharers = 0;
  for (const TAutoColumn& column : columns) {
    if (column.AutoSize)
      ++sharers;
    else
      room -= column.Width;
  }
  if (sharers == 0) return true;
  room = std::max(room, 0);
  int remainder = room % sharers;
  bool accepted = true;
  for (TAutoColumn& column : columns) {
    if (!column.AutoSize) continue;
    const int share = room / sharers + remainder;
    remainder = 0;
    column.Width = Bounded(column, share);
    if (column.Width == share) continue;
    column.AutoSize = false;
    accepted = false;
  }
  return accepted;
}

// A section dragged to nothing still has a bitmap.
QRect PaintableSection(QRect rect) {
  if (rect.width() < 2) rect.setWidth(rect.width() + 1);
  return rect;
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

std::vector<int> ShareColumnWidths(std::vector<TAutoColumn> columns, int room) {
  // Each turn but the last fixes a column at its bound, so there are no more turns than columns.
  while (!Share(columns, room)) {
  }
  std::vector<int> widths;
  widths.reserve(columns.size());
  for (const TAutoColumn& column : columns)
    widths.push_back(column.Width);
  return widths;
}

TRdHeaderParts HeaderSectionParts(const TRdHeaderSection& section, const TListSkin& skin) {
  return LayoutRdHeader(
      section.Rect,
      {section.First, section.CheckBox, IconSize(section.Arrows, section.Arrow), section.Alignment}, skin);
}

void TRdHeaderPainter::PaintSection(const TRdHeaderSection& section) {
  const QRect area = PaintableSection(section.Rect);
  TRowCanvas canvas(FTarget, FBitmap, area);
  if (!canvas.Valid()) return;
  QPainter& painter = canvas.Painter();
  const TRdHeaderParts parts = HeaderSectionParts(section, FSkin);
  PaintBackground(painter, area);
  PaintState(painter, area, section.State);
  PaintDivider(painter, parts.Divider);
  if (!parts.CheckBox.isNull()) PaintCheckBox(painter, parts.CheckBox, section.Checked);
  if (!parts.Arrow.isNull()) section.Arrows->Draw(painter, parts.Arrow, section.Arrow, FWidget.isEnabled());
  PaintCaption(painter, parts.Text, section);
  canvas.Blit();
}

void TRdHeaderPainter::PaintRest(const QRect& rect) {
  const QRect area(rect.topLeft(), QSize(std::max(1, rect.width()), rect.height()));
  TRowCanvas canvas(FTarget, FBitmap, area);
  if (!canvas.Valid()) return;
  PaintBackground(canvas.Painter(), area);
  PaintDivider(canvas.Painter(), LayoutRdHeader(area, {}, FSkin).Divider);
  canvas.Blit();
}

void TRdHeaderPainter::PaintBackground(QPainter& painter, const QRect& rect) {
  const THeaderSkin& skin = FSkin.Header;
  const QPalette palette = FWidget.palette();
  painter.fillRect(rect, palette.brush(QPalette::Button));
  if (skin.HeaderBackGround.Empty())
    FillGradient(painter, rect, ToQColor(skin.GradientColorStart, palette),
                 ToQColor(skin.GradientColorStop, palette), true);
  else
    skin.HeaderBackGround.Draw(painter, rect, true);
}

void TRdHeaderPainter::PaintState(QPainter& painter, const QRect& rect, TPartState state) {
  const THeaderSkin& skin = FSkin.Header;
  // Both pictures or none: a header with one of them would answer half of what the mouse does.
  if (state == TPartState::Normal || skin.HeaderHoverImage.Empty() || skin.HeaderPressImage.Empty()) return;
  (state == TPartState::Hot ? skin.HeaderHoverImage : skin.HeaderPressImage).Draw(painter, rect, true);
}

void TRdHeaderPainter::PaintDivider(QPainter& painter, const QRect& divider) {
  const THeaderSkin& skin = FSkin.Header;
  if (divider.isNull()) return;
  if (!skin.HeaderDividingPic.Empty())
    skin.HeaderDividingPic.Draw(painter, divider, true);
  else if (skin.HeaderDividingColor != clNone)
    painter.fillRect(divider, ToQColor(skin.HeaderDividingColor, FWidget.palette()));
}

void TRdHeaderPainter::PaintCheckBox(QPainter& painter, const QRect& box, bool checked) {
  const TPicture& picture = checked ? FSkin.Header.HeaderChecked : FSkin.Header.HeaderUnChecked;
  if (picture.Empty())
    DrawThemeCheckBox(painter, box, checked, FWidget.isEnabled(), FWidget);
  else
    picture.Draw(painter, CentredIn(box, picture.Size()));
}

void TRdHeaderPainter::PaintCaption(QPainter& painter, const QRect& room, const TRdHeaderSection& section) {
  const bool pale = !FWidget.isEnabled();
  const QPalette palette = FWidget.palette();
  const QPalette::ColorGroup group = pale ? QPalette::Disabled : palette.currentColorGroup();
  DrawTextBlock(painter, LayoutText(section.Caption, section.Font, room, section.Alignment),
                section.Alignment, {section.Font, palette.color(group, QPalette::ButtonText), pale});
}
