// Paints the rows of a TRdListView that draws itself: each row in a bitmap and one blit, then the area below.
// Main thread.
#pragma once

#include "controls/list/rd/RdCellReader.h"
#include "controls/list/rd/painter/RdRowBackground.h"
#include "controls/skin/RdBitmap.h"

class QPainter;
class QRegion;

class TRdRowsPainter {
 public:
  explicit TRdRowsPainter(TRdListView& list) : FList(list) {}

  // A region within one cell paints that cell alone of its row.
  void Paint(QPainter& painter, const QRegion& region);

 private:
  struct TRow;
  void PaintRow(QPainter& target, TRow& row);
  void PaintPlainRow(QPainter& painter, const TRow& row);
  void PaintGroupRow(QPainter& painter, const TRow& row);
  void PaintCell(QPainter& painter, const TRow& row, int column);
  void PaintFocus(QPainter& painter, const TRow& row);
  // Only as far as the region asks for it: a hover of a row paints nothing of it.
  void PaintBlank(QPainter& painter, const TRdCellReader& reader, const QRegion& region);
  [[nodiscard]] TRdRowLook LookOf(const TRow& row) const;
  [[nodiscard]] bool Selected(int row) const;
  void AddMouseState(TRdCell& cell, const TRow& row) const;

  TRdListView& FList;
  TRdBitmap FBitmap;  // used again for each row
};
