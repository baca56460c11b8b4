// The five kinds in which applications store their download folder, one reader each. Every reader takes the
// folder's default, which it gives where its kind says so. The text is as it was stored.
#pragma once

#include <QByteArray>
#include <QString>

// A value that stands as plain text, or, of a type that the registry reader does not know, its bytes taken as
// text up to the first NUL; empty for a key or value that is missing and for any other type. The root is the
// current user's unless the name is that of another one.
[[nodiscard]] QString ReadRegistryValue(const QString& rootName, const QString& keyPath,
                                        const QString& valueName);

// The default for a value that is missing or empty.
[[nodiscard]] QString ReadFromRegistry(const QString& rootName, const QString& keyPath,
                                       const QString& valueName, const QString& defaultValue);

// The readers of files give empty text if the file does not exist; all block on the file system.

// By the private-profile rules; the default for a missing section or key and for a file that can't be read.
[[nodiscard]] QString ReadFromIni(const QString& file, const QString& section, const QString& key,
                                  const QString& defaultValue);

// As FindDatValue. Throws TSettingsError, also if the file can't be read.
[[nodiscard]] QString ReadFromDat(const QString& file, const QString& key, const QString& defaultValue);

// As FindKeyValue: a missing key gives empty text, there is no default. Throws TSettingsError if the file
// can't be read.
[[nodiscard]] QString ReadFromKeyValue(const QString& file, const QString& key);

// The text of the node that the selection path, from the root element, finds, even if empty; the default if
// it finds none. Throws TXmlError, also if the file can't be read.
[[nodiscard]] QString ReadFromXml(const QString& file, const QString& path, const QString& defaultValue);

// The value of the first line "key=value" of this key, without regard to case and with every blank counting;
// "\\" and "\:" are unescaped and the value ends behind its first ";". Empty if there is no such line.
[[nodiscard]] QString FindKeyValue(const QByteArray& content, const QString& key);
