// Finds, when all folders are read, the files with several names of which a listing does not tell that they
// have: those that were seen more than once. They are taken back from the sums that they were added to and
// then, their folders listed once more, added as what they are.
#pragma once

#include "volindex/readers/folders/FolderWorker.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <vector>

namespace volindex {

class TLinkSearch {
 public:
  explicit TLinkSearch(TFolderScan& scan) : FScan(scan) {}

  // Blocks; `threads` are no more than have read. Where all links are known from the start there is nothing
  // to do.
  void Run(unsigned threads);

 private:
  [[nodiscard]] bool Stopped() const { return FScan.Control.Stop.load(std::memory_order_relaxed); }
  void WithdrawParts(unsigned thread);
  void WithdrawRepeated(std::vector<TSeenFile>& files, TIndexShard& shard);
  void ListFolders(unsigned thread);
  void AddLinksIn(TFolderId folder, TFolderListing& listing, TIndexShard& shard) const;

  TFolderScan& FScan;
  std::atomic<size_t> FNextPart{0};
  std::atomic<size_t> FNextFolder{0};
  std::mutex FLock;
  std::vector<uint64_t> FNumbers;   // of the files that were taken back
  std::vector<TFolderId> FFolders;  // that hold them
};

}  // namespace volindex
