// What lies under the cells: colours, state looks and pictures of rows, the area below the last row, the
// frame of the control. Everything in the coordinates of the client area. Main thread.
#pragma once

#include "controls/list/rd/layout/RdCellLayout.h"

#include <QColor>
#include <QPalette>

class QPainter;

// What one row looks like now.
struct TRdRowLook {
  int Index = 0;
  bool Selected = false;
  bool Hovered = false;
  TColor BackColor = clDefault;  // the row's own (HasBackColor), or clDefault
  TNeighbours Neighbours;
};

// The list's own colour; that of windows if the skin has none.
[[nodiscard]] QColor ListColor(const TListSkin& skin, const QPalette& palette);

// The colour and picture that a row has before any state.
[[nodiscard]] QColor RowColor(const TRdRowLook& look, const TListSkin& skin, const QPalette& palette);
[[nodiscard]] const TPicture& RowPicture(int row, const TItemSkin& skin);

void PaintRowBackground(QPainter& painter, const QRect& row, const TRdRowLook& look, const TListSkin& skin,
                        const QPalette& palette);
void PaintGroupBackground(QPainter& painter, const QRect& row, const TRdRowLook& look, const TListSkin& skin,
                          const QPalette& palette);

// The line at the bottom of a row, after the application's own painting.
void PaintGridLine(QPainter& painter, const QRect& row, const TItemSkin& skin, const QPalette& palette);

// Below the rows. firstRow: the index that the next row would have; rowHeight: of the last row, or
// BlankRowHeight in an empty list.
void PaintBlankArea(QPainter& painter, const QRect& area, int firstRow, int rowHeight, const TListSkin& skin,
                    const QPalette& palette);
[[nodiscard]] inline int BlankRowHeight(const TItemSkin& skin) {
  return skin.ItemHeight + 1;
}

// A line of one pixel inside the border, the rest of the border in the brush; nothing for clNone.
void PaintControlFrame(QPainter& painter, const QRect& control, int borderWidth, TColor frameColor,
                       const QPalette& palette);
