// Nine-slice pictures: four slices that keep their size while the middle fills the room. Main thread.
//
// Corners keep their size, edges change in one axis, the middle in both. DesignParts is the whole rule,
// without a painter; drawing only copies what it gives. Buttons, rows and group rows of skins all draw this
// way.
#pragma once

#include <QRect>
#include <QSize>

#include <functional>
#include <vector>

class QImage;
class QPainter;
class TPicture;
class TRdBitmap;

// How edges and middle fill their room. The default counts as sdmStretch.
enum TSuperStretchMode { sdmDefault, sdmStretch, sdmFill };

// Stands as Right or Bottom for "as Left" or "as Top".
inline constexpr int kSameSlice = -1000;

// The widths of the slices, in device-independent pixels of the picture. A value.
struct TDesignSlices {
  int Left = 0;
  int Top = 0;
  int Right = 0;
  int Bottom = 0;
  TSuperStretchMode StretchMode = sdmDefault;

  // All four are 0.
  [[nodiscard]] bool Empty() const { return Left == 0 && Top == 0 && Right == 0 && Bottom == 0; }

  // A third of a picture of that size on each side.
  [[nodiscard]] static TDesignSlices ThirdsOf(QSize picture, TSuperStretchMode mode = sdmDefault);

  friend bool operator==(const TDesignSlices&, const TDesignSlices&) = default;
};

// The slices as a property of a skin, which tells its owner of changes.
class TDesignRect {
 public:
  // Runs after each change, and whenever Empty is set. While Empty is set to false on an empty one, AutoFill
  // is up: the owner may seed the slices with SetSlices.
  std::function<void(TDesignRect&)> OnChange;

  [[nodiscard]] const TDesignSlices& Slices() const { return FSlices; }
  void SetSlices(const TDesignSlices& slices);

  [[nodiscard]] int Left() const { return FSlices.Left; }
  void SetLeft(int left) { Set(&TDesignSlices::Left, left); }
  [[nodiscard]] int Top() const { return FSlices.Top; }
  void SetTop(int top) { Set(&TDesignSlices::Top, top); }
  [[nodiscard]] int Right() const { return FSlices.Right; }
  void SetRight(int right) { Set(&TDesignSlices::Right, right); }
  [[nodiscard]] int Bottom() const { return FSlices.Bottom; }
  void SetBottom(int bottom) { Set(&TDesignSlices::Bottom, bottom); }
  [[nodiscard]] TSuperStretchMode StretchMode() const { return FSlices.StretchMode; }
  void SetStretchMode(TSuperStretchMode mode);

  [[nodiscard]] bool Empty() const { return FSlices.Empty(); }
  // True zeroes the four. False leaves them to the owner.
  void SetEmpty(bool empty);
  [[nodiscard]] bool AutoFill() const { return FAutoFill; }

 private:
  void Set(int TDesignSlices::*side, int value);
  void Changed();

  TDesignSlices FSlices;
  bool FAutoFill = false;
};

// One of the nine parts: `Source` in the picture, `Target` on the surface, both device-independent.
struct TDesignPart {
  QRect Source;
  QRect Target;
  bool Tiled = false;

  friend bool operator==(const TDesignPart&, const TDesignPart&) = default;
};

// The parts that have a size, in the order of drawing: top-left, left edge, bottom-left, top edge, bottom
// edge, top-right, right edge, bottom-right, middle.
[[nodiscard]] std::vector<TDesignPart> DesignParts(QSize picture, const QRect& target,
                                                   const TDesignSlices& slices);

// Draws the picture over `target`, blended by its alpha. Empty pictures and targets draw nothing. The slices
// keep their size in device-independent pixels on any device.
void DrawDesignRect(QPainter& painter, const QRect& target, const TPicture& picture,
                    const TDesignSlices& slices);
void DrawDesignRect(QPainter& painter, const QRect& target, const TRdBitmap& bitmap,
                    const TDesignSlices& slices);
