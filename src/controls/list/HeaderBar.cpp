#include "controls/list/HeaderBar.h"

#include "controls/list/RowHost.h"
#include "controls/list/model/ListColumns.h"
#include "controls/list/painter/RowPainter.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionHeader>

#include <algorithm>
#include <utility>

namespace {

// Device-independent pixels on either side of a divider.
constexpr int kDividerReach = 4;

// What metrics round away, so that a caption in a room of its own width is not cut.
constexpr int kSlack = 2;

QStyleOptionHeader::SectionPosition PositionOf(int index, int count) {
  if (count == 1) return QStyleOptionHeader::OnlyOneSection;
  if (index == 0) return QStyleOptionHeader::Beginning;
  return index + 1 < count ? QStyleOptionHeader::Middle : QStyleOptionHeader::End;
}

// Which sections look special now; -1 for none.
struct THeaderLook {
  int HotColumn = -1;
  int PressedColumn = -1;
};

// Paints the sections: the style's own section, the caption, the sort mark at its right. Lives for one paint.
class THeaderPainter {
 public:
  THeaderPainter(QPainter& painter, const QWidget& widget, const TImageList* marks)
      : FPainter(painter), FWidget(widget), FMarks(marks) {}

  void PaintSection(const QRect& rect, const TListColumn& column, int columnCount, THeaderLook look);
  // What is right of the last section.
  void PaintRest(const QRect& rect);

 private:
  void PaintBackground(const QRect& rect, QStyle::State state, QStyleOptionHeader::SectionPosition position);
  void PaintLabel(const QRect& rect, const TListColumn& column);

  QPainter& FPainter;
  const QWidget& FWidget;
  const TImageList* FMarks;
};

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

}  // namespace

THeaderBar::THeaderBar(TRowHost& host) : QWidget(&host), FHost(host) {
  setMouseTracking(true);
  setFocusPolicy(Qt::NoFocus);
}

QSize THeaderBar::sizeHint() const {
  const TImageList* const marks = FHost.SmallImages();
  return {0, std::max(fontMetrics().height() + 10, marks != nullptr ? marks->Size().height() + 6 : 0)};
}

void THeaderBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (FHost.PaintHeader(painter, *this)) return;
  THeaderPainter header(painter, *this, FHost.SmallImages());
  const TListLayout layout = FHost.Layout();
  const TListColumns& columns = Columns();
  int right = 0;
  for (int column = 0; column < columns.Count(); ++column) {
    const QRect section = layout.SectionRect(column, height());
    right = section.right() + 1;
    if (right <= 0 || section.left() >= width() || section.width() <= 0) continue;
    header.PaintSection(section, columns[column], columns.Count(), {HotColumn(), PressedColumn()});
  }
  if (right < width()) header.PaintRest({right, 0, width() - right, height()});
}

void THeaderBar::mousePressEvent(QMouseEvent* event) {
  Press(*event, false);
}

void THeaderBar::mouseDoubleClickEvent(QMouseEvent* event) {
  Press(*event, true);
}

// Each gesture may end in a handler that destroys the list, and the header with it.
//
// The list comes first with each gesture (HeaderMouse), then the header by itself. A second press in a row is
// one like the first but at a divider, so that fast clicks on a section all count.

void THeaderBar::Press(QMouseEvent& event, bool second) {
  const TEventScope scope(FHost.EventLife());
  const int x = event.position().toPoint().x();
  const bool taken = FHost.HeaderMouse(event, DividerAt(x) >= 0);
  if (scope.ListGone()) return;
  if (!taken && event.button() == Qt::LeftButton) PressAt(x, second && FHost.HeaderFitsColumns());
  if (!scope.ListGone()) update();
}

void THeaderBar::mouseMoveEvent(QMouseEvent* event) {
  const TEventScope scope(FHost.EventLife());
  const int x = event->position().toPoint().x();
  if (!event->buttons().testFlag(Qt::LeftButton)) LosePress();
  MoveTo(x);
  const bool atDivider = Tracking() || (event->buttons() == Qt::NoButton && DividerAt(x) >= 0);
  FHost.HeaderMouse(*event, atDivider);
  if (scope.ListGone()) return;
  if (atDivider)
    setCursor(Qt::SplitHCursor);
  else
    unsetCursor();
  update();
}

void THeaderBar::mouseReleaseEvent(QMouseEvent* event) {
  const TEventScope scope(FHost.EventLife());
  const bool taken = FHost.HeaderMouse(*event, Tracking());
  if (scope.ListGone()) return;
  if (taken)
    LosePress();
  else if (event->button() == Qt::LeftButton)
    ReleaseAt(event->position().toPoint().x());
  if (!scope.ListGone()) update();
}

void THeaderBar::PressAt(int x, bool second) {
  const int divider = DividerAt(x);
  if (divider >= 0 && second) {
    FHost.FitColumn(divider);
  } else if (divider >= 0) {
    FTrackedColumn = divider;
    FTrackStart = x;
    FTrackWidth = Columns()[divider].Width();
  } else if (FHost.Options().ColumnClick) {
    FDownColumn = FHotColumn = FHost.Layout().ColumnAt(x);
  }
}

void THeaderBar::MoveTo(int x) {
  // By the way from where the drag began, not by the last step: a bound that holds the width back for a while
  // leaves the divider where the mouse expects it.
  if (Tracking()) return Columns()[FTrackedColumn].SetWidth(FTrackWidth + x - FTrackStart);
  const bool hot = FHost.Options().ColumnClick && (FDownColumn >= 0 || DividerAt(x) < 0);
  FHotColumn = hot ? FHost.Layout().ColumnAt(x) : -1;
}

// The click is told last, after the header has let go of it, as its handler may destroy both.
void THeaderBar::ReleaseAt(int x) {
  FTrackedColumn = -1;
  const int down = std::exchange(FDownColumn, -1);
  if (down >= 0 && FHost.Layout().ColumnAt(x) == down) FHost.HeaderClicked(down);
}

int THeaderBar::DividerAt(int x) const {
  const int column = FHost.Layout().DividerAt(x, kDividerReach);
  return column >= 0 && Columns()[column].Resizable() ? column : -1;
}

void THeaderBar::ColumnsChanged() {
  LosePress();
  FHotColumn = -1;
  update();
}

void THeaderBar::leaveEvent(QEvent*) {
  FHotColumn = -1;
  update();
}

// The rows' menu is not the header's.
void THeaderBar::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
}

TListColumns& THeaderBar::Columns() const {
  return *FHost.FHostColumns;
}
