// The events of a TRdListView beside those of every list, and their order.
//
//   press on the expand button     nothing; the release expands or collapses: GroupShowHide, and a selected
//                                  row that goes with its group is deselected
//   press on a row's check box     OnItemCheckBoxClick, OnItemChecked, OnMouseDown
//   click on a button cell         selection events, OnMouseDown | OnClick, OnMouseUp, OnButtonClick
//   click on a label, an icon text, the caption of stars
//                                  the same, ending in OnLabelClick, OnIconLabelClick, OnLabelIconClick or
//                                  OnStarCaptionClick
//   press on a check box cell      OnSubItemChecking, OnSubItemChecked, selection events, OnMouseDown
//   press on an edit cell          selection events, EditOnEnter; neither OnMouseDown nor OnClick
//   press on a combo box cell      OnColumnComboBoxDropDown of list and column, selection events
//   the editor is left             EditOnExit, then the cell is written
//   another line is chosen         OnColumnComboBoxChange of list and column, then the cell is written
//   click on a header cell         | OnColumnClick, SortState being the new one already
//   click on the header's box      | OnItemChecked for each row that changes, OnCheckBoxClick
//
// with "|" between press and release. Nothing of a click comes if the release is elsewhere than the press.
#pragma once

#include "controls/list/rd/model/RdListColumn.h"

#include <QString>
#include <Qt>

#include <functional>

class QPainter;
class QRect;
class TListItem;
class TRdListView;
class TkListGroup;
class TkListItem;
struct TRdCell;

using TOnButtonClick = std::function<void(TListItem* item, int columnIndex)>;
using TOnLabelClick = std::function<void(TListItem* item, int columnIndex)>;
using TOnSubItemChecking = std::function<void(TkListItem* item, int columnIndex, bool& checked)>;

// A handler may do anything to the list (model/EventScope.h).
// The events of painting are the exception: rows, columns and the list itself have to stay while it is
// painted, so OnCustomDrawItem, OnCustomDrawSubItem and OnDrawSortColumnIcon draw or answer and change
// nothing of the list.
struct TRdListEvents {
  TOnButtonClick OnButtonClick;
  TOnLabelClick OnLabelClick;
  TOnLabelClick OnIconLabelClick;
  TOnLabelClick OnLabelIconClick;
  TOnLabelClick OnStarCaptionClick;

  // The box in the header, and the box of a row before it changes.
  std::function<void(TRdListView& sender, bool checked)> OnCheckBoxClick;
  std::function<void(TListItem* item)> OnItemCheckBoxClick;
  TOnSubItemChecking OnSubItemChecking;
  TOnSubItemChecking OnSubItemChecked;

  // A handler that changes showState keeps the group as it is.
  std::function<void(TRdListView& sender, TkListGroup& group, bool& showState)> GroupShowHide;

  TOnEditChange EditOnChange;
  TOnEditChange EditOnEnter;
  TOnEditChange EditOnExit;
  // A Qt::Key; a handler that sets it to 0 swallows the key.
  std::function<void(int& key, Qt::KeyboardModifiers shift)> EditOnKeyPress;
  TOnComboBoxChange OnColumnComboBoxDropDown;
  TOnComboBoxChange OnColumnComboBoxChange;

  // May choose another arrow than sortState - 1; a bad index is none.
  std::function<void(int& iconIndex, int columnIndex, TSortState sortState)> OnDrawSortColumnIcon;

  // Own painting on rows and cells, in the coordinates of the client area. A handler may change the cell's
  // font and colours; false ends the cell, so that the handler has drawn all of it.
  std::function<void(QPainter& painter, TListItem* item, const QRect& row)> OnCustomDrawItem;
  std::function<bool(QPainter& painter, TListItem* item, TRdCell& cell)> OnCustomDrawSubItem;

  // What went wrong in a gesture of the user, where nobody could be told by an exception.
  std::function<void(const QString& text)> OnWriteLog;
};
