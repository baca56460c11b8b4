// How a screen reader gets here: it asks the service for the interface of a list, which MakeInterface gives,
// and walks from the table to header cells and cells by number or by place. These are made as somebody asks
// for them, so that a list of a million rows costs nothing until then. A cell says its text as its name,
// progress and rating also as their value; a header cell says its caption, and as its value how the rows are
// sorted by it. What changes is told by the two Tell functions at the end, which the list calls; nobody else
// sends a notice of rows.
// All of it asks the list as it is at that moment (DescribeCell, DescribeHeader) and keeps no text. A cell is
// a place, not a row: when rows or columns change, all cells are forgotten.

#include "controls/list/accessible/ListAccessible.h"

#include "controls/list/ListView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QKeySequence>
#include <QPointer>

namespace {

class TTableAccessible;

// What cell and header cell share: a place in a list that may be gone.
class TListPartAccessible : public QAccessibleInterface {
 public:
  TListPartAccessible(TCustomListView& list, int column);
  ~TListPartAccessible() override;

  [[nodiscard]] int Column() const { return FColumn; }

  QObject* object() const override { return nullptr; }
  QWindow* window() const override;
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  void setText(QAccessible::Text, const QString&) override {}

 protected:
  [[nodiscard]] TCustomListView* List() const;
  [[nodiscard]] TTableAccessible* Table() const;

 private:
  QPointer<QWidget> FList;
  int FColumn;
};

// Actions: toggle (a check box), press (as a click; a group header expands or collapses), set focus.
class TCellAccessible : public TListPartAccessible,
                        public QAccessibleTableCellInterface,
                        public QAccessibleActionInterface {
 public:
  TCellAccessible(TCustomListView& list, int row, int column);

  [[nodiscard]] int Row() const { return FRow; }

  // QAccessibleInterface
  bool isValid() const override { return Item() != nullptr; }
  void* interface_cast(QAccessible::InterfaceType type) override;
  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  QString text(QAccessible::Text kind) const override;
  QRect rect() const override;

  // QAccessibleTableCellInterface
  bool isSelected() const override;
  QList<QAccessibleInterface*> columnHeaderCells() const override;
  QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
  int columnIndex() const override { return Column(); }
  int rowIndex() const override { return FRow; }
  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  QAccessibleInterface* table() const override { return parent(); }

  // QAccessibleActionInterface
  QStringList actionNames() const override;
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString& name) const override;

 private:
  [[nodiscard]] TListItem* Item() const;
  [[nodiscard]] TCellFacts Facts() const;

  int FRow;
};

// Actions: press, as a click; toggle the box of the whole list.
class THeaderCellAccessible : public TListPartAccessible, public QAccessibleActionInterface {
 public:
  using TListPartAccessible::TListPartAccessible;

  bool isValid() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;
  QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
  QAccessible::State state() const override;
  QString text(QAccessible::Text kind) const override;
  QRect rect() const override;

  QStringList actionNames() const override;
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString& name) const override;
};

// The table interface of a list. Children are numbered header cells first, then the cells row by row.
class TTableAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit TTableAccessible(TCustomListView& list);
  ~TTableAccessible() override;

  [[nodiscard]] int ChildOfCell(int row, int column) const;
  [[nodiscard]] TCustomListView* List() const;
  // Cells of the old rows are no longer handed out.
  void ForgetCells() const;

  // QAccessibleInterface
  void* interface_cast(QAccessible::InterfaceType type) override;
  QAccessible::State state() const override;
  int childCount() const override;
  QAccessibleInterface* child(int index) const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* focusChild() const override;

  // QAccessibleTableInterface
  QAccessibleInterface* cellAt(int row, int column) const override;
  int columnCount() const override;
  int rowCount() const override;

 private:
  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  int selectedCellCount() const override;
  QList<QAccessibleInterface*> selectedCells() const override;
  QString columnDescription(int column) const override;
  QString rowDescription(int) const override { return {}; }
  int selectedColumnCount() const override { return 0; }
  int selectedRowCount() const override;
  QList<int> selectedColumns() const override { return {}; }
  QList<int> selectedRows() const override;
  bool isColumnSelected(int) const override { return false; }
  bool isRowSelected(int row) const override;
  bool selectRow(int row) override;
  bool selectColumn(int) override { return false; }
  bool unselectRow(int row) override;
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent* event) override;

  [[nodiscard]] int HeaderCells() const;
  bool SetRowSelected(int row, bool selected);

  // By child number, as long as columns and header are the ones that the numbers were reckoned by.
  // The service owns the interfaces; these are its numbers for them.
  mutable QHash<int, QAccessible::Id> FCells;
  mutable int FKnownColumns = 0;
  mutable int FKnownHeaders = 0;
};

