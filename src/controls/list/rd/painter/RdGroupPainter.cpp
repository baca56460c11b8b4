#include "controls/list/rd/painter/RdGroupPainter.h"

#include "controls/list/rd/layout/RdCellLayout.h"
#include "controls/list/rd/painter/RdCellPainter.h"
#include "controls/list/rd/painter/RdDrawing.h"
#include "controls/list/rd/painter/RdRowBackground.h"
#include "controls/picture/ImageList.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <array>
#include <utility>

namespace {

// Device-independent pixels, from the edges of the row and between its parts.
constexpr int kTitleGap = 5;
constexpr int kRightInset = 15;
constexpr int kButtonGap = 2;  // between text and expand button
constexpr int kLineAfterGap = 15;
constexpr int kLineBeforeGap = 20;
constexpr QSize kStyleButton(16, 16);

// The room of title image and text.
QRect TextRoomOf(const QRect& row, const TGroupRowContent& content, const TListSkin& skin) {
  const int box = CheckBoxRoom(skin.Item);
  QRect room = row.adjusted(box + skin.Item.TextOffset + skin.Group.GroupLeftOffSet, 0, 0, 0);
  if (content.ButtonAlign != tkgLeft) {
    if (!content.HasCheckBox) room.adjust(-box, 0, 0, 0);
  } else if (content.HasCheckBox) {
    room.adjust(box, 0, 0, 0);
  } else if (!content.CheckBoxes) {
    room.adjust(content.Button.width(), 0, 0, 0);
  }
  if (content.HeaderAlign == TAlignment::RightJustify) room.adjust(0, 0, -kRightInset, 0);
  if (content.ButtonAlign == tkgRight)
    room.adjust(0, 0, -(content.Button.width() + kRightInset + kButtonGap), 0);
  return room;
}

QRect ButtonOf(const QRect& row, const TGroupRowContent& content, const TGroupSkin& skin) {
  switch (content.ButtonAlign) {
    case tkgLeft:
      return CentredInHeight(row, row.left() + skin.GroupCheckboxLeftOffset, content.Button);
    case tkgRight:
      return CentredInHeight(row, row.right() + 1 - content.Button.width() - kRightInset, content.Button);
    case tkgNone:
      break;
  }
  return {};
}

QRect CheckBoxOf(const QRect& row, const TGroupRowContent& content, const TListSkin& skin) {
  if (!content.HasCheckBox) return {};
  const int button = content.ButtonAlign == tkgLeft ? content.Button.width() : 0;
  return CentredInHeight(row, row.left() + skin.Group.GroupCheckboxLeftOffset + button,
                         CheckBoxSize(skin.Item));
}

// Lines are spans of the row from left to right, both in x; they are cut to the part that the skin wants,
// seen from the text.
QRect LineOf(const QRect& row, int left, int right, bool before, const TGroupSkin& skin) {
  const int width = std::max(0, right - left) * std::clamp(skin.GroupLineRightPer, 0, 100) / 100;
  if (width <= 1 || skin.GroupLineHeight <= 0) return {};
  const int start = before ? right - width : left;
  return CentredInHeight(row, start + 1, {width - 1, skin.GroupLineHeight});
}

}  // namespace

TGroupRowParts LayoutGroupRow(const QRect& row, const TGroupRowContent& content, const TListSkin& skin) {
  TGroupRowParts parts;
  parts.Button = ButtonOf(row, content, skin.Group);
  parts.CheckBox = CheckBoxOf(row, content, skin);
  QRect room = TextRoomOf(row, content, skin);
  if (!content.TitleImage.isEmpty()) {
    parts.TitleImage = CentredInHeight(row, room.left(), content.TitleImage);
    room.setLeft(room.left() + content.TitleImage.width() + kTitleGap);
  }
  parts.Header = LayoutText(content.Header, skin.Group.GroupFont, room, content.HeaderAlign);
  if (room.width() <= 0) return parts;
  const QRect& text = parts.Header.Rect;
  if (content.HeaderAlign != TAlignment::LeftJustify)
    parts.LineBefore = LineOf(row, room.left(), text.left() - kLineBeforeGap, true, skin.Group);
  if (content.HeaderAlign != TAlignment::RightJustify)
    parts.LineAfter = LineOf(row, text.left() + text.width() + kLineAfterGap, room.right() + 1 - kRightInset,
                             false, skin.Group);
  return parts;
}

