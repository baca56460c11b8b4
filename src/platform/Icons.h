// The system's icons for files, by name alone: the file need not exist. Main thread.
#pragma once

#include <QIcon>
#include <QString>

// The icon of a file of this name, from the desktop's icon theme; a generic file picture if its type is
// not known. Never a null icon while the theme or the program's own fall-back theme has that picture.
// Windows: the shell's icon, in its large and its small size.
[[nodiscard]] QIcon FileIcon(const QString& path);

// The icon of a place of the desktop; null if the system has none.
enum class TPlaceIcon { Folder, Home, FixedVolume, RemovableVolume, NetworkVolume };
[[nodiscard]] QIcon PlaceIcon(TPlaceIcon place);
