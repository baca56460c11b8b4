// Paints the sections of a header: the style's own section, the caption, the sort mark at the caption's
// right.
#pragma once

#include <QRect>
#include <QStyle>
#include <QStyleOptionHeader>

class QPainter;
class QWidget;
class TImageList;
class TListColumn;
class TListLayout;

// Which sections look special now; -1 for none.
struct THeaderLook {
  int HotColumn = -1;
  int PressedColumn = -1;
};

// Lives for one paint.
class THeaderPainter {
 public:
  THeaderPainter(QPainter& painter, const QWidget& widget, const TImageList* marks)
      : FPainter(painter), FWidget(widget), FMarks(marks) {}

  void PaintSection(const QRect& rect, const TListColumn& column, int columnCount, THeaderLook look);
  // What is right of the last section.
  void PaintRest(const QRect& rect);

 private:
  void PaintBackground(const QRect& rect, QStyle::State state, QStyleOptionHeader::SectionPosition position);
  void PaintLabel(const QRect& rect, const TListColumn& column);

  QPainter& FPainter;
  const QWidget& FWidget;
  const TImageList* FMarks;
};
