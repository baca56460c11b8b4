#include "controls/buttons/RdImageButtonEx.h"

#include <QPainter>

// An ExpandImage takes the place of all slices.
void TRdImageButtonEx::PaintPicture(QPainter& painter) const {
  if (FLook.Expand && !FLook.ExpandImage.Empty()) return FLook.ExpandImage.Draw(painter, rect(), true);
  PaintSlices(painter, SlicesOf(FPictures, FLook, Mood()), size());
}

QRect TRdImageButtonEx::CaptionRect() const {
  return SlicedTextRect(FLook, size(), fontMetrics());
}

bool TRdImageButtonEx::PaintsPicture(const TPicture& picture) const {
  if (FLook.Expand && !FLook.ExpandImage.Empty()) return &picture == &FLook.ExpandImage;
  const TShownSlices shown = SlicesOf(FPictures, FLook, Mood());
  return &picture == &shown.Left || &picture == &shown.Middle || &picture == &shown.Right;
}
