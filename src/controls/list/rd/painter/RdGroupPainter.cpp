#include "controls/list/rd/painter/RdGroupPainter.h"

#include "controls/list/rd/painter/Gradient.h"
#include "controls/list/rd/painter/RdCellPainter.h"
#include "controls/list/rd/painter/ReadableText.h"
#include "controls/list/rd/painter/RowBackground.h"
#include "controls/list/rd/painter/ThemeElements.h"
#include "controls/picture/ImageList.h"

#include <QPainter>
#include <QWidget>

#include <utility>

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
