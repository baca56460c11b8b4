#include "controls/list/HeaderBar.h"

#include "controls/list/RowHost.h"
#include "controls/list/model/ListColumns.h"
#include "controls/list/painter/HeaderPainter.h"
#include "controls/picture/ImageList.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

THeaderBar::THeaderBar(TRowHost& host) : QWidget(&host), FHost(host), FInput(*this) {
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
  const TListLayout layout = HeaderLayout();
  const TListColumns& columns = HeaderColumns();
  int right = 0;
  for (int column = 0; column < columns.Count(); ++column) {
    const QRect section = layout.SectionRect(column, height());
    right = section.right() + 1;
    if (right <= 0 || section.left() >= width() || section.width() <= 0) continue;
    header.PaintSection(section, columns[column], columns.Count(),
                        {FInput.HotColumn(), FInput.PressedColumn()});
  }
  if (right < width()) header.PaintRest({right, 0, width() - right, height()});
}

void THeaderBar::mousePressEvent(QMouseEvent* event) {
  Press(*event, false);
}

void THeaderBar::mouseDoubleClickEvent(QMouseEvent* event) {
  Press(*event, true);
}

void THeaderBar::Press(QMouseEvent& event, bool second) {
  const bool taken = FHost.HeaderMouse(event, FInput.AtDivider(event.position().toPoint().x()));
  if (!taken && event.button() == Qt::LeftButton)
    FInput.Press(event.position().toPoint().x(), second && FHost.HeaderFitsColumns());
  update();
}

void THeaderBar::mouseMoveEvent(QMouseEvent* event) {
  const int x = event->position().toPoint().x();
  FInput.Move(x);
  const bool atDivider = event->buttons() == Qt::NoButton && FInput.AtDivider(x);
  FHost.HeaderMouse(*event, FInput.Tracking() || atDivider);
  if (FInput.Tracking() || atDivider)
    setCursor(Qt::SplitHCursor);
  else
    unsetCursor();
  update();
}

void THeaderBar::mouseReleaseEvent(QMouseEvent* event) {
  const bool taken = FHost.HeaderMouse(*event, FInput.Tracking());
  if (!taken && event->button() == Qt::LeftButton) FInput.Release(event->position().toPoint().x());
  update();
}

void THeaderBar::leaveEvent(QEvent*) {
  FInput.Leave();
  FHost.HeaderLeft();
  update();
}

// The rows' menu is not the header's.
void THeaderBar::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
}

TListLayout THeaderBar::HeaderLayout() const {
  return FHost.Layout();
}

TListColumns& THeaderBar::HeaderColumns() {
  return *FHost.FHostColumns;
}

bool THeaderBar::Clickable() const {
  return FHost.Options().ColumnClick;
}

void THeaderBar::ColumnClicked(int column) {
  FHost.HeaderClicked(column);
}

void THeaderBar::FitColumnToContents(int column) {
  FHost.FitColumn(column);
}
