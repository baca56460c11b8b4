#include "platform/Paths.h"

#include "platform/windows/FileEntry.h"

#include <windows.h>

const QChar PathDelim = u'\\';
const int kLongestPath = 260;

// "C:" alone would be the current folder of that drive.
QString ExcludeTrailingPathDelimiter(const QString& path) {
  const QString without = WithoutDelimitersAtEnd(path);
  return path.endsWith(PathDelim) && without.endsWith(u':') ? without + PathDelim : without;
}

bool IsVolumeRoot(const QString& path) {
  return !path.isEmpty() && path.size() <= 3;
}

bool IsAbsolutePath(const QString& path) {
  return path.size() > 1 && path[1] == u':';
}

bool SameVolume(const QString& a, const QString& b) {
  return !a.isEmpty() && !b.isEmpty() && CompareText(a.left(1), b.left(1)) == 0;
}

QString VolumeName(const QString& root) {
  return WithoutDelimitersAtEnd(root);
}

bool SameFolder(const QString& a, const QString& b) {
  return CompareText(WithoutDelimitersAtEnd(a), WithoutDelimitersAtEnd(b)) == 0;
}

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
