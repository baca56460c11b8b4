#include "controls/list/rd/RdListView.h"

#include "controls/list/rd/layout/AutoColumns.h"

#include <QEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <utility>

TRdListView::TRdListView(QWidget* parent)
    : TCustomListView(parent),
      FSkinItem(std::make_unique<TkLVSkinItem>(static_cast<TSkinOwner&>(*this), FSkin.Item)),
      FSkinGroup(std::make_unique<TkLVSkinGroup>(static_cast<TSkinOwner&>(*this), FSkin.Group)),
      FSkinHeader(std::make_unique<TkLVSkinHeader>(static_cast<TSkinOwner&>(*this), FSkin.Header)) {
  ReplaceCollections(
      std::make_unique<TkListItems>(static_cast<TListItemsOwner&>(*this), static_cast<TkListOwner&>(*this)),
      std::make_unique<TkListColumns>());
  FBars = std::make_unique<TRdBars>(*this);
  FEditors = std::make_unique<TRdEditors>(*this);
  FTip = std::make_unique<TRdTip>(*this);
  TakeFont();
}

// Rows and columns of the model's own classes go while what they tell of still stands.
TRdListView::~TRdListView() {
  Items().Clear();
  ReplaceCollections(std::make_unique<TListItems>(static_cast<TListItemsOwner&>(*this)),
                     std::make_unique<TListColumns>());
}

TkListItems& TRdListView::Items() const {
  return static_cast<TkListItems&>(const_cast<TRdListView*>(this)->TCustomListView::Items());
}

TkListColumns& TRdListView::Columns() const {
  return static_cast<TkListColumns&>(const_cast<TRdListView*>(this)->TCustomListView::Columns());
}

void TRdListView::SetOptions(const TListViewOptions& options) {
  TListViewOptions accepted = options;
  if (FOpenOwnerDraw) accepted.RowSelect = accepted.ReadOnly = true;
  FListState.CheckBoxes = accepted.CheckBoxes;
  TCustomListView::SetOptions(accepted);
}

void TRdListView::SetProperties(const TRdListProperties& properties) {
  FProperties = properties;
  UpdateHeader();
  update();
  ContentChanged();
}

void TRdListView::SetOpenOwnerDraw(bool open) {
  if (open == FOpenOwnerDraw) return;
  FOpenOwnerDraw = open;
  CloseEditors();
  SetHoverRow(-1);
  SetOptions(Options());
}

void TRdListView::SetOpenGroupDraw(bool open) {
  if (open == OpenGroupDraw()) return;
  FListState.OpenGroupDraw = open;
  Model().Placing().GroupDrawChanged();
  ContentChanged();
}

QColor TRdListView::BackgroundColor() const {
  return ToQColor(FSkin.Color == clNone || FSkin.Color == clDefault ? clWindow : FSkin.Color, palette());
}

int TRdListView::SortColumnIndex() const {
  const TkListColumn* const column = FHeaderPart.SortColumn();
  return column != nullptr ? column->Index() : -1;
}

THit TRdListView::HitTest(const QPoint& pos) const {
  if (!FOpenOwnerDraw) return TCustomListView::HitTest(pos);
  const TRdCellReader reader(*this);
  THit hit = reader.Layout().HitTest(pos);
  const TkListItem* const item = Items().Item(hit.Row);
  if (item != nullptr)
    hit.Flags = reader.CheckBoxRect(*item, hit.Row).contains(pos) ? htOnStateIcon : htOnLabel;
  return hit;
}

TkListItem* TRdListView::GetItemAt(int x, int y, int& index, int& column) const {
  const THit hit = HitTest({x, y});
  index = hit.Row;
  column = hit.Row >= 0 ? hit.Column : -1;
  return Items().Item(index);
}

void TRdListView::RepaintCell(TkListItem& item, int column, bool onlyHover) {
  const int row = item.Index();
  if (!FOpenOwnerDraw || Items().Updating() || row < 0) return;
  const TRdCellReader reader(*this);
  const bool group = reader.IsGroupRow(item);
  if (onlyHover && (group ? FSkin.Group.GroupPic_BgHover.Empty() : FSkin.Item.ItemHoverColor == clNone))
    return;
  const bool whole = group || column < 0 || column >= reader.ColumnCount();
  viewport()->update(whole ? reader.PaintedRect(row) : reader.Layout().CellRect(row, column));
}

void TRdListView::ResetMouseState() {
  FEditors->Drop();
  FMouse.Leave();
  FState = TRdListState();
  FKeys.ResetCursor();
  UpdateHeader();
}

// The rows and columns.

std::unique_ptr<TListItem> TRdListView::CreateListItem(TListItems& items) {
  return std::make_unique<TkListItem>(static_cast<TkListItems&>(items));
}

void TRdListView::ItemChanged(TListItem& item, TItemChange change) {
  if (Model().ItemShows(static_cast<TkListItem&>(item))) TCustomListView::ItemChanged(item, change);
}

QString TRdListView::CellText(int row, int column) const {
  const TkListItem* const item = Items().Item(row);
  if (item == nullptr || column >= Columns().Count()) return {};
  if (item->IsGroupHeader() && item->Group() != nullptr)
    return column == 0 ? item->Group()->Header() : QString();
  const TkCell cell = CellOf(*item, Columns()[column]);
  return PlainText(cell.Type, cell.Text, FSkin.Item, u' ');
}

int TRdListView::CellImage(int row, int column) const {
  const TkListItem* const item = Items().Item(row);
  return item != nullptr && item->IsGroupHeader() ? -1 : TCustomListView::CellImage(row, column);
}

