// Collects what a reader finds on a volume and turns it into the finished index.
//
// A reader calls Begin with its number of threads, then from each thread t: ReserveFolder and SetFolder for
// folders and Shard(t) for files, in any order. When all is said it calls Finish, and if that answers
// TopListAgain, repeats the calls that add files (only these; others are ignored) and calls Finish again.
//
// Names are bytes without a delimiter, at most 65,535 long; sizes are bytes, `allocated` those that a file
// occupies on its volume. No file name is kept unless it
// may get into the top list or belongs to a file with several names; of these a few megabytes, then no more.
#pragma once

#include "volindex/index/ContentKinds.h"
#include "volindex/index/FolderTable.h"
#include "volindex/index/LinkedFiles.h"
#include "volindex/index/TopFiles.h"
#include "volindex/index/VolumeIndex.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace volindex {

// What is known of a folder's ancestors at the time when a file is added to it.
enum class TFolderOrder {
  ParentsFirst,  // every folder above is set already, and none will be left out
  Any,           // nothing: folders may get their parents and names after their files, or never
};

enum class TFinish { Done, TopListAgain, Stopped };

// What Finish found out about a folder.
// OnPath lives within one climb only. Covered is the folder on which something is mounted: it counts itself,
// and what the volume keeps beneath the mount is LeftOut.
enum class TFolderState : uint8_t { Unknown, OnPath, Counted, Covered, LeftOut };

// One thread's part of the builder. Used by one thread at a time; never locks.
class TIndexShard {
 public:
  // `kinds` may be null: then no kind of content is looked at.
  TIndexShard(TFolderTable& folders, TFolderKinds* kinds, TFolderOrder order, size_t linkTextRoom);
  TIndexShard(const TIndexShard&) = delete;
  TIndexShard& operator=(const TIndexShard&) = delete;

  // Makes `id` the folder `name` in `parent`. False when `id` has been set before by whichever thread: the
  // volume is then no tree, and the reader should hand over. A folder that is never set is left out with
  // all that lies below it.
  [[nodiscard]] bool SetFolder(TFolderId id, TFolderId parent, std::string_view name);

  // A file with one name. The parent, here and below, is the root or was reserved.
  void AddFile(TFolderId parent, std::string_view name, uint64_t size, uint64_t allocated = 0);

  // Adds to what the files in a folder occupy, for a reader that hears of it after the file itself.
  void AddAllocated(TFolderId parent, uint64_t allocated) {
    if (parent == FPendingFolder)
      FPendingAllocated += allocated;
    else if (FSecondPass == nullptr)
      FFolders.AddContent(parent, 0, 0, allocated);
  }

  // Takes a file back that was added, by whichever shard, when MayList had refused its size; of the kind that
  // KindIfKept had answered.
  void WithdrawFile(TFolderId parent, uint64_t size, uint64_t allocated, TKind kind);

  // Whether a file of that size may get into the list.
  [[nodiscard]] bool MayList(uint64_t size) const { return FTop.MayTake(size); }
  // Whether AddFile looks at the name of a file of that size.
  [[nodiscard]] bool WantsName(uint64_t size) const { return FKinds != nullptr || MayList(size); }
  // The kind by the name where kinds are kept, else Other.
  [[nodiscard]] TKind KindIfKept(std::string_view name) const {
    return FKinds != nullptr ? KindOf(name) : TKind::Other;
  }

  // One of the names of a file with several. The file will count once, under that of its added names in
  // folders not left out whose full path sorts first.
  void AddLinkedFile(TFolderId parent, std::string_view name, uint64_t size, TLinkKey key,
                     uint64_t allocated = 0);

  // What lies in a folder and is too small for the list, told as a sum.
  void AddUnlisted(TFolderId folder, const TKindBytes& bytes, uint32_t files, uint64_t allocated);

  // A folder that could not be read, or not all of it; at most once for each.
  void AddUnreadable(TFolderId folder) { FUnreadable.push_back(folder); }

  // For the trace line only.
  void CountBytesRead(uint64_t bytes) { FBytesRead += bytes; }

 private:
  friend class TIndexBuilder;
  void FlushPending();

  TFolderTable& FFolders;
  TFolderKinds* const FKinds;
  TFolderOrder FOrder;
  TTopFiles FTop;
  // In the second pass: which folders' files are wanted for the list, and the linked ones to be settled;
  // nothing else is then taken.
  const std::vector<TFolderState>* FSecondPass = nullptr;
  TOpenLinks* FOpenLinks = nullptr;
  TNameArena FFolderNames;
  TLinkedFiles FLinks;
  // The running sum of the folder that got the last file, so that a folder's files cost one addition.
  TFolderId FPendingFolder = kNoFolder;
  uint64_t FPendingSize = 0;
  uint64_t FPendingAllocated = 0;
  TKindBytes FPendingKinds{};  // with FKinds
  uint32_t FPendingFiles = 0;
  std::vector<TFolderId> FUnreadable;
  uint64_t FBytesRead = 0;
};

