#include "controls/list/painter/RowPainter.h"

#include "controls/list/ListTypes.h"
#include "controls/list/model/ListColumns.h"
#include "controls/picture/ImageList.h"
#include "controls/skin/Colors.h"

#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QWidget>

#include <algorithm>

namespace {

// Of 255: how much of the highlight shows under the mouse.
constexpr int kHoverAlpha = 28;
constexpr int kDark = 128;  // of 255
// Device-independent pixels, about the shape of a row, as a style may draw a gradient over it.
constexpr QSize kSample(64, 24);

}  // namespace

Qt::Alignment CellAlignment(const TListColumn& column) {
  switch (column.Alignment()) {
    case TAlignment::RightJustify:
      return Qt::AlignRight | Qt::AlignVCenter;
    case TAlignment::Center:
      return Qt::AlignHCenter | Qt::AlignVCenter;
    case TAlignment::LeftJustify:
      break;
  }
  return Qt::AlignLeft | Qt::AlignVCenter;
}

TRowPainter::TRowPainter(QPainter& painter, const QWidget& widget, const TListLayout& layout,
                         const TRowSource& source, const TListViewOptions& options, TImages images)
    : FPainter(painter),
      FWidget(widget),
      FLayout(layout),
      FSource(source),
      FOptions(options),
      FImages(images) {
  FStyleOption.initFrom(&widget);
  FStyleOption.styleObject = nullptr;  // else a style that animates would take all rows for one thing
  FStyleOption.showDecorationSelected = true;
  FStyleOption.viewItemPosition = QStyleOptionViewItem::OnlyOne;
  FStyleOption.state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver);
  FStyleOption.state.setFlag(QStyle::State_Active, widget.hasFocus());
}

void TRowPainter::Paint(int row, TRowLook look) {
  PaintBackground(row, look);
  const TListMetrics& metrics = FLayout.Metrics();
  for (int column = 0; column < static_cast<int>(metrics.ColumnWidths.size()); ++column) {
    // A wide report may show a few of its columns only.
    const QRect cell = FLayout.CellRect(row, column);
    if (cell.right() >= 0 && cell.left() < metrics.Client.width()) PaintCell(row, column, look.State);
  }
  if (FWidget.hasFocus() && (look.State & kRowFocused) != 0)
    PaintFocus(HighlightRect(row), Highlighted(look.State));
}

void TRowPainter::PaintEmpty() {
  if (FWidget.hasFocus()) PaintFocus(QRect(QPoint(0, 0), FLayout.Metrics().Client), false);
}

void TRowPainter::PaintGrid() {
  const TListMetrics& metrics = FLayout.Metrics();
  const int hint = FWidget.style()->styleHint(QStyle::SH_Table_GridLineColor, &FStyleOption, &FWidget);
  FPainter.setPen(QColor::fromRgb(static_cast<QRgb>(hint)));
  for (int y = metrics.RowHeight - 1; y < metrics.Client.height(); y += metrics.RowHeight)
    FPainter.drawLine(0, y, metrics.Client.width(), y);
  for (size_t column = 0; column < metrics.ColumnWidths.size(); ++column) {
    const QRect section = FLayout.SectionRect(static_cast<int>(column), metrics.Client.height());
    FPainter.drawLine(section.topRight(), section.bottomRight());
  }
}

bool TRowPainter::Highlighted(unsigned state) const {
  if ((state & kRowDropHilited) != 0) return true;
  return (state & kRowSelected) != 0 && (!FOptions.HideSelection || FWidget.hasFocus());
}

QRect TRowPainter::HighlightRect(int row) const {
  return FOptions.RowSelect ? FLayout.RowRect(row) : FLayout.CellParts(row, 0).Text.adjusted(-2, 1, 2, -1);
}

void TRowPainter::PaintBackground(int row, TRowLook look) {
  const QRect rect = HighlightRect(row);
  if (Highlighted(look.State)) {
    PaintHighlight(FPainter, rect);
  } else if (look.Hovered) {
    QColor color = FStyleOption.palette.color(QPalette::Highlight);
    color.setAlpha(kHoverAlpha);
    FPainter.fillRect(rect, color);
  }
}

