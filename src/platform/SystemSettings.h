// What the system keeps for programs to read: values of ini files, the registry, texts for types of files.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Reads one value of an ini file by the rules of the system's private-profile service: section and key
// without regard to case, the first section and the first key of a name win, blanks around both and one
// pair of quotation marks round the value are taken off. Read only. Any thread; blocks on the file system.
//
// Windows: the service itself answers. It takes bytes without a byte-order mark for the ANSI code page, finds
// no file by a path of 260 characters or more, and may differ in lines that are no section, key or comment.
//
// The default for a missing or unreadable file, section or key.
[[nodiscard]] QString ReadPrivateProfile(const QString& file, const QString& section, const QString& key,
                                         const QString& defaultValue);

// The read side of the system's registry. Linux has none: there every key is absent.
enum class TRegistryRoot { ClassesRoot, CurrentUser, LocalMachine, CurrentConfig };

enum class TRegistryType {
  Unknown,       // none of the others
  String,        // plain text
  ExpandString,  // text with environment variables
  Integer,
  Binary,
};

// A value with its bytes as they are stored: texts are UTF-16, little-endian, with or without a NUL at the
// end.
struct TRegistryValue {
  TRegistryType Type = TRegistryType::Unknown;
  QByteArray Bytes;
};

// Nothing if the key can't be opened or has no value of this name; no key is ever created. Any thread.
[[nodiscard]] std::optional<TRegistryValue> ReadRegistry(TRegistryRoot root, const QString& keyPath,
                                                         const QString& valueName);

// The user-visible name of the type of files with this extension (point included, ".pdf"); empty if the
// system has none. Main thread.
[[nodiscard]] QString FileTypeText(const QString& extension);

// What of a file's name decides its type and icon: all names with the same key have the same.
[[nodiscard]] QString FileTypeKey(const QString& name);

// The user-visible name of the type of a file with this name, or of a folder, as the desktop shows it.
// Neither needs to exist. Main thread.
[[nodiscard]] QString TypeTextOfFile(const QString& name);
[[nodiscard]] QString TypeTextOfFolder();
