#include "controls/list/rd/painter/RdRowBackground.h"

#include "controls/list/rd/painter/RdDrawing.h"

#include <QPainter>

namespace {

// How much a colour is lightened or darkened for the parts of the raised look.
constexpr int kSecondLookShade = 60;
constexpr int kInnerFrameShade = 50;
constexpr int kGradientTopShade = -40;
constexpr int kGradientBottomShade = 20;

QColor SecondColor(const TListSkin& skin, const QPalette& palette) {
  const TColor color = skin.Item.ItemDrawStepColor;
  if (color == kAutoRowColor) return Shaded(ListColor(skin, palette), kSecondLookShade);
  return color == clNone ? ListColor(skin, palette) : ToQColor(color, palette);
}

// One pixel on each side: left and top in the first colour, right and bottom in the second. Gives the rest.
QRect DrawFrame3D(QPainter& painter, const QRect& rect, const QColor& top, const QColor& bottom) {
  painter.fillRect(rect.left(), rect.top(), rect.width(), 1, top);
  painter.fillRect(rect.left(), rect.top(), 1, rect.height(), top);
  painter.fillRect(rect.right(), rect.top(), 1, rect.height(), bottom);
  painter.fillRect(rect.left(), rect.bottom(), rect.width(), 1, bottom);
  return rect.adjusted(1, 1, -1, -1);
}

void DrawRaised(QPainter& painter, const QRect& row, const QColor& color, const QPalette& palette) {
  const QColor shadow = ToQColor(cl3DDkShadow, palette);
  QRect rest = row.adjusted(1, 0, -1, 0);
  rest = DrawFrame3D(painter, rest, ToQColor(cl3DLight, palette), shadow);
  rest = DrawFrame3D(painter, rest, color, Shaded(shadow, kInnerFrameShade));
  if (rest.isEmpty()) return;
  FillGradient(painter, rest, Shaded(color, kGradientTopShade), Shaded(color, kGradientBottomShade), true);
}

// A state look of a row: its colour, and the picture that goes before it.
struct TStateLook {
  TColor Color = clNone;
  const TPicture* Picture = nullptr;
};

// Selected goes before hovered, but a skin whose selection has no look of its own lets the hover show.
TStateLook LookOf(const TRdRowLook& look, const TItemSkin& skin) {
  const bool hasSelectLook = skin.ItemSelectColor != clNone || !skin.ItemPic_BgSelect.Empty();
  if (look.Selected && (hasSelectLook || !look.Hovered))
    return {skin.ItemSelectColor, &skin.ItemPic_BgSelect};
  const bool hasHoverLook = skin.ItemHoverColor != clNone && skin.ItemHoverColor != kNoStateColor;
  if (look.Hovered && hasHoverLook) return {skin.ItemHoverColor, &skin.ItemPic_BgHover};
  return {};
}

void DrawStatePicture(QPainter& painter, const QRect& row, const TPicture& picture,
                      const TDesignSlices& slices, const TRdRowLook& look, bool crossMode) {
  painter.save();
  if (crossMode)
    painter.setClipRect(CrossClip(row, look.Hovered && !look.Selected, look.Neighbours), Qt::IntersectClip);
  DrawDesignRect(painter, row, picture, slices);
  painter.restore();
}

}  // namespace

QColor ListColor(const TListSkin& skin, const QPalette& palette) {
  return ToQColor(skin.Color == clNone || skin.Color == clDefault ? clWindow : skin.Color, palette);
}

QColor RowColor(const TRdRowLook& look, const TListSkin& skin, const QPalette& palette) {
  if (look.BackColor != clDefault) return ToQColor(look.BackColor, palette);
  return HasSecondLook(look.Index, skin.Item.ItemDrawStep) ? SecondColor(skin, palette)
                                                           : ListColor(skin, palette);
}

const TPicture& RowPicture(int row, const TItemSkin& skin) {
  return HasSecondLook(row, skin.ItemDrawStep) ? skin.ItemPic_BgNormal2 : skin.ItemPic_BgNormal;
}

// Colour of the row, then the picture of the row, then that of its state. A state with a colour and no
// picture covers all of it with the raised look instead.
void PaintRowBackground(QPainter& painter, const QRect& row, const TRdRowLook& look, const TListSkin& skin,
                        const QPalette& palette) {
  const TStateLook state = LookOf(look, skin.Item);
  painter.fillRect(row, RowColor(look, skin, palette));
  if (state.Picture != nullptr && state.Picture->Empty() && state.Color != clNone)
    return DrawRaised(painter, row, ToQColor(state.Color, palette), palette);
  RowPicture(look.Index, skin.Item).Draw(painter, row, true);
  if (state.Picture != nullptr)
    DrawStatePicture(painter, row, *state.Picture, skin.Item.ItemPic_BgOption, look,
                     skin.Item.ItemPic_BgCrossMode);
}

void PaintGroupBackground(QPainter& painter, const QRect& row, const TRdRowLook& look, const TListSkin& skin,
                          const QPalette& palette) {
  painter.fillRect(row, RowColor(look, skin, palette));
  DrawDesignRect(painter, row, skin.Group.GroupPic_Bg, skin.Group.GroupPic_BgOption);
  if (!look.Selected && !look.Hovered) return;
  DrawStatePicture(painter, row, look.Selected ? skin.Group.GroupPic_BgSelect : skin.Group.GroupPic_BgHover,
                   skin.Group.GroupPic_BgOption, look, skin.Item.ItemPic_BgCrossMode);
}

void PaintGridLine(QPainter& painter, const QRect& row, const TItemSkin& skin, const QPalette& palette) {
  if (skin.ItemGridColor == clNone) return;
  painter.fillRect(row.left(), row.bottom(), row.width(), 1, ToQColor(skin.ItemGridColor, palette));
}

void PaintBlankArea(QPainter& painter, const QRect& area, int firstRow, int rowHeight, const TListSkin& skin,
                    const QPalette& palette) {
  painter.fillRect(area, ListColor(skin, palette));
  const bool alternates = skin.Item.ItemDrawStep != 0 || !skin.Item.ItemPic_BgNormal.Empty();
  if (!skin.Item.ItemPic_BgFillBlank || !alternates || rowHeight <= 0) return;
  TRdRowLook look;
  look.Index = firstRow;
  for (QRect row(area.left(), area.top(), area.width(), rowHeight); row.top() <= area.bottom();
       row.translate(0, rowHeight), ++look.Index)
    PaintRowBackground(painter, row, look, skin, palette);
}

void PaintControlFrame(QPainter& painter, const QRect& control, int borderWidth, TColor frameColor,
                       const QPalette& palette) {
  if (frameColor == clNone || borderWidth <= 0) return;
  const QRegion border =
      QRegion(control) - control.adjusted(borderWidth, borderWidth, -borderWidth, -borderWidth);
  const QRegion line = QRegion(control) - control.adjusted(1, 1, -1, -1);
  for (const QRect& rect : border - line)
    painter.fillRect(rect, palette.brush(QPalette::Base));
  for (const QRect& rect : line)
    painter.fillRect(rect, ToQColor(frameColor, palette));
}
