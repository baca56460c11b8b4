// The events of a list and their order.
//
// Changes of a row's state fire at once, one row at a time, whether the user or the program made them:
//
//   a row's state bit changes        OnChange(State), then OnSelectItem or OnItemChecked
//   another row becomes selected     the former rows are deselected first, then the new row is selected
//   Selected is set to null          the selected rows are deselected
//   a selected row is deleted        deselected, then OnDeletion
//   the list is cleared, destroyed   OnDeletion for each row
//
// A gesture of the mouse:
//
//   click on a row                   selection events, OnMouseDown | OnClick, OnMouseUp
//   click on a check box             OnChange, OnItemChecked, OnMouseDown | OnClick, OnMouseUp;
//                                    the selection stays
//   click beside the rows            deselection events, OnMouseDown | OnClick, OnMouseUp
//   double click                     as a click, then OnDblClick, OnMouseDown | OnMouseUp
//   double click on a check box      as two clicks, the second without OnClick; no OnDblClick
//   right click on a row             selection events unless it is selected, OnMouseDown |
//                                    OnMouseUp, OnContextPopup
//   click on a header cell           | OnColumnClick, and nothing else
//
// with "|" between press and release. A plain press on one of several selected rows leaves them selected; the
// others are deselected at the release, before OnClick, so that the press may begin a drag.
//
// A key: OnKeyDown, then what the key does. Enter on a focused row fires OnDblClick; the menu key fires
// OnContextPopup at the focused row; Ctrl+1 to Ctrl+9 click the header cells.
#pragma once

#include "controls/list/ListTypes.h"

#include <QPoint>
#include <Qt>

#include <functional>

class TListColumn;
class TListItem;

// Positions are in pixels of the client area. A handler may do anything to the list (model/EventScope.h).
//
// Fields rather than signals: one handler each, which the form sets and may replace at any time.
struct TListViewEvents {
  std::function<void(TListItem* item, bool selected)> OnSelectItem;
  std::function<void(TListItem* item)> OnItemChecked;
  std::function<void(TListItem* item, TItemChange change)> OnChange;
  std::function<void(TListItem* item)> OnDeletion;
  // Used by AlphaSort; result comes as 0.
  std::function<void(TListItem* item1, TListItem* item2, int& result)> OnCompare;
  std::function<void(TListColumn* column)> OnColumnClick;

  std::function<void(Qt::MouseButton button, Qt::KeyboardModifiers shift, int x, int y)> OnMouseDown;
  std::function<void(Qt::MouseButton button, Qt::KeyboardModifiers shift, int x, int y)> OnMouseUp;
  std::function<void()> OnClick;
  std::function<void()> OnDblClick;
  // A Qt::Key; a handler that sets it to 0 swallows the key.
  std::function<void(int& key, Qt::KeyboardModifiers shift)> OnKeyDown;
  // A request of the keyboard that is left unhandled goes on to the parent window.
  std::function<void(const QPoint& pos, bool& handled)> OnContextPopup;
};
