// Where caption and sort mark of a header section lie.
#pragma once

#include "controls/list/model/ListColumns.h"

#include <QRect>
#include <QSize>

struct THeaderParts {
  QRect Text;
  QRect Mark;  // null without a mark or where it has no room
};

// textWidth: what the whole caption takes. The mark stands at the right of the caption, wherever the
// alignment puts that; a caption that is too long gives way to it.
[[nodiscard]] THeaderParts LayoutHeaderSection(const QRect& section, int textWidth, QSize mark,
                                               TAlignment alignment, int margin, int gap);
