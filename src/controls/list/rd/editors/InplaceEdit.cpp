#include "controls/list/rd/editors/InplaceEdit.h"

#include <QKeyEvent>

TkInplaceEdit::TkInplaceEdit(QWidget* parent) : QLineEdit(parent) {
  setFrame(false);
  setTextMargins(0, 0, 0, 0);
  hide();
}

void TkInplaceEdit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (event->reason() != Qt::PopupFocusReason && OnEnter) OnEnter();
}

// The editor's own menu leaves the cell in editing.
void TkInplaceEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const bool stays = event->reason() == Qt::PopupFocusReason;
  if (!stays && OnExit) OnExit();
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
