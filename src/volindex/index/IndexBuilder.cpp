// How Finish goes, on one thread, when all others have ended: FlushShards adds what the shards have pending,
// ResolveFolders finds out which folders count (FStates) and takes what lies in the others off, ResolveLinks
// gives each file with several names to the folder of its first one, MergeTopFiles makes the list of the
// shards' lists. If names are missing by then, PrepareSecondPass turns the shards so that they take names
// alone, and the reader is asked to tell them again; FStates stays as it is, so both passes see the same
// folders. MakeTotals adds folders to their parents last, since until then the table's sums must be those of
// the folders themselves.
//
// All loops over folders are bounded by the count of ids, and the long ones look at Stop. With
// TFolderOrder::Any parents come from a disk and may make rings: nothing climbs along them before
// ResolveFolders has found the way to the root.
#include "volindex/index/IndexBuilder.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace volindex {

namespace {

constexpr size_t kStopInterval = 1024;  // steps of a merging loop between two looks at the stop flag

bool StopSeen(const std::atomic<bool>& stop, size_t step) {
  return step % kStopInterval == 0 && stop.load(std::memory_order_relaxed);
}

// The paths to be covered as a tree of their components; node 0 is the root.
class TCoverTree {
 public:
  explicit TCoverTree(const std::vector<std::string>& paths) {
    for (std::string_view path : paths)
      Add(path);
  }

  [[nodiscard]] bool IsEnd(size_t node) const { return node != 0 && FNodes[node].End; }

  // 0 when there is none.
  [[nodiscard]] size_t Child(size_t node, std::string_view name) const {
    const auto found = FNodes[node].Children.find(std::string(name));
    return found == FNodes[node].Children.end() ? 0 : found->second;
  }

 private:
  struct TNode {
    std::unordered_map<std::string, size_t> Children;
    bool End = false;
  };

  void Add(std::string_view path) {
    size_t node = 0;
    while (!path.empty()) {
      const std::string_view component = path.substr(0, path.find('/'));
      path.remove_prefix(std::min(path.size(), component.size() + 1));
      if (!component.empty()) node = ChildOrNew(node, component);
    }
    FNodes[node].End = true;
  }

  size_t ChildOrNew(size_t node, std::string_view name) {
    const auto [place, isNew] = FNodes[node].Children.try_emplace(std::string(name), FNodes.size());
    const size_t child = place->second;
    if (isNew) FNodes.emplace_back();
    return child;
  }

  std::vector<TNode> FNodes{1};
};

}  // namespace

TIndexShard::TIndexShard(TFolderTable& folders, TFolderKinds* kinds, TFolderOrder order, size_t linkTextRoom)
    : FFolders(folders),
      FKinds(kinds),
      FOrder(order),
      FTop(folders, order == TFolderOrder::ParentsFirst),
      FLinks(folders, order == TFolderOrder::ParentsFirst, linkTextRoom) {}

bool TIndexShard::SetFolder(TFolderId id, TFolderId parent, std::string_view name) {
  if (FSecondPass != nullptr) return true;
  if (!FFolders.Set(id, parent, FFolderNames.Add(name))) return false;
  if (FOrder == TFolderOrder::ParentsFirst) FFolders.Place(id);
  return true;
}

void TIndexShard::AddFile(TFolderId parent, std::string_view name, uint64_t size, uint64_t allocated) {
  if (FSecondPass != nullptr) {
    if ((*FSecondPass)[parent] == TFolderState::Counted) FTop.Add(parent, name, size);
    return;
  }
  if (parent != FPendingFolder) {
    FlushPending();
    FPendingFolder = parent;
  }
  FPendingSize += size;
  FPendingAllocated += allocated;
  ++FPendingFiles;
  if (FKinds != nullptr) FPendingKinds[static_cast<size_t>(KindOf(name))] += size;
  FTop.Add(parent, name, size);
}

void TIndexShard::AddLinkedFile(TFolderId parent, std::string_view name, uint64_t size, TLinkKey key,
                                uint64_t allocated) {
  if (FSecondPass == nullptr) return FLinks.Add(parent, name, size, key, allocated, KindIfKept(name));
  if ((*FSecondPass)[parent] != TFolderState::Counted) return;
  FOpenLinks->Note(FFolders, parent, name, key.File);
  FTop.Add(parent, name, size, key.File + 1);
}

