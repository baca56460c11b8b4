// Where everything in the client area and the header of a list lies: figures in, rectangles and hits out. A
// value, made afresh whenever one of its figures changes.
//
// Questions about rows take the same time whatever their number, as all rows are of one height. Those about
// columns walk the columns, of which a report has few. There is no bound on rows or columns that are asked
// for: whoever has an index from elsewhere checks it before.
#pragma once

#include "controls/list/ListTypes.h"
#include "controls/list/model/ListColumns.h"

#include <QRect>
#include <QSize>

#include <utility>
#include <vector>

// Pixels, but for the counts and the top row.
struct TListMetrics {
  QSize Client;
  int RowCount = 0;
  int RowHeight = 1;
  int TopRow = 0;   // the row at the top of the client area
  int HorzPos = 0;  // how far the columns are moved to the left
  std::vector<int> ColumnWidths;
  // What stands before the caption of the first column; an empty size is not there.
  QSize CheckBox;
  QSize StateImage;
  QSize SmallImage;
  int Margin = 5;  // from a cell's edge to its content
  int Gap = 4;     // between check box, images and caption
  bool RowSelect = true;
};

struct THit {
  int Row = -1;
  int Column = -1;  // also set beside the rows, -1 right of the last column
  unsigned Flags = htNowhere;
};

// The parts of one cell; all but Cell and Text are null in columns other than the first.
struct TCellParts {
  QRect Cell;
  QRect CheckBox;
  QRect StateImage;
  QRect SmallImage;
  QRect Text;
};

class TListLayout {
 public:
  explicit TListLayout(TListMetrics metrics) : FMetrics(std::move(metrics)) {}

  // Rows count by their position below the top row, seen or not. A column that is not there has no width.
  [[nodiscard]] QRect RowRect(int row) const;
  [[nodiscard]] QRect CellRect(int row, int column) const;
  // hasImage: the cell of a later column shows a small image of its own.
  [[nodiscard]] TCellParts CellParts(int row, int column, bool hasImage = false) const;

  // The room of a header section, with the height of the header.
  [[nodiscard]] QRect SectionRect(int column, int height) const;
  [[nodiscard]] int TotalWidth() const;

  // The pixels of a first or later cell that are not its text.
  [[nodiscard]] int CellOverhead(int column, bool hasImage = false) const;

  [[nodiscard]] THit HitTest(const QPoint& pos) const;
  // -1 where there is none.
  [[nodiscard]] int RowAt(int y) const;
  [[nodiscard]] int ColumnAt(int x) const;
  // The column whose right edge is within reach of x, the rightmost of several; -1 for none.
  [[nodiscard]] int DividerAt(int x, int reach) const;

  // Rows that fit wholly, at least 1.
  [[nodiscard]] int RowsPerPage() const;
  // The first row behind the last one that shows at all.
  [[nodiscard]] int EndOfVisibleRows() const;
  // The top row that brings a row into view with the least movement.
  [[nodiscard]] int TopRowShowing(int row, bool partialOk) const;
  [[nodiscard]] int MaxTopRow() const;

  [[nodiscard]] const TListMetrics& Metrics() const { return FMetrics; }

 private:
  [[nodiscard]] int ColumnLeft(int column) const;
  [[nodiscard]] int WidthOf(int column) const;

  TListMetrics FMetrics;
};

struct THeaderParts {
  QRect Text;
  QRect Mark;  // null without a mark or where it has no room
};

// textWidth: what the whole caption takes. The mark stands at the right of the caption, wherever the
// alignment puts that; a caption that is too long gives way to it.
[[nodiscard]] THeaderParts LayoutHeaderSection(const QRect& section, int textWidth, QSize mark,
                                               TAlignment alignment, int margin, int gap);
