// What the model of a TRdListView reads of its control, and what it tells it. Main thread.
#pragma once

#include "controls/list/model/ListItems.h"

class TkListGroup;
class TkListItem;

// The modes of the control. It changes them as they are set; the model only reads them.
struct TkListState {
  bool OwnerData = true;
  bool ReportView = true;
  bool CheckBoxes = false;
  bool OpenGroupDraw = false;  // group rows exist
  bool GroupCanExpand = true;  // false: no group may be collapsed
  bool HandleAllocated = true;
  bool Loading = false;     // a stored list is being loaded: from its beginning to Loaded
  bool Reading = false;     // the data of its rows is being read
  bool Recreating = false;  // the row host is being made anew
  bool Scrolling = false;   // a scroll of the program's own is under way
};

// The row states and the life of rows go through TListItemsOwner; this is the rest.
class TkListOwner {
 public:
  virtual ~TkListOwner() = default;

  [[nodiscard]] virtual const TkListState& ListState() const = 0;

  // The row below the last one of the page: top index plus count per page.
  [[nodiscard]] virtual int EndOfPage() const = 0;
  [[nodiscard]] virtual int HorzScrollPos() const = 0;
  virtual void ScrollToHorz(int pos) = 0;

  // Not called in an update bracket.
  virtual void RedrawRow(TkListItem& item) = 0;
  virtual void RedrawList() = 0;
  // Rows and bars are laid out anew; comes at the end of the outermost bracket, after RowsChanged.
  virtual void Realign() = 0;

  // Hover, press and editors are dropped, as all rows go.
  virtual void ResetMouseState() = 0;
  // A check is set by the program: a click that the control was about to refuse is forgotten.
  virtual void ForgetBoxClick() = 0;
  // The row is about to be destroyed; links to it (edited row, hovered group row) are dropped. It has no
  // index any more.
  virtual void ItemDestroying(TkListItem& item) = 0;

  // OnCompare as a comparison, empty if it is not assigned.
  [[nodiscard]] virtual TListItems::TCompare RowCompare() = 0;
  // The other events.
  virtual void DoItemChecked(TkListItem& item) = 0;
  // GroupShowHide with the wanted state; gives what the handler left.
  [[nodiscard]] virtual bool DoGroupShowHide(TkListGroup& group, bool showState) = 0;
  virtual void DoSubItemChecking(TkListItem& item, int column, bool& checked) = 0;
  virtual void DoSubItemChecked(TkListItem& item, int column, bool& checked) = 0;
};
