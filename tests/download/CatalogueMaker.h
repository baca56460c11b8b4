// Writes catalogues of download applications for tests.
#pragma once

#include <QByteArray>

#include <initializer_list>

// The values of one application. Its installation folder, and with kind "reg" its folder, stand in the one
// value of the registry; a key that is nowhere unless named.
struct TCatalogueEntry {
  const char* Kind = "";
  QByteArray Directory = {};  // of the settings file
  const char* Path = "";      // of the settings file below the directory
  const char* Section = "";
  const char* Name = "";
  QByteArray Default = {};
  QByteArray Letter = {};
  QByteArray RegistryKey = "Software\\no such";
  QByteArray RegistryName = {};
};

inline QByteArray MakeCatalogue(std::initializer_list<TCatalogueEntry> entries) {
  QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<DownloadApplication>\n";
  for (const TCatalogueEntry& entry : entries) {
    const QByteArray registry = "<RegistryKeyPath Value='" + entry.RegistryKey +
                                "'/><RegistryKeyName Value='" + entry.RegistryName + "'/>";
    xml += QByteArray("<Application Name='x' ConfigInfoFrom='") + entry.Kind +
           "'><DefaultDownloadPath Value='" + entry.Default + "'/><DownloadDriveLetter Value='" +
           entry.Letter + "'/><InstallInfo>" + registry +
           "</InstallInfo><ConfigInfo><ConfigDirectory Value='" + entry.Directory + "'/><ConfigPath Value='" +
           entry.Path + "'/><ConfigSection Value='" + entry.Section + "'/><ConfigName Value='" + entry.Name +
           "'/></ConfigInfo><RegistryInfo>" + registry + "</RegistryInfo></Application>\n";
  }
  return xml + "</DownloadApplication>\n";
}
