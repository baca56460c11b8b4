// The gestures of a TRdListView: events in, to the parts of the list and to the host.
#include "controls/list/accessible/ListAccessible.h"
#include "controls/list/rd/RdListView.h"

#include <QHelpEvent>
#include <QMouseEvent>

namespace {
constexpr int kWheelNotch = 120;  // eighths of a degree
}

void TRdListView::mousePressEvent(QMouseEvent* event) {
  Press(*event, false);
}

void TRdListView::mouseDoubleClickEvent(QMouseEvent* event) {
  Press(*event, true);
}

void TRdListView::Press(QMouseEvent& event, bool second) {
  FTip->Hide();
  const bool both = event.buttons().testFlag(Qt::MiddleButton);
  if (event.button() == Qt::LeftButton && FMouse.Press(event.position().toPoint(), both)) return;
  if (second)
    TCustomListView::mouseDoubleClickEvent(&event);
  else
    TCustomListView::mousePressEvent(&event);
  FState.BoxClicked = false;
}

// A press on a box that was served already only moves the focus.
bool TRdListView::PressRows(const QPoint& pos, Qt::MouseButton button, Qt::KeyboardModifiers shift) {
  if (!FState.BoxClicked) return TCustomListView::PressRows(pos, button, shift);
  if (TListItem* const item = Items().Item(HitTest(pos).Row)) item->SetFocused(true);
  return true;
}

void TRdListView::mouseMoveEvent(QMouseEvent* event) {
  if (!FOpenOwnerDraw) TCustomListView::mouseMoveEvent(event);
  FTip->Follow(event->position().toPoint());
  if (FOpenOwnerDraw) FMouse.Move(event->position().toPoint(), event->timestamp());
}

void TRdListView::mouseReleaseEvent(QMouseEvent* event) {
  TCustomListView::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton) FMouse.Release(event->position().toPoint());
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
  CloseEditors();
  setFocus(Qt::MouseFocusReason);
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
  CloseEditors();
  FTip->Hide();
  TCustomListView::scrollContentsBy(dx, dy);
  if (!FArranging) FBars->Mirror();
  FMouse.Refresh();
}

void TRdListView::hideEvent(QHideEvent* event) {
  CloseEditors();
  FTip->Hide();
  TCustomListView::hideEvent(event);
}

// The header.

bool TRdListView::HeaderMouse(const QMouseEvent& event, bool atDivider) {
  const bool dragged = FState.HeaderTracking;
  const bool taken = FHeaderPart.Mouse(event, Header().size(), atDivider);
  if (dragged != FState.HeaderTracking) viewport()->update();
  return taken;
}

void TRdListView::HeaderLeft() {
  FHeaderPart.Leave();
}

void TRdListView::HeaderClicked(int column) {
  CloseEditors();
  FHeaderPart.SortByClick(column);
  TCustomListView::HeaderClicked(column);
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

void TRdListView::CursorMoved() {
  TListItem* const item = ItemFocused();
  if (item == nullptr) return;
  UpdateRow(item->Index());
  TellRowState(*this, item->Index(), kRowFocused, kRowFocused);
}

void TRdListView::CloseEditors() {
  if (FEditors == nullptr) return;
  try {
    FEditors->Hide();
  } catch (const EListError& error) {
    WriteLog(QString::fromLatin1(error.what()));
  }
}

void TRdListView::WriteLog(const QString& text) const {
  if (OnWriteLog)
    OnWriteLog(text);
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
  static constexpr TCellKind kKinds[] = {TCellKind::Text,     TCellKind::Link, TCellKind::Text,
                                         TCellKind::Button,   TCellKind::Link, TCellKind::Progress,
                                         TCellKind::Rating,   TCellKind::Edit, TCellKind::ComboBox,
                                         TCellKind::CheckBox, TCellKind::Text, TCellKind::Text};
  facts.Kind = kKinds[CellOf(*item, Columns()[column]).Type];
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
