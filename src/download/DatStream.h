// Settings written as length-prefixed strings ("4:name3:abc"), read as a flat stream without regard to its
// structure: whatever stands before a length ("d", "l", "i123e") is stepped over with it.
#pragma once

#include <QByteArrayView>
#include <QString>

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
