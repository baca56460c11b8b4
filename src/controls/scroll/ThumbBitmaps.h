// The thumb of a skinned scroll bar, composed once per size. Main thread.
#pragma once

#include "controls/skin/RdBitmap.h"

struct TScrollPaint;

// Holds the thumb for the mouse elsewhere and for the mouse over it.
class TThumbBitmaps {
 public:
  // Forgets both; to be called when a picture, the colour, the palette or the kind has changed.
  void Clear();

  // The thumb in that size, composed if it is not at hand.
  [[nodiscard]] const TRdBitmap& Get(const TScrollPaint& paint, QSize size, qreal density, bool hot);

 private:
  TRdBitmap FThumbBitmap;
  TRdBitmap FThumbHotBitmap;
};
