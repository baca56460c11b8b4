// Reads folders on one thread.
//
// How it goes: Run takes a task off the queue, ReadFolder opens the folder (Open), asks for each entry
// (ReadEntries, AskFor), tells the builder (AddFolder, AddFile) and puts the subfolders on the worker's own
// stack (QueueSubfolders). A folder is opened from its parent, which is kept open until the last of its
// subfolders is read; when too many are open it is opened from the root instead, in pieces of the path. The
// stack makes it a walk in depth, so that few parents are open at a time.
#pragma once

#include "volindex/index/IndexBuilder.h"
#include "volindex/readers/Reader.h"
#include "volindex/readers/folders/FolderQueue.h"
#include "volindex/readers/folders/KnownFiles.h"
#include "volindex/readers/folders/SeenFiles.h"
#include "volindex/system/FolderAccess.h"

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace volindex {

// Adds the parts of the work up and reports them; any thread.
class TFolderProgress {
 public:
  explicit TFolderProgress(const TScanControl& control) : FControl(control) {}
  void Add(double share);

 private:
  const TScanControl& FControl;
  std::atomic<double> FDone{0};
  std::atomic<int> FReported{0};
};

// What the threads of one scan share.
struct TFolderScan {
  std::atomic<unsigned> OpenCount;  // first, for the queue's folders count themselves out of it
  TIndexBuilder& Builder;
  const TScanControl& Control;
  const TFolderHandle& Root;
  TEntryFacts RootFacts;
  TFolderQueue Queue;
  TFolderProgress Progress;
  unsigned OpenLimit;
  std::vector<TSeenFiles> Seen;  // per thread
  TKnownFiles* Known = nullptr;  // may be null
};

[[nodiscard]] inline TLinkKey LinkKeyOf(const TEntryFacts& facts) {
  return {facts.Number, (facts.Place.Major << 20) ^ facts.Place.Minor};
}

// Goes down from the root in pieces. Gone where a folder on the way was replaced by a link to another place;
// one within the same mount does not show.
[[nodiscard]] TAccess OpenFromRoot(const TFolderScan& scan, TFolderId id, TFolderHandle& folder);

class TFolderWorker {
 public:
  TFolderWorker(TFolderScan& scan, unsigned thread);

  // Until all folders are read or the stop flag is seen.
  void Run();

 private:
  void ReadFolder(const TFolderTask& task);
  [[nodiscard]] TAccess Open(const TFolderTask& task, TFolderHandle& folder);
  [[nodiscard]] bool Stopped() const;
  void InviteOthers();
  // The answer of TFolderListing that ended it: Gone at the regular end.
  [[nodiscard]] TAccess ReadEntries(TFolderId id, const TFolderHandle& folder);
  [[nodiscard]] TAccess AskFor(TEntryFacts& facts) const;
  void AddFolder(TFolderId parent, const TEntryFacts& facts);
  void AddFile(TFolderId parent, TEntryFacts& facts);
  void QueueSubfolders(const TFolderTask& task, TFolderHandle folder);

  TFolderScan& FScan;
  TIndexShard& FShard;
  TSeenFiles& FSeen;
  TFolderListing FListing;
  unsigned FThread;
  unsigned FFolders = 0;  // read
  uint64_t FWaits = 0;    // at the last look at them
  std::vector<TFolderTask> FStack;
  std::vector<TFolderId> FSubfolders;  // of the folder that is read
};

}  // namespace volindex
