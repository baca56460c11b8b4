#include "controls/list/accessible/ListAccessible.h"

#include "controls/list/ListView.h"
#include "controls/list/accessible/TableAccessible.h"

namespace {

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* const list = dynamic_cast<TCustomListView*>(object);
  return list != nullptr ? new TTableAccessible(*list) : nullptr;
}

TListNoticeSink Sink = nullptr;

bool Listening() {
  return Sink != nullptr || QAccessible::isActive();
}

void Send(QAccessibleEvent& event) {
  if (Sink != nullptr)
    Sink(event);
  else
    QAccessible::updateAccessibility(&event);
}

TTableAccessible* TableOf(TCustomListView& list) {
  return dynamic_cast<TTableAccessible*>(QAccessible::queryAccessibleInterface(&list));
}

void Tell(TCustomListView& list, int child, QAccessible::Event kind) {
  QAccessibleEvent event(&list, kind);
  event.setChild(child);
  Send(event);
}

void TellChecked(TCustomListView& list, int child) {
  QAccessible::State changed;
  changed.checked = true;
  QAccessibleStateChangeEvent event(&list, changed);
  event.setChild(child);
  Send(event);
}

}  // namespace

void InstallListAccessibility() {
  static const bool installed = [] {
    QAccessible::installFactory(MakeInterface);
    return true;
  }();
  Q_UNUSED(installed);
}

void TellRowState(TCustomListView& list, int row, unsigned changed, unsigned state) {
  if (!Listening()) return;
  const TTableAccessible* const table = TableOf(list);
  if (table == nullptr || table->columnCount() == 0) return;
  const int child = table->ChildOfCell(row, 0);
  if ((changed & kRowSelected) != 0)
    Tell(list, child, (state & kRowSelected) != 0 ? QAccessible::SelectionAdd : QAccessible::SelectionRemove);
  if ((changed & state & kRowFocused) != 0 && list.hasFocus())
    Tell(list, table->ChildOfCell(row, list.FocusedColumn()), QAccessible::Focus);
  if ((changed & kRowChecked) != 0) TellChecked(list, child);
}

void TellRowsChanged(TCustomListView& list) {
  if (!Listening()) return;
  if (TTableAccessible* const table = TableOf(list)) table->ForgetCells();
  QAccessibleTableModelChangeEvent event(&list, QAccessibleTableModelChangeEvent::ModelReset);
  Send(event);
}

void SetListNoticeSink(TListNoticeSink sink) {
  Sink = sink;
}
