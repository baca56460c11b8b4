#include "views/main/Dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>

std::optional<QString> TSystemDialogs::SelectFolderDialog(QWidget& owner, const QString& title) {
  const QString folder = QFileDialog::getExistingDirectory(&owner, title);
  if (folder.isEmpty()) return std::nullopt;
  return QDir::toNativeSeparators(folder);
}

bool TSystemDialogs::Ask(QWidget& owner, const QString& question) {
  return QMessageBox::warning(&owner, owner.windowTitle(), question, QMessageBox::Yes | QMessageBox::No) ==
         QMessageBox::Yes;
}

void TSystemDialogs::Tell(QWidget& owner, const QString& text) {
  QMessageBox::critical(&owner, owner.windowTitle(), text);
}
