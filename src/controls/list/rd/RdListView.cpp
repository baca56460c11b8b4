#include "controls/list/rd/RdListView.h"

#include "controls/list/HeaderBar.h"
#include "controls/list/accessible/ListAccessible.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace {
// What a wheel with steps turns by; a smooth one adds up to it (FWheelRest).
constexpr int kWheelNotch = 120;  // eighths of a degree
}  // namespace

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
  FSortImages.SetImages(properties.SortImage);
  FIcons.SetImages(properties.IconImgList);
  FGroupImages.SetImages(properties.GroupImages);
  ImagesChanged();
  update();
}

// Also after the end of one of them.
void TRdListView::ImagesChanged() {
  FProperties.SortImage = FSortImages.Images();
  FProperties.IconImgList = FIcons.Images();
  FProperties.GroupImages = FGroupImages.Images();
  UpdateHeader();
  ContentChanged();
}

// The options are set again, as owner drawing decides on two of them.
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
  // A group row has no cells: any column of it is all of it.
  const bool whole = group || column < 0 || column >= reader.ColumnCount();
  viewport()->update(whole ? reader.PaintedRect(row) : reader.Layout().CellRect(row, column));
}

TRdListState TRdListView::MouseState() const {
  return {FMouse.State(), FEditors->State(), FHeaderPart.State()};
}

void TRdListView::ResetMouseState() {
  const TEventScope scope(EventLife());
  FEditors->Drop();
  if (scope.ListGone()) return;
  FMouse.Reset();
  FHeaderPart.Reset();
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

void TRdListView::ItemGone(TListItem& item) {
  TCustomListView::ItemGone(item);
  FMouse.Forget(static_cast<TkListItem&>(item));
  FEditors->Forget(static_cast<TkListItem&>(item));
}

void TRdListView::RowsChanged() {
  TCustomListView::RowsChanged();
  FEditors->DropForgotten();
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
  const TEventScope scope(EventLife());
  ResetMouseState();
  if (!scope.ListGone()) TCustomListView::ColumnCountChanged();
}

void TRdListView::CheckChanged(TListItem& item) {
  const TEventScope scope(EventLife());
  Model().Checks().HostChanged(static_cast<TkListItem&>(item));
  if (!scope.ListGone()) UpdateHeader();
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

bool TRdListView::BarsPlaced() const {
  const QMargins bars = BarMargins();
  return viewportMargins().right() == bars.right() && viewportMargins().bottom() == bars.bottom();
}

// Bars that come or go change the room that columns share, and the ranges with it.
void TRdListView::Arranged() {
  if (FArranging || FBars == nullptr) return;
  const QScopedValueRollback guard(FArranging, true);
  // Each pass may upset what the one before reckoned with: bars take room, room moves auto columns, their
  // widths bring bars or spare them. What has not settled after three is taken to swing for ever and left at
  // that.
  for (int pass = 0; pass < 3; ++pass) {
    FBars->Mirror();
    if (!ShareColumns() && BarsPlaced()) break;
    Arrange();
  }
}

// Auto columns share anew what the others leave when that has changed. The width that a user drags one of
// them to stays until then.
bool TRdListView::ShareColumns() {
  std::vector<TAutoColumn> columns;
  for (int column = 0; column < Columns().Count(); ++column) {
    const TkListColumn& about = Columns()[column];
    columns.push_back(
        {about.AutoSize(), about.AutoSize() ? 0 : about.Width(), about.MinWidth(), about.MaxWidth()});
  }
  // The widths of auto columns are not compared, so that a drag of one of them stays.
  const bool same = columns == FShared && viewport()->width() == FSharedRoom;
  if (same) return false;
  FShared = columns;
  FSharedRoom = viewport()->width();
  const std::vector<int> widths = ShareColumnWidths(std::move(columns), FSharedRoom);
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
      UpdateHeader();
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
  // A skinned bar that shows or hides itself (AutoHide), or takes the thickness of new pictures, has the room
  // beside the rows change behind the back of the host.
  if (event->type() == QEvent::LayoutRequest && FBars != nullptr && !BarsPlaced()) ContentChanged();
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

// Each comparison is an event, with all that one costs. SortByText of the rows is the way for many.
TListItems::TCompare TRdListView::RowCompare() {
  if (!OnCompare) return {};
  return [this](TListItem& a, TListItem& b) {
    int result = 0;
    (void)Tell(EventLife(), OnCompare, &a, &b, result);
    return result;
  };
}

bool TRdListView::DoItemChecked(TkListItem& item) {
  return Tell(EventLife(), OnItemChecked, &item);
}

bool TRdListView::DoGroupShowHide(TkListGroup& group, bool& showState) {
  return Tell(EventLife(), GroupShowHide, *this, group, showState);
}

bool TRdListView::DoSubItemChecking(TkListItem& item, int column, bool& checked) {
  return Tell(EventLife(), OnSubItemChecking, &item, column, checked);
}

bool TRdListView::DoSubItemChecked(TkListItem& item, int column, bool& checked) {
  return Tell(EventLife(), OnSubItemChecked, &item, column, checked);
}

// The gestures: to the parts of the list, and what they leave to the host.

void TRdListView::mousePressEvent(QMouseEvent* event) {
  Press(*event, false);
}

void TRdListView::mouseDoubleClickEvent(QMouseEvent* event) {
  Press(*event, true);
}

void TRdListView::Press(QMouseEvent& event, bool second) {
  const TEventScope scope(EventLife());
  FTip->Hide();
  LosePress();
  // With the middle button held an editor does not open: the press only counts as taken.
  const bool both = event.buttons().testFlag(Qt::MiddleButton);
  if (event.button() == Qt::LeftButton && FMouse.Press(event.position().toPoint(), both, second)) return;
  if (second)
    TCustomListView::mouseDoubleClickEvent(&event);
  else
    TCustomListView::mousePressEvent(&event);
  if (!scope.ListGone()) FMouse.ForgetBoxClick();
}

// A press on a box that was served already only moves the focus.
bool TRdListView::PressRows(const QPoint& pos, Qt::MouseButton button, Qt::KeyboardModifiers shift) {
  if (!FMouse.State().BoxClicked) return TCustomListView::PressRows(pos, button, shift);
  if (TListItem* const item = Items().Item(HitTest(pos).Row)) item->SetFocused(true);
  return true;
}

void TRdListView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint pos = event->position().toPoint();
  FTip->Follow(pos);
  if (!FOpenOwnerDraw) return TCustomListView::mouseMoveEvent(event);
  if (event->buttons() == Qt::NoButton) LosePress();
  FMouse.Move(pos, event->timestamp(), event->buttons().testFlag(Qt::LeftButton));
}

void TRdListView::mouseReleaseEvent(QMouseEvent* event) {
  const TEventScope scope(EventLife());
  TCustomListView::mouseReleaseEvent(event);
  if (!scope.ListGone() && event->button() == Qt::LeftButton) FMouse.Release(event->position().toPoint());
}

bool TRdListView::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::Leave:
      FTip->Hide();
      FMouse.Leave();
      break;
    case QEvent::ToolTip:
      if (FTip->Show(static_cast<QHelpEvent*>(event)->pos())) return true;
      break;
    default:
      break;
  }
  return TCustomListView::viewportEvent(event);
}

