// One reading of an NTFS volume into an index: the whole master file table, shared out among threads.
//
// Most files are told by one record and go to the builder as it is met. A record with an attribute list is
// only noted, and joined with the records that the list names when the thread has no more of the table to
// read: the records are then read once more, one file at a time. So whatever the volume, all that is kept
// here is 4 bytes per such file and 8 bytes per record of the table (FolderSlots.h).
//
// How it goes: Run finds the root and makes passes, a second one only if the builder asks. In a pass each
// thread does Work: TakeTable has TakeShare read a share of the table and TakeRecord parse each record
// (Understand, Parse), of which AddRecord tells the builder; folders wait until the end of their share.
// JoinSpread then joins the noted records, and TakeNames and TellWaiting tell what came together.
//
// Threads share the counter of records, the slots of folders and the flag that one has failed; everything
// else is a worker's own. A record that does not hold together is read up to kTries times, as its driver may
// be writing it, before the volume is handed over.
#pragma once

#include <atomic>
#include <deque>
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
  // A record that holds together, or is not in use; then without facts. The facts lie in the record's bytes.
  struct TRecord {
    TFileReference Self;
    TRecordHeader Header;
    TRecordFacts Facts;

    [[nodiscard]] bool IsBaseInUse() const { return Header.InUse && Header.IsBase(); }
  };

  // The name of a file that is not told yet: of neighbouring names in one folder only the first in the order
  // of paths can be the file's, and a file with one such name is told as one with a single name.
  struct TWaitingName {
    TFolderId Parent = kNoFolder;
    std::string Text;
    bool OthersTold = false;
  };

  // A folder with one name, its bytes in the worker's buffer.
  struct TFolder {
    TFileReference Self;
    TFileName Name;
  };

  // What one thread works with.
  struct TWorker {
    explicit TWorker(TIndexShard& shard) : Shard(shard) {}

    // Void at the next call.
    [[nodiscard]] std::string_view TextOf(const TFileName& name);

    TIndexShard& Shard;
    TAlignedBytes Buffer;
    TRecord Record;
    std::vector<TFolder>
        Folders;  // of the share that is being taken, told at its end when their slots are near
    std::string Text;
    TWaitingName Waiting;
    std::deque<std::uint32_t> Spread;  // numbers of the records with an attribute list
    std::vector<std::byte> BaseBytes;
    std::vector<std::byte> ExtensionBytes;
    TRecord Extension;
    std::vector<THolder> Holders;
  };

  [[nodiscard]] bool FindRoot(TFileReference& root) const;
  [[nodiscard]] TReadResult Pass();
  void Work(TWorker& worker);
  // All these are false when the volume is to be handed over; after a Stop the answer does not matter.
  [[nodiscard]] bool TakeTable(TWorker& worker);
  [[nodiscard]] bool TakeShare(TWorker& worker, std::uint64_t first);
  [[nodiscard]] bool TakeRecord(TWorker& worker, std::uint64_t number, std::span<std::byte> bytes);
  [[nodiscard]] bool Understand(std::uint64_t number, std::span<std::byte> bytes, TRecord& record) const;
  [[nodiscard]] bool Parse(std::span<std::byte> bytes, TRecord& record) const;
  [[nodiscard]] bool JoinSpread(TWorker& worker);
  [[nodiscard]] bool Join(TWorker& worker, std::uint32_t number);
  [[nodiscard]] bool JoinHolders(TWorker& worker);
  [[nodiscard]] bool ReadRecord(std::uint64_t number, std::vector<std::byte>& bytes, TRecord& record) const;
  [[nodiscard]] bool IsFolder(const TRecord& record) const {
    return record.Header.Folder && !record.Facts.IsLink(FDriver);
  }
  [[nodiscard]] bool AddRecord(TWorker& worker, const TRecord& record);
  [[nodiscard]] bool AddFolders(TWorker& worker);
  [[nodiscard]] bool TellFolder(TWorker& worker, TFileReference self, TFolderId parent,
                                std::string_view name);
  [[nodiscard]] bool TakeNames(TWorker& worker, const TRecord& base, const std::vector<TFileName>& names);
  [[nodiscard]] bool TellWaiting(TWorker& worker, const TRecord& base);
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
