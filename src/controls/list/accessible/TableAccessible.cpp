#include "controls/list/accessible/TableAccessible.h"

#include "controls/list/ListView.h"
#include "controls/list/accessible/CellAccessible.h"

TTableAccessible::TTableAccessible(TCustomListView& list) : QAccessibleWidget(&list, QAccessible::Table) {}

TTableAccessible::~TTableAccessible() {
  ForgetCells();
}

TCustomListView* TTableAccessible::List() const {
  return dynamic_cast<TCustomListView*>(object());
}

void TTableAccessible::ForgetCells() {
  for (const QAccessible::Id id : std::as_const(FCells))
    QAccessible::deleteAccessibleInterface(id);
  FCells.clear();
}

void TTableAccessible::modelChange(QAccessibleTableModelChangeEvent*) {
  ForgetCells();
}

void* TTableAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

QAccessible::State TTableAccessible::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.multiSelectable = List()->Options().MultiSelect;
  state.readOnly = List()->Options().ReadOnly;
  return state;
}

int TTableAccessible::rowCount() const {
  return List() != nullptr ? List()->Items().Count() : 0;
}

int TTableAccessible::columnCount() const {
  return List() != nullptr ? List()->Columns().Count() : 0;
}

int TTableAccessible::HeaderCells() const {
  return List() != nullptr && List()->Options().ShowColumnHeaders ? columnCount() : 0;
}

int TTableAccessible::ChildOfCell(int row, int column) const {
  return HeaderCells() + row * columnCount() + column;
}

int TTableAccessible::childCount() const {
  return HeaderCells() + rowCount() * columnCount();
}

QAccessibleInterface* TTableAccessible::child(int index) const {
  if (index < 0 || index >= childCount()) return nullptr;
  if (const auto known = FCells.constFind(index); known != FCells.constEnd())
    return QAccessible::accessibleInterface(*known);
  const int cell = index - HeaderCells();
  QAccessibleInterface* made = nullptr;
  if (cell < 0)
    made = new THeaderCellAccessible(*List(), index);
  else
    made = new TCellAccessible(*List(), cell / columnCount(), cell % columnCount());
  FCells.insert(index, QAccessible::registerAccessibleInterface(made));
  return made;
}

int TTableAccessible::indexOfChild(const QAccessibleInterface* child) const {
  if (const auto* const cell = dynamic_cast<const TCellAccessible*>(child))
    return ChildOfCell(cell->Row(), cell->Column());
  const auto* const header = dynamic_cast<const THeaderCellAccessible*>(child);
  return header != nullptr ? header->Column() : -1;
}

QAccessibleInterface* TTableAccessible::childAt(int x, int y) const {
  const QPoint pos = List()->viewport()->mapFromGlobal(QPoint(x, y));
  const TListLayout layout = List()->Layout();
  const int column = layout.ColumnAt(pos.x());
  if (column >= 0 && pos.y() < 0 && List()->HeaderRect().contains(List()->mapFromGlobal(QPoint(x, y))))
    return child(column);
  const int row = layout.RowAt(pos.y());
  return row >= 0 && column >= 0 ? cellAt(row, column) : nullptr;
}

QAccessibleInterface* TTableAccessible::focusChild() const {
  const TListItem* const item = List()->ItemFocused();
  return item != nullptr && List()->hasFocus() ? cellAt(item->Index(), List()->FocusedColumn()) : nullptr;
}

QAccessibleInterface* TTableAccessible::cellAt(int row, int column) const {
  const bool inside = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
  return inside ? child(ChildOfCell(row, column)) : nullptr;
}

int TTableAccessible::selectedCellCount() const {
  return selectedRowCount() * columnCount();
}

QList<QAccessibleInterface*> TTableAccessible::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  for (const int row : selectedRows())
    for (int column = 0; column < columnCount(); ++column)
      cells.append(cellAt(row, column));
  return cells;
}

QString TTableAccessible::columnDescription(int column) const {
  return column >= 0 && column < columnCount() ? List()->Columns()[column].Caption().trimmed() : QString();
}

int TTableAccessible::selectedRowCount() const {
  return List()->SelCount();
}

QList<int> TTableAccessible::selectedRows() const {
  QList<int> rows;
  for (const TListItem* item = List()->Selected(); item != nullptr; item = List()->GetNextSelected(item))
    rows.append(item->Index());
  return rows;
}

bool TTableAccessible::isRowSelected(int row) const {
  return (List()->States().State(row) & kRowSelected) != 0;
}

bool TTableAccessible::selectRow(int row) {
  List()->States().Change(row, kRowSelected, kRowSelected);
  return isRowSelected(row);
}

bool TTableAccessible::unselectRow(int row) {
  List()->States().Change(row, 0, kRowSelected);
  return !isRowSelected(row);
}
