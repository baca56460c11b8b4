// The numbers and rectangles of a scroll bar, without a widget. Pixels are device-independent. Main thread.
//
// Positions are int, as published; every sum or difference of them is reckoned in 64 bits, as Min and Max may
// be the ends of int.
// The page belongs to the range: a position is its first visible value, and the last page begins at Max -
// PageSize + 1.
#pragma once

#include "controls/scroll/ScrollTypes.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QtGlobal>

struct TScrollSkin;

// The largest step that can be set, as published.
inline constexpr int kMaxScrollInc = 32767;

// Range, position and steps. Max is never below Min, PageSize never below 0, Position within Min..Max.
struct TScrollRange {
  int Min = 0;
  int Max = 100;
  int PageSize = 0;
  int Position = 0;
  int SmallChange = 0;  // 0: computed
  int LargeChange = 0;  // 0: computed

  // Each takes the position back to the last page. A negative page size is ignored.
  void SetMin(int min);
  void SetMax(int max);
  void SetPageSize(int pageSize);
  // Clamps to Min..Max only.
  void SetPosition(qint64 position);
  void SetParams(int min, int max, int pageSize, int position);

  // Where stepping ends, which can be below Min if the page is larger than the range.
  [[nodiscard]] qint64 LargestPosition() const;
  // The way of the thumb in positions; 0 or less if there is none.
  [[nodiscard]] qint64 ScaleLength() const;
  // How far along its way the position is, 0 to 1.
  [[nodiscard]] double Fraction() const;
  [[nodiscard]] int SmallStep() const;
  [[nodiscard]] int LargeStep() const;
  [[nodiscard]] bool CanScroll() const;
  // Where a step of that amount leads.
  [[nodiscard]] qint64 StepTarget(qint64 amount) const;

  // Alike but for the position and the steps.
  [[nodiscard]] bool SameScale(const TScrollRange& other) const;

  friend bool operator==(const TScrollRange&, const TScrollRange&) = default;

 private:
  void Revalidate();
};

// What the pictures of a skin ask for. "Thickness" is across the bar, 0 for "as thick as the bar".
struct TScrollSizes {
  int Thickness = 0;  // of the bar; 0: it keeps its own
  int TopArrow = 0;   // lengths of the arrows along the bar
  int BottomArrow = 0;
  int TopArrowThickness = 0;
  int BottomArrowThickness = 0;
  int ThumbThickness = 0;
  int MinThumb = 0;
};

// What the platform asks for.
struct TScrollDefaults {
  int Thickness = 16;
  int Arrow = 16;
  int MinThumb = 21;
};

[[nodiscard]] TScrollSizes ScrollSizes(const TScrollSkin& skin, TScrollBarKind kind,
                                       const TScrollDefaults& defaults);

// The room that the parts share.
struct TScrollRoom {
  TScrollBarKind Kind = TScrollBarKind::Vertical;
  QSize Bar;
  QSize Screen;  // a bar of more than twice the screen counts as one without size
  bool Enabled = true;
  TScrollSizes Sizes;
};

// The parts. Without a thumb, its rectangle is the empty one at -1, and both page rectangles are the whole
// track, if the arrows leave one, but no part of their own.
struct TScrollLayout {
  QRect TopButtonRect;
  QRect BottomButtonRect;
  QRect ThumbRect{-1, -1, 0, 0};
  QRect PageUpRect;
  QRect PageDownRect;
  int TrackStart = 0;   // the track lies between the arrows
  int TrackLength = 0;  // 0 if they leave no room

  [[nodiscard]] bool HasThumb() const { return !ThumbRect.isEmpty(); }
  [[nodiscard]] const QRect& RectOf(TScrollBarPos part) const;
  [[nodiscard]] TScrollBarPos PartAt(QPoint point) const;
};

[[nodiscard]] int ThumbSize(const TScrollRange& range, const TScrollRoom& room, int trackLength);
[[nodiscard]] TScrollLayout ScrollLayout(const TScrollRange& range, const TScrollRoom& room);

// Range and layout of one bar.
class TScrollTrack {
 public:
  [[nodiscard]] const TScrollRange& Range() const { return FRange; }
  // The layout stays until it is arranged anew. Says whether anything changed.
  bool SetRange(const TScrollRange& range);

  [[nodiscard]] const TScrollRoom& Room() const { return FRoom; }
  [[nodiscard]] const TScrollLayout& Layout() const { return FLayout; }
  void Arrange(const TScrollRoom& room);
  void Arrange() { Arrange(FRoom); }

  // The first pixel of the thumb along the bar.
  [[nodiscard]] int ThumbStart() const;
  // Puts the thumb there, kept on the track, and sets the position by it: to Min if no thumb has room. Says
  // whether the position changed.
  bool DragThumb(int start);

 private:
  // Moves the thumb; gives its way from the start of the track, in positions.
  qint64 WayOfDrag(int start);

  TScrollRange FRange;
  TScrollRoom FRoom;
  TScrollLayout FLayout;
};
