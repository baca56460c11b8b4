#include "controls/notes/PImageNote.h"

void TImageNote::SetImageIndex(int index) {
  if (FLoading) {
    FImageIndex = index;
    return;
  }
  if (index != -1 && !FItems.IsIndex(index)) return;
  FImageIndex = index;
  SetPicture(index == -1 ? TPicture() : FItems[index].Picture);
}

void TImageNote::SetHint(const QString& hint) {
  FHint = hint;
  setToolTip(FShowHint ? hint : QString());
}

void TImageNote::SetShowHint(bool show) {
  FShowHint = show;
  SetHint(FHint);
}

void TImageNote::SetLocked(bool locked) {
  FLocked = locked;
  FLockedBounds = geometry();
}

void TImageNote::resizeEvent(QResizeEvent* event) {
  TImage::resizeEvent(event);
  if (FLocked && geometry() != FLockedBounds) setGeometry(FLockedBounds);
}
