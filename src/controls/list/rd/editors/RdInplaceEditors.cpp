#include "controls/list/rd/editors/RdInplaceEditors.h"

#include <QKeyEvent>
#include <QScreen>
#include <QToolTip>

#include <algorithm>

namespace {

// More choices than these are scrolled.
constexpr int kMostLines = 12;
constexpr int kLinePadding = 4;

}  // namespace

TkInplaceEdit::TkInplaceEdit(QWidget* parent) : QLineEdit(parent) {
  setFrame(false);
  setTextMargins(0, 0, 0, 0);
  hide();
}

// The editor's own menu leaves the cell in editing.
void TkInplaceEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (event->reason() == Qt::ActiveWindowFocusReason) {
    const auto exit = [this] {
      if (!hasFocus() && OnExit) OnExit();
    };
    QMetaObject::invokeMethod(this, exit, Qt::QueuedConnection);
  } else if (event->reason() != Qt::PopupFocusReason && OnExit) {
    OnExit();
  }
}

void TkInplaceEdit::keyPressEvent(QKeyEvent* event) {
  if (OnKey && OnKey(*event)) return event->accept();
  QLineEdit::keyPressEvent(event);
}

// Shortcuts of the window must not take Escape and Enter away.
bool TkInplaceEdit::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter) event->accept();
  }
  return QLineEdit::event(event);
}

TkInplaceComboBox::TkInplaceComboBox(QWidget* parent) : QListWidget(parent) {
  setWindowFlags(Qt::Popup);
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setLineWidth(1);
  setMouseTracking(true);
  viewport()->setMouseTracking(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setUniformItemSizes(true);
  setEditTriggers(NoEditTriggers);
  setTextElideMode(Qt::ElideRight);
  hide();
}

void TkInplaceComboBox::SetColors(const TkComboColors& colors) {
  QPalette own = parentWidget()->palette();
  const auto set = [&own](QPalette::ColorRole role, TColor color) {
    if (color != clDefault && color != clNone) own.setColor(role, ToQColor(color, own));
  };
  set(QPalette::WindowText, colors.ListFrameColor);
  set(QPalette::Highlight, colors.ItemHotBgColor);
  set(QPalette::HighlightedText, colors.ItemHotColor);
  set(QPalette::Base, colors.ItemBgColor);
  set(QPalette::Text, colors.ItemColor);
  setPalette(own);
}

void TkInplaceComboBox::SetItems(const QStringList& items) {
  clear();
  addItems(items);
}

QStringList TkInplaceComboBox::Items() const {
  QStringList lines;
  for (int line = 0; line < count(); ++line)
    lines << item(line)->text();
  return lines;
}

// As wide as the box and at least one line high, so that an empty list of choices is seen to be empty.
void TkInplaceComboBox::DropDown(const QRect& box) {
  const int line = fontMetrics().height() + kLinePadding;
  for (int one = 0; one < count(); ++one)
    item(one)->setSizeHint({0, line});
  const int height = std::clamp(count(), 1, kMostLines) * line + 2 * frameWidth();
  QRect place(box.left(), box.bottom() + 1, box.width(), height);
  const QScreen* const target = parentWidget()->screen();
  if (target != nullptr && place.bottom() > target->availableGeometry().bottom())
    place.moveBottom(box.top() - 1);
  setGeometry(place);
  setCurrentRow(FItemIndex);
  show();
  setFocus(Qt::PopupFocusReason);
  if (currentItem() != nullptr) scrollToItem(currentItem());
}

QString TkInplaceComboBox::HintAt(const QPoint& pos) const {
  const QListWidgetItem* const line = itemAt(pos);
  if (line == nullptr) return {};
  const int room = viewport()->width() - kLinePadding;
  return fontMetrics().horizontalAdvance(line->text()) > room ? line->text() : QString();
}

void TkInplaceComboBox::Choose(int line) {
  if (line >= 0) FItemIndex = line;
  CloseUp();
}

void TkInplaceComboBox::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Choose(currentRow());
    case Qt::Key_Escape:
    case Qt::Key_F4:
      return CloseUp();
    default:
      QListWidget::keyPressEvent(event);
  }
}

void TkInplaceComboBox::mouseMoveEvent(QMouseEvent* event) {
  const QPoint pos = event->position().toPoint();
  if (QListWidgetItem* const line = itemAt(pos)) setCurrentItem(line);
  const int hinted = currentRow();
  if (hinted == FHintIndex) return;
  FHintIndex = hinted;
  QToolTip::showText(event->globalPosition().toPoint(), HintAt(pos), viewport());
}

// A press elsewhere on the screen comes here, past the lines, and closes the list.
bool TkInplaceComboBox::event(QEvent* event) {
  if (event->type() != QEvent::MouseButtonPress) return QListWidget::event(event);
  if (!rect().contains(static_cast<QMouseEvent*>(event)->position().toPoint())) CloseUp();
  return true;
}

// The release chooses.
void TkInplaceComboBox::mousePressEvent(QMouseEvent* event) {
  event->accept();
}

// The release of the press that opened the list may come here, but not on a line.
void TkInplaceComboBox::mouseReleaseEvent(QMouseEvent* event) {
  QListWidgetItem* const line = itemAt(event->position().toPoint());
  if (line != nullptr && event->button() == Qt::LeftButton) Choose(row(line));
}

void TkInplaceComboBox::hideEvent(QHideEvent* event) {
  QListWidget::hideEvent(event);
  FHintIndex = -1;
  if (OnCloseUp) OnCloseUp();
}
