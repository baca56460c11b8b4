// The header of a list with the header skin: where the parts of a section lie, for painting and hit tests,
// and how it is painted, each section in a bitmap, then in one go. Main thread.
#pragma once

#include "controls/list/rd/layout/RdCellLayout.h"
#include "controls/list/rd/skin/RdSkinValues.h"
#include "controls/skin/RdBitmap.h"

#include <QRect>
#include <QSize>

#include <vector>

class QPainter;
class QWidget;
class TImageList;

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

// A column as far as its width goes.
struct TAutoColumn {
  bool AutoSize = false;
  int Width = 0;
  int MinWidth = 0;  // 0 is no bound
  int MaxWidth = 0;

  friend bool operator==(const TAutoColumn&, const TAutoColumn&) = default;
};

// The new widths of all columns. room: the client width without a vertical bar. The auto columns get equal
// shares, the first of them also the remainder; one whose bounds refuse its share keeps the bound, and the
// others share the rest anew. Without auto columns nothing changes.
[[nodiscard]] std::vector<int> ShareColumnWidths(std::vector<TAutoColumn> columns, int room);

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
