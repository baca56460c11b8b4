// The folder picker that the wizard and the Move commands share. Main thread.
#pragma once

#include <QString>

#include <optional>

class QWidget;

// Asks for a folder, modal to the owner. The folder's path, or nothing if the user cancelled.
[[nodiscard]] std::optional<QString> SelectFolderDialog(QWidget* owner, const QString& title);

// While one of these lives, the picker shows nothing and gives this answer: for tests and demonstrations.
class TFolderDialogAnswer {
 public:
  explicit TFolderDialogAnswer(std::optional<QString> answer);
  ~TFolderDialogAnswer();
  TFolderDialogAnswer(const TFolderDialogAnswer&) = delete;
  TFolderDialogAnswer& operator=(const TFolderDialogAnswer&) = delete;
};
