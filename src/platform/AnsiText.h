// Texts in files that tell no encoding, and what one byte of them would be. Any thread.
#pragma once

#include <QByteArray>
#include <QString>

// Windows: by the system's ANSI code page, a character that it lacks becoming its default one. Linux: as
// NameFromBytes and NameToBytes.
[[nodiscard]] QString TextFromAnsi(QByteArrayView bytes);
[[nodiscard]] QByteArray TextToAnsi(const QString& text);
