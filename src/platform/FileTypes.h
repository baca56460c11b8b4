// The system's texts for file types.
#pragma once

#include <QString>

// The user-visible name of the type of files with this extension (point included, ".pdf"); empty if the
// system has none. Main thread.
[[nodiscard]] QString FileTypeText(const QString& extension);

// What of a file's name decides its type and icon: all names with the same key have the same.
[[nodiscard]] QString FileTypeKey(const QString& name);

// The user-visible name of the type of a file with this name, or of a folder, as the desktop shows it.
// Neither needs to exist. Main thread.
[[nodiscard]] QString TypeTextOfFile(const QString& name);
[[nodiscard]] QString TypeTextOfFolder();
