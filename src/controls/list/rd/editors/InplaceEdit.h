// The line editor that stands in an edit cell. Main thread.
#pragma once

#include <QLineEdit>

#include <functional>

class TkInplaceEdit : public QLineEdit {
 public:
  explicit TkInplaceEdit(QWidget* parent);

  std::function<void()> OnEnter;
  // The focus has gone elsewhere.
  std::function<void()> OnExit;
  // A key before the editor takes it; true keeps it from the editor.
  std::function<bool(QKeyEvent& event)> OnKey;

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;
};
