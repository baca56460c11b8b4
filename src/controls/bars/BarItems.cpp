#include "controls/bars/BarItems.h"

#include <QCursor>

TdxBarButton::TdxBarButton(QObject* parent) : QAction(parent) {
  connect(this, &QAction::triggered, this, [this] {
    if (OnClick) OnClick();
  });
}

void TdxBarButton::SetCaption(const QString& caption) {
  setText(caption);
  // A tool button would drop the "..." of a text that it derives by itself.
  setIconText(caption);
}

void TdxBarPopupMenu::PopupFromCursorPos() {
  popup(QCursor::pos());
}
