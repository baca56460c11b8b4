#include "controls/list/rd/layout/CellLayout.h"

#include "controls/list/rd/layout/RowLayout.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kWidestButton = 150;
constexpr int kLeastButton = 15;
constexpr int kLeastButtonCell = 5;

constexpr int kStarSide = 16;
constexpr int kStarDrop = 2;           // stars stand this much below the middle
constexpr int kStarCaptionGap = 15;    // from the last star to the caption's room
constexpr int kStarCaptionStart = 84;  // from the cell's left to where the caption is hot
constexpr double kHalfStar = 0.6;      // up to this a rest is half a star
constexpr double kRounding = 1e-9;     // what decimals lose in binary

constexpr int kProgressInset = 5;
constexpr int kProgressHalfHeight = 5;
constexpr int kProgressFrameGap = 2;

constexpr int kEditFrameInset = 9;
constexpr int kEditTextInset = 2;
constexpr int kLeastEditRest = 10;

// A finite number; 0 for anything else.
double NumberOf(const QString& text) {
  const double value = text.trimmed().toDouble();
  return std::isfinite(value) ? value : 0.0;
}

QRect Shrunk(const QRect& rect, int dx, int dy) {
  return rect.adjusted(dx, dy, -dx, -dy);
}

}  // namespace

QRect ContentRect(const QRect& cell, int column, const TItemSkin& skin) {
  return cell.adjusted(skin.TextOffset + (column == 0 ? skin.ItemLeftOffset : 0), 0, 0, 0);
}

TTextBlock LayoutCellText(const QString& text, const QFont& font, const QRect& cell, int column,
                          TAlignment alignment, const TItemSkin& skin) {
  return LayoutText(text, font, ContentRect(cell, column, skin), alignment);
}

QRect CellCheckBoxRect(const QRect& cell, const TItemSkin& skin) {
  return CentredInHeight(cell, cell.left() + skin.TextOffset, CheckBoxSize(skin));
}

QRect ButtonRect(const QRect& cell, int column, QSize picture, const TItemSkin& skin) {
  if (cell.width() < kLeastButtonCell) return {};
  QSize size = picture;
  if (picture.isEmpty()) {
    size = QSize(std::min(cell.width() - 2 * skin.TextOffset, kWidestButton), skin.EditHeight);
    if (size.width() < kLeastButton) return {};
  }
  return CentredInHeight(cell, ContentRect(cell, column, skin).left(), size);
}

std::array<TStar, kStarCount> StarsOf(const QString& text, int maxCount) {
  std::array<TStar, kStarCount> stars{};
  if (maxCount <= 0) return stars;
  double rest = std::clamp(NumberOf(text), 0.0, static_cast<double>(maxCount)) / (maxCount / 5.0);
  for (TStar& star : stars) {
    if (rest <= kRounding) break;
    star = rest > kHalfStar + kRounding ? TStar::Light : TStar::Half;
    rest -= 1.0;
  }
  return stars;
}

QRect StarRect(const QRect& cell, int star) {
  return CentredInHeight(cell, cell.left() + star * kStarSide, {kStarSide, kStarSide})
      .translated(0, kStarDrop);
}

QRect StarCaptionRect(const QRect& cell) {
  return cell.adjusted(kStarCount * kStarSide + kStarCaptionGap, 0, 0, 0);
}

QRect StarCaptionArea(const QRect& cell) {
  return cell.adjusted(kStarCaptionStart, 0, 0, 0);
}

TProgressParts LayoutProgress(const QRect& cell, const QString& text) {
  const double value = NumberOf(text);
  TProgressParts parts;
  parts.Bar = Shrunk(cell, kProgressInset, cell.height() / 2 - kProgressHalfHeight);
  if (parts.Bar.width() <= 0) return {};
  const double fraction = std::clamp(value / 100.0, 0.0, 1.0);
  parts.Filled = parts.Bar;
  parts.Filled.setWidth(static_cast<int>(parts.Bar.width() * fraction));
  parts.Frame = Shrunk(parts.Bar, -kProgressFrameGap, -kProgressFrameGap);
  // Adding 0 turns the -0 of a small negative number into 0.
  parts.Text = QString::number(std::trunc(value) + 0.0, 'f', 0) + u" %"_qs;
  return parts;
}

TEditParts LayoutEdit(const QRect& cell, int height, bool comboBox) {
  const int offset = (cell.height() - height) / 2;
  TEditParts parts;
  parts.Frame = Shrunk(cell, kEditFrameInset, offset + 1);
  if (cell.width() < height + kLeastEditRest) {
    parts.Frame.setWidth(1);
    return parts;
  }
  parts.Band = Shrunk(parts.Frame, 1, 1);
  parts.Text = Shrunk(parts.Band, kEditTextInset, kEditTextInset);
  const int side = parts.Band.height();
  if (comboBox && side < parts.Band.width()) {
    parts.Button = QRect(parts.Band.right() + 1 - side, parts.Band.top(), side, side);
    parts.Text.setRight(parts.Button.left() - 1);
  }
  return parts;
}