void TRdListView::wheelEvent(QWheelEvent* event) {
  const TEventScope scope(EventLife());
  CloseEditors();
  if (scope.ListGone()) return;
  setFocus(Qt::MouseFocusReason);
  // A wheel that turns sideways only counts the same.
  FWheelRest += event->angleDelta().y() != 0 ? event->angleDelta().y() : event->angleDelta().x();
  const int notches = FWheelRest / kWheelNotch;
  FWheelRest %= kWheelNotch;
  if (FBars->Margins().isNull()) return TCustomListView::wheelEvent(event);
  bool moved = false;
  for (int notch = 0; notch < std::abs(notches) && Items().Count() > 0; ++notch)
    moved = FBars->Wheel(notches > 0 ? -1 : 1) || moved;
  event->setAccepted(moved);
}

void TRdListView::scrollContentsBy(int dx, int dy) {
  const TEventScope scope(EventLife());
  CloseEditors();
  if (scope.ListGone()) return;
  FTip->Hide();
  TCustomListView::scrollContentsBy(dx, dy);
  if (!FArranging) FBars->Mirror();
  FMouse.Refresh();
}

void TRdListView::hideEvent(QHideEvent* event) {
  const TEventScope scope(EventLife());
  CloseEditors();
  if (scope.ListGone()) return;
  FTip->Hide();
  TCustomListView::hideEvent(event);
}

// The header.

bool TRdListView::HeaderMouse(const QMouseEvent& event, bool atDivider) {
  const TEventScope scope(EventLife());
  const bool press = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
  if (press) CloseEditors();
  if (scope.ListGone()) return true;
  const bool taken = FHeaderPart.Mouse(event, Header().size(), atDivider);
  return taken || scope.ListGone();
}

void TRdListView::HeaderClicked(int column) {
  const TEventScope scope(EventLife());
  TListColumn& clicked = Columns()[column];
  CloseEditors();
  if (scope.ListGone() || clicked.Gone() || !FHeaderPart.SortByClick(clicked.Index())) return;
  if (!clicked.Gone()) TCustomListView::HeaderClicked(clicked.Index());
}

bool TRdListView::ClickHeader(int column) {
  if (!Options().ColumnClick || column < 0 || column >= Columns().Count()) return false;
  HeaderClicked(column);
  return true;
}

bool TRdListView::ToggleCheckAll() {
  if (!FProperties.CheckBoxOnColumnHeader || Columns().Count() == 0) return false;
  FHeaderPart.ToggleCheckAll();
  return true;
}

// Keys and what they share with the mouse.

bool TRdListView::DoKey(int key, const QKeyEvent& event) {
  return FKeys.Key(key, event.modifiers()) || TCustomListView::DoKey(key, event);
}

