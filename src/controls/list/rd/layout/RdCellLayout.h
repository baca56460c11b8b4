// Where the parts of a row lie, the content of a cell by its type, and a text in its rectangle: figures in,
// rectangles out, in the same coordinates. Painters and hit tests share these. Any thread that may use fonts.
//
// One function per part, all with the cell and the skin in and rectangles out. A rectangle that has no room
// is empty, and painters and hit tests both pass over it.
#pragma once

#include <QFont>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

#include "controls/list/model/ListColumns.h"
#include "controls/list/rd/skin/RdSkinValues.h"

// A text: cut with an ellipsis or broken at words. Every text of the list goes this way.

// A text as it is drawn.
struct TTextBlock {
  QStringList Lines;
  int LineHeight = 0;
  QRect Rect;        // what the lines take, at most as wide as the room
  bool Cut = false;  // a line is not shown whole
};

// A rectangle of that size in the middle of `outer`; half a difference is truncated towards zero.
[[nodiscard]] QRect CentredIn(const QRect& outer, QSize size);
// The same in height only, at the given x.
[[nodiscard]] QRect CentredInHeight(const QRect& outer, int x, QSize size);

// The rectangle without the margins that every text leaves, by its alignment.
[[nodiscard]] QRect TextRoom(const QRect& rect, TAlignment alignment);

// The whole text on its lines, uncut; broken at words where a line exceeds the width, if asked. "\r\n", "\r"
// and "\n" each end a line.
[[nodiscard]] QSize MeasureText(const QString& text, const QFont& font, int width, bool wordBreak = false);

// Centred in height; in width as the alignment says.
[[nodiscard]] TTextBlock LayoutText(const QString& text, const QFont& font, const QRect& rect,
                                    TAlignment alignment, bool wordBreak = false);

// How the mouse stands to a button, a cell or a header section. The numbers are those of CellHotState.
enum class TPartState { Normal = 0, Hot = 1, Pressed = 2 };

// The parts of a row.

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

// The icon cell: a picture and one or more lines, some of which are labels that can be clicked.
//
// The lines of a cell text are parted by "\r\r". "//" at the start of a line makes it plain, "@@" a label;
// without either the first of several lines is a label, and so is the only line of an ltIconCaption cell. A
// cell of ltNormalIconCaption has its labels by "@@" alone, and shows all lines in the cell's font.

enum class TIconTextKind { IconCaption, NormalIconCaption };

struct TIconTextLine {
  QString Text;  // without its prefix
  bool Label = false;
  QFont Font;
  TTextBlock Block;  // set by the layout
};

struct TIconTextParts {
  QRect Icon;  // null without an icon
  std::vector<TIconTextLine> Lines;
};

[[nodiscard]] std::vector<TIconTextLine> SplitIconText(const QString& text, TIconTextKind kind,
                                                       const QFont& font, const TItemSkin& skin);

// icon: the size of the icon, empty if the cell has none to show.
[[nodiscard]] TIconTextParts LayoutIconText(const QRect& cell, int column, QSize icon,
                                            std::vector<TIconTextLine> lines, const TItemSkin& skin);

inline constexpr int kNoIconTextHit = -1;
inline constexpr int kIconHit = -2;

// The number of the label line at that point, or one of the two above.
[[nodiscard]] int HitIconText(const TIconTextParts& parts, QPoint pos);
