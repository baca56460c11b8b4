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

QIcon PlaceIcon(TPlaceIcon place) {
  switch (place) {
    case TPlaceIcon::Folder:
      return QIcon::fromTheme(QStringLiteral("folder"));
    case TPlaceIcon::Home:
      return QIcon::fromTheme(QStringLiteral("user-home"));
    case TPlaceIcon::FixedVolume:
      return QIcon::fromTheme(QStringLiteral("drive-harddisk"));
    case TPlaceIcon::RemovableVolume:
      return QIcon::fromTheme(QStringLiteral("drive-removable-media"));
    case TPlaceIcon::NetworkVolume:
      return QIcon::fromTheme(QStringLiteral("folder-remote"));
  }
  return {};
}