class TIndexBuilder {
 public:
  // Bytes, for all shards and parts together.
  static constexpr size_t kLinkTextRoom = size_t{4} << 20;

  // Keeps that many bytes of the names of linked files, which spares most volumes the second pass.
  explicit TIndexBuilder(size_t linkTextRoom = kLinkTextRoom);
  ~TIndexBuilder();
  TIndexBuilder(const TIndexBuilder&) = delete;
  TIndexBuilder& operator=(const TIndexBuilder&) = delete;

  // Whether the index shall tell the bytes of each folder's own files by kind. Called before Begin, by who
  // starts the reader.
  void KeepKinds(bool keep) { FKeepsKinds = keep; }

  // Forgets everything (also what a reader that handed over has left) but the covered paths, makes the
  // root folder and `shards` shards. Not thread-safe.
  void Begin(unsigned shards, TFolderOrder order);

  [[nodiscard]] TIndexShard& Shard(unsigned thread) { return *FShards[thread]; }

  // The next free id, from 1 up without gaps. Any thread. The folder is left out until it is set.
  [[nodiscard]] TFolderId ReserveFolder() { return FFolders->Reserve(); }

  // The folder counts, what lies in it does not. Any thread, before Finish.
  void ExcludeFolder(TFolderId id);

  // The same for the folder at `relative`, components parted by '/', no matter when it is found. A path
  // that names no folder is ignored. Called before Begin, by who starts the reader; without effect for
  // TFolderOrder::ParentsFirst, where the reader itself sees what is mounted.
  void CoverPath(std::string relative);

  // Name and parent of a folder that is set. Any thread that knows it to be set.
  [[nodiscard]] std::string_view FolderName(TFolderId id) const { return FFolders->Name(id); }
  [[nodiscard]] TFolderId FolderParent(TFolderId id) const { return FFolders->Parent(id); }
  // The order of their paths, for TFolderOrder::ParentsFirst: less than 0, 0, more than 0.
  [[nodiscard]] int CompareFolders(TFolderId a, TFolderId b) const {
    return FFolders->ComparePaths(a, {}, b, {});
  }

  // Merges the shards, when no thread adds any more. The answer depends on what was added and not on the
  // threads or the order. TopListAgain only with TFolderOrder::Any and only once: names that decide something
  // had to be dropped before it was known where their folders are.
  // Stopped leaves an index of nothing.
  [[nodiscard]] TFinish Finish(const std::atomic<bool>& stop);

  // The index, after Done; afterwards the builder is empty as after construction.
  [[nodiscard]] TVolumeIndex TakeIndex();

 private:
  void FlushShards();
  void ResolveFolder(TFolderId id, std::vector<TFolderId>& path);
  void AddContent(TFolderId id, const TLinkedName& file);
  void AddLinks(std::span<TLinkedName> sorted);
  void AddLink(std::span<TLinkedName> names);
  void SortUnreadable();
  // These answer false when the stop flag was seen.
  [[nodiscard]] bool ApplyCovers(const std::atomic<bool>& stop);
  [[nodiscard]] bool ResolveFolders(const std::atomic<bool>& stop);
  [[nodiscard]] bool ResolveLinks(const std::atomic<bool>& stop);
  [[nodiscard]] bool MakeTotals(const std::atomic<bool>& stop);
  // False when the list may miss a file.
  [[nodiscard]] bool MergeTopFiles();
  void PrepareSecondPass();
  [[nodiscard]] TFinish FinishStopped();

  std::unique_ptr<TFolderTable> FFolders;
  std::unique_ptr<TFolderKinds> FKinds;  // the same content as the table, while FKeepsKinds
  std::vector<std::unique_ptr<TIndexShard>> FShards;
  bool FKeepsKinds = false;
  TFolderOrder FOrder = TFolderOrder::Any;
  std::vector<std::string> FCovers;
  std::mutex FExcludedLock;
  std::vector<TFolderId> FExcluded;
  size_t FLinkTextRoom;
  std::optional<TTopFiles> FLinkedTop;  // linked files that may get into the list, paths settled
  TOpenLinks FOpenLinks;
  std::vector<TFolderState> FStates;
  bool FSecondPass = false;
  TVolumeIndex FIndex;
};

}  // namespace volindex
