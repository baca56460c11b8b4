#include "platform/FileTypes.h"

#include <QMimeDatabase>

QString FileTypeText(const QString& extension) {
  const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(u'x' + extension);
  return types.isEmpty() || types.front().isDefault() ? QString() : types.front().comment();
}

QString TypeTextOfFile(const QString& name) {
  const QMimeDatabase types;
  const QList<QMimeType> found = types.mimeTypesForFileName(name);
  return (found.isEmpty() ? types.mimeTypeForName(QStringLiteral("application/octet-stream")) : found.front())
      .comment();
}

QString TypeTextOfFolder() {
  return QMimeDatabase().mimeTypeForName(QStringLiteral("inode/directory")).comment();
}
