// What the program reads in the settings of others: the folder for downloads that browsers and applications
// keep. The bytes are foreign: every length and offset is hostile.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <stdexcept>

// Settings that can't be read or are damaged beyond what their reader takes.
class TSettingsError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The whole file, however large. Throws TSettingsError if it can't be read. Blocks on the file system.
[[nodiscard]] QByteArray ReadSettingsFile(const QString& file);

// The five kinds in which applications store their download folder, one reader each. Every reader takes the
// folder's default, which it gives where its kind says so. The text is as it was stored.

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

// Settings written as length-prefixed strings ("4:name3:abc"), read as a flat stream without regard to its
// structure: whatever stands before a length ("d", "l", "i123e") is stepped over with it.

// The string after the one that equals the key; the default if no string does. The first byte, which opens
// the outer dictionary, is skipped. One character per byte: UTF-8 is not decoded. Throws TSettingsError for
// a length beyond 2^31-1.
[[nodiscard]] QString FindDatValue(QByteArrayView bytes, const QString& key, const QString& defaultValue);

// Reads the string at the 0-based position and returns the position behind it. 0 and an empty token if no
// whole string is left.
[[nodiscard]] qsizetype NextDatToken(QByteArrayView bytes, qsizetype position, QString& token);

// The number that the digits at the end of the bytes make; 0 if there are none. Throws TSettingsError as
// above.
[[nodiscard]] int TrailingNumber(QByteArrayView bytes);

// Where the two browsers that the program itself knows put their downloads: a line search in the preferences
// of the first Firefox profile and of Chrome's default profile. Each call blocks on the file system.

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
