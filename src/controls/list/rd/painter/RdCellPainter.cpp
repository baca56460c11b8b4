#include "controls/list/rd/painter/RdCellPainter.h"

#include "controls/list/rd/layout/RdCellLayout.h"
#include "controls/list/rd/painter/RdDrawing.h"
#include "controls/picture/ImageList.h"

#include <QPainter>
#include <QWidget>

#include <utility>

namespace {

// Device-independent pixels at both sides of a button that the style draws.
constexpr int kThemeButtonInset = 3;

// The pictures of a three-state part, with the normal one for a missing one.
const TPicture& StatePicture(TPartState state, const TPicture& normal, const TPicture& hot,
                             const TPicture& pressed) {
  const TPicture& wanted = state == TPartState::Pressed ? pressed : state == TPartState::Hot ? hot : normal;
  return wanted.Empty() ? normal : wanted;
}

// A disabled button looks the same whatever the mouse does; its grey picture is made once, as the normal one
// is set (TkLVSkinItem).
const TPicture& ButtonPicture(const TItemSkin& skin, TPartState state, bool enabled) {
  if (enabled)
    return StatePicture(state, skin.ButtonNormalImage, skin.ButtonHoverImage, skin.ButtonDownImage);
  return skin.ButtonDisableImage.Empty() ? skin.ButtonGrayImage : skin.ButtonDisableImage;
}

void DrawFrame(QPainter& painter, const QRect& rect, const QColor& color) {
  if (!color.isValid()) return;
  for (const QRect& line : QRegion(rect) - rect.adjusted(1, 1, -1, -1))
    painter.fillRect(line, color);
}

// The picture again and again from the left; the last one is cut.
void TilePicture(QPainter& painter, const QRect& rect, const TPicture& picture) {
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  const int step = picture.Size().width();
  for (int x = rect.left(); step > 0 && x <= rect.right(); x += step)
    picture.Draw(painter, QRect(x, rect.top(), step, rect.height()), true);
  painter.restore();
}

}  // namespace

QSize ButtonPictureSize(const TItemSkin& skin, TPartState state, bool enabled) {
  return ButtonPicture(skin, state, enabled).Size();
}

QSize IconSize(const TImageList* icons, int index) {
  return icons != nullptr && index >= 0 && index < icons->Count() ? icons->Size() : QSize();
}

TIconTextParts CellIconText(const TRdCell& cell, const TItemSkin& skin) {
  const auto kind =
      cell.Type == ltIconCaption ? TIconTextKind::IconCaption : TIconTextKind::NormalIconCaption;
  return LayoutIconText(cell.Cell, cell.Column, IconSize(cell.Icons, cell.Icon),
                        SplitIconText(cell.Text, kind, cell.Font, skin), skin);
}

QRect CellButton(const TRdCell& cell, const TItemSkin& skin, bool reacts) {
  return ButtonRect(cell.Cell, cell.Column, ButtonPictureSize(skin, cell.State, reacts), skin);
}

void TRdCellPainter::Paint(const TRdCell& cell) {
  if (cell.Cell.isEmpty()) return;
  FPainter.save();
  FPainter.setClipRect(cell.Cell, Qt::IntersectClip);
  PaintContent(cell);
  FPainter.restore();
}

void TRdCellPainter::PaintContent(const TRdCell& cell) {
  switch (cell.Type) {
    case ltNone:
      return PaintText(cell, TextLook(cell));
    case ltIconCaption:
    case ltNormalIconCaption:
      return PaintIconText(cell);
    case ltButton:
      return PaintButton(cell);
    case ltLabel:
      return PaintText(cell, LabelLook(cell, cell.Font, cell.Hovered));
    case ltProgress:
      return PaintProgress(cell);
    case ltStar:
      return PaintStars(cell);
    case ltEdit:
    case ltComboBox:
      return PaintEdit(cell, cell.Type == ltComboBox);
    case ltCheckbox:
      return PaintCheckBox(CellCheckBoxRect(cell.Cell, FSkin.Item), !cell.Text.isEmpty(), Reacts(cell));
    case ltEmpty:
    case ltDefault:
      return;
  }
}

bool TRdCellPainter::Reacts(const TRdCell& cell) const {
  return cell.Enabled && FWidget.isEnabled();
}

QColor TRdCellPainter::Color(TColor color) const {
  return ToQColor(color, FWidget.palette());
}

QColor TRdCellPainter::TextColor(const TRdCell& cell) const {
  return cell.FontColor == clDefault ? FWidget.palette().color(QPalette::Text) : Color(cell.FontColor);
}

TTextLook TRdCellPainter::TextLook(const TRdCell& cell) const {
  return {cell.Font, TextColor(cell)};
}

TTextLook TRdCellPainter::LabelLook(const TRdCell& cell, const QFont& font, bool hot) const {
  const TItemSkin& skin = FSkin.Item;
  TTextLook look{font, TextColor(cell), !Reacts(cell)};
  if (hot && skin.LabelHoverUnderline) look.Font.setUnderline(true);
  if (look.Pale)
    look.Color = Color(skin.ButtonDisableColor);
  else if (hot)
    look.Color = Color(skin.LabelHoverColor);
  return look;
}

void TRdCellPainter::PaintCheckBox(const QRect& box, bool checked, bool enabled) {
  const TPicture& picture = checked ? FSkin.Item.ItemPic_CheckBox : FSkin.Item.ItemPic_UnCheckBox;
  if (picture.Empty())
    DrawThemeCheckBox(FPainter, box, checked, enabled && FWidget.isEnabled(), FWidget);
  else
    picture.Draw(FPainter, CentredIn(box, picture.Size()));
}

