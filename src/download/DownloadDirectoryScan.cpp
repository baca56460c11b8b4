#include "download/DownloadDirectoryScan.h"

#include "download/DownloadApplication.h"
#include "download/DownloadSettings.h"
#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/Volumes.h"

#include <algorithm>
#include <optional>

namespace {

// No expanded text is longer.
constexpr int kExpandedUnits = 259;

QString Expanded(const QString& text) {
  return ExpandEnvironment(text).left(kExpandedUnits);
}

// With the delimiter at its end; nothing stays nothing.
QString AsFolder(const QString& path) {
  return path.isEmpty() ? path : IncludeTrailingPathDelimiter(path);
}

QString ExpandDirectory(const QString& text) {
  return AsFolder(Expanded(text));
}

QString GetConfigFolder(const TXMLApplicationType& application) {
  const QString directory = application.ConfigInfo().ConfigDirectory().Value();
  if (CompareText(directory, u"InstallFolder"_qs) != 0) return ExpandDirectory(directory);
  const TXMLInstallInfoType info = application.InstallInfo();
  return AsFolder(ReadRegistryValue(info.RegistryRootKey().Value(), info.RegistryKeyPath().Value(),
                                    info.RegistryKeyName().Value()));
}

QString ReadDirectory(const TXMLApplicationType& application) {
  const QString kind = application.ConfigInfoFrom();
  const QString defaultPath = Expanded(application.DefaultDownloadPath().Value());
  const TXMLRegistryInfoType registry = application.RegistryInfo();
  if (kind == u"reg")
    return ReadFromRegistry(registry.RegistryRootKey().Value(), registry.RegistryKeyPath().Value(),
                            registry.RegistryKeyName().Value(), defaultPath);

  const TXMLConfigInfoType config = application.ConfigInfo();
  const QString file = GetConfigFolder(application) + config.ConfigPath().Value();
  const QString section = config.ConfigSection().Value();
  const QString name = config.ConfigName().Value();
  if (kind == u"ini") return ReadFromIni(file, section, name, defaultPath);
  if (kind == u"dat") return ReadFromDat(file, name, defaultPath);
  if (kind == u"keyvalue") return ReadFromKeyValue(file, name);
  if (kind == u"xml") return ReadFromXml(file, section, defaultPath);
  return {};
}

// As the application stores it, made absolute and ending in the delimiter.
QString DownloadDirectoryOf(const TXMLApplicationType& application) {
  const QString dir = ReadDirectory(application);
  if (dir.isEmpty() || IsAbsolutePath(dir)) return AsFolder(dir);
  return AsFolder(application.DownloadDriveLetter().Value() + dir);
}

// By the last byte in the system's ANSI code page: some East Asian ones have letters that end in the byte of
// '\\'.
bool EndsInDelimiterByte(const QString& dir) {
  return TextToAnsi(dir).endsWith(PathDelim.toLatin1());
}

std::optional<TXMLDownloadApplicationType> LoadCatalogue(const QString& file) {
  if (!FileExists(file)) return std::nullopt;
  try {
    return LoadDownloadApplication(file);
  } catch (const TXmlError&) {
    return std::nullopt;
  }
}

// Compares the first characters of two paths, as many as given. Case counts where it does in the names of
// folders.
bool BeginAlike(const QString& a, const QString& b, qsizetype count) {
  return SameFolder(a.left(count), b.left(count));
}

// One of the two is the beginning of the other.
bool Nested(const QString& a, const QString& b) {
  return BeginAlike(a, b, std::min(a.size(), b.size()));
}

// A volume that is mounted below the location is none of it.
bool LiesOn(const QString& location, const QString& dir, const QStringList& volumeRoots) {
  const qsizetype end = IncludeTrailingPathDelimiter(location).size();
  return BeginAlike(dir, location, location.size()) &&
         std::none_of(volumeRoots.begin(), volumeRoots.end(), [&](const QString& root) {
           return root.size() > end && BeginAlike(dir, root, root.size());
         });
}

}  // namespace

void TDownloadDirectoryScan::ScanDirectories() {
  ScanDirectories(ProgramFolder() + u"DownloadApplication.xml"_qs);
}

void TDownloadDirectoryScan::ScanDirectories(const QString& catalogueFile) {
  FDirectories.clear();
  FFound.clear();
  AddFound([] { return TFound{u"Firefox"_qs, GetFirefoxDownloadDir()}; });
  AddFound([] { return TFound{u"Chrome"_qs, GetChromeDownloadDir()}; });
  const auto catalogue = LoadCatalogue(catalogueFile);
  const int count = catalogue ? catalogue->Count() : 0;
  for (int i = 0; i < count; ++i)
    AddFound([&] {
      const TXMLApplicationType application = catalogue->Application(i);
      return TFound{application.Name(), DownloadDirectoryOf(application)};
    });
}

// Settings that can't be read or are broken cost their own application its folder and no other one.
void TDownloadDirectoryScan::AddFound(const std::function<TFound()>& find) {
  try {
    const TFound found = find();
    AddDirectory(FDirectories, found.Directory);
    if (DirectoryExists(found.Directory)) FFound.push_back(found);
  } catch (const std::exception&) {
  }
}

void TDownloadDirectoryScan::AddDirectory(QStringList& target, const QString& dir) {
  const QString added = dir.isEmpty() || EndsInDelimiterByte(dir) ? dir : dir + PathDelim;
  if (!DirectoryExists(added)) return;
  for (qsizetype i = target.size() - 1; i >= 0; --i) {
    if (!Nested(target[i], added)) continue;
    if (target[i].size() <= added.size()) return;
    target.removeAt(i);
    break;
  }
  target.append(added);
}

void TDownloadDirectoryScan::FilterByLocations(const QStringList& locations) {
  QStringList roots;
  for (const TVolume& volume : ListFixedVolumes())
    roots.append(volume.Root);
  FilterByLocations(locations, roots);
}

void TDownloadDirectoryScan::FilterByLocations(const QStringList& locations, const QStringList& volumeRoots) {
  FDirectories.removeIf([&](const QString& dir) {
    return std::none_of(locations.begin(), locations.end(),
                        [&](const QString& location) { return LiesOn(location, dir, volumeRoots); });
  });
  for (qsizetype i = FDirectories.size() - 1; i >= 0; --i) {
    const bool inside = std::any_of(FDirectories.begin(), FDirectories.end(), [&](const QString& other) {
      return FDirectories[i].size() > other.size() && Nested(FDirectories[i], other);
    });
    if (inside) FDirectories.removeAt(i);
  }
}

std::vector<TDownloadLocation> TDownloadDirectoryScan::Locations() const {
  std::vector<TDownloadLocation> locations;
  for (const QString& directory : FDirectories) {
    TDownloadLocation& location = locations.emplace_back(TDownloadLocation{directory, {}});
    for (const TFound& found : FFound)
      if (BeginAlike(AsFolder(found.Directory), directory, directory.size()) &&
          !location.Applications.contains(found.Application))
        location.Applications.append(found.Application);
  }
  return locations;
}

QStringList FindDownloadLocations(const QStringList& paths) {
  TDownloadDirectoryScan scan;
  scan.ScanDirectories();
  scan.FilterByLocations(paths);
  return scan.FDirectories;
}

std::vector<TDownloadLocation> FindDownloads(const QStringList& paths) {
  TDownloadDirectoryScan scan;
  scan.ScanDirectories();
  scan.FilterByLocations(paths);
  return scan.Locations();
}
