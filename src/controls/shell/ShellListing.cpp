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
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace {

constexpr unsigned kProgress = 1;
constexpr size_t kFirstEntries = 400;
constexpr int kPatience = 30;  // milliseconds before the first entries are told
constexpr std::chrono::milliseconds kLongestWait{100};

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

}  // namespace

bool ComesBefore(const TShellEntry& a, const TShellEntry& b) {
  if (a.Kind != b.Kind) return a.Kind < b.Kind;
  if (a.Kind < TShellKind::Folder) return a.Path < b.Path;
  const int order = a.Name.compare(b.Name, Qt::CaseInsensitive);
  return order != 0 ? order < 0 : a.Name < b.Name;
}

// What the thread and its listing have in common; goes with the last of the two.
class TShellListing::TJob {
 public:
  TJob(QString path, TMessageWindow* window) : FPath(std::move(path)), FLine(window) {}

  void Run() {
    bool readable = true;
    TEntries entries = FPath.isEmpty() ? ListPlaces() : ListFolder(readable);
    if (!FPath.isEmpty()) std::sort(entries.begin(), entries.end(), ComesBefore);
    const std::lock_guard lock(FLock);
    FEntries = std::move(entries);
    FReadable = readable;
    FDone = true;
    FEnded.notify_all();
    FLine.Post(kProgress, 0, 0);
  }

  // What is new since the last call; whether that is all.
  [[nodiscard]] bool Take(TEntries& entries, bool& readable) {
    const std::lock_guard lock(FLock);
    entries = std::move(FEntries);
    readable = FReadable;
    return FDone;
  }

  void Abandon() {
    FAbandoned.store(true);
    FLine.Close();
  }

  void WaitForEnd() {
    std::unique_lock lock(FLock);
    FEnded.wait_for(lock, kLongestWait, [this] { return FDone; });
  }

 private:
  [[nodiscard]] TEntries ListFolder(bool& readable) {
    QElapsedTimer clock;
    clock.start();
    TEntries entries;
    const QString folder = IncludeTrailingPathDelimiter(FPath);
    TFileEnumeration enumeration;
    TFoundFile found;
    bool told = false;
    for (bool more = enumeration.First(folder, found); more && !FAbandoned; more = enumeration.Next(found)) {
      entries.push_back(EntryOf(folder, found));
      if (!told && entries.size() % 64 == 0 && clock.elapsed() >= kPatience) {
        told = true;
        TellFirst(entries);
      }
    }
    readable = !entries.empty() || DirectoryReadable(FPath);
    return entries;
  }

  [[nodiscard]] TShellEntry EntryOf(const QString& folder, const TFoundFile& found) {
    TShellEntry entry;
    entry.Kind = found.IsDirectory() ? TShellKind::Folder : TShellKind::File;
    entry.Name = found.Name;
    entry.Path = folder + found.Name;
    entry.Size = found.Size;
    entry.Modified = found.Modified;
    if (!found.IsDirectory()) entry.SizeText = SizeToText(static_cast<qint64>(found.Size));
    entry.DateText = FDates.Of(found.Modified);
    return entry;
  }

  void TellFirst(const TEntries& entries) {
    const size_t count = std::min(entries.size(), kFirstEntries);
    TEntries first(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(count));
    std::sort(first.begin(), first.end(), ComesBefore);
    const std::lock_guard lock(FLock);
    FEntries = std::move(first);
    FLine.Post(kProgress, 0, 0);
  }

  const QString FPath;
  TMessageLine FLine;
  std::atomic<bool> FAbandoned{false};
  TDateTexts FDates;  // the thread's
  std::mutex FLock;
  std::condition_variable FEnded;
  // Under FLock.
  TEntries FEntries;
  bool FReadable = true;
  bool FDone = false;
};

TShellListing::TShellListing() : FWindow({{kProgress, [this](const TMessage&) { Take(); }}}) {}

TShellListing::~TShellListing() {
  const std::shared_ptr<TJob> job = FJob;
  Abandon();
  if (job) job->WaitForEnd();
}

void TShellListing::Start(const QString& path) {
  Abandon();
  FJob = std::make_shared<TJob>(path, &FWindow);
  std::thread([job = FJob] { job->Run(); }).detach();
}

void TShellListing::Abandon() {
  if (FJob) FJob->Abandon();
  FJob.reset();
}

// The handlers may start another listing.
void TShellListing::Take() {
  if (!FJob) return;
  std::vector<TShellEntry> entries;
  bool readable = true;
  if (!FJob->Take(entries, readable)) {
    if (!entries.empty() && OnFirst) OnFirst(std::move(entries));
    return;
  }
  FJob.reset();
  if (OnDone) OnDone(std::move(entries), readable);
}
