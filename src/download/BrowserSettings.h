// Where the two browsers that the program itself knows put their downloads: a line search in the preferences
// of the first Firefox profile and of Chrome's default profile. Each call blocks on the file system.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

// The preferences of the first profile; empty if there is no such file.
[[nodiscard]] QString GetFirefoxPrefsPath();

// Whether or not that file exists; empty if the system does not know where it would lie.
[[nodiscard]] QString GetChromePrefsPath();

// The folder as the preferences name it; the user's folder for downloads if they don't; empty without
// preferences, that is, without the browser. Both throw TSettingsError if the preferences can't be read.
[[nodiscard]] QString GetFirefoxDownloadDir();
[[nodiscard]] QString GetChromeDownloadDir();

// Of the first line with both: the text between the marker and the next terminator behind it, which is not
// unescaped. Nothing if no line has both. The text is in the system's ANSI code page.
[[nodiscard]] std::optional<QString> FindLineValue(QByteArrayView text, QByteArrayView marker,
                                                   char terminator);
