#include "controls/list/rd/layout/AutoColumns.h"

#include <algorithm>

namespace {

int Bounded(const TAutoColumn& column, int width) {
  if (column.MaxWidth > 0) width = std::min(width, column.MaxWidth);
  return std::max(width, column.MinWidth);
}

// Gives every auto column its share; says whether all took it. One that did not is fixed from now on.
bool Share(std::vector<TAutoColumn>& columns, int room) {
  int sharers = 0;
  for (const TAutoColumn& column : columns) {
    if (column.AutoSize)
      ++sharers;
    else
      room -= column.Width;
  }
  if (sharers == 0) return true;
  room = std::max(room, 0);
  int remainder = room % sharers;
  bool accepted = true;
  for (TAutoColumn& column : columns) {
    if (!column.AutoSize) continue;
    const int share = room / sharers + remainder;
    remainder = 0;
    column.Width = Bounded(column, share);
    if (column.Width == share) continue;
    column.AutoSize = false;
    accepted = false;
  }
  return accepted;
}

}  // namespace

std::vector<int> ShareColumnWidths(std::vector<TAutoColumn> columns, int room) {
  while (!Share(columns, room)) {
  }
  std::vector<int> widths;
  widths.reserve(columns.size());
  for (const TAutoColumn& column : columns)
    widths.push_back(column.Width);
  return widths;
}
