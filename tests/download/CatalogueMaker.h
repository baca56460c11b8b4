// Writes catalogues of download applications for tests.
#pragma once

#include <QByteArray>

#include <initializer_list>

// The values of one application; those of its registry values name keys that are nowhere.
struct TCatalogueEntry {
  const char* Kind = "";
  QByteArray Directory = {};  // of the settings file
  const char* Path = "";      // of the settings file below the directory
  const char* Section = "";
  const char* Name = "";
  QByteArray Default = {};
  QByteArray Letter = {};
};

inline QByteArray MakeCatalogue(std::initializer_list<TCatalogueEntry> entries) {
  QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<DownloadApplication>\n";
  for (const TCatalogueEntry& entry : entries)
    xml += QByteArray("<Application Name='x' ConfigInfoFrom='") + entry.Kind +
           "'><DefaultDownloadPath Value='" + entry.Default + "'/><DownloadDriveLetter Value='" +
           entry.Letter +
           "'/><InstallInfo><RegistryKeyPath Value='Software\\no such'/></InstallInfo><ConfigInfo>"
           "<ConfigDirectory Value='" +
           entry.Directory + "'/><ConfigPath Value='" + entry.Path + "'/><ConfigSection Value='" +
           entry.Section + "'/><ConfigName Value='" + entry.Name +
           "'/></ConfigInfo><RegistryInfo><RegistryKeyPath Value='Software\\no such'/></RegistryInfo>"
           "</Application>\n";
  return xml + "</DownloadApplication>\n";
}
