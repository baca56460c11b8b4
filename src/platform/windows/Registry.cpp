#include "platform/Registry.h"

#include "platform/windows/Handle.h"
#include "platform/windows/LongPath.h"

namespace {

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

}  // namespace

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