const TPicture& GroupButtonPicture(const TGroupSkin& skin, bool collapsed, TPartState state) {
  const TPicture& normal = collapsed ? skin.GroupDownImage : skin.GroupUpImage;
  const TPicture& hover = collapsed ? skin.GroupDownHoverImage : skin.GroupUpHoverImage;
  const TPicture& press = collapsed ? skin.GroupDownPressImage : skin.GroupUpPressImage;
  const TPicture& wanted = state == TPartState::Pressed ? press : state == TPartState::Hot ? hover : normal;
  // A skin may have one of the three only: then it serves for all states of this side.
  const TPicture& other = state == TPartState::Pressed ? hover : press;
  for (const TPicture* picture : std::array{&wanted, &normal, &other})
    if (!picture->Empty()) return *picture;
  return hover;
}

QSize GroupButtonSize(const TGroupSkin& skin, bool collapsed, TPartState state) {
  const TPicture& picture = GroupButtonPicture(skin, collapsed, state);
  return picture.Empty() ? kStyleButton : picture.Size();
}

TRdGroupPainter::TRdGroupPainter(QPainter& painter, const QWidget& widget, const TListSkin& skin,
                                 const TRdGroupRow& row)
    : FPainter(painter),
      FWidget(widget),
      FSkin(skin),
      FRow(row),
      FParts(LayoutGroupRow(row.Row, row.Content, skin)) {}

void TRdGroupPainter::PaintTitleImage() {
  if (!FParts.TitleImage.isNull() && FRow.TitleImages != nullptr)
    FRow.TitleImages->Draw(FPainter, FParts.TitleImage, FRow.TitleImage, FWidget.isEnabled());
}

void TRdGroupPainter::PaintHeader() {
  DrawTextBlock(FPainter, FParts.Header, FRow.Content.HeaderAlign,
                {FSkin.Group.GroupFont, FWidget.palette().color(QPalette::Text)});
  PaintLine(FParts.LineBefore, true);
  PaintLine(FParts.LineAfter, false);
}

void TRdGroupPainter::PaintLine(const QRect& line, bool before) {
  if (line.isEmpty()) return;
  const TGroupSkin& skin = FSkin.Group;
  const auto colorOf = [this](TColor color) {
    return color == clNone ? ListColor(FSkin, FWidget.palette()) : ToQColor(color, FWidget.palette());
  };
  QColor start = colorOf(skin.GroupLineStartColor);
  QColor end = colorOf(skin.GroupLineEndColor);
  // The start is the end at the text.
  if (before && !skin.GroupLineColorVertical) std::swap(start, end);
  FillGradient(FPainter, line, start, end, skin.GroupLineColorVertical);
}

void TRdGroupPainter::PaintCheckBox() {
  if (!FParts.CheckBox.isNull())
    TRdCellPainter(FPainter, FWidget, FSkin).PaintCheckBox(FParts.CheckBox, FRow.Checked);
}

void TRdGroupPainter::PaintButton() {
  if (FParts.Button.isNull()) return;
  const TPicture& picture = GroupButtonPicture(FSkin.Group, FRow.Collapsed, FRow.ButtonState);
  // The style's arrow points down at the rows of an expanded group.
  if (picture.Empty())
    DrawThemeExpandButton(FPainter, FParts.Button, FRow.Collapsed, FRow.ButtonState, FWidget);
  else
    picture.Draw(FPainter, CentredIn(FParts.Button, picture.Size()));
}
