#include "platform/AnsiText.h"

#include "platform/Paths.h"

QString TextFromAnsi(QByteArrayView bytes) {
  return NameFromBytes(bytes);
}

QByteArray TextToAnsi(const QString& text) {
  return NameToBytes(text);
}
