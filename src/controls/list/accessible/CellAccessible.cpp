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
  state.focused = item->Focused() && List()->hasFocus();
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
    item->SetFocused(true);
    item->MakeVisible(false);
  } else if (name == toggleAction()) {
    List()->ActOnCell(FRow, Column(), TCellAct::Toggle);
  } else if (name == pressAction()) {
    List()->ActOnCell(FRow, Column(), TCellAct::Press);
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

QAccessible::State THeaderCellAccessible::state() const {
  QAccessible::State state;
  if (!isValid()) return state;
  const TCellFacts facts = List()->DescribeHeader(Column());
  state.checkable = facts.HasCheckBox;
  state.checked = facts.Checked;
  return state;
}

QString THeaderCellAccessible::text(QAccessible::Text kind) const {
  return isValid() && kind == QAccessible::Name ? List()->DescribeHeader(Column()).Text : QString();
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
