#include "platform/FileTypes.h"

#include <QMimeDatabase>

QString FileTypeText(const QString& extension) {
  const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(u'x' + extension);
  return types.isEmpty() || types.front().isDefault() ? QString() : types.front().comment();
}

// The name of the type itself: what a name says goes by its end, by all of it ("Makefile") or by a pattern.
QString FileTypeKey(const QString& name) {
  const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(name);
  return types.isEmpty() ? QString() : types.front().name();
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
