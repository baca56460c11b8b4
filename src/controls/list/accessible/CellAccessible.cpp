#include "controls/list/accessible/CellAccessible.h"

#include "controls/list/ListView.h"
#include "controls/list/accessible/TableAccessible.h"

TListPartAccessible::TListPartAccessible(TCustomListView& list, int column) : FList(&list), FColumn(column) {}

TListPartAccessible::~TListPartAccessible() = default;

TCustomListView* TListPartAccessible::List() const {
  return dynamic_cast<TCustomListView*>(FList.data());
}

TTableAccessible* TListPartAccessible::Table() const {
  return dynamic_cast<TTableAccessible*>(parent());
}

QWindow* TListPartAccessible::window() const {
  return List() != nullptr ? List()->window()->windowHandle() : nullptr;
}

QAccessibleInterface* TListPartAccessible::parent() const {
  return List() != nullptr ? QAccessible::queryAccessibleInterface(List()) : nullptr;
}

TCellAccessible::TCellAccessible(TCustomListView& list, int row, int column)
    : TListPartAccessible(list, column), FRow(row) {}

TListItem* TCellAccessible::Item() const {
  TCustomListView* const list = List();
  return list != nullptr && Column() < list->Columns().Count() ? list->Items().Item(FRow) : nullptr;
}

bool TCellAccessible::HasCheckBox() const {
  return Column() == 0 && List()->Options().CheckBoxes;
}

void* TCellAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableCellInterface) return static_cast<QAccessibleTableCellInterface*>(this);
  if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
  return nullptr;
}

QAccessible::State TCellAccessible::state() const {
  QAccessible::State state;
  const TListItem* const item = Item();
  if (item == nullptr) return state;
  state.selectable = true;
  state.selected = item->Selected();
  state.focusable = true;
  state.focused = item->Focused() && List()->hasFocus();
  state.multiSelectable = List()->Options().MultiSelect;
  state.disabled = !List()->isEnabled();
  state.checkable = HasCheckBox();
  state.checked = HasCheckBox() && item->Checked();
  state.offscreen = !List()->viewport()->rect().intersects(List()->Layout().CellRect(FRow, Column()));
  return state;
}

QString TCellAccessible::text(QAccessible::Text kind) const {
  const TListItem* const item = Item();
  if (item == nullptr || kind != QAccessible::Name) return {};
  return Column() == 0 ? item->Caption() : item->SubItems().Text(Column() - 1);
}

QRect TCellAccessible::rect() const {
  if (Item() == nullptr) return {};
  const QRect cell = List()->Layout().CellRect(FRow, Column());
  return {List()->viewport()->mapToGlobal(cell.topLeft()), cell.size()};
}

bool TCellAccessible::isSelected() const {
  return Item() != nullptr && Item()->Selected();
}

QList<QAccessibleInterface*> TCellAccessible::columnHeaderCells() const {
  if (Item() == nullptr || !List()->Options().ShowColumnHeaders) return {};
  return {Table()->child(Column())};
}

QStringList TCellAccessible::actionNames() const {
  if (Item() == nullptr) return {};
  QStringList names{pressAction(), setFocusAction()};
  if (HasCheckBox()) names.prepend(toggleAction());
  return names;
}

void TCellAccessible::doAction(const QString& name) {
  TListItem* const item = Item();
  if (item == nullptr || !List()->isEnabled()) return;
  if (name == toggleAction() && HasCheckBox()) {
    item->SetChecked(!item->Checked());
  } else if (name == setFocusAction()) {
    item->SetFocused(true);
    item->MakeVisible(false);
  } else if (name == pressAction()) {
    List()->SetSelected(item);
    if (List()->OnDblClick) List()->OnDblClick();
  }
}

QStringList TCellAccessible::keyBindingsForAction(const QString& name) const {
  if (name == toggleAction()) return {QKeySequence(Qt::Key_Space).toString()};
  if (name == pressAction()) return {QKeySequence(Qt::Key_Return).toString()};
  return {};
}

bool THeaderCellAccessible::isValid() const {
  return List() != nullptr && Column() < List()->Columns().Count();
}

void* THeaderCellAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
  return nullptr;
}

QString THeaderCellAccessible::text(QAccessible::Text kind) const {
  return isValid() && kind == QAccessible::Name ? List()->Columns()[Column()].Caption().trimmed() : QString();
}

QRect THeaderCellAccessible::rect() const {
  if (!isValid()) return {};
  const QRect header = List()->HeaderRect();
  const QRect section = List()->Layout().SectionRect(Column(), header.height());
  return {List()->mapToGlobal(header.topLeft() + section.topLeft()), section.size()};
}

QStringList THeaderCellAccessible::actionNames() const {
  return isValid() && List()->Options().ColumnClick ? QStringList{pressAction()} : QStringList();
}

void THeaderCellAccessible::doAction(const QString& name) {
  if (actionNames().contains(name)) List()->HeaderClicked(Column());
}
