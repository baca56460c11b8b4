#include "controls/list/rd/layout/RowLayout.h"

#include "controls/list/rd/layout/TextBlock.h"

#include <algorithm>

namespace {

constexpr int kBoxGap = 5;
constexpr int kWidestRow = 60000;

}  // namespace

QSize CheckBoxSize(const TItemSkin& skin) {
  return skin.ItemPic_CheckBox.Size().expandedTo({kLeastBox, kLeastBox});
}

int CheckBoxRoom(const TItemSkin& skin) {
  return CheckBoxSize(skin).width() + kBoxGap;
}

QRect RowCheckBoxRect(const QRect& row, const TItemSkin& skin) {
  return CentredInHeight(row, row.left() + skin.ItemCheckBoxLeftOffset, CheckBoxSize(skin));
}

QRect FirstCellRect(const QRect& cell, bool hasCheckBox, const TItemSkin& skin) {
  return hasCheckBox ? cell.adjusted(CheckBoxRoom(skin), 0, 0, 0) : cell;
}

QRect PaintedRow(const QRect& row, int clientWidth, int itemHeight) {
  const int left = std::max(0, row.left());
  const int right = std::min(clientWidth, row.left() + row.width());
  return {left, row.top(), std::clamp(right - left, 0, kWidestRow), std::min(row.height(), 2 * itemHeight)};
}

bool HasSecondLook(int row, int itemDrawStep) {
  return itemDrawStep >= 0 ? row % (itemDrawStep + 1) != 0 : row % itemDrawStep == 0;
}

QRect CrossClip(const QRect& row, bool hovered, TNeighbours neighbours) {
  return row.adjusted(0, neighbours.AboveSelected ? 1 : 0, 0, hovered && neighbours.BelowSelected ? -1 : 0);
}