void TRdListView::SelectRow(int row) {
  if (TListItem* const item = Items().Item(row)) SelectOnly(*item);
}

void TRdListView::SwitchCheck(TListItem& item, bool checked) {
  FMouse.SwitchBox(static_cast<TkListItem&>(item), checked);
}

// The focus of the row is where it was, but for assistive tools it is at another cell.
void TRdListView::CursorMoved() {
  TListItem* const item = ItemFocused();
  if (item == nullptr) return;
  UpdateRow(item->Index());
  TellRowState(*this, item->Index(), kRowFocused, kRowFocused);
}

// For gestures, which nobody could tell of a mistake by an exception: it goes to OnWriteLog. Null until the
// constructor has made them.
void TRdListView::CloseEditors() {
  if (FEditors == nullptr) return;
  const TEventScope scope(EventLife());
  try {
    FEditors->Hide();
  } catch (const EListError& error) {
    if (!scope.ListGone()) WriteLog(QString::fromLatin1(error.what()));
  }
}

void TRdListView::WriteLog(const QString& text) const {
  if (OnWriteLog)
    (void)Tell(EventLife(), OnWriteLog, text);
  else
    qWarning("%s", qUtf8Printable(text));
}

// For assistive technology.

TCellFacts TRdListView::DescribeGroup(const TkListItem& header) const {
  TCellFacts facts;
  facts.Kind = TCellKind::GroupHeader;
  facts.Text = header.Group()->Header();
  facts.HasCheckBox = TRdCellReader(*this).HasCheckBox(header);
  facts.Checked = facts.HasCheckBox && header.Group()->GroupChecked();
  facts.Expandable = true;
  facts.PressKey = Qt::Key_Return;
  facts.Expanded = !header.Group()->Collapsed();
  return facts;
}

TCellFacts TRdListView::DescribeCell(int row, int column) const {
  const TkListItem* const item = Items().Item(row);
  if (item == nullptr) return {};
  if (item->IsGroupHeader() && item->Group() != nullptr)
    return column == 0 ? DescribeGroup(*item) : TCellFacts();
  TCellFacts facts = TCustomListView::DescribeCell(row, column);
  facts.HasCheckBox = column == 0 && TRdCellReader(*this).HasCheckBox(*item);
  if (!FOpenOwnerDraw || !HasCell(*item, column)) return facts;
  // By the number of TListColumnType. Of the icon cells, ltIconCaption is told as a link, as it has a label;
  // ltNormalIconCaption, which need not have one, as a text.
  static constexpr TCellKind kKinds[] = {TCellKind::Text,     TCellKind::Link, TCellKind::Text,
                                         TCellKind::Button,   TCellKind::Link, TCellKind::Progress,
                                         TCellKind::Rating,   TCellKind::Edit, TCellKind::ComboBox,
                                         TCellKind::CheckBox, TCellKind::Text, TCellKind::Text};
  facts.Kind = kKinds[CellOf(*item, Columns()[column]).Type];
  const bool acts = facts.Kind != TCellKind::Text && facts.Kind != TCellKind::Progress;
  if (acts) facts.PressKey = QKeyCombination(Qt::ControlModifier, Qt::Key_Return);
  facts.Enabled = item->Enabled() || (facts.Kind != TCellKind::Button && facts.Kind != TCellKind::Link);
  if (facts.Kind == TCellKind::Progress || facts.Kind == TCellKind::Rating) facts.Value = facts.Text;
  if (facts.Kind != TCellKind::CheckBox) return facts;
  facts.HasCheckBox = true;
  facts.Checked = item->SubItemChecked(column);
  facts.Text = Columns()[column].Caption().trimmed();
  return facts;
}

bool TRdListView::ActOnCell(int row, int column, TCellAct act) {
  TkListItem* const item = Items().Item(row);
  if (item == nullptr) return false;
  TkListGroup* const group = item->IsGroupHeader() ? item->Group() : nullptr;
  const TCellFacts facts = DescribeCell(row, column);
  if (act == TCellAct::Toggle && !facts.HasCheckBox) return false;
  if (act == TCellAct::Toggle && column == 0) return ClickBox(*item);
  if (act == TCellAct::Toggle) return Act(*item, column);
  if (group != nullptr) {
    group->SetGroupExpand(act == TCellAct::Press ? !group->GroupExpand() : act == TCellAct::Expand);
    return true;
  }
  if (act != TCellAct::Press) return false;
  if (FOpenOwnerDraw && Act(*item, column)) return true;
  return TCustomListView::ActOnCell(row, column, act);
}

TCellFacts TRdListView::DescribeHeader(int column) const {
  TCellFacts facts = TCustomListView::DescribeHeader(column);
  facts.HasCheckBox = column == 0 && FProperties.CheckBoxOnColumnHeader;
  facts.Checked = facts.HasCheckBox && CheckAll();
  return facts;
}

bool TRdListView::ActOnHeader(int column, TCellAct act) {
  if (act == TCellAct::Toggle) return column == 0 && ToggleCheckAll();
  return TCustomListView::ActOnHeader(column, act);
}
