#include "views/FolderDialog.h"

#include <QDir>
#include <QFileDialog>

namespace {

// Set while the picker's answer is given beforehand; the inner optional is the answer itself.
std::optional<std::optional<QString>> GivenAnswer;

}  // namespace

std::optional<QString> SelectFolderDialog(QWidget* owner, const QString& title) {
  if (GivenAnswer) return *GivenAnswer;
  const QString folder = QFileDialog::getExistingDirectory(owner, title);
  if (folder.isEmpty()) return std::nullopt;
  return QDir::toNativeSeparators(folder);
}

TFolderDialogAnswer::TFolderDialogAnswer(std::optional<QString> answer) {
  GivenAnswer.emplace(std::move(answer));
}
TFolderDialogAnswer::~TFolderDialogAnswer() {
  GivenAnswer.reset();
}
