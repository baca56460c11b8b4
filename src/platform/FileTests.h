// What stands at a path. Every function answers false or nothing for a path that can't be looked at; none
// throws. Paths of any length and names that are not valid UTF-8 are served. Any thread; blocks on the
// file system.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// A file of any kind that is no folder. A symbolic link counts as what it leads to.
[[nodiscard]] bool FileExists(const QString& path);

// A folder, or a symbolic link to one.
[[nodiscard]] bool DirectoryExists(const QString& path);

// True if the folder can be listed by this user.
[[nodiscard]] bool DirectoryReadable(const QString& path);

// Where the folder really lies, all links followed and with its delimiter; empty if that can't be told. One
// folder has one such path, which can be listed. On Windows "\\?\C:\a\" or "\\?\UNC\server\share\a\", and
// "\\?\Volume{...}\a\" where the volume has no letter.
[[nodiscard]] QString RealFolder(const QString& folder);

// The attribute bits of TFileAttribute and the length of one path; nothing if there is no such entry.
// The entry itself is looked at: a symbolic link is a link here.
struct TFileStatus {
  unsigned Attributes = 0;
  quint64 Size = 0;  // bytes; 0 for a folder
};
[[nodiscard]] std::optional<TFileStatus> GetFileStatus(const QString& path);

// The whole content of a file, or nothing if it can't be read or is longer than the bound in bytes.
[[nodiscard]] std::optional<QByteArray> ReadWholeFile(const QString& path, qint64 bound = 64 << 20);
