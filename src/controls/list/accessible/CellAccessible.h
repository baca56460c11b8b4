// One cell of a list, and one section of its header, for assistive technology.
#pragma once

#include "controls/list/accessible/CellFacts.h"

#include <QAccessible>
#include <QPointer>

class TCustomListView;
class TListItem;
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
  QStringList keyBindingsForAction(const QString&) const override { return {}; }
};
