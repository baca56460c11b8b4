// Paints a group row above its background, step by step: applications may take over some. Main thread.
#pragma once

#include "controls/list/rd/layout/GroupLayout.h"

class QPainter;
class QWidget;
class TImageList;

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
