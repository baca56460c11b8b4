#include "controls/list/layout/ListLayout.h"

#include <algorithm>
#include <numeric>

namespace {

// Cuts a part of the given size from the left of the rest, centred in height.
QRect TakePart(QRect& rest, QSize size, int gap) {
  if (size.isEmpty()) return {};
  const QRect part(rest.left(), rest.top() + (rest.height() - size.height()) / 2, size.width(),
                   size.height());
  rest.setLeft(part.left() + size.width() + gap);
  return part;
}

int PartWidth(QSize size, int gap) {
  return size.isEmpty() ? 0 : size.width() + gap;
}

}  // namespace

// Rows above the top have negative places: who paints a range need not know where the client area begins.
QRect TListLayout::RowRect(int row) const {
  return {-FMetrics.HorzPos, (row - FMetrics.TopRow) * FMetrics.RowHeight, TotalWidth(), FMetrics.RowHeight};
}

QRect TListLayout::CellRect(int row, int column) const {
  QRect cell = RowRect(row);
  cell.setLeft(ColumnLeft(column));
  cell.setWidth(WidthOf(column));
  return cell;
}

TCellParts TListLayout::CellParts(int row, int column, bool hasImage) const {
  TCellParts parts;
  parts.Cell = CellRect(row, column);
  QRect rest = parts.Cell.adjusted(FMetrics.Margin, 0, -FMetrics.Margin, 0);
  if (column == 0) {
    parts.CheckBox = TakePart(rest, FMetrics.CheckBox, FMetrics.Gap);
    parts.StateImage = TakePart(rest, FMetrics.StateImage, FMetrics.Gap);
  }
  if (column == 0 || hasImage) parts.SmallImage = TakePart(rest, FMetrics.SmallImage, FMetrics.Gap);
  parts.Text = rest;
  return parts;
}

QRect TListLayout::SectionRect(int column, int height) const {
  return {ColumnLeft(column), 0, WidthOf(column), height};
}

int TListLayout::TotalWidth() const {
  return std::accumulate(FMetrics.ColumnWidths.begin(), FMetrics.ColumnWidths.end(), 0);
}

int TListLayout::ColumnLeft(int column) const {
  const auto first = FMetrics.ColumnWidths.begin();
  const int before = std::clamp(column, 0, static_cast<int>(FMetrics.ColumnWidths.size()));
  return std::accumulate(first, first + before, -FMetrics.HorzPos);
}

int TListLayout::WidthOf(int column) const {
  const auto place = static_cast<size_t>(column);
  return place < FMetrics.ColumnWidths.size() ? FMetrics.ColumnWidths[place] : 0;
}

int TListLayout::CellOverhead(int column, bool hasImage) const {
  int width = 2 * FMetrics.Margin;
  if (column == 0)
    width += PartWidth(FMetrics.CheckBox, FMetrics.Gap) + PartWidth(FMetrics.StateImage, FMetrics.Gap);
  if (column == 0 || hasImage) width += PartWidth(FMetrics.SmallImage, FMetrics.Gap);
  return width;
}

THit TListLayout::HitTest(const QPoint& pos) const {
  const QRect client(QPoint(0, 0), FMetrics.Client);
  THit hit;
  hit.Column = ColumnAt(pos.x());
  if (!client.contains(pos)) {
    hit.Flags = (pos.y() < 0 ? htAbove : 0) | (pos.y() > client.bottom() ? htBelow : 0) |
                (pos.x() < 0 ? htToLeft : 0) | (pos.x() > client.right() ? htToRight : 0);
    return hit;
  }
  const int row = RowAt(pos.y());
  // Beside the columns, and right of the first where only that is hit, is nothing of the row.
  if (row < 0 || hit.Column < 0 || (hit.Column > 0 && !FMetrics.RowSelect)) return hit;
  hit.Row = row;
  hit.Flags = htOnLabel;
  if (hit.Column > 0) return hit;
  const TCellParts parts = CellParts(row, 0);
  // A narrow column cuts its parts off: what does not show is not hit.
  const bool onCell = parts.Cell.contains(pos);
  const QRect& state = parts.CheckBox.isNull() ? parts.StateImage : parts.CheckBox;
  if (onCell && state.contains(pos)) hit.Flags = htOnStateIcon;
  if (onCell && parts.SmallImage.contains(pos)) hit.Flags = htOnIcon;
  return hit;
}

int TListLayout::RowAt(int y) const {
  if (y < 0) return -1;
  const int row = FMetrics.TopRow + y / FMetrics.RowHeight;
  return row < FMetrics.RowCount ? row : -1;
}

int TListLayout::ColumnAt(int x) const {
  int edge = -FMetrics.HorzPos;
  if (x < edge) return -1;
  for (size_t column = 0; column < FMetrics.ColumnWidths.size(); ++column) {
    edge += FMetrics.ColumnWidths[column];
    if (x < edge) return static_cast<int>(column);
  }
  return -1;
}

// The last that is in reach, so that a column of no width can be dragged open.
int TListLayout::DividerAt(int x, int reach) const {
  int found = -1;
  int edge = -FMetrics.HorzPos;
  for (size_t column = 0; column < FMetrics.ColumnWidths.size(); ++column) {
    edge += FMetrics.ColumnWidths[column];
    if (std::abs(x - edge) <= reach) found = static_cast<int>(column);
  }
  return found;
}

int TListLayout::RowsPerPage() const {
  return std::max(1, FMetrics.Client.height() / FMetrics.RowHeight);
}

// One that shows in part counts, unlike in RowsPerPage.
int TListLayout::EndOfVisibleRows() const {
  const int shown = (FMetrics.Client.height() + FMetrics.RowHeight - 1) / FMetrics.RowHeight;
  return std::min(FMetrics.RowCount, FMetrics.TopRow + shown);
}

int TListLayout::TopRowShowing(int row, bool partialOk) const {
  // A row that shows in part only is the one behind the page.
  const int end = partialOk ? EndOfVisibleRows() : FMetrics.TopRow + RowsPerPage();
  if (row < FMetrics.TopRow) return row;
  return row < end ? FMetrics.TopRow : row - RowsPerPage() + 1;
}

// The last page is full, unless there are fewer rows than that: no way leads to empty room below the last
// row.
int TListLayout::MaxTopRow() const {
  return std::max(0, FMetrics.RowCount - RowsPerPage());
}

THeaderParts LayoutHeaderSection(const QRect& section, int textWidth, QSize mark, TAlignment alignment,
                                 int margin, int gap) {
  QRect room = section.adjusted(margin, 0, -margin, 0);
  if (mark.isEmpty() || mark.width() > room.width()) return {room, {}};

  const int textRoom = std::max(0, room.width() - mark.width() - gap);
  const int text = std::min(textWidth, textRoom);
  const int unused = textRoom - text;
  int left = room.left();
  if (alignment == TAlignment::RightJustify) left += unused;
  if (alignment == TAlignment::Center) left += unused / 2;

  THeaderParts parts;
  parts.Text = QRect(left, room.top(), text, room.height());
  const int markLeft = std::min(left + text + gap, room.right() + 1 - mark.width());
  parts.Mark = QRect(markLeft, room.top() + (room.height() - mark.height()) / 2, mark.width(), mark.height());
  return parts;
}
