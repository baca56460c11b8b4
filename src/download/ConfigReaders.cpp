#include "download/ConfigReaders.h"

#include "download/DatStream.h"
#include "download/SettingsFile.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "platform/PrivateProfile.h"
#include "platform/Registry.h"
#include "platform/XmlDocument.h"
#include "support/TextLines.h"

namespace {

TRegistryRoot RootOf(const QString& name) {
  if (name == u"HKEY_LOCAL_MACHINE") return TRegistryRoot::LocalMachine;
  if (name == u"HKEY_CURRENT_CONFIG") return TRegistryRoot::CurrentConfig;
  return TRegistryRoot::CurrentUser;
}

// Unit by unit, as a path may hold surrogates that are no text.
QString RegistryText(const TRegistryValue& value) {
  if (value.Type != TRegistryType::String && value.Type != TRegistryType::Unknown) return {};
  const QString text(reinterpret_cast<const QChar*>(value.Bytes.constData()), value.Bytes.size() / 2);
  return text.left(text.indexOf(QChar()));
}

}  // namespace

QString ReadRegistryValue(const QString& rootName, const QString& keyPath, const QString& valueName) {
  const auto value = ReadRegistry(RootOf(rootName), keyPath, valueName);
  return value ? RegistryText(*value) : QString();
}

QString ReadFromRegistry(const QString& rootName, const QString& keyPath, const QString& valueName,
                         const QString& defaultValue) {
  const QString value = ReadRegistryValue(rootName, keyPath, valueName);
  return value.isEmpty() ? defaultValue : value;
}

QString ReadFromIni(const QString& file, const QString& section, const QString& key,
                    const QString& defaultValue) {
  return FileExists(file) ? ReadPrivateProfile(file, section, key, defaultValue) : QString();
}

QString ReadFromDat(const QString& file, const QString& key, const QString& defaultValue) {
  return FileExists(file) ? FindDatValue(ReadSettingsFile(file), key, defaultValue) : QString();
}

QString ReadFromKeyValue(const QString& file, const QString& key) {
  return FileExists(file) ? FindKeyValue(ReadSettingsFile(file), key) : QString();
}

QString ReadFromXml(const QString& file, const QString& path, const QString& defaultValue) {
  return FileExists(file) ? LoadXml(file).SelectText(path).value_or(defaultValue) : QString();
}

QString FindKeyValue(const QByteArray& content, const QString& key) {
  for (const QString& line : TextLines(content)) {
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0 || CompareText(line.left(equals), key) != 0) continue;
    QString value = line.mid(equals + 1);
    value.replace(u"\\\\"_qs, u"\\"_qs).replace(u"\\:"_qs, u":"_qs);
    const qsizetype semicolon = value.indexOf(u';');
    return semicolon < 0 ? value : value.left(semicolon + 1);
  }
  return {};
}
