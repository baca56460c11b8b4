// The mouse on the rows of a TRdListView: hover, presses on boxes, buttons and cells, the clicks that end on
// them. What is left goes to the host as on any list. Main thread.
#pragma once

#include <QPoint>
#include <QtGlobal>

class TRdCellReader;
class TRdListView;
class TkListItem;
struct TRdCell;

class TRdCellMouse {
 public:
  explicit TRdCellMouse(TRdListView& list) : FList(list) {}

  // True if the press ends here, so that the host sees nothing of it. bothButtons: left and middle.
  bool Press(const QPoint& pos, bool bothButtons);
  // After the host's release.
  void Release(const QPoint& pos);
  // tick: milliseconds; moves less than 51 after the last handled one are dropped. 0 is no known time.
  void Move(const QPoint& pos, quint64 tick);
  void Leave();
  // The rows under a resting mouse have moved.
  void Refresh();

  // Does what a click on the cell would, for keys and assistive tools; onIcon: on the icon of an icon text.
  // False for a cell that reacts to none.
  bool Act(TkListItem& item, int column, bool onIcon = false);
  // Checks or unchecks a row as a click on its box. False for a row without one.
  bool ClickBox(TkListItem& item);

 private:
  bool PressGroupRow(TkListItem& header, int row);
  bool PressCell(TkListItem& item, int row, int column, const QPoint& pos, bool bothButtons);
  bool ReleaseGroupRow(TkListItem& header, int row, int pressedRow, const QPoint& pos);
  void ReleaseCell(TkListItem& item, int row, int column, const QPoint& pos);
  void EndPressedLook(int row, int column);
  void TakeHot(int row, int column);
  void HoverCell(const TRdCellReader& reader, const TkListItem& item, const QPoint& pos);
  void HoverGroupButton(int row);
  void SetCellState(int state, int line);
  void SetHandCursor(bool hand);
  void RepaintRow(int row) const;

  TRdListView& FList;
  QPoint FLast{-1, -1};
  int FPressedSerial = -1;  // the row of PressedRow, wherever it goes
  bool FHand = false;
};
