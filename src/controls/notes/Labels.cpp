#include "controls/notes/Labels.h"

#include <QPainter>
#include <QStyle>
#include <QTimerEvent>

TLabel::TLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

TLabelNote::TLabelNote(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void TLabelNote::SetTextIndex(int index) {
  if (FLoading) {
    FTextIndex = index;
    return;
  }
  if (!FItems.IsIndex(index)) return;
  FTextIndex = index;
  setText(FItems[index].Text);
}

QString TLabelNote::NameIndex() const {
  return FItems.IsIndex(FTextIndex) ? FItems[FTextIndex].Name : QString();
}

void TLabelNote::SetNameIndex(const QString& name) {
  const int index = FItems.IndexOf(name);
  if (index >= 0) SetTextIndex(index);
}

TEllipsisLabel::TEllipsisLabel(QWidget* parent) : QLabel(parent) {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

// A timer that is running already will paint this text too.
void TEllipsisLabel::SetCaption(const QString& caption) {
  FCaption = caption;
  if (!FRepaint.isActive()) FRepaint.start(kRepaintInterval, this);
}

void TEllipsisLabel::SetElideMode(Qt::TextElideMode mode) {
  FElideMode = mode;
  update();
}

QSize TEllipsisLabel::sizeHint() const {
  const QMargins margins = contentsMargins();
  return {margins.left() + margins.right(), fontMetrics().height() + margins.top() + margins.bottom()};
}

void TEllipsisLabel::timerEvent(QTimerEvent* event) {
  if (event->timerId() != FRepaint.timerId()) return QLabel::timerEvent(event);
  FRepaint.stop();
  // With the repaint and not with each text: a screen reader is not to be told of more than is shown.
  setAccessibleName(FCaption);
  update();
}

void TEllipsisLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect area = contentsRect();
  const QString text = fontMetrics().elidedText(FCaption, FElideMode, area.width());
  const int flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
  style()->drawItemText(&painter, area, flags | Qt::TextSingleLine, palette(), isEnabled(), text,
                        foregroundRole());
}
