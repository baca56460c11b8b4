// What the program asks and tells in boxes of their own. Main thread.
#pragma once

#include <QString>

#include <optional>

class QWidget;

// Handed to the forms, so that others than the user may answer. Each call returns when the box has closed;
// boxes are modal to the owner and have its caption.
class TDialogs {
 public:
  virtual ~TDialogs() = default;

  // The folder picker that the wizard and the Move commands share: a folder's path, or nothing if the user
  // cancelled.
  [[nodiscard]] virtual std::optional<QString> SelectFolderDialog(QWidget& owner, const QString& title) = 0;

  // A warning with Yes and No; true for Yes.
  [[nodiscard]] virtual bool Ask(QWidget& owner, const QString& question) = 0;

  // Something failed.
  virtual void Tell(QWidget& owner, const QString& text) = 0;
};

// The desktop's own boxes.
class TSystemDialogs : public TDialogs {
 public:
  [[nodiscard]] std::optional<QString> SelectFolderDialog(QWidget& owner, const QString& title) override;
  [[nodiscard]] bool Ask(QWidget& owner, const QString& question) override;
  void Tell(QWidget& owner, const QString& text) override;
};
