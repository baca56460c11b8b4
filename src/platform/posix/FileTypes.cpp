#include "platform/FileTypes.h"

#include <QMimeDatabase>

QString FileTypeText(const QString& extension) {
  const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(u'x' + extension);
  return types.isEmpty() || types.front().isDefault() ? QString() : types.front().comment();
}
