#include "volindex/readers/btrfs/SubvolumeScan.h"

#include "volindex/index/RunThreads.h"
#include "volindex/system/FolderAccess.h"

#include <algorithm>

namespace volindex::btrfs {

namespace {

// An item is smaller than a node of the tree, and that has 64 KiB at most.
// An item that does not fit into the empty room would fail the search, hence more than the largest can take.
constexpr std::size_t kRoom = 80 * 1024;
// Numbers are not evenly in use, so there are more ranges than threads, and a range is halved where a thread
// runs dry. Ranges are cut between numbers alone: all items of one inode come to one thread.
constexpr std::uint64_t kRangesPerThread = 8;
constexpr unsigned kSearchesBetweenLooks = 4;
// Each of them costs a search of its own. A scan during which more folders have changed is handed over.
constexpr std::size_t kMostUneven = 100'000;
constexpr std::uint32_t kAll = ~std::uint32_t{0};

}  // namespace

// One thread's part: the inode whose items it has come to, and the folder of the last name.
class TSubvolumeScan::TWorker {
 public:
  TWorker(TSubvolumeScan& scan, unsigned thread)
      : FScan(scan), FShard(scan.FBuilder.Shard(thread)), FRoom(kRoom) {}

  // Until all is read, one of the threads fails or the stop flag is seen.
  void Run(TQueue& queue, unsigned thread);

  // `queue` may be null. False when a search fails or does not hold together, or the stop flag was seen.
  [[nodiscard]] bool Read(TRange range, TQueue* queue);

 private:
  [[nodiscard]] bool TakeItem(const TKey& key, TBytes content);
  [[nodiscard]] bool TakeName(std::uint64_t folder, std::string_view name);
  [[nodiscard]] bool TakeEntry(const TEntry& entry);
  void TellFile();
  [[nodiscard]] std::optional<TFolderId> IdOf(std::uint64_t folder);
  void Meet(std::uint64_t number);
  void SetHolder(std::uint64_t folder);
  void InviteOthers(TQueue& queue);

