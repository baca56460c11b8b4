// What a TRdListView remembers of the mouse, the editors and the header, each part kept by the one class that
// writes it. Rows and columns are -1 for none.
//
// Rows here are places, and a place outlives no change of the rows: whoever holds a press across events also
// holds the row as an object (TRdCellMouse::FPressed, TRdEditState::EditItem) and compares.
#pragma once

#include "controls/list/rd/RdListEvents.h"

#include <QtGlobal>

class TListColumn;

// The numbers of CellHotState.
enum TCellHotState { kCellNormal = 0, kCellHot = 1, kCellPressed = 2 };

// Kept by TRdCellMouse.
struct TRdMouseState {
  // Under the mouse, and there before.
  int HotRow = -1;
  int HotColumn = -1;
  int PrevHotRow = -1;
  int PrevHotColumn = -1;
  // Where the left button went down.
  int PressedRow = -1;
  int PressedColumn = -1;

  int CellHotState = kCellNormal;  // of the hot cell
  int HotLine = -1;                // what of an icon text is hot: a line, or -2 for the icon
  bool GroupBtnPressed = false;    // the expand button of PressedRow is held
  int HotGroupRow = -1;            // the header row whose expand button is hot

  quint64 LastMoveTick = 0;  // milliseconds, of the last mouse move that was not dropped
  bool BoxClicked = false;   // the press was on a check box: the host shall leave it alone
};

// Kept by TRdEditors.
struct TRdEditState {
  TkListItem* EditItem = nullptr;  // the row being edited
  bool EditActive = false;         // an editor was just opened by this press
  bool EditStarted = false;        // or by its release
};

// Kept by TRdHeader, and by the header that all lists have.
struct TRdHeaderState {
  int HeaderHotColumn = -1;
  int HeaderDownColumn = -1;
  bool HeaderPressed = false;
  bool HeaderBoxPressed = false;
  bool HeaderTracking = false;  // a divider is being dragged

  TListColumn* SortColumn = nullptr;  // has the sort arrow
  TSortState SortState = ssNone;
};

struct TRdListState : TRdMouseState, TRdEditState, TRdHeaderState {};
