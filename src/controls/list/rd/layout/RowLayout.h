// Where the parts of a row lie: figures in, rectangles out. Rows and cells are in any one coordinate system;
// what comes out is in the same. Painters and hit tests share these.
#pragma once

#include "controls/list/rd/skin/SkinValues.h"

#include <QRect>
#include <QSize>

// Theme elements and pictures of check boxes are at least this large.
inline constexpr int kLeastBox = 16;

// At least 16 by 16, as large as ItemPic_CheckBox.
[[nodiscard]] QSize CheckBoxSize(const TItemSkin& skin);
// What a check box takes from the first cell.
[[nodiscard]] int CheckBoxRoom(const TItemSkin& skin);

// The check box of a plain row, whether or not the row has one.
[[nodiscard]] QRect RowCheckBoxRect(const QRect& row, const TItemSkin& skin);

// The first cell without the room of the check box, if the row has one.
[[nodiscard]] QRect FirstCellRect(const QRect& cell, bool hasCheckBox, const TItemSkin& skin);

// How much of a row goes into its bitmap: from the left edge of the client area to its right edge, at most
// two item heights high.
[[nodiscard]] QRect PaintedRow(const QRect& row, int clientWidth, int itemHeight);

// The row has the second of the two looks that ItemDrawStep alternates.
[[nodiscard]] bool HasSecondLook(int row, int itemDrawStep);

// A row beside the row that is painted, as far as its frame matters. Under cross mode the frame of a
// selected neighbour covers the edge in between. A selected group row counts only if it shows that by a
// GroupPic_BgSelect.
struct TNeighbours {
  bool AboveSelected = false;
  bool BelowSelected = false;
};

// What is left of the row for its state picture.
[[nodiscard]] QRect CrossClip(const QRect& row, bool hovered, TNeighbours neighbours);
