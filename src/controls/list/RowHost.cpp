#include "controls/list/RowHost.h"

#include "controls/list/HeaderBar.h"
#include "controls/list/ListTypes.h"
#include "controls/list/model/ListColumns.h"
#include "controls/list/painter/RowPainter.h"

#include <QCoreApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace {

// A fit measures no more than these, as each costs the measuring of a text on the main thread.
constexpr int kFitRows = 20000;
// Device-independent pixels. The slack is what metrics round away; the paddings are above and below together.
constexpr int kFitSlack = 2;
constexpr int kHorzStep = 20;
constexpr int kRowPadding = 8;
constexpr int kImagePadding = 4;

QSize SizeOf(const TImageList* images) {
  return images != nullptr ? images->Size() : QSize();
}

}  // namespace

TRowHost::TRowHost(QWidget* parent) : QAbstractScrollArea(parent), FHeader(new THeaderBar(*this)) {
  FStates.SetSingleSelect(true);
  FStates.OnChange = [this](int row, unsigned before, unsigned after) {
    UpdateRow(row);
    if (((before ^ after) & kRowFocused) != 0) UpdateRow(0);  // the focus shows there while no row has it
    RowStateChanged(row, before, after);
  };
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setMouseTracking(true);
  viewport()->setBackgroundRole(QPalette::Base);
  verticalScrollBar()->setSingleStep(1);
  horizontalScrollBar()->setSingleStep(kHorzStep);
}

TRowHost::~TRowHost() {
  FEventLife->End();
}

void TRowHost::SetSource(const TRowSource& source, TListColumns& columns) {
  FSource = &source;
  FHostColumns = &columns;
  columns.SetLife(FEventLife);
  columns.OnChange = [this] { ColumnsTold(); };
}

void TRowHost::ColumnsTold() {
  if (std::exchange(FColumnCount, FHostColumns->Count()) != FHostColumns->Count()) {
    FHeader->ColumnsChanged();
    ColumnCountChanged();
  }
  ContentChanged();
}

void TRowHost::SetOptions(const TListViewOptions& options) {
  FOptions = options;
  FStates.SetSingleSelect(!options.MultiSelect);
  ContentChanged();
}

void TRowHost::SetSmallImages(TImageList* images) {
  FSmallImages.SetImages(images);
  ContentChanged();
}

void TRowHost::SetStateImages(TImageList* images) {
  FStateImages.SetImages(images);
  ContentChanged();
}

int TRowHost::TopIndex() const {
  Settle();
  return verticalScrollBar()->value();
}

void TRowHost::SetTopIndex(int row) {
  Settle();
  verticalScrollBar()->setValue(row);
}

int TRowHost::HorzPos() const {
  Settle();
  return horizontalScrollBar()->value();
}

void TRowHost::SetHorzPos(int pixels) {
  Settle();
  horizontalScrollBar()->setValue(pixels);
}

void TRowHost::MakeRowVisible(int row, bool partialOk) {
  if (row >= 0 && row < FStates.Count()) SetTopIndex(Layout().TopRowShowing(row, partialOk));
}

void TRowHost::ScrollHorz(int steps) {
  SetHorzPos(HorzPos() + steps * kHorzStep);
}

int TRowHost::RowsPerPage() const {
  return Layout().RowsPerPage();
}

QString TRowHost::RowText(int row) const {
  return FSource->CellText(row, 0);
}

int TRowHost::RowHeight() const {
  const int image = std::max(SizeOf(SmallImages()).height(), SizeOf(FStateImages.Images()).height());
  return std::max(fontMetrics().height() + kRowPadding, image + kImagePadding);
}

// Gathered anew at each call, with a look at every column. So a loop over rows asks for the layout once,
// before it.
TListMetrics TRowHost::Metrics() const {
  TListMetrics metrics;
  metrics.Client = viewport()->size();
  metrics.RowCount = FStates.Count();
  metrics.RowHeight = RowHeight();
  metrics.TopRow = verticalScrollBar()->value();
  metrics.HorzPos = horizontalScrollBar()->value();
  for (int column = 0; column < FHostColumns->Count(); ++column)
    metrics.ColumnWidths.push_back((*FHostColumns)[column].Width());
  if (FOptions.CheckBoxes) {
    metrics.CheckBox = {style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this),
                        style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this)};
  }
  metrics.StateImage = SizeOf(FStateImages.Images());
  metrics.SmallImage = SizeOf(SmallImages());
  metrics.RowSelect = FOptions.RowSelect;
  return metrics;
}

TListLayout TRowHost::Layout() const {
  Settle();
  return TListLayout(Metrics());
}

int TRowHost::ClientWidth() const {
  Settle();
  return viewport()->width();
}

int TRowHost::VertScrollBarWidth() const {
  return verticalScrollBar()->sizeHint().width();
}

QRect TRowHost::HeaderRect() const {
  Settle();
  return FOptions.ShowColumnHeaders ? FHeader->geometry() : QRect();
}

// A row that does not show asks for nothing, so that a fill behind the page costs no paint. While ranges are
// behind, a paint of all is on its way already.
void TRowHost::UpdateRow(int row) {
  if (FStale || row < verticalScrollBar()->value()) return;
  const int below = row - verticalScrollBar()->value();
  const int height = RowHeight();
  if (below <= viewport()->height() / height)
    viewport()->update(0, below * height, viewport()->width(), height);
}

