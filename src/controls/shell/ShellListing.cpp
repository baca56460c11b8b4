#include "controls/shell/ShellListing.h"

#include "platform/FileEnumeration.h"
#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/Volumes.h"
#include "support/Korvel_Routine_New.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace {

constexpr size_t kFirstEntries = 400;
constexpr int kPatience = 30;  // milliseconds before the first entries are told

using TEntries = std::vector<TShellEntry>;

// Files of one time often stand together, and a date takes longer to write than all else of an entry.
class TDateTexts {
 public:
  [[nodiscard]] const QString& Of(qint64 modified) {
    const qint64 minute = modified / 60'000;
    if (std::exchange(FMinute, minute) != minute || FText.isNull())
      FText = FLocale.toString(QDateTime::fromMSecsSinceEpoch(modified), QLocale::ShortFormat);
    return FText;
  }

 private:
  QLocale FLocale;
  qint64 FMinute = 0;
  QString FText;
};

TShellEntry PlaceEntry(TShellKind kind, const QString& name, const QString& path) {
  TShellEntry entry;
  entry.Kind = kind;
  entry.Name = name;
  entry.Path = path;
  return entry;
}

TEntries ListPlaces() {
  TEntries places;
  for (const TVolume& volume : ListFixedVolumes()) {
    const QString name = VolumeName(volume.Root);
    places.push_back(PlaceEntry(TShellKind::FixedVolume,
                                volume.Label.isEmpty() ? name : volume.Label + u" ("_qs + name + u')',
                                volume.Root));
  }
  for (const TOtherVolume& volume : ListOtherVolumes())
    places.push_back(PlaceEntry(
        volume.Kind == TVolumeKind::Network ? TShellKind::NetworkVolume : TShellKind::RemovableVolume,
        VolumeName(volume.Root), volume.Root));
  const QString home = GetKnownFolder(TSpecialFolder::Profile);
  const QString homeName = ExtractFileName(home);
  if (!home.isEmpty())
    places.push_back(PlaceEntry(TShellKind::Home, homeName.isEmpty() ? home : homeName, home));
  return places;
}

TEntries Sorted(TEntries entries) {
  std::sort(entries.begin(), entries.end(), ComesBefore);
  return entries;
}

// Reads the entries of one folder; the thread's.
class TFolderReader {
 public:
  explicit TFolderReader(const QString& folder) : FFolder(IncludeTrailingPathDelimiter(folder)) {
    FClock.start();
  }

  // By name, or some of them if nobody hears any more. If it takes long, the first are told meanwhile.
  [[nodiscard]] TEntries Read(const TDetachedTask::TLine& line,
                              const std::function<void(TEntries first)>& tellFirst) {
    TEntries entries;
    TFileEnumeration enumeration;
    TFoundFile found;
    bool told = false;
    for (bool more = enumeration.First(FFolder, found); more && !line.Abandoned();
         more = enumeration.Next(found)) {
      entries.push_back(EntryOf(found));
      if (told || entries.size() % 64 != 0 || FClock.elapsed() < kPatience) continue;
      told = true;
      tellFirst(Sorted({entries.begin(), entries.begin() + FirstOf(entries.size())}));
    }
    return Sorted(std::move(entries));
  }

 private:
  static std::ptrdiff_t FirstOf(size_t count) {
    return static_cast<std::ptrdiff_t>(std::min(count, kFirstEntries));
  }

  [[nodiscard]] TShellEntry EntryOf(const TFoundFile& found) {
    TShellEntry entry;
    entry.Kind = found.IsDirectory() ? TShellKind::Folder : TShellKind::File;
    entry.Name = found.Name;
    entry.Path = FFolder + found.Name;
    entry.Size = found.Size;
    entry.Modified = found.Modified;
    if (!found.IsDirectory()) entry.SizeText = SizeToText(static_cast<qint64>(found.Size));
    entry.DateText = FDates.Of(found.Modified);
    return entry;
  }

  const QString FFolder;
  QElapsedTimer FClock;
  TDateTexts FDates;
};

using TTold = std::function<void(TShellListed listed)>;

void Tell(TDetachedTask::TLine& line, const TTold& told, TShellListed listed) {
  line.Tell([told, listed = std::move(listed)]() mutable { told(std::move(listed)); });
}

}  // namespace

bool ComesBefore(const TShellEntry& a, const TShellEntry& b) {
  if (a.Kind != b.Kind) return a.Kind < b.Kind;
  if (a.Kind < TShellKind::Folder) return a.Path < b.Path;
  const int order = a.Name.compare(b.Name, Qt::CaseInsensitive);
  return order != 0 ? order < 0 : a.Name < b.Name;
}

void ListShell(const QString& path, TDetachedTask::TLine& line, const TTold& told) {
  TShellListed listed;
  listed.Changes = KeepChanges(path);
  if (path.isEmpty()) {
    listed.Entries = ListPlaces();
  } else {
    listed.Folder = TOpenFolder::Open(path);
    listed.Entries = TFolderReader(path).Read(line, [&](TEntries first) {
      Tell(line, told, {std::move(first), false, true, listed.Folder, nullptr});
    });
    listed.Readable = !listed.Entries.empty() || DirectoryReadable(path);
  }
  Tell(line, told, std::move(listed));
}

void ListShortcuts(const std::function<void(const std::vector<TShellPlace>& places)>& told) {
  std::vector<TShellPlace> places;
  const auto add = [&places](const QString& name, const QString& path) {
    const auto same = [&path](const TShellPlace& place) { return place.Path == path; };
    if (std::none_of(places.begin(), places.end(), same))
      places.push_back({name.isEmpty() ? path : name, path});
  };
  for (const TVolume& volume : ListFixedVolumes())
    add(volume.Label.isEmpty() ? VolumeName(volume.Root) : volume.Label, volume.Root);
  for (const TOtherVolume& volume : ListOtherVolumes())
    add(VolumeName(volume.Root), volume.Root);
  told(places);
  for (const QString& folder :
       {GetKnownFolder(TSpecialFolder::Profile), GetKnownFolder(TSpecialFolder::Desktop),
        GetKnownFolder(TSpecialFolder::Personal), GetDownloadsFolder()}) {
    if (!DirectoryExists(folder)) continue;
    add(ExtractFileName(folder), folder);
    told(places);
  }
}
