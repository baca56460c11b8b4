// A group row: where its parts lie, for painting and hit tests, and how they are painted above the row's
// background, step by step, as applications may take over some. Main thread.
#pragma once

#include "controls/list/rd/layout/RdCellLayout.h"
#include "controls/list/rd/model/RdListColumn.h"
#include "controls/list/rd/skin/RdSkinValues.h"

class QPainter;
class QWidget;
class TImageList;

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

struct TRdGroupRow {
  QRect Row;
  TGroupRowContent Content;
  bool Collapsed = false;
  bool Checked = false;
  const TImageList* TitleImages = nullptr;
  int TitleImage = -1;
  TPartState ButtonState = TPartState::Normal;
};

// Lives for one row; in the order of the calls.
class TRdGroupPainter {
 public:
  TRdGroupPainter(QPainter& painter, const QWidget& widget, const TListSkin& skin, const TRdGroupRow& row);

  void PaintTitleImage();
  // The text and the lines beside it.
  void PaintHeader();
  void PaintCheckBox();
  void PaintButton();

  [[nodiscard]] const TGroupRowParts& Parts() const { return FParts; }

 private:
  void PaintLine(const QRect& line, bool before);

  QPainter& FPainter;
  const QWidget& FWidget;
  const TListSkin& FSkin;
  const TRdGroupRow& FRow;
  TGroupRowParts FParts;
};
