// The table interface of a list. Children are numbered header cells first, then the cells row by row.
#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>

class TCustomListView;

class TTableAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit TTableAccessible(TCustomListView& list);
  ~TTableAccessible() override;

  [[nodiscard]] int ChildOfCell(int row, int column) const;
  [[nodiscard]] TCustomListView* List() const;
  // Cells of the old rows are no longer handed out.
  void ForgetCells();

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

  mutable QHash<int, QAccessible::Id> FCells;  // by child number
};
