// The header above the rows: its painting, and the mouse on it.
#pragma once

#include "controls/list/layout/ListLayout.h"

#include <QWidget>

class TListColumns;
class TRowHost;

// A child window of the list, which owns it. Lists with a header of their own look paint it and may take the
// mouse from it (TRowHost::PaintHeader, HeaderMouse); what the mouse is at is kept here for all.
class THeaderBar : public QWidget {
 public:
  explicit THeaderBar(TRowHost& host);

  [[nodiscard]] QSize sizeHint() const override;
  // The columns are not the ones that the mouse has held or touched.
  void ColumnsChanged();

  // The section under the mouse, if sections can be pressed.
  [[nodiscard]] int HotColumn() const { return FHotColumn; }
  // The section that the button went down on.
  [[nodiscard]] int DownColumn() const { return FDownColumn; }
  // The section that looks pressed; -1 while the mouse is away from it.
  [[nodiscard]] int PressedColumn() const { return FHotColumn == FDownColumn ? FDownColumn : -1; }
  // A divider is being dragged.
  [[nodiscard]] bool Tracking() const { return FTrackedColumn >= 0; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void Press(QMouseEvent& event, bool second);
  // What the left button does. A second press in a row on a divider fits the column at its left.
  void PressAt(int x, bool second);
  void ReleaseAt(int x);
  void MoveTo(int x);
  // A release was lost, or the columns are others: nothing is held any more.
  void LosePress() { FDownColumn = FTrackedColumn = -1; }

  [[nodiscard]] TListColumns& Columns() const;
  // The column whose divider is within reach and can be dragged, -1 for none.
  [[nodiscard]] int DividerAt(int x) const;

  // Columns by index. Any change of their number makes these forget (ColumnsChanged), so an index is good
  // whenever it is not -1.
  TRowHost& FHost;
  int FHotColumn = -1;
  int FDownColumn = -1;
  int FTrackedColumn = -1;
  int FTrackStart = 0;  // the mouse and the width at the begin of the drag
  int FTrackWidth = 0;
};
