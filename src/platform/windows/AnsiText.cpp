#include "platform/AnsiText.h"

#include "platform/windows/LongPath.h"

#include <windows.h>

// Both calls count in 32 bits; a text beyond gives nothing.
QString TextFromAnsi(QByteArrayView bytes) {
  const int count = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, nullptr, 0);
  std::wstring text(static_cast<size_t>(length), L'\0');
  MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, text.data(), length);
  return QString::fromStdWString(text);
}

QByteArray TextToAnsi(const QString& text) {
  const int count = static_cast<int>(text.size());
  const int length = WideCharToMultiByte(CP_ACP, 0, WideText(text), count, nullptr, 0, nullptr, nullptr);
  QByteArray bytes(length, '\0');
  WideCharToMultiByte(CP_ACP, 0, WideText(text), count, bytes.data(), length, nullptr, nullptr);
  return bytes;
}