  TSubvolumeScan& FScan;
  TIndexShard& FShard;
  std::vector<std::byte> FRoom;
  std::uint64_t FNumber = 0;
  TInode FInode;
  bool FHasName = false;
  // Where the file lies if it has one name, else its names: these wait for its data, which come behind.
  TFolderId FFileFolder = kNoFolder;
  std::vector<std::pair<TFolderId, std::string>> FLinks;
  std::uint64_t FAllocated = 0;
  std::uint32_t FEntries = 0;  // the weight of its entries
  std::uint64_t FHolder = 0;   // of the last name
  std::optional<TFolderId> FHolderId;
  std::uint32_t FNames = 0;  // the weight of the names in it since it became the last
  unsigned FSearches = 0;
  std::uint64_t FWaits = 0;  // at the last look at them
};

void TSubvolumeScan::TWorker::Run(TQueue& queue, unsigned thread) {
  if (!queue.Join(thread)) return;
  FWaits = TimesWaited();
  std::vector<TRange> own;
  TRange range;
  while (queue.Next(own, range)) {
    if (Read(range, &queue)) continue;
    FScan.FFailed = true;
    queue.Cancel();
  }
}

bool TSubvolumeScan::TWorker::Read(TRange range, TQueue* queue) {
  TKey from{range.First, 0, 0};
  const auto take = [this](const TKey& key, TBytes content) { return TakeItem(key, content); };
  while (from.Number <= range.Last) {
    if (FScan.Stopped()) return false;
    const auto found = FScan.FSource.Search(from, range.Last, kAll, FRoom);
    if (!found) return false;
    if (found->Items == 0) break;
    const std::uint64_t before = from.Number;
    if (!ForEachItem(*found, from, range.Last, take)) return false;
    if (queue == nullptr) continue;
    FScan.CountRead(from.Number - before);
    InviteOthers(*queue);
    if (!queue->IsWanted() || from.Number >= range.Last) continue;
    const std::uint64_t half = from.Number + (range.Last - from.Number) / 2;
    queue->Give({half + 1, range.Last});
    range.Last = half;
  }
  if (queue != nullptr && from.Number <= range.Last) FScan.CountRead(range.Last - from.Number + 1);
  Meet(0);
  SetHolder(0);
  return true;
}

// A thread that waits for the disk leaves its processor to another one.
void TSubvolumeScan::TWorker::InviteOthers(TQueue& queue) {
  if (++FSearches % kSearchesBetweenLooks != 0) return;
  const std::uint64_t waits = TimesWaited();
  if (waits - FWaits >= kSearchesBetweenLooks) queue.Invite();
  FWaits = waits;
}

bool TSubvolumeScan::TWorker::TakeItem(const TKey& key, TBytes content) {
  FShard.CountBytesRead(kHeadSize + content.size());
  if (key.Number != FNumber) Meet(key.Number);
  if (key.Type == kInode) {
    const auto inode = ParseInode(content);
    if (inode) FInode = *inode;
    return inode.has_value();
  }
  if (key.Type == kNames || key.Type == kFurtherNames)
    return ForEachName(key, content, [this](std::uint64_t folder, std::string_view name) {
      return FNumber == kRootNumber || TakeName(folder, name);
    });
  if (key.Type == kExtent) {
    const auto bytes = ParseExtent(content);
    FAllocated += bytes.value_or(0);
    return bytes.has_value();
  }
  if (key.Type != kFolderEntry || FScan.FFilesOnly) return true;
  const auto entry = ParseEntry(content);
  return entry && TakeEntry(*entry);
}

// From one inode to the next, or to none.
void TSubvolumeScan::TWorker::Meet(std::uint64_t number) {
  if (FEntries != 0 && IdOf(FNumber)) FScan.FFolders.Weigh(FNumber, FEntries);
  TellFile();
  FNumber = number;
  FInode = {};
  FHasName = false;
  FEntries = 0;
}

// What is known of a file when all of its items have come by.
void TSubvolumeScan::TWorker::TellFile() {
  if (FFileFolder != kNoFolder) FShard.AddAllocated(FFileFolder, FAllocated);
  for (const auto& [folder, name] : FLinks)
    FShard.AddLinkedFile(folder, name, FInode.Size, {.File = FNumber}, FAllocated);
  FFileFolder = kNoFolder;
  FLinks.clear();
  FAllocated = 0;
}

std::optional<TFolderId> TSubvolumeScan::TWorker::IdOf(std::uint64_t folder) {
  if (FScan.FFilesOnly) return FScan.FFolders.Find(folder);
  return FScan.FFolders.IdOf(folder, [this] { return FScan.FBuilder.ReserveFolder(); });
}

// Many names in a row are in one folder.
void TSubvolumeScan::TWorker::SetHolder(std::uint64_t folder) {
  if (folder == FHolder) return;
  if (FNames != 0) FScan.FFolders.Weigh(FHolder, FNames);
  FNames = 0;
  FHolder = folder;
  FHolderId = folder != 0 ? IdOf(folder) : std::nullopt;
}

// A name without an inode belongs to one that came or went within the search.
bool TSubvolumeScan::TWorker::TakeName(std::uint64_t folder, std::string_view name) {
  if (!IsName(name) || folder < kRootNumber || folder > kLastNumber) return false;
  if (FInode.Kind == TKind::None) return true;
  SetHolder(folder);
  if (!FHolderId) return true;
  if (!FScan.FFilesOnly) FNames += TFolderNumbers::WeightOf(FNumber);
  const bool again = FHasName;
  FHasName = true;
  if (FInode.Kind == TKind::File && FInode.Links > 1) {
    FLinks.emplace_back(*FHolderId, name);
    return true;
  }
  if (again) return false;
  if (FInode.Kind == TKind::File) {
    FShard.AddFile(*FHolderId, name, FInode.Size);
    FFileFolder = *FHolderId;
    return true;
  }
  if (FScan.FFilesOnly) return true;
  const auto id = IdOf(FNumber);
  FScan.FFolders.Name(FNumber);
  return id && FShard.SetFolder(*id, *FHolderId, name);
}

bool TSubvolumeScan::TWorker::TakeEntry(const TEntry& entry) {
  if (!IsName(entry.Name)) return false;
  if (!entry.IsSubvolume) {
    FEntries -= TFolderNumbers::WeightOf(entry.Number);
    return true;
  }
  const auto holder = IdOf(FNumber);
  return holder && FShard.SetFolder(FScan.FBuilder.ReserveFolder(), *holder, entry.Name);
}

TSubvolumeScan::TSubvolumeScan(const TTreeSource& source, TIndexBuilder& builder, const TScanControl& control,
                               unsigned atOnce, unsigned threads)
    : FSource(source),
      FBuilder(builder),
      FControl(control),
      FAtOnce(atOnce),
      FThreads(std::max(atOnce, threads)) {}

TReadResult TSubvolumeScan::Run() {
  FBuilder.Begin(FThreads, TFolderOrder::Any);
  const auto generation = FSource.Generation();
  if (!generation) return TReadResult::HandedOver;
  FGeneration = *generation;
  if (!FindLast() || !ReadAll() || !LookForUnnamed() || !EntriesAgree()) return GivenUp();
  TFinish finish = FBuilder.Finish(FControl.Stop);
  if (finish == TFinish::TopListAgain) {
    FFilesOnly = true;
    if (!ReadAll()) return GivenUp();
    finish = FBuilder.Finish(FControl.Stop);
  }
  return finish == TFinish::Done ? TReadResult::Done : TReadResult::Stopped;
}

// By halves: whether there is an item from a number on is a short question.
bool TSubvolumeScan::FindLast() {
  std::vector<std::byte> room(kRoom);
  std::uint64_t beyond = kLastNumber + 1;
  while (beyond - FLast > 1) {
    const std::uint64_t middle = FLast + (beyond - FLast) / 2;
    if (Stopped()) return false;
    const auto found = FSource.Search({middle, 0, 0}, kLastNumber, 1, room);
    if (!found) return false;
    (found->Items != 0 ? FLast : beyond) = middle;
  }
  return true;
}

bool TSubvolumeScan::ReadAll() {
  const std::uint64_t step = (FLast - kRootNumber) / (kRangesPerThread * FThreads) + 1;
  std::vector<TRange> ranges;
  for (std::uint64_t first = kRootNumber; first <= FLast; first += std::min(step, FLast - first + 1))
    ranges.push_back({first, first + std::min(step - 1, FLast - first)});
  std::ranges::reverse(ranges);  // the last one is taken first
  TQueue queue(std::move(ranges), FAtOnce);
  FNumbersRead = 0;
  RunThreads(FThreads, [&](unsigned thread) { Work(queue, thread); });
  return !FFailed && !Stopped();
}

void TSubvolumeScan::Work(TQueue& queue, unsigned thread) {
  try {
    TWorker(*this, thread).Run(queue, thread);
  } catch (...) {
    FFailed = true;
    queue.Cancel();  // so that the others do not wait for this one
    throw;
  }
}

void TSubvolumeScan::CountRead(std::uint64_t numbers) {
  const std::uint64_t read = FNumbersRead.fetch_add(numbers, std::memory_order_relaxed) + numbers;
  const double part = static_cast<double>(read) / static_cast<double>(FLast);
  FControl.Progress(std::clamp(static_cast<int>(99 * part), 1, 99));
}

// A folder without a name was deleted in the meantime; or it was made, and something moved there. The latter
// may lie in such a folder itself.
bool TSubvolumeScan::LookForUnnamed() {
  TWorker worker(*this, 0);
  std::vector<std::uint64_t> before;
  for (auto unnamed = FFolders.Unnamed(); unnamed != before; unnamed = FFolders.Unnamed()) {
    for (const std::uint64_t number : unnamed)
      if (!worker.Read({number, number}, nullptr)) return false;
    before = std::move(unnamed);
  }
  return true;
}

// Names and entries that differ are a matter of time where something was changed since the beginning, and the
// folder tells so as soon as the tree is up to date. A folder that does not is damaged.
bool TSubvolumeScan::EntriesAgree() {
  const auto uneven = FFolders.Uneven();
  if (uneven.empty()) return true;
  if (uneven.size() > kMostUneven || !FSource.Flush(FControl.Stop)) return false;
  return std::ranges::all_of(uneven,
                             [this](std::uint64_t folder) { return !Stopped() && HasChanged(folder); });
}

bool TSubvolumeScan::HasChanged(std::uint64_t folder) const {
  std::vector<std::byte> room(kRoom);
  const auto found = FSource.Search({folder, 0, 0}, folder, 1, room);
  if (!found) return false;
  std::optional<TInode> inode = TInode();
  TKey from{folder, 0, 0};
  const auto take = [&inode](const TKey& key, TBytes content) {
    if (key.Type == kInode) inode = ParseInode(content);
    return inode.has_value();
  };
  return ForEachItem(*found, from, folder, take) &&
         (inode->Kind == TKind::None || inode->Changed > FGeneration);
}

}  // namespace volindex::btrfs
