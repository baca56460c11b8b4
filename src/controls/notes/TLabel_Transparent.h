// The label that is transparent by a switch. Main thread.
#pragma once

#include <QLabel>

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
