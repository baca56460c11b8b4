// Where the parts of a header section lie. Painters and hit tests share these.
#pragma once

#include "controls/list/rd/skin/SkinValues.h"

#include <QRect>
#include <QSize>

struct TRdHeaderParts {
  QRect Divider;   // null in the first section
  QRect CheckBox;  // null without one
  QRect Arrow;     // null without one, or if the section is narrower
  QRect Text;      // the room of the caption
};

// What a section has, apart from its rectangle.
struct TRdHeaderContent {
  bool First = false;
  bool CheckBox = false;  // only the first section shows it
  QSize Arrow;            // empty: none
  TAlignment Alignment = TAlignment::LeftJustify;
};

// At least 16 by 16, as large as HeaderChecked and HeaderUnChecked.
[[nodiscard]] QSize HeaderCheckBoxSize(const THeaderSkin& skin);

[[nodiscard]] TRdHeaderParts LayoutRdHeader(const QRect& section, const TRdHeaderContent& content,
                                            const TListSkin& skin);
