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

void TImageNote::SetLocked(bool locked) {
  FLocked = locked;
  FLockedBounds = geometry();
}

void TImageNote::resizeEvent(QResizeEvent* event) {
  TImage::resizeEvent(event);
  if (FLocked && geometry() != FLockedBounds) setGeometry(FLockedBounds);
}