void TRowHost::FitColumn(int column) {
  if (column >= 0 && column < FHostColumns->Count()) (*FHostColumns)[column].SetWidth(MeasureColumn(column));
}

int TRowHost::MeasureColumn(int column) const {
  const TListLayout layout = Layout();
  const QFontMetrics font = fontMetrics();
  const TListColumn& header = (*FHostColumns)[column];
  int widest = font.horizontalAdvance(header.Caption()) + 2 * layout.Metrics().Margin;
  if (header.ImageIndex() >= 0) widest += SizeOf(SmallImages()).width() + layout.Metrics().Gap;
  for (int row = 0; row < std::min(FStates.Count(), kFitRows); ++row) {
    const int overhead = layout.CellOverhead(column, FSource->CellImage(row, column) >= 0);
    widest = std::max(widest, overhead + font.horizontalAdvance(FSource->CellText(row, column)));
  }
  return widest + kFitSlack;
}

// Scroll ranges follow at the end of the present event, or as soon as somebody asks for a position, so that a
// long fill pays for them once.
void TRowHost::ContentChanged() {
  if (FStale) return;
  FStale = true;
  if (FLocked) return;
  QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
  viewport()->update();
}

// Const, as asking for a position is: what it brings up to date is the widget, not what it shows.
void TRowHost::Settle() const {
  if (FStale) const_cast<TRowHost*>(this)->Arrange();
}

// A bar that comes or goes changes the room that the ranges were reckoned for.
void TRowHost::Arrange() {
  FStale = false;
  for (int pass = 0; pass < 2; ++pass) {
    PlaceHeader();
    UpdateScrollBars();
  }
  Arranged();
}

void TRowHost::LockPainting(bool locked) {
  FLocked = locked;
  viewport()->setUpdatesEnabled(!locked);
  if (locked) return;
  // As if nothing were pending: ContentChanged then asks for the layout and the paint that it held back.
  FStale = false;
  ContentChanged();
}

// Where everything fits without bars, none shows, whatever room the present ones take.
void TRowHost::UpdateScrollBars() {
  TListMetrics metrics = Metrics();
  metrics.Client = maximumViewportSize();
  const TListLayout whole(metrics);
  const bool fits = whole.MaxTopRow() == 0 && whole.TotalWidth() <= metrics.Client.width();
  const TListLayout layout = fits ? whole : TListLayout(Metrics());
  const int width = layout.Metrics().Client.width();
  verticalScrollBar()->setPageStep(layout.RowsPerPage());
  verticalScrollBar()->setRange(0, layout.MaxTopRow());
  horizontalScrollBar()->setPageStep(width);
  horizontalScrollBar()->setRange(0, std::max(0, layout.TotalWidth() - width));
  FHeader->update();
}

// Changed margins may have bars come and go before they return, so the bars are asked again.
void TRowHost::PlaceHeader() {
  const int height = FOptions.ShowColumnHeaders ? FHeader->sizeHint().height() : 0;
  setViewportMargins(BarMargins() + QMargins(0, height, 0, 0));
  FHeader->setVisible(height > 0);
  const QRect rows = viewport()->geometry();
  const int beside = BarCrossesHeader() ? 0 : BarMargins().right();
  FHeader->setGeometry(rows.left(), rows.top() - height, rows.width() + beside, height);
}

bool TRowHost::PaintHeader(QPainter&, QWidget&) {
  return false;
}

bool TRowHost::HeaderMouse(const QMouseEvent&, bool) {
  return false;
}

void TRowHost::SetHoverRow(int row) {
  if (row == FHoverRow) return;
  UpdateRow(std::exchange(FHoverRow, row));
  UpdateRow(row);
}

void TRowHost::paintEvent(QPaintEvent* event) {
  Settle();
  QPainter painter(viewport());
  PaintRows(painter, event->region());
}

void TRowHost::PaintRows(QPainter& painter, const QRegion& region) {
  const TListLayout layout = Layout();
  TRowPainter rows(painter, *this, layout, *FSource, FOptions, {SmallImages(), FStateImages.Images()});
  // As long as no row has the focus, the keys begin at the first one, and it shows.
  const int focus = std::max(0, FStates.Next(-1, kRowFocused));
  for (int row = layout.Metrics().TopRow; row < layout.EndOfVisibleRows(); ++row) {
    const unsigned state = FStates.State(row) | (row == focus ? kRowFocused : 0);
    if (region.intersects(layout.RowRect(row))) rows.Paint(row, {state, row == FHoverRow && isEnabled()});
  }
  if (FOptions.GridLines) rows.PaintGrid();
  if (layout.Metrics().RowCount == 0) rows.PaintEmpty();
}

void TRowHost::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  Arrange();
}

// The rows that show are few and are all painted anew. The mouse has not moved, so no row is taken to be
// under it until it does.
void TRowHost::scrollContentsBy(int dx, int dy) {
  if (dy != 0) FHoverRow = -1;
  if (dx != 0) FHeader->update();
  viewport()->update();
}

bool TRowHost::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) Settle();
  return QAbstractScrollArea::event(event);
}

void TRowHost::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) ContentChanged();
}

void TRowHost::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void TRowHost::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}
