#include "platform/FileTypes.h"

#include "platform/Registry.h"

namespace {

// The text of a class without a name; empty if there is none.
QString DefaultTextOf(const QString& classKey) {
  const auto value = ReadRegistry(TRegistryRoot::ClassesRoot, classKey, QString());
  if (!value || (value->Type != TRegistryType::String && value->Type != TRegistryType::ExpandString))
    return {};
  const QString text(reinterpret_cast<const QChar*>(value->Bytes.constData()), value->Bytes.size() / 2);
  return text.left(text.indexOf(QChar::Null));
}

}  // namespace

// The extension leads to the class, the class has the text.
QString FileTypeText(const QString& extension) {
  const QString classKey = extension.isEmpty() ? QString() : DefaultTextOf(extension);
  return classKey.isEmpty() ? QString() : DefaultTextOf(classKey);
}
