#include "scan/ReadAhead.h"

#include "platform/Paths.h"

#include <QStringBuilder>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace {

// How long the walk sleeps when what it needs isn't there, the longer the less comes. It is much faster than
// the threads: woken for each folder, it would take their processors more often than it needs them.
constexpr std::chrono::microseconds kFirstPause{2000};
constexpr std::chrono::microseconds kLongestPause{8000};

// Breadth-first within a branch, the branches one after the other. Within a level the crew goes by the order
// in which the folders were found, which is the walk's but for what its threads overtake.
quint64 TurnOf(const TListedFolder& folder) {
  return quint64{folder.Branch} << 32 | folder.Depth;
}

TListedFolderPtr MakeFolder(QString path, quint32 branch, quint32 depth) {
  auto folder = std::make_shared<TListedFolder>();
  folder->Path = std::move(path);
  folder->Branch = branch;
  folder->Depth = depth;
  return folder;
}

size_t BytesOf(const TListingPart& part) {
  size_t bytes = sizeof part + part.Files.Bytes();
  for (const TListingPart::TSubfolder& subfolder : part.Subfolders)
    bytes += sizeof subfolder + sizeof *subfolder.Folder +
             static_cast<size_t>(subfolder.Folder->Path.size()) * sizeof(QChar);
  return bytes;
}

// What a thread has listed of its folder since the last part; apart in memory from those of others.
struct alignas(64) TDraft {
  TFileBlockMaker Files;
  std::vector<TListingPart::TSubfolder> Subfolders;
  std::vector<TFolderTask> Next;  // of the whole folder
  quint32 Branches = 0;           // of the root
  bool Dropped = false;           // there was no room for the folder

  [[nodiscard]] int Entries() const { return Files.Count() + static_cast<int>(Subfolders.size()); }

  [[nodiscard]] TListingPart TakePart(const QString& path) {
    TListingPart part{Files.Take(path), std::move(Subfolders), 0};
    Subfolders.clear();
    part.Bytes = BytesOf(part);
    return part;
  }
};

}  // namespace

// Folders that were read and never taken hold each other in a chain as deep as the tree.
TListedFolder::~TListedFolder() {
  std::vector<TListingPart> parts = std::move(Parts);
  while (!parts.empty()) {
    TListingPart part = std::move(parts.back());
    parts.pop_back();
    for (const TListingPart::TSubfolder& subfolder : part.Subfolders) {
      if (subfolder.Folder.use_count() != 1) continue;
      std::move(subfolder.Folder->Parts.begin(), subfolder.Folder->Parts.end(), std::back_inserter(parts));
      subfolder.Folder->Parts.clear();
    }
  }
}

class TReadAhead::TListings : public TFolderVisitor {
 public:
  enum class TTaken { Some, All, NotYet, NotAskedFor };

  TListings(TListedFolderPtr root, const TReadAheadLimits& limits)
      : FLimits(limits), FRoot(std::move(root)), FDrafts(TFolderCrew::SizeFor(limits.Threads)) {}

  bool HasRoom() const override { return !FFull.load(std::memory_order_relaxed); }
  bool FolderBegins(const TFolderTask& task) override;
  bool EntryFound(unsigned thread, const TFolderTask& task, TFoundFile& found) override;
  void FolderRead(unsigned thread, const TFolderTask& task, std::vector<TFolderTask>& next) override;

  [[nodiscard]] TTaken Take(TListedFolder& folder, std::vector<TListingPart>& parts);
  [[nodiscard]] size_t MostAhead();
  void Stop();

 private:
  void AddSubfolder(TDraft& draft, const TListedFolder& folder, const TFoundFile& found);
  [[nodiscard]] bool MayGoOn(TListedFolder& folder, TListingPart part);
  void Drop(TListedFolder& folder);
  void CountAhead(size_t more, size_t less);

  const TReadAheadLimits FLimits;
  const TListedFolderPtr FRoot;
  std::vector<TDraft> FDrafts;     // by thread
  std::atomic<bool> FFull{false};  // written under FLock
  std::mutex FLock;
  std::condition_variable FTaken;
  // Under FLock:
  size_t FAhead = 0;  // bytes of what was read and not yet taken
  size_t FMostAhead = 0;
  const TListedFolder* FCurrent = nullptr;  // where the walk is
  bool FStopped = false;
};

bool TReadAhead::TListings::FolderBegins(const TFolderTask& task) {
  const std::lock_guard lock(FLock);
  if (task.Folder->State > TListedFolder::TState::AskedFor) return false;
  task.Folder->State = TListedFolder::TState::Begun;
  return true;
}

bool TReadAhead::TListings::EntryFound(unsigned thread, const TFolderTask& task, TFoundFile& found) {
  TDraft& draft = FDrafts[thread];
  if (found.IsDirectory())
    AddSubfolder(draft, *task.Folder, found);
  else if (task.Folder != FRoot || (found.Attributes & kAttributeSystem) == 0)
    draft.Files.Add(found.Name, found.Size);
  if (draft.Entries() < FLimits.EntriesPerPart) return true;
  draft.Dropped = !MayGoOn(*task.Folder, draft.TakePart(task.Path));
  return !draft.Dropped;
}

