// A typed view of DownloadApplication.xml, the catalogue of applications that keep a download folder of their
// own. One class per element; each is a thin view that keeps the whole document alive.
//
// An element or attribute that the document lacks reads as empty text; a setter changes the document in
// memory only. Of two elements of one name the first counts. One thread.
#pragma once

#include "platform/XmlDocument.h"

#include <QString>

class TXMLElementType {
 public:
  explicit TXMLElementType(const TXmlElement& element) : FElement(element) {}

 protected:
  TXmlElement FElement;
};

// An element whose one attribute is its value.
class TXMLValueType : public TXMLElementType {
 public:
  using TXMLElementType::TXMLElementType;
  [[nodiscard]] QString Value() const { return FElement.Attribute(QStringLiteral("Value")); }
  void SetValue(const QString& value) { FElement.SetAttribute(QStringLiteral("Value"), value); }
};

// The folder to assume where the settings name none; may hold environment variables.
class TXMLDefaultDownloadPathType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

// What to put in front of a folder that is not an absolute path.
class TXMLDownloadDriveLetterType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

// "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE" or "HKEY_CURRENT_CONFIG".
class TXMLRegistryRootKeyType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

class TXMLRegistryKeyPathType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

class TXMLRegistryKeyNameType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

// The registry value with the application's installation folder.
class TXMLInstallInfoType : public TXMLElementType {
 public:
  using TXMLElementType::TXMLElementType;
  [[nodiscard]] TXMLRegistryRootKeyType RegistryRootKey() const;
  [[nodiscard]] TXMLRegistryKeyPathType RegistryKeyPath() const;
  [[nodiscard]] TXMLRegistryKeyNameType RegistryKeyName() const;
};

// "InstallFolder" or a folder, which may hold environment variables.
class TXMLConfigDirectoryType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

// The settings file below that folder.
class TXMLConfigPathType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

// "ini": the section; "xml": a selection path from the root element.
class TXMLConfigSectionType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

// "ini", "dat", "keyvalue": the key.
class TXMLConfigNameType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

// Where the settings file lies and where in it the folder stands.
class TXMLConfigInfoType : public TXMLElementType {
 public:
  using TXMLElementType::TXMLElementType;
  [[nodiscard]] TXMLConfigDirectoryType ConfigDirectory() const;
  [[nodiscard]] TXMLConfigPathType ConfigPath() const;
  [[nodiscard]] TXMLConfigSectionType ConfigSection() const;
  [[nodiscard]] TXMLConfigNameType ConfigName() const;
};

// Without effect: the actual type in the registry decides.
class TXMLRegistryRegType : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

class TXMLRegistryRootKeyType2 : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

class TXMLRegistryKeyPathType2 : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

class TXMLRegistryKeyNameType2 : public TXMLValueType {
  using TXMLValueType::TXMLValueType;
};

// "reg": the registry value with the folder itself.
class TXMLRegistryInfoType : public TXMLElementType {
 public:
  using TXMLElementType::TXMLElementType;
  [[nodiscard]] TXMLRegistryRegType RegistryRegType() const;
  [[nodiscard]] TXMLRegistryRootKeyType2 RegistryRootKey() const;
  [[nodiscard]] TXMLRegistryKeyPathType2 RegistryKeyPath() const;
  [[nodiscard]] TXMLRegistryKeyNameType2 RegistryKeyName() const;
};

class TXMLApplicationType : public TXMLElementType {
 public:
  using TXMLElementType::TXMLElementType;
  [[nodiscard]] QString Name() const;
  void SetName(const QString& name);
  // How the folder is stored: "ini", "reg", "dat", "keyvalue" or "xml".
  [[nodiscard]] QString ConfigInfoFrom() const;
  void SetConfigInfoFrom(const QString& kind);

  [[nodiscard]] TXMLDefaultDownloadPathType DefaultDownloadPath() const;
  [[nodiscard]] TXMLDownloadDriveLetterType DownloadDriveLetter() const;
  [[nodiscard]] TXMLInstallInfoType InstallInfo() const;
  [[nodiscard]] TXMLConfigInfoType ConfigInfo() const;
  [[nodiscard]] TXMLRegistryInfoType RegistryInfo() const;
};

// The applications in document order, 0-based; an index outside them throws std::out_of_range.
class TXMLDownloadApplicationType : public TXMLElementType {
 public:
  using TXMLElementType::TXMLElementType;
  [[nodiscard]] int Count() const;
  [[nodiscard]] TXMLApplicationType Application(int index) const;
};

// Throws TXmlError if the file can't be read, is not well-formed or has another root element than
// "DownloadApplication". Blocks on the file system.
[[nodiscard]] TXMLDownloadApplicationType LoadDownloadApplication(const QString& fileName);
