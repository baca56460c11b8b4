// The header of a TRdListView: its painting, its mouse, the sort mark and the check box of the whole list.
// Main thread.
//
// Of the header's check box the press is kept from the header bar and the release acts; of a section the
// header bar tells the click (HeaderClicked), and SortByClick turns the sort over before OnColumnClick comes.
// The way turns with each click, whichever column it is on: up, then down, then up again.
#pragma once

#include "controls/list/rd/RdListState.h"
#include "controls/list/rd/painter/RdHeaderPainter.h"
#include "controls/skin/RdBitmap.h"

#include <QPoint>

class QMouseEvent;
class TListLayout;
class TRdListView;
class TkListColumn;

class TRdHeader {
 public:
  explicit TRdHeader(TRdListView& list) : FList(list) {}

  // The header's mouse is that of every list; what it is at there comes with the state.
  [[nodiscard]] TRdHeaderState State() const;
  void Reset();

  void Paint(QPainter& painter, QWidget& header);

  // True for what the header itself must not see: the press on the check box.
  bool Mouse(const QMouseEvent& event, const QSize& header, bool atDivider);

  // A click on a section, before OnColumnClick, false if the list is gone: the sort goes to this column, to
  // up, then to down and so on; a column that does not sort by clicks takes the mark away.
  [[nodiscard]] bool SortByClick(int column);
  // The column with the mark, null for none.
  [[nodiscard]] TkListColumn* SortColumn() const;
  void SetSort(int column, TSortState state);

  // The box of the whole list, as by a click on it.
  void ToggleCheckAll();
  [[nodiscard]] QRect CheckBoxRect(const QSize& header) const;

 private:
  [[nodiscard]] TRdHeaderSection Section(int column, const QRect& rect) const;
  [[nodiscard]] TPartState StateOf(int column) const;
  [[nodiscard]] int ArrowOf(int column);
  void AskArrow(int column);
  void Release(const QPoint& pos, const QSize& header);

  TRdListView& FList;
  TRdHeaderState FState;
  TRdBitmap FBitmap;
  // Index in the list of sort images.
  int FArrow = -1;              // as last asked for
  bool FReleasedInBox = false;  // the click that follows changes no sort
};
