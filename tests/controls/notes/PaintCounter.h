// Counts the paint events of a widget.
#pragma once

#include <QEvent>
#include <QObject>

class TPaintCounter : public QObject {
 public:
  explicit TPaintCounter(QObject& watched) { watched.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    Count += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
  int Count = 0;
};
