// A label of one line for a text that changes very often, such as the path that a scan is at. Main thread.
#pragma once

#include <QBasicTimer>
#include <QLabel>

// SetCaption only stores: at most one repaint follows per kRepaintInterval, however many calls there were.
// The text is shortened with an ellipsis when it is painted, and never asks its layout for another width.
class TEllipsisLabel : public QLabel {
 public:
  // Milliseconds.
  static constexpr int kRepaintInterval = 30;

  explicit TEllipsisLabel(QWidget* parent = nullptr);

  [[nodiscard]] const QString& Caption() const { return FCaption; }
  void SetCaption(const QString& caption);

  // Where the ellipsis goes; at the end at first.
  void SetElideMode(Qt::TextElideMode mode);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  using QLabel::setText;

  QString FCaption;
  QBasicTimer FRepaint;
  Qt::TextElideMode FElideMode = Qt::ElideRight;
};
