// Cells and group rows of a TRdListView as layout and painters want them: what they show, where they lie,
// what of them the mouse can hit. Reads the list as it is now; to be made afresh for each event or paint.
//
// Painter, mouse, tip, editors and assistive tools all ask here, so that what is hit is what is painted. A
// new cell type has its hot area in InHotArea, and its text in TextCut if it can be cut.
#pragma once

#include "controls/list/layout/ListLayout.h"
#include "controls/list/rd/painter/RdCellPainter.h"
#include "controls/list/rd/painter/RdGroupPainter.h"

class TRdListView;
class TkListItem;

// The text of a cell as it is read: the lines of an icon text without their prefixes.
[[nodiscard]] QString PlainText(TListColumnType type, const QString& text, const TItemSkin& skin,
                                QChar between);

class TRdCellReader {
 public:
  explicit TRdCellReader(const TRdListView& list);

  [[nodiscard]] const TListLayout& Layout() const { return FLayout; }

  // Group rows are drawn, and hit, only where the list draws itself.
  [[nodiscard]] bool IsGroupRow(const TkListItem& item) const;
  [[nodiscard]] TRdGroupRow GroupRow(const TkListItem& item, int row) const;
  // The part of a row that is painted: a group row does not scroll sideways.
  [[nodiscard]] QRect PaintedRect(int row) const;

  [[nodiscard]] bool HasCheckBox(const TkListItem& item) const;
  // Empty for a row without one.
  [[nodiscard]] QRect CheckBoxRect(const TkListItem& item, int row) const;
  [[nodiscard]] QRect ExpandButtonRect(const TkListItem& item, int row) const;

  [[nodiscard]] int ColumnCount() const { return static_cast<int>(FLayout.Metrics().ColumnWidths.size()); }
  // In column 0 without the check box.
  [[nodiscard]] QRect CellRect(const TkListItem& item, int row, int column) const;
  // Without the state of the mouse.
  [[nodiscard]] TRdCell Cell(const TkListItem& item, int row, int column) const;

  // The inside of an edit or combo box cell.
  [[nodiscard]] QRect EditBand(const TRdCell& cell) const;
  // The text is painted with an ellipsis.
  [[nodiscard]] bool TextCut(const TRdCell& cell) const;

  // What reacts to the mouse there, as far as the type says; a disabled row's buttons and labels do not, and
  // of the cells that a row does not have only editors, whose mistake is told at their end.
  [[nodiscard]] bool InHotArea(const TRdCell& cell, const QPoint& pos) const;
  // The line of an icon text, kIconHit or kNoIconTextHit.
  [[nodiscard]] int IconTextHit(const TRdCell& cell, const QPoint& pos) const;

 private:
  const TRdListView& FList;
  TListLayout FLayout;
};
