// The header above the rows: the mouse on it, its painting, and the child window that joins both.
#pragma once

#include "controls/list/layout/ListLayout.h"

#include <QWidget>

class TListColumns;
class TRowHost;

class THeaderInputHost {
 public:
  virtual ~THeaderInputHost() = default;

  [[nodiscard]] virtual TListLayout HeaderLayout() const = 0;
  [[nodiscard]] virtual TListColumns& HeaderColumns() = 0;
  // Sections can be pressed.
  [[nodiscard]] virtual bool Clickable() const = 0;

  virtual void ColumnClicked(int column) = 0;
  virtual void FitColumnToContents(int column) = 0;
};

// The mouse on a header: which section is hot or pressed, which divider is dragged. Knows no window.
class THeaderInput {
 public:
  explicit THeaderInput(THeaderInputHost& host) : FHost(host) {}

  // The left button. A second press in a row on a divider fits the column at its left.
  void Press(int x, bool second);
  void Release(int x);
  void Move(int x);
  void Leave();
  // A release was lost, or the columns are others: nothing is held any more.
  void Cancel() { FDownColumn = FTrackedColumn = -1; }

  [[nodiscard]] int HotColumn() const { return FHotColumn; }
  // The section that the button went down on.
  [[nodiscard]] int DownColumn() const { return FDownColumn; }
  // The section that looks pressed; -1 while the mouse is away from it.
  [[nodiscard]] int PressedColumn() const { return FHotColumn == FDownColumn ? FDownColumn : -1; }
  [[nodiscard]] bool Tracking() const { return FTrackedColumn >= 0; }
  // A divider that can be dragged is within reach.
  [[nodiscard]] bool AtDivider(int x) const { return DividerAt(x) >= 0; }

 private:
  [[nodiscard]] int DividerAt(int x) const;

  THeaderInputHost& FHost;
  int FHotColumn = -1;
  int FDownColumn = -1;
  int FTrackedColumn = -1;
  int FTrackStart = 0;  // the mouse and the width at the begin of the drag
  int FTrackWidth = 0;
};

class THeaderBar : public QWidget, private THeaderInputHost {
 public:
  explicit THeaderBar(TRowHost& host);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] const THeaderInput& Input() const { return FInput; }
  // The columns are not the ones that the mouse has held or touched.
  void ColumnsChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  // THeaderInputHost
  [[nodiscard]] TListLayout HeaderLayout() const override;
  [[nodiscard]] TListColumns& HeaderColumns() override;
  [[nodiscard]] bool Clickable() const override;
  void ColumnClicked(int column) override;
  void FitColumnToContents(int column) override;

  void Press(QMouseEvent& event, bool second);

  TRowHost& FHost;
  THeaderInput FInput;
};
