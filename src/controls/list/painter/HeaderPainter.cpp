#include "controls/list/painter/HeaderPainter.h"

#include "controls/list/layout/HeaderLayout.h"
#include "controls/list/layout/ListLayout.h"
#include "controls/list/painter/RowPainter.h"
#include "controls/picture/ImageList.h"

#include <QPainter>
#include <QWidget>

namespace {

// What metrics round away, so that a caption in a room of its own width is not cut.
constexpr int kSlack = 2;

QStyleOptionHeader::SectionPosition PositionOf(int index, int count) {
  if (count == 1) return QStyleOptionHeader::OnlyOneSection;
  if (index == 0) return QStyleOptionHeader::Beginning;
  return index + 1 < count ? QStyleOptionHeader::Middle : QStyleOptionHeader::End;
}

}  // namespace

void THeaderPainter::PaintSection(const QRect& rect, const TListColumn& column, int columnCount,
                                  THeaderLook look) {
  const int index = column.Index();
  QStyle::State state = index == look.PressedColumn ? QStyle::State_Sunken : QStyle::State_Raised;
  if (index == look.HotColumn) state |= QStyle::State_MouseOver;
  FPainter.save();
  FPainter.setClipRect(rect, Qt::IntersectClip);
  PaintBackground(rect, state, PositionOf(index, columnCount));
  PaintLabel(rect, column);
  FPainter.restore();
}

void THeaderPainter::PaintBackground(const QRect& rect, QStyle::State state,
                                     QStyleOptionHeader::SectionPosition position) {
  QStyleOptionHeader option;
  option.initFrom(&FWidget);
  option.rect = rect;
  option.orientation = Qt::Horizontal;
  option.position = position;
  option.state &= ~(QStyle::State_MouseOver | QStyle::State_HasFocus);
  option.state |= state;
  FWidget.style()->drawControl(QStyle::CE_HeaderSection, &option, &FPainter, &FWidget);
}

void THeaderPainter::PaintLabel(const QRect& rect, const TListColumn& column) {
  const TListMetrics defaults;
  const bool marked = FMarks != nullptr && column.ImageIndex() >= 0;
  const QFontMetrics metrics = FWidget.fontMetrics();
  const THeaderParts parts = LayoutHeaderSection(rect, metrics.horizontalAdvance(column.Caption()) + kSlack,
                                                 marked ? FMarks->Size() : QSize(), column.Alignment(),
                                                 defaults.Margin, defaults.Gap);
  const QString caption = metrics.elidedText(column.Caption(), Qt::ElideRight, parts.Text.width());
  FWidget.style()->drawItemText(&FPainter, parts.Text,
                                static_cast<int>(CellAlignment(column)) | Qt::TextSingleLine,
                                FWidget.palette(), FWidget.isEnabled(), caption, QPalette::ButtonText);
  if (!parts.Mark.isNull()) FMarks->Draw(FPainter, parts.Mark, column.ImageIndex(), FWidget.isEnabled());
}

void THeaderPainter::PaintRest(const QRect& rect) {
  PaintBackground(rect, QStyle::State_Raised, QStyleOptionHeader::End);
}