// A link is left to the moment when the walk asks for it: which of several links to one folder is entered
// depends on their order.
void TReadAhead::TListings::AddSubfolder(TDraft& draft, const TListedFolder& folder,
                                         const TFoundFile& found) {
  const quint32 branch = &folder == FRoot.get() ? ++draft.Branches : folder.Branch;
  auto subfolder = MakeFolder(folder.Path % found.Name % PathDelim, branch, folder.Depth + 1);
  if (!found.IsFolderLink) draft.Next.push_back({subfolder->Path, TurnOf(*subfolder), subfolder});
  draft.Subfolders.push_back({std::move(subfolder), draft.Files.Count()});
}

void TReadAhead::TListings::FolderRead(unsigned thread, const TFolderTask& task,
                                       std::vector<TFolderTask>& next) {
  TDraft& draft = FDrafts[thread];
  if (std::exchange(draft.Dropped, false)) return draft.Next.clear();
  TListingPart part = draft.TakePart(task.Path);
  draft.Next.swap(next);
  const std::lock_guard lock(FLock);
  if (part.Bytes > sizeof part) {
    CountAhead(part.Bytes, 0);
    task.Folder->Parts.push_back(std::move(part));
  }
  task.Folder->State = TListedFolder::TState::Whole;
}

// False if the folder is dropped for now. The one where the walk is waits until the walk has taken what it
// has of it, so that it comes to an end however full the room is.
bool TReadAhead::TListings::MayGoOn(TListedFolder& folder, TListingPart part) {
  std::unique_lock lock(FLock);
  CountAhead(part.Bytes, 0);
  folder.Parts.push_back(std::move(part));
  while (FAhead >= FLimits.Bytes && !FStopped) {
    if (&folder != FCurrent) return Drop(folder), false;
    if (folder.Parts.empty()) break;
    FTaken.wait(lock);
  }
  return true;
}

// With FLock held.
void TReadAhead::TListings::Drop(TListedFolder& folder) {
  for (const TListingPart& part : folder.Parts)
    CountAhead(0, part.Bytes);
  folder.Parts.clear();
  folder.State = TListedFolder::TState::Waiting;
}

// With FLock held. Once full, half of the room must be free before more is read ahead.
void TReadAhead::TListings::CountAhead(size_t more, size_t less) {
  FAhead = FAhead + more - less;
  FMostAhead = std::max(FMostAhead, FAhead);
  if (FAhead >= FLimits.Bytes) FFull.store(true, std::memory_order_relaxed);
  // Between the two bounds the mark stays as it is, so that the threads do not stop and go with each part
  // that is taken.
  if (FAhead <= FLimits.Bytes / 2) FFull.store(false, std::memory_order_relaxed);
}

TReadAhead::TListings::TTaken TReadAhead::TListings::Take(TListedFolder& folder,
                                                          std::vector<TListingPart>& parts) {
  const std::lock_guard lock(FLock);
  FCurrent = &folder;
  parts.swap(folder.Parts);
  for (const TListingPart& part : parts)
    CountAhead(0, part.Bytes);
  FTaken.notify_all();
  if (folder.State == TListedFolder::TState::Whole) return TTaken::All;
  if (!parts.empty()) return TTaken::Some;
  if (folder.State != TListedFolder::TState::Waiting) return TTaken::NotYet;
  folder.State = TListedFolder::TState::AskedFor;
  return TTaken::NotAskedFor;
}

size_t TReadAhead::TListings::MostAhead() {
  const std::lock_guard lock(FLock);
  return FMostAhead;
}

void TReadAhead::TListings::Stop() {
  const std::lock_guard lock(FLock);
  FStopped = true;
  FTaken.notify_all();
}

TReadAhead::TReadAhead(const QString& root, const std::atomic<bool>& stop, const TReadAheadLimits& limits)
    : FStop(stop),
      FRoot(MakeFolder(root, 0, 0)),
      FListings(std::make_shared<TListings>(FRoot, limits)),
      FCrew(limits.Threads) {
  FCrew.Begin({FRoot->Path, TFolderTask::kAtOnce, FRoot}, FListings);
}

TReadAhead::~TReadAhead() {
  FListings->Stop();
}

bool TReadAhead::Take(const TListedFolderPtr& folder, std::vector<TListingPart>& parts) {
  parts.clear();
  for (auto pause = kFirstPause; !FStop; pause = std::min(2 * pause, kLongestPause)) {
    const bool wasFull = !FListings->HasRoom();
    const auto taken = FListings->Take(*folder, parts);
    if (wasFull && FListings->HasRoom()) FCrew.Wake();
    if (taken == TListings::TTaken::All || taken == TListings::TTaken::Some)
      return taken == TListings::TTaken::Some;
    if (taken == TListings::TTaken::NotAskedFor) FCrew.Add({folder->Path, TFolderTask::kAtOnce, folder});
    std::this_thread::sleep_for(pause);
  }
  return false;
}

size_t TReadAhead::MostAhead() const {
  return FListings->MostAhead();
}