void TIndexShard::FlushPending() {
  if (FPendingFiles != 0) FFolders.AddContent(FPendingFolder, FPendingSize, FPendingFiles, FPendingAllocated);
  if (FKinds != nullptr && FPendingFiles != 0) FKinds->Add(FPendingFolder, std::exchange(FPendingKinds, {}));
  FPendingFolder = kNoFolder;
  FPendingSize = FPendingAllocated = 0;
  FPendingFiles = 0;
}

void TIndexShard::AddUnlisted(TFolderId folder, const TKindBytes& bytes, uint32_t files, uint64_t allocated) {
  FFolders.AddContent(folder, std::accumulate(bytes.begin(), bytes.end(), uint64_t{0}), files, allocated);
  if (FKinds != nullptr) FKinds->Add(folder, bytes);
}

void TIndexShard::WithdrawFile(TFolderId parent, uint64_t size, uint64_t allocated, TKind kind) {
  FFolders.RemoveContent(parent, size, 1, allocated);
  if (FKinds != nullptr) FKinds->Remove(parent, kind, size);
}

TIndexBuilder::TIndexBuilder(size_t linkTextRoom) : FLinkTextRoom(linkTextRoom) {
  Begin(1, TFolderOrder::Any);
}

TIndexBuilder::~TIndexBuilder() = default;

void TIndexBuilder::Begin(unsigned shards, TFolderOrder order) {
  FShards.clear();
  FIndex = TVolumeIndex();
  FFolders = std::make_unique<TFolderTable>();
  FKinds = FKeepsKinds ? std::make_unique<TFolderKinds>() : nullptr;
  FOrder = order;
  FExcluded.clear();
  FLinkedTop.emplace(*FFolders, true);
  FOpenLinks.Clear();
  FStates.clear();
  FSecondPass = false;
  shards = std::max(shards, 1U);
  for (unsigned shard = 0; shard < shards; ++shard)
    FShards.push_back(std::make_unique<TIndexShard>(*FFolders, FKinds.get(), order, FLinkTextRoom / shards));
}

void TIndexBuilder::ExcludeFolder(TFolderId id) {
  const std::lock_guard guard(FExcludedLock);
  FExcluded.push_back(id);
}

void TIndexBuilder::CoverPath(std::string relative) {
  FCovers.push_back(std::move(relative));
}

TFinish TIndexBuilder::Finish(const std::atomic<bool>& stop) {
  if (!FSecondPass) {
    FlushShards();
    if (!ResolveFolders(stop) || !ResolveLinks(stop)) return FinishStopped();
  }
  if (stop.load(std::memory_order_relaxed)) return FinishStopped();
  const bool linksOpen = !FSecondPass && !FOpenLinks.Empty();
  if (linksOpen || !MergeTopFiles()) {
    PrepareSecondPass();
    return TFinish::TopListAgain;
  }
  FOpenLinks.Settle(*FFolders, FKinds.get());
  SortUnreadable();
  return MakeTotals(stop) ? TFinish::Done : FinishStopped();
}

TFinish TIndexBuilder::FinishStopped() {
  Begin(1, TFolderOrder::Any);
  return TFinish::Stopped;
}

void TIndexBuilder::FlushShards() {
  for (const auto& shard : FShards) {
    shard->FlushPending();
    FIndex.FUnreadable.insert(FIndex.FUnreadable.end(), shard->FUnreadable.begin(), shard->FUnreadable.end());
    FIndex.FBytesRead += shard->FBytesRead;
    shard->FUnreadable.clear();
    shard->FBytesRead = 0;
  }
}

