#include "controls/list/ListView.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

#include <chrono>
#include <utility>

namespace {

// Ctrl+1 to Ctrl+9; a tenth column has no key of its own.
constexpr int kNumberKeys = 9;

// Milliseconds of a clock that never goes back.
qint64 Now() {
  const auto since = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(since).count();
}

}  // namespace

TCustomListView::TCustomListView(QWidget* parent) : TRowHost(parent), FInput(*this) {
  InstallListAccessibility();
  ReplaceCollections(std::make_unique<TListItems>(static_cast<TListItemsOwner&>(*this)),
                     std::make_unique<TListColumns>());
}

// Rows go while the handlers still stand. What is left is buried, not freed, as one of its objects may be
// telling an event up the stack; the columns are silent by then, as the host that they tell is going.
TCustomListView::~TCustomListView() {
  FItems->Clear();
  FColumns->OnChange = nullptr;
  EventLife()->Bury(std::move(FItems));
  EventLife()->Bury(std::move(FColumns));
}

void TCustomListView::ReplaceCollections(std::unique_ptr<TListItems> items,
                                         std::unique_ptr<TListColumns> columns) {
  if (FColumns != nullptr) FColumns->OnChange = nullptr;
  EventLife()->Bury(std::exchange(FItems, std::move(items)));
  EventLife()->Bury(std::exchange(FColumns, std::move(columns)));
  SetSource(*this, *FColumns);
}

TListItem* TCustomListView::Selected() const {
  return FItems->Item(ItemIndex());
}

void TCustomListView::SetSelected(TListItem* item) {
  if (item == nullptr)
    FInput.DeselectAll();
  else
    FItems->ChangeState(*item, kRowSelected | kRowFocused, kRowSelected | kRowFocused);
}

int TCustomListView::ItemIndex() const {
  return SelCount() == 0 ? -1 : States().Next(-1, kRowSelected);
}

int TCustomListView::SelCount() const {
  return States().CountOf(kRowSelected);
}

TListItem* TCustomListView::GetNextSelected(const TListItem* after) const {
  return FItems->Item(States().Next(FItems->IndexOf(after), kRowSelected));
}

void TCustomListView::DeleteSelected() {
  std::vector<TListItem*> rows;
  for (TListItem* item = Selected(); item != nullptr; item = GetNextSelected(item))
    rows.push_back(item);
  // One layout and one paint for all of them.
  const TListUpdate update(*FItems);
  FItems->DeleteRows(rows);
}

TCellFacts TCustomListView::DescribeCell(int row, int column) const {
  TCellFacts facts;
  facts.Text = CellText(row, column);
  facts.HasCheckBox = column == 0 && Options().CheckBoxes;
  facts.Checked = facts.HasCheckBox && (States().State(row) & kRowChecked) != 0;
  facts.PressKey = Qt::Key_Return;
  return facts;
}

bool TCustomListView::ActOnCell(int row, int column, TCellAct act) {
  TListItem* const item = FItems->Item(row);
  if (item == nullptr) return false;
  if (act == TCellAct::Toggle && column == 0 && Options().CheckBoxes) {
    item->SetChecked(!item->Checked());
    return true;
  }
  if (act != TCellAct::Press) return false;
  const TEventScope scope(EventLife());
  SetSelected(item);
  if (!scope.ListGone()) (void)Tell(EventLife(), OnDblClick);
  return true;
}

TCellFacts TCustomListView::DescribeHeader(int column) const {
  TCellFacts facts;
  const TListColumn& about = (*FColumns)[column];
  facts.Text = about.Caption().trimmed();
  if (about.SortState() != ssNone) facts.Value = about.SortState() == ssUp ? FSortTexts.Up : FSortTexts.Down;
  if (Options().ColumnClick && column < kNumberKeys)
    facts.PressKey = QKeyCombination(Qt::ControlModifier, Qt::Key(Qt::Key_1 + column));
  return facts;
}

bool TCustomListView::ActOnHeader(int column, TCellAct act) {
  if (act != TCellAct::Press || !Options().ColumnClick) return false;
  HeaderClicked(column);
  return true;
}

TListItem* TCustomListView::ItemFocused() const {
  return FItems->Item(States().Next(-1, kRowFocused));
}

void TCustomListView::SetItemFocused(TListItem* item) {
  TListItem* const changed = item != nullptr ? item : ItemFocused();
  if (changed != nullptr) changed->SetFocused(item != nullptr);
}

TListItem* TCustomListView::TopItem() const {
  return FItems->Item(TopIndex());
}