void TRdCellPainter::PaintText(const TRdCell& cell, const TTextLook& look) {
  DrawTextBlock(FPainter,
                LayoutCellText(cell.Text, cell.Font, cell.Cell, cell.Column, cell.Alignment, FSkin.Item),
                cell.Alignment, look);
}

void TRdCellPainter::PaintIconText(const TRdCell& cell) {
  const TIconTextParts parts = CellIconText(cell, FSkin.Item);
  if (!parts.Icon.isNull()) cell.Icons->Draw(FPainter, parts.Icon, cell.Icon, Reacts(cell));
  int number = 0;
  for (const TIconTextLine& line : parts.Lines) {
    const bool hot = number++ == cell.HotLine;
    DrawTextBlock(FPainter, line.Block, FSkin.Item.LabelAlignment,
                  line.Label ? LabelLook(cell, line.Font, hot) : TTextLook{line.Font, TextColor(cell)});
  }
}

void TRdCellPainter::PaintButton(const TRdCell& cell) {
  const bool enabled = Reacts(cell);
  const TPicture& picture = ButtonPicture(FSkin.Item, cell.State, enabled);
  const QRect button = CellButton(cell, FSkin.Item, enabled);
  if (button.isEmpty()) return;
  if (picture.Empty())
    DrawThemeButton(FPainter, button.adjusted(kThemeButtonInset, 0, -kThemeButtonInset, 0), cell.State,
                    enabled, FWidget);
  else
    picture.Draw(FPainter, button);
  const bool down = enabled && cell.State == TPartState::Pressed && FSkin.Item.ButtonDownTextOffset;
  const QRect room = down ? button.translated(1, 1) : button;
  TTextLook look{cell.Font, Color(cell.FontColor == clDefault ? clBtnText : cell.FontColor), !enabled};
  if (!enabled) look.Color = Color(FSkin.Item.ButtonDisableColor);
  DrawTextBlock(FPainter, LayoutText(cell.Text, cell.Font, room, TAlignment::Center), TAlignment::Center,
                look);
}

void TRdCellPainter::PaintProgress(const TRdCell& cell) {
  const TItemSkin& skin = FSkin.Item;
  const TProgressParts parts = LayoutProgress(cell.Cell, cell.Text);
  if (parts.Bar.isEmpty()) return;
  if (skin.ProgressImage.Empty())
    FillTwoPartGradient(FPainter, parts.Filled, Color(skin.ProgressStartColor),
                        Color(skin.ProgressCenterColor), Color(skin.ProgressEndColor));
  else
    TilePicture(FPainter, parts.Filled, skin.ProgressImage);
  DrawFrame(FPainter, parts.Frame, Color(skin.ProgressBorderColor));
  PaintProgressText(cell, parts);
}

// The filled and the empty part differ in colour: the text is drawn on each for itself.
void TRdCellPainter::PaintProgressText(const TRdCell& cell, const TProgressParts& parts) {
  const TTextBlock block = LayoutText(parts.Text, cell.Font, parts.Bar, TAlignment::Center);
  const int edge = parts.Filled.left() + parts.Filled.width();
  const QRect empty(edge, parts.Bar.top(), parts.Bar.right() + 1 - edge, parts.Bar.height());
  for (const QRect& part : {parts.Filled, empty}) {
    if (!part.intersects(block.Rect)) continue;
    FPainter.save();
    FPainter.setClipRect(QRect(part.left(), cell.Cell.top(), part.width(), cell.Cell.height()),
                         Qt::IntersectClip);
    DrawTextBlock(FPainter, block, TAlignment::Center, TextLook(cell), part.intersected(block.Rect));
    FPainter.restore();
  }
}

// The text of the cell is the number, the caption is the same for all cells of the list.
void TRdCellPainter::PaintStars(const TRdCell& cell) {
  const TItemSkin& skin = FSkin.Item;
  int place = 0;
  for (const TStar star : StarsOf(cell.Text, skin.StarMaxCount)) {
    const TPicture& picture = star == TStar::Light  ? skin.StarLight
                              : star == TStar::Half ? skin.StarHalf
                                                    : skin.StarGray;
    picture.Draw(FPainter, StarRect(cell.Cell, place++));
  }
  DrawTextBlock(FPainter,
                LayoutText(skin.StarCaption, cell.Font, StarCaptionRect(cell.Cell), TAlignment::Center),
                TAlignment::Center, TextLook(cell));
}

void TRdCellPainter::PaintEdit(const TRdCell& cell, bool comboBox) {
  const TItemSkin& skin = FSkin.Item;
  const TEditParts parts = LayoutEdit(cell.Cell, skin.EditHeight, comboBox);
  DrawFrame(FPainter, parts.Frame, Color(comboBox ? skin.ComboBoxBorderColor : skin.EditBorderColor));
  if (parts.Band.isEmpty()) return;
  if (cell.EditColor != clNone) FPainter.fillRect(parts.Band, Color(cell.EditColor));
  DrawTextBlock(FPainter, LayoutText(cell.Text, cell.Font, parts.Text, cell.Alignment), cell.Alignment,
                TextLook(cell));
  if (!parts.Button.isEmpty()) PaintDropButton(parts.Button, cell);
}

void TRdCellPainter::PaintDropButton(const QRect& rect, const TRdCell& cell) {
  const TItemSkin& skin = FSkin.Item;
  const TPicture& picture = StatePicture(cell.State, skin.ComboBoxBtnNormalImage, skin.ComboBoxBtnHoverImage,
                                         skin.ComboBoxBtnDownImage);
  if (picture.Empty())
    DrawThemeDropButton(FPainter, rect, cell.State, Reacts(cell), FWidget);
  else
    picture.Draw(FPainter, rect, true);
}
