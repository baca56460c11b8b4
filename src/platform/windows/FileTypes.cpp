#include "platform/FileTypes.h"

#include "platform/Paths.h"
#include "platform/Registry.h"
#include "platform/windows/LongPath.h"

#include <windows.h>

#include <shellapi.h>

namespace {

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
