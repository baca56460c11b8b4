// The read side of the system's registry. Linux has none: there every key is absent.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

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
