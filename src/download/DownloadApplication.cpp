#include "download/DownloadApplication.h"

namespace {

const QString kRootTag = u"DownloadApplication"_qs;
const QString kItemTag = u"Application"_qs;

}  // namespace

TXMLRegistryRootKeyType TXMLInstallInfoType::RegistryRootKey() const {
  return TXMLRegistryRootKeyType(FElement.Child(u"RegistryRootKey"_qs));
}

TXMLRegistryKeyPathType TXMLInstallInfoType::RegistryKeyPath() const {
  return TXMLRegistryKeyPathType(FElement.Child(u"RegistryKeyPath"_qs));
}

TXMLRegistryKeyNameType TXMLInstallInfoType::RegistryKeyName() const {
  return TXMLRegistryKeyNameType(FElement.Child(u"RegistryKeyName"_qs));
}

TXMLConfigDirectoryType TXMLConfigInfoType::ConfigDirectory() const {
  return TXMLConfigDirectoryType(FElement.Child(u"ConfigDirectory"_qs));
}

TXMLConfigPathType TXMLConfigInfoType::ConfigPath() const {
  return TXMLConfigPathType(FElement.Child(u"ConfigPath"_qs));
}

TXMLConfigSectionType TXMLConfigInfoType::ConfigSection() const {
  return TXMLConfigSectionType(FElement.Child(u"ConfigSection"_qs));
}

TXMLConfigNameType TXMLConfigInfoType::ConfigName() const {
  return TXMLConfigNameType(FElement.Child(u"ConfigName"_qs));
}

TXMLRegistryRegType TXMLRegistryInfoType::RegistryRegType() const {
  return TXMLRegistryRegType(FElement.Child(u"RegistryRegType"_qs));
}

TXMLRegistryRootKeyType2 TXMLRegistryInfoType::RegistryRootKey() const {
  return TXMLRegistryRootKeyType2(FElement.Child(u"RegistryRootKey"_qs));
}

TXMLRegistryKeyPathType2 TXMLRegistryInfoType::RegistryKeyPath() const {
  return TXMLRegistryKeyPathType2(FElement.Child(u"RegistryKeyPath"_qs));
}

TXMLRegistryKeyNameType2 TXMLRegistryInfoType::RegistryKeyName() const {
  return TXMLRegistryKeyNameType2(FElement.Child(u"RegistryKeyName"_qs));
}

QString TXMLApplicationType::Name() const {
  return FElement.Attribute(u"Name"_qs);
}

void TXMLApplicationType::SetName(const QString& name) {
  FElement.SetAttribute(u"Name"_qs, name);
}

QString TXMLApplicationType::ConfigInfoFrom() const {
  return FElement.Attribute(u"ConfigInfoFrom"_qs);
}

void TXMLApplicationType::SetConfigInfoFrom(const QString& kind) {
  FElement.SetAttribute(u"ConfigInfoFrom"_qs, kind);
}

TXMLDefaultDownloadPathType TXMLApplicationType::DefaultDownloadPath() const {
  return TXMLDefaultDownloadPathType(FElement.Child(u"DefaultDownloadPath"_qs));
}

TXMLDownloadDriveLetterType TXMLApplicationType::DownloadDriveLetter() const {
  return TXMLDownloadDriveLetterType(FElement.Child(u"DownloadDriveLetter"_qs));
}

TXMLInstallInfoType TXMLApplicationType::InstallInfo() const {
  return TXMLInstallInfoType(FElement.Child(u"InstallInfo"_qs));
}

TXMLConfigInfoType TXMLApplicationType::ConfigInfo() const {
  return TXMLConfigInfoType(FElement.Child(u"ConfigInfo"_qs));
}

TXMLRegistryInfoType TXMLApplicationType::RegistryInfo() const {
  return TXMLRegistryInfoType(FElement.Child(u"RegistryInfo"_qs));
}

int TXMLDownloadApplicationType::Count() const {
  return FElement.ChildCount(kItemTag);
}

TXMLApplicationType TXMLDownloadApplicationType::Application(int index) const {
  return TXMLApplicationType(FElement.ChildAt(kItemTag, index));
}

TXMLDownloadApplicationType LoadDownloadApplication(const QString& fileName) {
  const TXmlElement root = LoadXml(fileName);
  if (root.Name() != kRootTag) throw TXmlError("no catalogue of download applications");
  return TXMLDownloadApplicationType(root);
}
