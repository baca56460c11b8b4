#include "controls/progress/PImageRect.h"

#include <QPainter>

namespace {

constexpr QSize kDefaultSize(100, 100);

}  // namespace

TImageItem& TImageCollection::Add() {
  TImageItem& item = TCollection::Add();
  item.Width = FOwner.width();
  item.Height = FOwner.height();
  FOwner.update();
  return item;
}

// An aligned item keeps the one length that its side leaves free; the other and its place are the control's.
// Items do not push each other aside.
QRect ImageItemRect(const TImageItem& item, const QRect& client) {
  switch (item.Align) {
    case TImageAlign::Top:
      return {client.left(), client.top(), client.width(), item.Height};
    case TImageAlign::Bottom:
      return {client.left(), client.bottom() + 1 - item.Height, client.width(), item.Height};
    case TImageAlign::Left:
      return {client.left(), client.top(), item.Width, client.height()};
    case TImageAlign::Right:
      return {client.right() + 1 - item.Width, client.top(), item.Width, client.height()};
    case TImageAlign::Client:
      return client;
    case TImageAlign::None:
    case TImageAlign::Custom:
      break;
  }
  return {item.Left, item.Top, item.Width, item.Height};
}

TImageRect::TImageRect(QWidget* parent) : QWidget(parent), FItems(*this) {
  resize(kDefaultSize);
}

QSize TImageRect::sizeHint() const {
  return kDefaultSize;
}

void TImageRect::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  for (int i = 0; i < FItems.Count(); ++i) {
    const TImageItem& item = FItems[i];
    if (item.Visible) item.Picture.Draw(painter, ImageItemRect(item, rect()), item.Stretch);
  }
}
