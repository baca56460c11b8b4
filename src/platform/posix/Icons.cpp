#include "platform/Icons.h"

#include "platform/Paths.h"

#include <QMimeDatabase>

QIcon FileIcon(const QString& path) {
  QStringList names;
  const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(ExtractFileName(path));
  if (!types.isEmpty()) names << types.front().iconName() << types.front().genericIconName();
  names << QStringLiteral("text-x-generic") << QStringLiteral("unknown");
  for (const QString& name : std::as_const(names)) {
    if (QIcon icon = QIcon::fromTheme(name); !icon.isNull()) return icon;
  }
  return {};
}
