// Where the content of a cell lies, by its type: figures in, rectangles out, in the coordinates of the cell.
// The cell of column 0 is the one without its check box (FirstCellRect). Painters and hit tests share these.
#pragma once

#include "controls/list/rd/layout/TextBlock.h"
#include "controls/list/rd/skin/SkinValues.h"

#include <array>

// The cell from where its content begins: TextOffset and, in column 0, ItemLeftOffset.
[[nodiscard]] QRect ContentRect(const QRect& cell, int column, const TItemSkin& skin);

// The text of a plain or label cell. Its Rect is the hot area of a label.
[[nodiscard]] TTextBlock LayoutCellText(const QString& text, const QFont& font, const QRect& cell, int column,
                                        TAlignment alignment, const TItemSkin& skin);

// The box of a check box cell.
[[nodiscard]] QRect CellCheckBoxRect(const QRect& cell, const TItemSkin& skin);

// The push button; empty in a cell that is too narrow. picture: the size of the picture of its state, empty
// without one.
[[nodiscard]] QRect ButtonRect(const QRect& cell, int column, QSize picture, const TItemSkin& skin);

enum class TStar { Gray, Half, Light };
inline constexpr int kStarCount = 5;

// The text is a number of 0 to maxCount; anything else counts as 0 or maxCount.
[[nodiscard]] std::array<TStar, kStarCount> StarsOf(const QString& text, int maxCount);
// The place of a star, 0 to 4. Only what lies in the cell is drawn.
[[nodiscard]] QRect StarRect(const QRect& cell, int star);
// Where the caption of the stars is drawn, and where the mouse finds it.
[[nodiscard]] QRect StarCaptionRect(const QRect& cell);
[[nodiscard]] QRect StarCaptionArea(const QRect& cell);

struct TProgressParts {
  QRect Bar;
  QRect Filled;
  QRect Frame;
  QString Text;  // the whole number and " %", in the middle of the bar
};

[[nodiscard]] TProgressParts LayoutProgress(const QRect& cell, const QString& text);

struct TEditParts {
  QRect Frame;  // a line of one pixel
  QRect Band;   // the inside, where the editor stands and the mouse opens it
  QRect Text;
  QRect Button;  // of a combo box cell; empty if the cell has no room for it
};

// height: EditHeight, or what else the box is to have. A cell that is too narrow gets a sliver of frame and
// nothing else.
[[nodiscard]] TEditParts LayoutEdit(const QRect& cell, int height, bool comboBox);