TListItem* TCustomListView::GetItemAt(int x, int y) const {
  return FItems->Item(HitTest({x, y}).Row);
}

unsigned TCustomListView::GetHitTestInfoAt(int x, int y) const {
  return HitTest({x, y}).Flags;
}

void TCustomListView::AlphaSort() {
  CustomSort([compare = OnCompare](TListItem& a, TListItem& b) {
    if (!compare) return QString::localeAwareCompare(a.Caption(), b.Caption());
    int result = 0;
    compare(&a, &b, result);
    return result;
  });
}

std::unique_ptr<TListItem> TCustomListView::CreateListItem(TListItems& items) {
  return std::make_unique<TListItem>(items);
}

void TCustomListView::ItemChanged(TListItem& item, TItemChange change) {
  const int row = item.Index();
  if (row < 0) return;
  // In a bracket all is painted anew at its end.
  if (!FItems->Updating()) UpdateRow(row);
  (void)Tell(EventLife(), OnChange, &item, change);
}

void TCustomListView::ItemDeleting(TListItem& item) {
  (void)Tell(EventLife(), OnDeletion, &item);
}

void TCustomListView::RowsChanged() {
  FInput.KeepSelection();
  ContentChanged();
  TellRowsChanged(*this);
}

void TCustomListView::UpdatingChanged(bool updating) {
  LockPainting(updating);
}

void TCustomListView::ScrollToItem(TListItem& item, bool partialOk) {
  MakeRowVisible(item.Index(), partialOk);
}

QString TCustomListView::CellText(int row, int column) const {
  const TListItem* const item = FItems->Item(row);
  if (item == nullptr) return {};
  return column == 0 ? item->Caption() : item->SubItems().Text(column - 1);
}

int TCustomListView::CellImage(int row, int column) const {
  const TListItem* const item = FItems->Item(row);
  if (item == nullptr) return -1;
  return column == 0 ? item->ImageIndex() : item->SubItems().ImageIndex(column - 1);
}

int TCustomListView::StateImage(int row) const {
  const TListItem* const item = FItems->Item(row);
  return item != nullptr ? item->StateIndex() : -1;
}

// What a handler does to the row again is told before the rest of this change is, as bits tell at once. The
// anchor is nobody's business. A row that OnChange has deleted is told of no further.
void TCustomListView::RowStateChanged(int row, unsigned before, unsigned after) {
  const unsigned changed = (before ^ after) & ~kRowAnchor;
  TListItem* const item = FItems->Item(row);
  if (changed == 0 || item == nullptr) return;
  const TEventScope scope(EventLife());
  TellRowState(*this, row, changed, after);
  if (!Tell(EventLife(), OnChange, item, TItemChange::State) || item->Gone()) return;
  const bool selects = (changed & kRowSelected) != 0;
  if (selects && !Tell(EventLife(), OnSelectItem, item, (after & kRowSelected) != 0)) return;
  if ((changed & kRowChecked) != 0 && !item->Gone()) CheckChanged(*item);
}

void TCustomListView::CheckChanged(TListItem& item) {
  (void)Tell(EventLife(), OnItemChecked, &item);
}

void TCustomListView::HeaderClicked(int column) {
  if (column >= 0 && column < FColumns->Count()) (void)Tell(EventLife(), OnColumnClick, &(*FColumns)[column]);
}

void TCustomListView::mousePressEvent(QMouseEvent* event) {
  Press(*event, false);
}

void TCustomListView::mouseDoubleClickEvent(QMouseEvent* event) {
  Press(*event, true);
}

void TCustomListView::Press(QMouseEvent& event, bool second) {
  const TEventScope scope(EventLife());
  const QPoint pos = event.position().toPoint();
  const Qt::MouseButton button = event.button();
  const bool left = button == Qt::LeftButton;
  // The rows change first, so that OnMouseDown finds the selection as the press has left it.
  FInput.BeginPress(left && !second);
  const bool onBox = PressRows(pos, button, event.modifiers());
  if (scope.ListGone() || (second && left && !onBox && !Tell(EventLife(), OnDblClick))) return;
  (void)Tell(EventLife(), OnMouseDown, button, event.modifiers(), pos.x(), pos.y());
}

bool TCustomListView::PressRows(const QPoint& pos, Qt::MouseButton button, Qt::KeyboardModifiers shift) {
  return PressRow(HitTest(pos), button, shift);
}

