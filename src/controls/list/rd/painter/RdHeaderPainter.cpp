#include "controls/list/rd/painter/RdHeaderPainter.h"

#include "controls/list/rd/layout/TextBlock.h"
#include "controls/list/rd/painter/Gradient.h"
#include "controls/list/rd/painter/RdCellPainter.h"
#include "controls/list/rd/painter/ReadableText.h"
#include "controls/list/rd/painter/RowCanvas.h"
#include "controls/list/rd/painter/ThemeElements.h"
#include "controls/picture/ImageList.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace {

// A section dragged to nothing still has a bitmap.
QRect PaintableSection(QRect rect) {
  if (rect.width() < 2) rect.setWidth(rect.width() + 1);
  return rect;
}

}  // namespace

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
