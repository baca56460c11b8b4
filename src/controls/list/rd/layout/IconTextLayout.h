// The icon cell: a picture and one or more lines, some of which are labels that can be clicked.
//
// The lines of a cell text are parted by "\r\r". "//" at the start of a line makes it plain, "@@" a label;
// without either the first of several lines is a label, and so is the only line of an ltIconCaption cell. A
// cell of ltNormalIconCaption has its labels by "@@" alone, and shows all lines in the cell's font.
#pragma once

#include "controls/list/rd/layout/TextBlock.h"
#include "controls/list/rd/skin/SkinValues.h"

#include <QPoint>

#include <vector>

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
