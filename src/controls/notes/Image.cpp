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
