// Finds, when all folders are read, the files with several names of which a listing does not tell that they
// have: those that were seen more than once. Their folders are listed once more and they are added as what
// they are; only then are they taken back from the sums that they were added to. One that is not found again,
// since its folders are gone or shut by now, stays in the sum of one of them.
//
// Memory: 16 bytes for each file that was seen, gathered by parts of the numbers so that a part is sorted at
// a time; what is left is the files with several names alone. Every thread has ended its part of a step
// before the next begins.
#pragma once

#include "volindex/readers/folders/FolderWorker.h"

#include <atomic>
#include <cstdint>
#include <memory>
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
  void SearchParts();
  void TakeRepeated(std::vector<TSeenFile>& files);
  void ListFolders(unsigned thread);
  void AddLinksIn(TFolderId folder, TFolderListing& listing, TIndexShard& shard);
  void Withdraw();

  TFolderScan& FScan;
  std::atomic<size_t> FNextPart{0};
  std::atomic<size_t> FNextFolder{0};
  std::mutex FLock;
  std::vector<TSeenFile>
      FRepeated;  // all that was seen of the files seen more than once; by number, then path
  std::vector<TFolderId> FFolders;  // that hold them
  // By the place of a file's first record in FRepeated: 0, or when it was found one more than it occupies.
  std::unique_ptr<std::atomic<uint64_t>[]> FFound;
};

}  // namespace volindex
