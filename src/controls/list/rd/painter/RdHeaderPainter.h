// Paints the header of a list with the header skin: each section in a bitmap, then in one go. Main thread.
#pragma once

#include "controls/list/rd/layout/PartState.h"
#include "controls/list/rd/layout/RdHeaderLayout.h"
#include "controls/scroll/RdBitmap.h"

class QPainter;
class QWidget;
class TImageList;

struct TRdHeaderSection {
  QRect Rect;
  QString Caption;
  QFont Font;  // HeaderFont, or ColumnHeaderFont without ParentFont
  TAlignment Alignment = TAlignment::LeftJustify;
  bool First = false;
  bool CheckBox = false;  // CheckBoxOnColumnHeader
  bool Checked = false;   // CheckAll
  const TImageList* Arrows = nullptr;
  int Arrow = -1;  // in the sort column: sort state - 1, or what the application made of it
  TPartState State = TPartState::Normal;  // a hot section of a list that cannot be sorted is Normal
};

// The parts of a section for hit tests.
[[nodiscard]] TRdHeaderParts HeaderSectionParts(const TRdHeaderSection& section, const TListSkin& skin);

// Lives for one paint of the header.
class TRdHeaderPainter {
 public:
  TRdHeaderPainter(QPainter& target, TRdBitmap& bitmap, const QWidget& widget, const TListSkin& skin)
      : FTarget(target), FBitmap(bitmap), FWidget(widget), FSkin(skin) {}

  void PaintSection(const TRdHeaderSection& section);
  // What is right of the last section, at least one pixel.
  void PaintRest(const QRect& rect);

 private:
  void PaintBackground(QPainter& painter, const QRect& rect);
  void PaintState(QPainter& painter, const QRect& rect, TPartState state);
  void PaintDivider(QPainter& painter, const QRect& divider);
  void PaintCheckBox(QPainter& painter, const QRect& box, bool checked);
  void PaintCaption(QPainter& painter, const QRect& room, const TRdHeaderSection& section);

  QPainter& FTarget;
  TRdBitmap& FBitmap;
  const QWidget& FWidget;
  const TListSkin& FSkin;
};
