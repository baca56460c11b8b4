#include "platform/PrivateProfile.h"

#include "platform/FileTests.h"
#include "platform/windows/LongPath.h"

#include <QDir>

#include <windows.h>

namespace {

// The service shortens a default, so it gets one that no file holds and that stands for "missing".
constexpr wchar_t kMissing[] = L"\x1";

// Whole, since a shorter name would be looked for in the system's folder.
std::wstring ProfilePath(const QString& file) {
  return QDir::toNativeSeparators(QDir::current().absoluteFilePath(file)).toStdWString();
}

QString ReadValue(const std::wstring& file, const QString& section, const QString& key) {
  std::wstring value(256, L'\0');
  for (;;) {
    const DWORD length = GetPrivateProfileStringW(WideText(section), WideText(key), kMissing, value.data(),
                                                  static_cast<DWORD>(value.size()), file.c_str());
    if (length + 1 < value.size())
      return QString::fromWCharArray(value.data(), static_cast<qsizetype>(length));
    value.resize(value.size() * 2);
  }
}

}  // namespace

QString ReadPrivateProfile(const QString& file, const QString& section, const QString& key,
                           const QString& defaultValue) {
  if (!FileExists(file)) return defaultValue;
  const QString value = ReadValue(ProfilePath(file), section, key);
  return value == QString::fromWCharArray(kMissing) ? defaultValue : value;
}