void TRowPainter::PaintHighlight(QPainter& painter, const QRect& rect) const {
  QStyleOptionViewItem option = FStyleOption;
  option.rect = rect;
  option.state |= QStyle::State_Selected;
  FWidget.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, &painter, &FWidget);
}

// A style may draw the highlight in a colour that is not the palette's, and that its colour for highlighted
// text does not suit. So it is looked at, once.
const TRowPainter::THighlight& TRowPainter::Highlight() {
  if (FHighlight) return *FHighlight;
  QImage sample(kSample, QImage::Format_RGB32);
  sample.fill(FStyleOption.palette.color(QPalette::Base));
  QPainter painter(&sample);
  PaintHighlight(painter, sample.rect());
  const QColor background = BackgroundBehind(painter, sample.rect());
  const bool active = FStyleOption.state.testFlag(QStyle::State_Active);
  const QColor text =
      FStyleOption.palette.color(active ? QPalette::Active : QPalette::Inactive, QPalette::HighlightedText);
  const bool suits = ReadableOn(background, text) == text;
  return FHighlight.emplace(THighlight{background, suits ? QPalette::HighlightedText : QPalette::Text});
}

// The source is asked here and nowhere else in a paint: once for each cell that shows.
void TRowPainter::PaintCell(int row, int column, unsigned state) {
  const int image = FSource.CellImage(row, column);
  const TCellParts parts = FLayout.CellParts(row, column, image >= 0);
  FPainter.save();
  FPainter.setClipRect(parts.Cell, Qt::IntersectClip);
  const bool pale = (state & kRowCut) != 0 || !FWidget.isEnabled();
  if (!parts.CheckBox.isNull()) PaintCheckBox(parts.CheckBox, (state & kRowChecked) != 0);
  if (!parts.StateImage.isNull())
    FImages.State->Draw(FPainter, parts.StateImage, FSource.StateImage(row), !pale);
  if (!parts.SmallImage.isNull()) FImages.Small->Draw(FPainter, parts.SmallImage, image, !pale);
  PaintText(parts.Text, FSource.CellText(row, column), FSource.RowColumns()[column], state);
  FPainter.restore();
}

void TRowPainter::PaintCheckBox(const QRect& rect, bool checked) {
  QStyleOptionViewItem option = FStyleOption;
  option.rect = rect;
  option.features |= QStyleOptionViewItem::HasCheckIndicator;
  option.checkState = checked ? Qt::Checked : Qt::Unchecked;
  option.state |= checked ? QStyle::State_On : QStyle::State_Off;
  // Styles draw the frame darker than the window, which would not show on a dark list.
  if (option.palette.color(QPalette::Base).lightness() < kDark)
    option.palette.setColor(QPalette::Window, option.palette.color(QPalette::Text).darker());
  FWidget.style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &option, &FPainter, &FWidget);
}

void TRowPainter::PaintText(const QRect& rect, const QString& text, const TListColumn& column,
                            unsigned state) {
  if (text.isEmpty() || rect.width() <= 0) return;
  QPalette palette = FStyleOption.palette;
  const bool pale = (state & kRowCut) != 0 || !FWidget.isEnabled();
  const bool active = FStyleOption.state.testFlag(QStyle::State_Active);
  palette.setCurrentColorGroup(pale ? QPalette::Disabled : active ? QPalette::Active : QPalette::Inactive);
  const bool highlighted = FOptions.RowSelect || column.Index() == 0 ? Highlighted(state) : false;
  const QString shown = FStyleOption.fontMetrics.elidedText(text, column.Elide(), rect.width());
  FWidget.style()->drawItemText(&FPainter, rect, static_cast<int>(CellAlignment(column)) | Qt::TextSingleLine,
                                palette, true, shown, highlighted ? Highlight().Text : QPalette::Text);
}

void TRowPainter::PaintFocus(const QRect& rect, bool highlighted) {
  QStyleOptionFocusRect option;
  option.initFrom(&FWidget);
  option.rect = rect;
  option.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
  option.backgroundColor = highlighted ? Highlight().Background : option.palette.color(QPalette::Base);
  FWidget.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &FPainter, &FWidget);
}
