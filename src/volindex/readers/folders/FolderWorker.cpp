#include "volindex/readers/folders/FolderWorker.h"

#include <algorithm>
#include <utility>

namespace volindex {

namespace {

// A look costs a call of the system. A thread that has waited more often than once in four folders invites
// one more.
constexpr unsigned kFoldersBetweenLooks = 16;

TAccess StaysInPlace(const TFolderScan& scan, const TFolderHandle& folder) {
  TEntryFacts facts;
  const TAccess access = folder.Facts(facts);
  return access == TAccess::Ok && facts.Place != scan.RootFacts.Place ? TAccess::Gone : access;
}

}  // namespace

void TFolderProgress::Add(double share) {
  const double done = FDone.fetch_add(share, std::memory_order_relaxed) + share;
  const int percent = std::clamp(1 + static_cast<int>(done * 98), 1, 99);
  int reported = FReported.load(std::memory_order_relaxed);
  while (percent > reported) {
    if (FReported.compare_exchange_weak(reported, percent, std::memory_order_relaxed))
      return FControl.Progress(percent);
  }
}

TFolderWorker::TFolderWorker(TFolderScan& scan, unsigned thread)
    : FScan(scan), FShard(scan.Builder.Shard(thread)), FSeen(scan.Seen[thread]), FThread(thread) {}

bool TFolderWorker::Stopped() const {
  return FScan.Control.Stop.load(std::memory_order_relaxed);
}

void TFolderWorker::Run() {
  if (!FScan.Queue.Join(FThread)) return;
  FWaits = TimesWaited();
  TFolderTask task;
  while (!Stopped() && FScan.Queue.Next(FStack, task)) {
    ReadFolder(task);
    task.Parent.reset();
    InviteOthers();
  }
  if (Stopped()) FScan.Queue.Cancel();
  FShard.CountBytesRead(FListing.BytesRead());
}

// A thread that waits for the disk leaves its processor to another one, and the more reads the disk knows of,
// the better it orders them.
void TFolderWorker::InviteOthers() {
  if (++FFolders % kFoldersBetweenLooks != 0) return;
  const uint64_t waits = TimesWaited();
  if (waits - FWaits > kFoldersBetweenLooks / 4) FScan.Queue.Invite();
  FWaits = waits;
}

void TFolderWorker::ReadFolder(const TFolderTask& task) {
  FSubfolders.clear();
  TFolderHandle folder;
  TAccess access = Open(task, folder);
  if (access == TAccess::Ok) access = ReadEntries(task.Folder, folder);
  if (access == TAccess::Unreadable) FShard.AddUnreadable(task.Folder);
  QueueSubfolders(task, std::move(folder));
}

TAccess TFolderWorker::Open(const TFolderTask& task, TFolderHandle& folder) {
  if (task.Folder == kRootFolder) return folder.OpenAgain(FScan.Root);
  if (task.Parent == nullptr) return OpenFromRoot(FScan, task.Folder, folder);
  const std::string name(FScan.Builder.FolderName(task.Folder));
  const TAccess access = folder.OpenBelow(task.Parent->Handle, name);
  // Who was not asked for the folder's facts can't have told what is mounted there.
  return access == TAccess::Ok && FScan.Known != nullptr ? StaysInPlace(FScan, folder) : access;
}

TAccess OpenFromRoot(const TFolderScan& scan, TFolderId id, TFolderHandle& folder) {
  std::vector<TFolderId> way;
  for (; id != kRootFolder; id = scan.Builder.FolderParent(id))
    way.push_back(id);
  if (way.empty()) return folder.OpenAgain(scan.Root);
  const TFolderHandle* from = &scan.Root;
  std::string piece;
  while (!way.empty() && !scan.Control.Stop.load(std::memory_order_relaxed)) {
    piece.append(scan.Builder.FolderName(way.back())) += '/';
    way.pop_back();
    if (!way.empty() && piece.size() < kPathPiece) continue;
    piece.pop_back();
    if (const TAccess access = folder.OpenBelow(*from, piece); access != TAccess::Ok) return access;
    from = &folder;
    piece.clear();
  }
  return StaysInPlace(scan, folder);
}

TAccess TFolderWorker::ReadEntries(TFolderId id, const TFolderHandle& folder) {
  FListing.Start(folder);
  bool refused = false;
  TAccess access = FListing.Next();
  for (; access == TAccess::Ok && !Stopped(); access = FListing.Next()) {
    TEntryFacts facts;
    const TAccess known = AskFor(facts);
    refused = refused || known == TAccess::Unreadable;
    if (known != TAccess::Ok) continue;
    if (facts.IsFolder)
      AddFolder(id, facts);
    else
      AddFile(id, facts);
  }
  return refused ? TAccess::Unreadable : access;
}

TAccess TFolderWorker::AskFor(TEntryFacts& facts) const {
  if (FScan.Known == nullptr || !FListing.Listed(facts)) return FListing.Facts(facts);
  facts.Place = FScan.RootFacts.Place;
  const auto known = FScan.Known->Find(facts);
  return known ? *known : FListing.Facts(facts);
}

void TFolderWorker::AddFolder(TFolderId parent, const TEntryFacts& facts) {
  const TFolderId id = FScan.Builder.ReserveFolder();
  // What is mounted here is a folder without content: the volume on it is not the one that is scanned.
  if (FShard.SetFolder(id, parent, FListing.Name()) && facts.Place == FScan.RootFacts.Place)
    FSubfolders.push_back(id);
}

// What is mounted over a file belongs to another place; the file counts all the same. On layered file systems
// files have device numbers of their own, hence the mount alone decides where it is known.
void TFolderWorker::AddFile(TFolderId parent, TEntryFacts& facts) {
  const bool own = facts.Place.Mount == FScan.RootFacts.Place.Mount;
  const uint64_t size = own ? facts.Size : 0;
  const uint64_t allocated = own ? facts.Allocated : 0;
  const bool untold = facts.Links == 0;
  const bool asks = untold && (FShard.MayList(size) || !TSeenFiles::Takes(size));
  if (asks) FListing.CountLinks(facts);
  const bool mayHaveOthers = facts.Links > 1 || (asks && facts.Links == 0);
  if (!mayHaveOthers) {
    if (facts.Links == 0) FSeen.AddSingle(facts.Number, parent, size, FShard.KindIfKept(FListing.Name()));
    return FShard.AddFile(parent, FListing.Name(), size, allocated);
  }
  if (untold) FSeen.AddLinked(facts.Number);
  FShard.AddLinkedFile(parent, FListing.Name(), size, LinkKeyOf(facts), allocated);
}

void TFolderWorker::QueueSubfolders(const TFolderTask& task, TFolderHandle folder) {
  // A folder's share is split evenly between itself and its subfolders, as nothing is known of these yet; so
  // progress is uneven but comes to the whole.
  const double share = task.Share / static_cast<double>(FSubfolders.size() + 1);
  if (!FSubfolders.empty()) {
    std::shared_ptr<TKeptFolder> kept;
    if (FScan.OpenCount.load(std::memory_order_relaxed) < FScan.OpenLimit)
      kept = std::make_shared<TKeptFolder>(std::move(folder), FScan.OpenCount);
    // The first of them on the disk is the next to be read.
    for (auto id = FSubfolders.rbegin(); id != FSubfolders.rend(); ++id)
      FStack.push_back({*id, kept, share});
  }
  FScan.Progress.Add(share);
}

}  // namespace volindex
