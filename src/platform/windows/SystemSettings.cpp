#include "platform/SystemSettings.h"

#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "platform/windows/FileEntry.h"
#include "platform/windows/Handle.h"

#include <QDir>

#include <windows.h>

#include <shellapi.h>

namespace {

// The service shortens a default, so it gets one that no file holds and that stands for "missing".
constexpr wchar_t kMissing[] = L"\x1";

// Whole, since a shorter name would be looked for in the system's folder.
std::wstring ProfilePath(const QString& file) {
  return QDir::toNativeSeparators(QDir::current().absoluteFilePath(file)).toStdWString();
}

QString ReadValue(const std::wstring& file, const QString& section, const QString& key) {
  // An answer that fills the room may have been cut, and is asked for anew with twice as much.
  std::wstring value(256, L'\0');
  for (;;) {
    const DWORD length = GetPrivateProfileStringW(WideText(section), WideText(key), kMissing, value.data(),
                                                  static_cast<DWORD>(value.size()), file.c_str());
    if (length + 1 < value.size())
      return QString::fromWCharArray(value.data(), static_cast<qsizetype>(length));
    value.resize(value.size() * 2);
  }
}

HKEY KeyOf(TRegistryRoot root) {
  switch (root) {
    case TRegistryRoot::ClassesRoot:
      return HKEY_CLASSES_ROOT;
    case TRegistryRoot::CurrentUser:
      return HKEY_CURRENT_USER;
    case TRegistryRoot::LocalMachine:
      return HKEY_LOCAL_MACHINE;
    case TRegistryRoot::CurrentConfig:
      return HKEY_CURRENT_CONFIG;
  }
  return HKEY_CURRENT_USER;
}

TRegistryType TypeOf(DWORD type) {
  switch (type) {
    case REG_SZ:
      return TRegistryType::String;
    case REG_EXPAND_SZ:
      return TRegistryType::ExpandString;
    case REG_DWORD:
      return TRegistryType::Integer;
    case REG_BINARY:
      return TRegistryType::Binary;
    default:
      return TRegistryType::Unknown;
  }
}

// Reading needs no more than this right, and so succeeds for an ordinary user too.
TRegistryKey OpenKey(TRegistryRoot root, const QString& path) {
  const QString fromRoot = path.startsWith(u'\\') ? path.mid(1) : path;
  HKEY key = nullptr;
  const LSTATUS status = RegOpenKeyExW(KeyOf(root), WideText(fromRoot), 0, KEY_QUERY_VALUE, &key);
  return TRegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

// The text of a class without a name; empty if there is none.
QString DefaultTextOf(const QString& classKey) {
  const auto value = ReadRegistry(TRegistryRoot::ClassesRoot, classKey, QString());
  if (!value || (value->Type != TRegistryType::String && value->Type != TRegistryType::ExpandString))
    return {};
  const QString text(reinterpret_cast<const QChar*>(value->Bytes.constData()), value->Bytes.size() / 2);
  return text.left(text.indexOf(QChar::Null));
}

// By name and attributes alone: no file is looked at.
QString AskTypeText(const QString& name, DWORD attributes) {
  SHFILEINFOW reply{};
  const UINT flags = SHGFI_TYPENAME | SHGFI_USEFILEATTRIBUTES;
  if (SHGetFileInfoW(WideText(name), attributes, &reply, sizeof reply, flags) == 0) return {};
  return QString::fromWCharArray(reply.szTypeName);
}

}  // namespace

QString ReadPrivateProfile(const QString& file, const QString& section, const QString& key,
                           const QString& defaultValue) {
  if (!FileExists(file)) return defaultValue;
  const QString value = ReadValue(ProfilePath(file), section, key);
  return value == QString::fromWCharArray(kMissing) ? defaultValue : value;
}

std::optional<TRegistryValue> ReadRegistry(TRegistryRoot root, const QString& keyPath,
                                           const QString& valueName) {
  const TRegistryKey key = OpenKey(root, keyPath);
  if (!key) return std::nullopt;
  QByteArray bytes(512, '\0');
  for (;;) {  // another program may make the value longer meanwhile
    DWORD type = REG_NONE;
    auto size = static_cast<DWORD>(bytes.size());
    const LSTATUS status = RegQueryValueExW(key.get(), WideText(valueName), nullptr, &type,
                                            reinterpret_cast<BYTE*>(bytes.data()), &size);
    if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA) return std::nullopt;
    bytes.resize(static_cast<qsizetype>(size));
    if (status == ERROR_SUCCESS) return TRegistryValue{TypeOf(type), bytes};
  }
}

// The extension leads to the class, the class has the text.
QString FileTypeText(const QString& extension) {
  const QString classKey = extension.isEmpty() ? QString() : DefaultTextOf(extension);
  return classKey.isEmpty() ? QString() : DefaultTextOf(classKey);
}

QString FileTypeKey(const QString& name) {
  return ExtractFileExt(name).toLower();
}

QString TypeTextOfFile(const QString& name) {
  return AskTypeText(name, FILE_ATTRIBUTE_NORMAL);
}

QString TypeTextOfFolder() {
  return AskTypeText(QStringLiteral("folder"), FILE_ATTRIBUTE_DIRECTORY);
}
