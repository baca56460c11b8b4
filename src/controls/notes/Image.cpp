#include "controls/notes/Image.h"

#include <QPainter>

TImage::TImage(QWidget* parent) : QWidget(parent) {}

void TImage::SetPicture(const TPicture& picture) {
  const bool sameSize = picture.Size() == FPicture.Size();
  FPicture = picture;
  if (!sameSize) updateGeometry();
  update();
}

void TImage::SetStretch(bool stretch) {
  if (FStretch == stretch) return;
  FStretch = stretch;
  update();
}

void TImage::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  FPicture.Draw(painter, rect(), FStretch);
}

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

// The bounds are those of this moment, so locking again after a move takes the new ones.
void TImageNote::SetLocked(bool locked) {
  FLocked = locked;
  FLockedBounds = geometry();
}

void TImageNote::resizeEvent(QResizeEvent* event) {
  TImage::resizeEvent(event);
  if (FLocked && geometry() != FLockedBounds) setGeometry(FLockedBounds);
}