void TRdListView::ColumnCountChanged() {
  ResetMouseState();
  TCustomListView::ColumnCountChanged();
}

void TRdListView::CheckChanged(TListItem& item) {
  Model().Checks().HostChanged(static_cast<TkListItem&>(item));
  UpdateHeader();
}

// Layout and painting.

int TRdListView::RowHeight() const {
  return FOpenOwnerDraw ? std::max(1, FSkin.Item.ItemHeight) : TCustomListView::RowHeight();
}

void TRdListView::PaintRows(QPainter& painter, const QRegion& region) {
  if (FOpenOwnerDraw)
    FRowsPainter.Paint(painter, region);
  else
    TCustomListView::PaintRows(painter, region);
}

bool TRdListView::PaintHeader(QPainter& painter, QWidget& header) {
  if (Columns().Count() == 0) return false;
  FHeaderPart.Paint(painter, header);
  return true;
}

QMargins TRdListView::BarMargins() const {
  return FBars != nullptr ? FBars->Margins() : QMargins();
}

// Bars that come or go change the room that columns share, and the ranges with it.
void TRdListView::Arranged() {
  if (FArranging || FBars == nullptr) return;
  const QScopedValueRollback guard(FArranging, true);
  for (int pass = 0; pass < 3; ++pass) {
    FBars->Mirror();
    const QMargins bars = BarMargins();
    const bool placed =
        viewportMargins().right() == bars.right() && viewportMargins().bottom() == bars.bottom();
    if (!ShareColumns() && placed) break;
    Arrange();
  }
}

bool TRdListView::ShareColumns() {
  std::vector<TAutoColumn> columns;
  for (int column = 0; column < Columns().Count(); ++column) {
    const TkListColumn& about = Columns()[column];
    columns.push_back({about.AutoSize(), about.Width(), about.MinWidth(), about.MaxWidth()});
  }
  const std::vector<int> widths = ShareColumnWidths(std::move(columns), viewport()->width());
  bool changed = false;
  for (int column = 0; column < Columns().Count(); ++column) {
    TkListColumn& about = Columns()[column];
    const int before = about.Width();
    if (about.AutoSize()) about.SetWidth(widths[static_cast<size_t>(column)]);
    changed = changed || about.Width() != before;
  }
  return changed;
}

void TRdListView::UpdateHeader() {
  Header().update();
}

void TRdListView::SkinChanged(TSkinChange change) {
  switch (change) {
    case TSkinChange::Repaint:
      return viewport()->update();
    case TSkinChange::Header:
      Header().setFont(FSkin.Header.HeaderFont);
      UpdateHeader();
      break;
    case TSkinChange::GroupExpand:
      FListState.GroupCanExpand = FSkin.Group.GroupCanExpand;
      if (!FListState.GroupCanExpand) Model().Placing().ExpandAll();
      break;
    case TSkinChange::RowHeight:
    case TSkinChange::ScrollBars:
      break;
  }
  ContentChanged();
}

int TRdListView::HeaderHeight() const {
  return HeaderRect().height();
}

// Fonts of the skin follow the list's as long as they were not set.
void TRdListView::TakeFont() {
  const QFont before = std::exchange(FListFont, font());
  for (QFont* const one : {&FSkin.Header.HeaderFont, &FSkin.Group.GroupFont, &FSkin.Item.LabelFont})
    if (*one == before) *one = FListFont;
  Columns().SetListFont(FListFont);
  Header().setFont(FSkin.Header.HeaderFont);
}

void TRdListView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange && FTip != nullptr) TakeFont();
  TCustomListView::changeEvent(event);
}

bool TRdListView::event(QEvent* event) {
  const bool bars = event->type() == QEvent::LayoutRequest && FBars != nullptr;
  if (bars && viewportMargins().right() != BarMargins().right()) ContentChanged();
  if (event->type() != QEvent::Paint || FProperties.FrameColor == clNone)
    return TCustomListView::event(event);
  QPainter painter(this);
  PaintControlFrame(painter, rect(), frameWidth(), FProperties.FrameColor, palette());
  return true;
}

// What the model asks for.

int TRdListView::EndOfPage() const {
  return TopIndex() + RowsPerPage();
}

int TRdListView::HorzScrollPos() const {
  return horizontalScrollBar()->value();
}

void TRdListView::ScrollToHorz(int pos) {
  horizontalScrollBar()->setValue(pos);
}

void TRdListView::RedrawRow(TkListItem& item) {
  UpdateRow(item.Index());
}

void TRdListView::RedrawList() {
  viewport()->update();
}

void TRdListView::Realign() {
  ContentChanged();
}

void TRdListView::ItemDestroying(TkListItem& item) {
  if (FState.EditItem == &item) FEditors->Drop();
  if (item.IsGroupHeader()) FState.HotGroupRow = -1;
}

TListItems::TCompare TRdListView::RowCompare() {
  if (!OnCompare) return {};
  return [this](TListItem& a, TListItem& b) {
    int result = 0;
    OnCompare(&a, &b, result);
    return result;
  };
}

void TRdListView::DoItemChecked(TkListItem& item) {
  if (OnItemChecked) OnItemChecked(&item);
}

bool TRdListView::DoGroupShowHide(TkListGroup& group, bool showState) {
  if (GroupShowHide) GroupShowHide(*this, group, showState);
  return showState;
}

void TRdListView::DoSubItemChecking(TkListItem& item, int column, bool& checked) {
  if (OnSubItemChecking) OnSubItemChecking(&item, column, checked);
}

void TRdListView::DoSubItemChecked(TkListItem& item, int column, bool& checked) {
  if (OnSubItemChecked) OnSubItemChecked(&item, column, checked);
}
