// One reading of an NTFS volume into an index: the whole master file table, shared out among threads.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "volindex/readers/AlignedBytes.h"
#include "volindex/readers/Reader.h"
#include "volindex/readers/ntfs/FolderSlots.h"
#include "volindex/readers/ntfs/RecordFacts.h"

namespace volindex::ntfs {

class TNtfsScan {
 public:
  // All of them must outlive the scan.
  TNtfsScan(const TNtfsVolume& volume, TDriver driver, TIndexBuilder& builder, const TScanControl& control,
            unsigned threads);

  // Once. Blocks; the answer does not depend on the number of threads.
  [[nodiscard]] TReadResult Run();

 private:
  // A record whose facts wait for others of the same file.
  struct TSpread {
    TFileReference Record;
    TFileReference Base;  // of an extension record
    bool Folder = false;
    TRecordFacts Facts;
  };

  // What one thread works with.
  struct TWorker {
    explicit TWorker(TIndexShard& shard) : Shard(shard) {}

    // Void at the next call.
    [[nodiscard]] std::string_view TextOf(const TFileName& name);

    TIndexShard& Shard;
    TAlignedBytes Buffer;
    TRecordFacts Facts;
    std::string Name;
    std::vector<TSpread> Bases;
    std::vector<TSpread> Extensions;
    std::size_t Holders = 0;
  };

  [[nodiscard]] bool FindRoot(TFileReference& root) const;
  [[nodiscard]] TReadResult Pass();
  void Work(TWorker& worker);
  [[nodiscard]] bool TakeShare(TWorker& worker, std::uint64_t first);
  void TakeRecord(TWorker& worker, std::uint64_t number, std::span<std::byte> record);
  [[nodiscard]] bool Repair(std::uint64_t number, std::span<std::byte> record) const;
  void Keep(TWorker& worker, const TRecordHeader& header, TFileReference self);
  void JoinSpread(std::vector<TWorker>& workers);
  void Add(TWorker& worker, TFileReference self, bool folder, const TRecordFacts& facts);
  void AddFolder(TWorker& worker, TFileReference self, const TRecordFacts& facts);
  void AddFile(TWorker& worker, TFileReference self, const TRecordFacts& facts);
  void Report(std::uint64_t recordsDone);

  const TNtfsVolume& FVolume;
  TDriver FDriver;
  TIndexBuilder& FBuilder;
  const TScanControl& FControl;
  unsigned FThreads;
  std::unique_ptr<TFolderSlots> FSlots;
  bool FFilesOnly = false;  // the second pass
  std::atomic<std::uint64_t> FNext{0};
  std::atomic<bool> FFailed{false};
};

}  // namespace volindex::ntfs
