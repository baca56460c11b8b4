// Where the parts of a group row lie. Painters and hit tests share these.
#pragma once

#include "controls/list/rd/layout/PartState.h"
#include "controls/list/rd/layout/TextBlock.h"
#include "controls/list/rd/model/RdListTypes.h"
#include "controls/list/rd/skin/SkinValues.h"

// What a group row has, apart from its rectangle.
struct TGroupRowContent {
  QString Header;
  TAlignment HeaderAlign = TAlignment::LeftJustify;
  bool CheckBoxes = false;   // the list has check boxes
  bool HasCheckBox = false;  // and this group has them, at its rows and at its own
  TkGroupBtnAlign ButtonAlign = tkgRight;
  QSize Button;      // GroupButtonSize
  QSize TitleImage;  // empty without one
};

struct TGroupRowParts {
  QRect CheckBox;    // null without one
  QRect Button;      // null with tkgNone
  QRect TitleImage;  // null without one
  TTextBlock Header;
  QRect LineBefore;  // left of the text; empty unless the text stands right or in the middle
  QRect LineAfter;   // right of it; empty if the text stands right
};

[[nodiscard]] TGroupRowParts LayoutGroupRow(const QRect& row, const TGroupRowContent& content,
                                            const TListSkin& skin);

// The picture of the expand button, with what stands in for a missing one; empty if the skin has none for
// this side and the button is to be drawn by the style.
[[nodiscard]] const TPicture& GroupButtonPicture(const TGroupSkin& skin, bool collapsed, TPartState state);
[[nodiscard]] QSize GroupButtonSize(const TGroupSkin& skin, bool collapsed,
                                    TPartState state = TPartState::Normal);
