// Reads the tree of one Btrfs subvolume by searches, in ranges of inode numbers that threads share among
// themselves.
//
// An inode comes with its names, each with the number of the folder that holds it; so a file is told at once,
// and a folder too. Entries of folders serve for two things: those that lead to other subvolumes are told
// nowhere else, and all others must be the same as the names of their inodes, or the tree is damaged.
//
// How it goes: Run notes the generation, FindLast the highest number, ReadAll has workers read ranges (Read,
// TakeItem). Items come by key: the inode, its names, as a folder its entries, as a file its pieces. So a
// worker keeps the inode it is at and tells of it what can only be told behind its last item when the next
// one comes (Meet). LookForUnnamed reads folders that have got no name once more, EntriesAgree judges those
// whose names and entries differ.
//
// Workers share FFolders, which has locks, the counter of numbers and the flag that one has failed.
#pragma once

#include "volindex/index/WorkQueue.h"
#include "volindex/readers/Reader.h"
#include "volindex/readers/btrfs/FolderNumbers.h"
#include "volindex/readers/btrfs/TreeItems.h"

#include <atomic>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace volindex::btrfs {

// Who is searched: a mounted subvolume, or a test.
class TTreeSource {
 public:
  virtual ~TTreeSource() = default;

  // Fills `room` with items of the tree from the key `from` on, up to those of the number `last`, as many as
  // fit but no more than `most`; with nothing if there are none. None when there is no right to search, or
  // the search fails. Any thread. Blocks.
  [[nodiscard]] virtual std::optional<TFound> Search(const TKey& from, std::uint64_t last, std::uint32_t most,
                                                     std::span<std::byte> room) const = 0;

  // Of the tree as it was written last; none when it can't be told.
  [[nodiscard]] virtual std::optional<std::uint64_t> Generation() const = 0;

  // Has changes that the system holds back put into the tree. False after a stop too.
  [[nodiscard]] virtual bool Flush(const std::atomic<bool>& stop) const = 0;
};

// The first and the last number.
struct TRange {
  std::uint64_t First = 0;
  std::uint64_t Last = 0;
};

class TSubvolumeScan {
 public:
  // `threads` may read while the disk is waited for, of which `atOnce` begin.
  TSubvolumeScan(const TTreeSource& source, TIndexBuilder& builder, const TScanControl& control,
                 unsigned atOnce, unsigned threads);

  // Begins and finishes the builder.
  [[nodiscard]] TReadResult Run();

 private:
  class TWorker;
  using TQueue = TWorkQueue<TRange>;

  [[nodiscard]] bool Stopped() const { return FControl.Stop.load(std::memory_order_relaxed); }
  [[nodiscard]] TReadResult GivenUp() const {
    return Stopped() ? TReadResult::Stopped : TReadResult::HandedOver;
  }
  [[nodiscard]] bool FindLast();
  [[nodiscard]] bool ReadAll();
  void Work(TQueue& queue, unsigned thread);
  void CountRead(std::uint64_t numbers);
  [[nodiscard]] bool LookForUnnamed();
  [[nodiscard]] bool EntriesAgree();
  [[nodiscard]] bool HasChanged(std::uint64_t folder) const;

  const TTreeSource& FSource;
  TIndexBuilder& FBuilder;
  const TScanControl& FControl;
  unsigned FAtOnce;
  unsigned FThreads;
  TFolderNumbers FFolders;
  std::uint64_t FGeneration = 0;
  std::uint64_t FLast = kRootNumber;  // the highest number at the beginning
  std::atomic<std::uint64_t> FNumbersRead{0};
  std::atomic<bool> FFailed{false};
  bool FFilesOnly = false;  // the second look for the largest files
};

}  // namespace volindex::btrfs