// Goes down level by level: one pass over the folders finds all that lie in the folders found before.
// There are as many passes as the deepest covered path has components, and mostly none is deep.
bool TIndexBuilder::ApplyCovers(const std::atomic<bool>& stop) {
  const TCoverTree covers(FCovers);
  const uint32_t count = FFolders->Count();
  std::unordered_map<TFolderId, size_t> found{{kRootFolder, 0}};
  while (!found.empty()) {
    std::unordered_map<TFolderId, size_t> next;
    for (TFolderId id = 1; id < count; ++id) {
      if (StopSeen(stop, id)) return false;
      if (!FFolders->IsSet(id)) continue;
      const auto parent = found.find(FFolders->Parent(id));
      const size_t node = parent == found.end() ? 0 : covers.Child(parent->second, FFolders->Name(id));
      if (covers.IsEnd(node))
        FExcluded.push_back(id);
      else if (node != 0)
        next.emplace(id, node);
    }
    found = std::move(next);
  }
  return true;
}

bool TIndexBuilder::ResolveFolders(const std::atomic<bool>& stop) {
  if (FOrder == TFolderOrder::Any && !FCovers.empty() && !ApplyCovers(stop)) return false;
  std::sort(FExcluded.begin(), FExcluded.end());
  const uint32_t count = FFolders->Count();
  FStates.assign(count, TFolderState::Unknown);
  FStates[kRootFolder] = TFolderState::Counted;
  std::vector<TFolderId> path;
  for (TFolderId id = 0; id < count; ++id) {
    if (StopSeen(stop, id)) return false;
    ResolveFolder(id, path);
    if (FStates[id] == TFolderState::Counted) continue;
    FFolders->ClearContent(id);
    if (FKinds != nullptr) FKinds->Clear(id);
  }
  return true;
}

// Climbs until a folder is known and brings the answer back down; a folder met twice on the way closes a
// ring, and a parent that is not set or does not exist ends it.
void TIndexBuilder::ResolveFolder(TFolderId id, std::vector<TFolderId>& path) {
  path.clear();
  while (FFolders->IsSet(id) && FStates[id] == TFolderState::Unknown) {
    FStates[id] = TFolderState::OnPath;
    path.push_back(id);
    id = FFolders->Parent(id);
  }
  bool counted = id < FStates.size() && FStates[id] == TFolderState::Counted;
  if (!counted && id < FStates.size() && FStates[id] == TFolderState::Unknown)
    FStates[id] = TFolderState::LeftOut;
  for (auto folder = path.rbegin(); folder != path.rend(); ++folder) {
    const bool covered = std::binary_search(FExcluded.begin(), FExcluded.end(), *folder);
    if (counted) FFolders->Place(*folder);
    FStates[*folder] = !counted  ? TFolderState::LeftOut
                       : covered ? TFolderState::Covered
                                 : TFolderState::Counted;
    counted = counted && !covered;
  }
}

bool TIndexBuilder::ResolveLinks(const std::atomic<bool>& stop) {
  std::vector<TLinkedName> names;
  for (size_t part = 0; part < TLinkedFiles::kParts; ++part) {
    names.clear();
    for (const auto& shard : FShards)
      shard->FLinks.Append(part, names);
    if (stop.load(std::memory_order_relaxed)) return false;
    std::erase_if(names,
                  [this](const TLinkedName& name) { return FStates[name.Parent] != TFolderState::Counted; });
    TLinkedFiles::Sort(*FFolders, names);
    AddLinks(names);
    for (const auto& shard : FShards)
      shard->FLinks.Clear(part);
  }
  return true;
}

void TIndexBuilder::AddLinks(std::span<TLinkedName> sorted) {
  while (!sorted.empty()) {
    size_t count = 1;
    while (count < sorted.size() && sorted[count].SameFile(sorted.front()))
      ++count;
    AddLink(sorted.first(count));
    sorted = sorted.subspan(count);
  }
}

void TIndexBuilder::AddContent(TFolderId id, const TLinkedName& file) {
  FFolders->AddContent(id, file.Size, 1, file.Allocated);
  if (FKinds != nullptr) FKinds->Add(id, file.Kind, file.Size);
}

// Where a text is missing the folder may be known all the same, but not whether the list has to show the
// file.
void TIndexBuilder::AddLink(std::span<TLinkedName> names) {
  const TLinkedName first = names.front();
  if (std::all_of(names.begin(), names.end(), [](const TLinkedName& name) { return name.HasText; })) {
    AddContent(first.Parent, first);
    FLinkedTop->Add(first.Parent, first.Text, first.Size);
    return;
  }
  const TFolderId folder = FOpenLinks.FirstFolder(*FFolders, names);
  if (folder == kNoFolder) return;
  AddContent(folder, first);
  FLinkedTop->NoteDropped(first.Size);
}

