// Paints the cells of rows, by their type, and the check boxes of rows. Main thread.
#pragma once

#include "controls/list/rd/layout/RdCellLayout.h"
#include "controls/list/rd/model/RdListColumn.h"
#include "controls/list/rd/painter/RdDrawing.h"

class QPainter;
class QWidget;
class TImageList;

// One cell as the mouse and the painter find it.
// What OnCustomDrawSubItem is handed and may change for this one paint.
struct TRdCell {
  bool Exists = true;  // a column beyond the sub-items of its row has no cell: nothing is painted there
  QRect Cell;          // in column 0 without the check box
  int Column = 0;
  TListColumnType Type = ltNone;
  QString Text;  // without the type's prefix
  TAlignment Alignment = TAlignment::LeftJustify;
  QFont Font;
  TColor FontColor = clDefault;  // clDefault: the palette's text
  const TImageList* Icons = nullptr;
  int Icon = -1;
  bool Enabled = true;                    // the row's
  TPartState State = TPartState::Normal;  // CellHotState, if the cell is the hot one
  bool Hovered = false;                   // the mouse is in the cell's hot area
  int HotLine = kNoIconTextHit;           // what of an icon cell the mouse is on
  TColor EditColor = clWindow;            // the inside of edit and combo box cells; clNone: none
};

// Lives for one row.
class TRdCellPainter {
 public:
  TRdCellPainter(QPainter& painter, const QWidget& widget, const TListSkin& skin)
      : FPainter(painter), FWidget(widget), FSkin(skin) {}

  // Clipped to the cell.
  void Paint(const TRdCell& cell);
  // Also of a group row.
  void PaintCheckBox(const QRect& box, bool checked, bool enabled = true);

 private:
  void PaintContent(const TRdCell& cell);
  void PaintText(const TRdCell& cell, const TTextLook& look);
  void PaintIconText(const TRdCell& cell);
  void PaintButton(const TRdCell& cell);
  void PaintProgress(const TRdCell& cell);
  void PaintProgressText(const TRdCell& cell, const TProgressParts& parts);
  void PaintStars(const TRdCell& cell);
  void PaintEdit(const TRdCell& cell, bool comboBox);
  void PaintDropButton(const QRect& rect, const TRdCell& cell);
  [[nodiscard]] bool Reacts(const TRdCell& cell) const;
  [[nodiscard]] QColor Color(TColor color) const;
  [[nodiscard]] QColor TextColor(const TRdCell& cell) const;
  [[nodiscard]] TTextLook TextLook(const TRdCell& cell) const;
  [[nodiscard]] TTextLook LabelLook(const TRdCell& cell, const QFont& font, bool hot) const;

  QPainter& FPainter;
  const QWidget& FWidget;
  const TListSkin& FSkin;
};

// What layouts ask for: the size of the picture of a push button in that state, empty without one, and of
// the icon that a cell shows, empty for a bad index.
[[nodiscard]] QSize ButtonPictureSize(const TItemSkin& skin, TPartState state, bool enabled);
[[nodiscard]] QSize IconSize(const TImageList* icons, int index);

// The parts of an icon cell, and the button of a button cell in its present state.
[[nodiscard]] TIconTextParts CellIconText(const TRdCell& cell, const TItemSkin& skin);
[[nodiscard]] QRect CellButton(const TRdCell& cell, const TItemSkin& skin, bool reacts);
