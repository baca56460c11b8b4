// Reads folders on one thread.
#pragma once

#include "volindex/index/IndexBuilder.h"
#include "volindex/posix/FolderAccess.h"
#include "volindex/readers/Reader.h"
#include "volindex/readers/folders/FolderQueue.h"

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
};

class TFolderWorker {
 public:
  TFolderWorker(TFolderScan& scan, unsigned thread);

  // Until all folders are read or the stop flag is seen.
  void Run();

 private:
  void ReadFolder(const TFolderTask& task);
  [[nodiscard]] TAccess Open(const TFolderTask& task, TFolderHandle& folder);
  [[nodiscard]] TAccess OpenFromRoot(TFolderId id, TFolderHandle& folder);
  [[nodiscard]] bool Stopped() const;
  void InviteOthers();
  // The answer of TFolderListing::Next or EntryFacts that ended it: Gone at the regular end.
  [[nodiscard]] TAccess ReadEntries(TFolderId id, const TFolderHandle& folder);
  void AddFolder(TFolderId parent, const TEntryFacts& facts);
  void AddFile(TFolderId parent, const TEntryFacts& facts);
  void QueueSubfolders(const TFolderTask& task, TFolderHandle folder);

  TFolderScan& FScan;
  TIndexShard& FShard;
  TFolderListing FListing;
  unsigned FThread;
  unsigned FFolders = 0;  // read
  uint64_t FWaits = 0;    // at the last look at them
  std::vector<TFolderTask> FStack;
  std::vector<TFolderId> FSubfolders;  // of the folder that is read
};

}  // namespace volindex