QStringList KeyText(const TCellFacts& facts) {
  if (facts.PressKey == Qt::Key_unknown) return {};
  return {QKeySequence(facts.PressKey).toString()};
}

// The table.

TTableAccessible::TTableAccessible(TCustomListView& list) : QAccessibleWidget(&list, QAccessible::Table) {}

TTableAccessible::~TTableAccessible() {
  ForgetCells();
}

TCustomListView* TTableAccessible::List() const {
  return dynamic_cast<TCustomListView*>(object());
}

void TTableAccessible::ForgetCells() const {
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

// Header cells take the first numbers only while the header shows, so switching it gives every cell another
// number, as a column more or less does.
QAccessibleInterface* TTableAccessible::child(int index) const {
  if (FKnownColumns != columnCount() || FKnownHeaders != HeaderCells()) ForgetCells();
  FKnownColumns = columnCount();
  FKnownHeaders = HeaderCells();
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

// False if there is no such row, or the list is gone.
bool TTableAccessible::SetRowSelected(int row, bool selected) {
  TListItem* const item = List() != nullptr ? List()->Items().Item(row) : nullptr;
  if (item == nullptr) return false;
  const TEventScope scope(List()->EventLife());
  item->SetSelected(selected);
  return !scope.ListGone();
}

bool TTableAccessible::selectRow(int row) {
  return SetRowSelected(row, true) && isRowSelected(row);
}

bool TTableAccessible::unselectRow(int row) {
  return SetRowSelected(row, false) && !isRowSelected(row);
}

// Cells and header cells.

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

TCellFacts TCellAccessible::Facts() const {
  return Item() != nullptr ? List()->DescribeCell(FRow, Column()) : TCellFacts();
}

// The kinds that a reader of a table would not expect of a cell say so.
QAccessible::Role TCellAccessible::role() const {
  switch (Facts().Kind) {
    case TCellKind::Button:
      return QAccessible::PushButton;
    case TCellKind::Link:
      return QAccessible::Link;
    case TCellKind::CheckBox:
      return QAccessible::CheckBox;
    case TCellKind::Edit:
      return QAccessible::EditableText;
    case TCellKind::ComboBox:
      return QAccessible::ComboBox;
    case TCellKind::Progress:
      return QAccessible::ProgressBar;
    case TCellKind::Rating:
      return QAccessible::Indicator;
    case TCellKind::GroupHeader:
      return QAccessible::RowHeader;
    case TCellKind::Text:
      break;
  }
  return QAccessible::Cell;
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
  const TCellFacts facts = Facts();
  state.focused = item->Focused() && List()->hasFocus() && Column() == List()->FocusedColumn();
  state.multiSelectable = List()->Options().MultiSelect;
  state.disabled = !List()->isEnabled() || !facts.Enabled;
  state.checkable = facts.HasCheckBox;
  state.checked = facts.Checked;
  state.expandable = facts.Expandable;
  state.expanded = facts.Expandable && facts.Expanded;
  state.collapsed = facts.Expandable && !facts.Expanded;
  state.editable = facts.Kind == TCellKind::Edit;
  state.hasPopup = facts.Kind == TCellKind::ComboBox;
  state.offscreen = !List()->viewport()->rect().intersects(List()->Layout().CellRect(FRow, Column()));
  return state;
}

QString TCellAccessible::text(QAccessible::Text kind) const {
  if (kind == QAccessible::Name) return Facts().Text;
  return kind == QAccessible::Value ? Facts().Value : QString();
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
  const TCellFacts facts = Facts();
  QStringList names{pressAction(), setFocusAction()};
  if (facts.HasCheckBox) names.prepend(toggleAction());
  return names;
}

void TCellAccessible::doAction(const QString& name) {
  TListItem* const item = Item();
  if (item == nullptr || !List()->isEnabled()) return;
  if (name == setFocusAction()) {
    const TEventScope scope(List()->EventLife());
    item->SetFocused(true);
    if (!scope.ListGone()) item->MakeVisible(false);
  } else if (name == toggleAction()) {
    List()->ActOnCell(FRow, Column(), TCellAct::Toggle);
  } else if (name == pressAction()) {
    List()->ActOnCell(FRow, Column(), TCellAct::Press);
  }
}

QStringList TCellAccessible::keyBindingsForAction(const QString& name) const {
  if (name == toggleAction()) return {QKeySequence(Qt::Key_Space).toString()};
  return name == pressAction() ? KeyText(Facts()) : QStringList();
}

bool THeaderCellAccessible::isValid() const {
  return List() != nullptr && Column() < List()->Columns().Count();
}

void* THeaderCellAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
  return nullptr;
}

QAccessible::State THeaderCellAccessible::state() const {
  QAccessible::State state;
  if (!isValid()) return state;
  const TCellFacts facts = List()->DescribeHeader(Column());
  state.checkable = facts.HasCheckBox;
  state.checked = facts.Checked;
  return state;
}

QString THeaderCellAccessible::text(QAccessible::Text kind) const {
  if (!isValid()) return {};
  const TCellFacts facts = List()->DescribeHeader(Column());
  return kind == QAccessible::Name ? facts.Text : kind == QAccessible::Value ? facts.Value : QString();
}

QRect THeaderCellAccessible::rect() const {
  if (!isValid()) return {};
  const QRect header = List()->HeaderRect();
  const QRect section = List()->Layout().SectionRect(Column(), header.height());
  return {List()->mapToGlobal(header.topLeft() + section.topLeft()), section.size()};
}

QStringList THeaderCellAccessible::actionNames() const {
  QStringList names;
  if (!isValid()) return names;
  if (List()->Options().ColumnClick) names << pressAction();
  if (List()->DescribeHeader(Column()).HasCheckBox) names << toggleAction();
  return names;
}

void THeaderCellAccessible::doAction(const QString& name) {
  if (!actionNames().contains(name)) return;
  List()->ActOnHeader(Column(), name == toggleAction() ? TCellAct::Toggle : TCellAct::Press);
}

QStringList THeaderCellAccessible::keyBindingsForAction(const QString& name) const {
  return isValid() && name == pressAction() ? KeyText(List()->DescribeHeader(Column())) : QStringList();
}

// The notices.

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* const list = dynamic_cast<TCustomListView*>(object);
  return list != nullptr ? new TTableAccessible(*list) : nullptr;
}

// For tests: with a sink, notices go there even if no tool listens.
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

// A row is told by its first cell, the focus by the cell that the keys act on, and that only while the list
// has the keyboard: else tools would follow a list that the user is not in.
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

// Always as a reset: rows come and go by the thousand, and a notice for each would cost more than asking
// anew.
void TellRowsChanged(TCustomListView& list) {
  if (!Listening()) return;
  if (TTableAccessible* const table = TableOf(list)) table->ForgetCells();
  QAccessibleTableModelChangeEvent event(&list, QAccessibleTableModelChangeEvent::ModelReset);
  Send(event);
}

void SetListNoticeSink(TListNoticeSink sink) {
  Sink = sink;
}