bool TCustomListView::PressRow(const THit& hit, Qt::MouseButton button, Qt::KeyboardModifiers shift) {
  return FInput.Press(hit, button, shift);
}

// A move without buttons tells that a release was lost, to a window that a handler has opened for example.
void TCustomListView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint pos = event->position().toPoint();
  if (event->buttons() != Qt::NoButton) return;
  FInput.LosePress();
  SetHoverRow(HitTest(pos).Row);
}

void TCustomListView::mouseReleaseEvent(QMouseEvent* event) {
  const TEventScope scope(EventLife());
  const QPoint pos = event->position().toPoint();
  const Qt::MouseButton button = event->button();
  const bool clicked = button == Qt::LeftButton && FInput.Release();
  if (scope.ListGone()) return;
  if (clicked && viewport()->rect().contains(pos) && !Tell(EventLife(), OnClick)) return;
  if (!Tell(EventLife(), OnMouseUp, button, event->modifiers(), pos.x(), pos.y())) return;
  if (button == Qt::RightButton) ContextPopup(pos);
}

bool TCustomListView::ContextPopup(const QPoint& pos) {
  bool handled = false;
  // A request whose handler has destroyed the list is answered.
  return !Tell(EventLife(), OnContextPopup, pos, handled) || handled;
}

// The mouse's own request is left out: it comes at the press on some systems and at the release on others.
// The release of the right button stands for it everywhere.
void TCustomListView::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Mouse) return;
  QPoint pos(0, 0);
  if (const TListItem* const focused = ItemFocused()) {
    MakeRowVisible(focused->Index(), false);
    pos = Layout().CellParts(focused->Index(), 0).Text.center();
  }
  event->setAccepted(ContextPopup(pos));
}

void TCustomListView::keyPressEvent(QKeyEvent* event) {
  const TEventScope scope(EventLife());
  int key = event->key();
  if (!Tell(EventLife(), OnKeyDown, key, event->modifiers()) || key == 0) return;
  const bool done = DoKey(key, *event);
  // A key whose handler has destroyed the list was used: no window gets it after that.
  event->setAccepted(done || scope.ListGone());
}

bool TCustomListView::DoKey(int key, const QKeyEvent& event) {
  const Qt::KeyboardModifiers shift = event.modifiers();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    // Left alone, Enter goes on to the window, whose default button it may press.
    if (ItemFocused() == nullptr || !OnDblClick) return false;
    (void)Tell(EventLife(), OnDblClick);
    return true;
  }
  if (ClickHeaderByKey(key, shift) || FInput.Key(key, shift)) return true;
  const bool typing = (shift & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
  return typing && FInput.Type(event.text(), Now());
}

bool TCustomListView::ClickHeaderByKey(int key, Qt::KeyboardModifiers shift) {
  const int column = key - Qt::Key_1;
  const bool asked = shift == Qt::ControlModifier && column >= 0 && column < kNumberKeys;
  if (!asked || !Options().ColumnClick || column >= FColumns->Count()) return false;
  HeaderClicked(column);
  return true;
}

void TCustomListView::focusInEvent(QFocusEvent* event) {
  TRowHost::focusInEvent(event);
  if (const TListItem* const item = ItemFocused())
    TellRowState(*this, item->Index(), kRowFocused, kRowFocused);
}

bool TCustomListView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) SetHoverRow(-1);
  if (event->type() != QEvent::ToolTip) return TRowHost::viewportEvent(event);
  const auto* const help = static_cast<QHelpEvent*>(event);
  ShowTip(help->pos(), help->globalPos());
  return true;
}

void TCustomListView::ShowTip(const QPoint& pos, const QPoint& globalPos) {
  // Names of files may look like markup, which a tip would render.
  const QString cut = CutText(pos);
  const QString text = !cut.isEmpty() ? cut : Options().ShowHint ? FHint : QString();
  QToolTip::showText(globalPos, Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text,
                     viewport());
}

QString TCustomListView::CutText(const QPoint& pos) const {
  const TListLayout layout = Layout();
  const THit hit = layout.HitTest(pos);
  if (hit.Row < 0) return {};
  const QString text = CellText(hit.Row, hit.Column);
  const QRect room = layout.CellParts(hit.Row, hit.Column, CellImage(hit.Row, hit.Column) >= 0).Text;
  const int shown = room.intersected(viewport()->rect()).width();  // the window's edge cuts as well
  const bool cut = fontMetrics().elidedText(text, (*FColumns)[hit.Column].Elide(), shown) != text;
  return cut ? text : QString();
}
