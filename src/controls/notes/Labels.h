// The labels: transparent by a switch, one of several texts by its index, and a text that changes very often.
// Main thread.
#pragma once

#include <QBasicTimer>
#include <QLabel>

#include "controls/notes/Collection.h"

// Its caption is plain text. Transparent, as it is at first, shows what lies beneath; otherwise the label
// fills itself with its own background.
class TLabel : public QLabel {
 public:
  explicit TLabel(QWidget* parent = nullptr);

  [[nodiscard]] QString Caption() const { return text(); }
  void SetCaption(const QString& caption) { setText(caption); }

  [[nodiscard]] bool Transparent() const { return !autoFillBackground(); }
  void SetTransparent(bool transparent) { setAutoFillBackground(!transparent); }
};

struct TLabelItem {
  static constexpr const char* kClassName = "TLabelItem";

  QString Name;
  QString Text;
};

using TLabelCollection = TCollection<TLabelItem>;

// Shows one of the texts it holds.
class TLabelNote : public QLabel {
 public:
  explicit TLabelNote(QWidget* parent = nullptr);

  [[nodiscard]] TLabelCollection& Items() { return FItems; }
  [[nodiscard]] const TLabelCollection& Items() const { return FItems; }

  // The item whose text is the caption, -1 before any. Setting an index out of range is ignored, -1 too.
  [[nodiscard]] int TextIndex() const { return FTextIndex; }
  void SetTextIndex(int index);

  // The same by the item's name: empty before any; setting an unknown name is ignored.
  [[nodiscard]] QString NameIndex() const;
  void SetNameIndex(const QString& name);

  [[nodiscard]] QString Caption() const { return text(); }

  // While the form is loading, TextIndex is stored and shows nothing yet.
  void SetLoading(bool loading) { FLoading = loading; }

 private:
  TLabelCollection FItems;
  int FTextIndex = -1;
  bool FLoading = false;
};

// One line for a text that changes very often, such as the path that a scan is at.
// SetCaption only stores: at most one repaint follows per kRepaintInterval, however many calls there were.
// The text is shortened with an ellipsis when it is painted, and never asks its layout for another width.
class TEllipsisLabel : public QLabel {
 public:
  // Milliseconds.
  // About as often as an eye can follow; a scan may give a text for each of a million files.
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
