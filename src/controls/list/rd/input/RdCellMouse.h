// The mouse on the rows of a TRdListView: hover, presses on boxes, buttons and cells, the clicks that end on
// them. What is left goes to the host as on any list. Main thread.
//
// A press finds what lies under it (Press). Boxes, check box cells and editors act at once; buttons, labels
// and expand buttons act at the release (Release), if that is on the row and place that were held meanwhile
// (Hold). Hover follows the moves (Move, TakeHot, HoverCell) and repaints only what looks different by it.
#pragma once

#include "controls/list/rd/RdListState.h"
#include "controls/list/rd/model/RdListItem.h"

#include <QPoint>

class TRdCellReader;
class TRdListView;
struct THit;
struct TRdCell;

// Each step may tell events, in which a handler may do anything to the list, and to the row at hand.
class TRdCellMouse {
 public:
  explicit TRdCellMouse(TRdListView& list) : FList(list) {}

  [[nodiscard]] const TRdMouseState& State() const { return FState; }

  // True if the press ends here, so that the host sees nothing of it. A second press in a row acts only on
  // the expand button and the box of a row. bothButtons: left and middle.
  bool Press(const QPoint& pos, bool bothButtons, bool second);
  // The host has had the press, and a check that is set now is no longer the user's click.
  void ForgetBoxClick() { FState.BoxClicked = false; }
  // After the host's release.
  void Release(const QPoint& pos);
  // tick: milliseconds; moves less than 51 after the last handled one are dropped. 0 is no known time. Not
  // held: the left button is up, so that a press whose release was lost is over.
  void Move(const QPoint& pos, quint64 tick, bool held);
  void Leave();
  // The rows under a resting mouse have moved.
  void Refresh();
  void Reset();
  // What was pressed has got its answer, before its release.
  void EndPress();
  // The row is gone; what the mouse held of it is forgotten.
  void Forget(const TkListItem& item);

  // Does what a click on the cell would, for keys and assistive tools; onIcon: on the icon of an icon text.
  // False for a cell that reacts to none.
  bool Act(TkListItem& item, int column, bool onIcon = false);
  // Checks or unchecks a row as a click on its box. False for a row without one.
  bool ClickBox(TkListItem& item) { return SwitchBox(item, !item.Checked()); }
  bool SwitchBox(TkListItem& item, bool checked);

 private:
  bool PressGroupRow(TkListItem& header, int row);
  bool PressCell(TkListItem& item, const THit& hit, const QPoint& pos, bool bothButtons);
  void ReleaseGroupRow(TkListItem& header, int row, const QPoint& pos);
  void ReleaseCell(TkListItem& item, int row, int column, const QPoint& pos);
  void Hold(TkListItem& item, const THit& hit);
  void LosePress();
  void EndPressedLook(int row, int column);
  void TakeHot(int row, int column);
  void HoverCell(const TRdCellReader& reader, const TkListItem& item, const QPoint& pos);
  void HoverGroupButton(int row);
  void SetCellState(int state, int line);
  void SetHandCursor(bool hand);
  void RepaintRow(int row) const;

  TRdListView& FList;
  TRdMouseState FState;
  QPoint FLast{-1, -1};
  TkListItem* FPressed = nullptr;  // the row of PressedRow, wherever it goes
  bool FHand = false;
};