void TIndexBuilder::SortUnreadable() {
  std::erase_if(FIndex.FUnreadable,
                [this](TFolderId folder) { return FStates[folder] != TFolderState::Counted; });
  std::sort(FIndex.FUnreadable.begin(), FIndex.FUnreadable.end(),
            [this](TFolderId a, TFolderId b) { return FFolders->ComparePaths(a, {}, b, {}) < 0; });
}

// Bottom-up without recursion: a folder is added to its parent when all folders in it have been added.
bool TIndexBuilder::MakeTotals(const std::atomic<bool>& stop) {
  const uint32_t count = FFolders->Count();
  const auto counts = [this](TFolderId id) {
    return FStates[id] == TFolderState::Counted || FStates[id] == TFolderState::Covered;
  };
  std::vector<uint32_t> open(count, 0);
  for (TFolderId id = 1; id < count; ++id) {
    if (StopSeen(stop, id)) return false;
    if (!counts(id)) continue;
    ++open[FFolders->Parent(id)];
    ++FIndex.FFolderCount;
  }
  for (TFolderId id = 0; id < count; ++id)
    FIndex.FFileCount += FFolders->Files(id);

  TTopFiles top(*FFolders, true);
  for (TFolderId leaf = 0; leaf < count; ++leaf) {
    if (StopSeen(stop, leaf)) return false;
    if (!counts(leaf) || open[leaf] != 0) continue;
    TFolderId id = leaf;
    for (size_t step = 1; id != kRootFolder && open[id] == 0; id = FFolders->Parent(id), ++step) {
      if (StopSeen(stop, step)) return false;
      top.Add(id, {}, FFolders->Size(id));
      FFolders->AddContent(FFolders->Parent(id), FFolders->Size(id), 0, FFolders->Allocated(id));
      // Done: no folder has as many subfolders, so it is never at 0 again.
      open[id] = kNoFolder;
      --open[FFolders->Parent(id)];
    }
  }
  std::vector<TFileRecord> folders = top.Take();
  TTopFiles::SortAndCut(*FFolders, folders);
  for (const TFileRecord& folder : folders)
    FIndex.FTopFolders.push_back(folder.Folder);
  return true;
}

bool TIndexBuilder::MergeTopFiles() {
  std::vector<TFileRecord> records = FLinkedTop->Take();
  bool dropped = FLinkedTop->Dropped();
  uint64_t droppedSize = FLinkedTop->DroppedSize();
  for (const auto& shard : FShards) {
    for (TFileRecord& record : shard->FTop.Take()) {
      if (FStates[record.Folder] == TFolderState::Counted) records.push_back(std::move(record));
    }
    dropped = dropped || shard->FTop.Dropped();
    droppedSize = std::max(droppedSize, shard->FTop.DroppedSize());
  }
  TTopFiles::SortAndCut(*FFolders, records);
  // A dropped file of the size of the last one in the list might come before it by its path.
  if (dropped && (records.size() < kTopCount || records.back().Size <= droppedSize)) return false;
  FIndex.FTopFiles = std::move(records);
  return true;
}

void TIndexBuilder::PrepareSecondPass() {
  FSecondPass = true;
  FLinkedTop->Restart();
  for (const auto& shard : FShards) {
    shard->FTop.Restart();
    shard->FOpenLinks = &FOpenLinks;
    shard->FSecondPass = &FStates;
  }
}

TVolumeIndex TIndexBuilder::TakeIndex() {
  TVolumeIndex index = std::move(FIndex);
  // The table points into the shards' names, so the index has to own both.
  for (const auto& shard : FShards)
    index.FNames.push_back(std::move(shard->FFolderNames));
  index.FFolders = std::move(FFolders);
  index.FKinds = std::move(FKinds);
  index.FCounted.resize(FStates.size());
  for (size_t id = 0; id < FStates.size(); ++id)
    index.FCounted[id] = FStates[id] == TFolderState::Counted || FStates[id] == TFolderState::Covered;
  FCovers.clear();
  Begin(1, TFolderOrder::Any);
  return index;
}

}  // namespace volindex
