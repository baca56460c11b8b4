// Which folder of the index a file record stands for. A file names its folder by record and sequence number
// long before or after that folder's own record is met, so the pair itself gets the identifier; a pair that
// no folder ever claims is a folder that was deleted, and the index leaves it out with all that it holds.
//
// A slot is written once, by whichever thread needs it first, and never changes; so a look at it needs no
// lock. Only rivals are behind one. What a hostile volume can make it hold is 8 bytes a record and kMaxRivals
// pairs.
#pragma once

#include <atomic>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>

#include "volindex/index/IndexBuilder.h"
#include "volindex/readers/ntfs/FileRecord.h"

namespace volindex::ntfs {

// The volume's own records: its metadata files, and the root folder among them.
inline constexpr std::uint64_t kFirstUserRecord = 16;  // new files begin at 24, but drivers show these too
inline constexpr std::uint64_t kRootRecord = 5;

class TFolderSlots {
 public:
  // The root's pair stands for folder 0. The builder must outlive the slots.
  TFolderSlots(TIndexBuilder& builder, std::uint64_t recordCount, TFileReference root);

  // The identifier of the pair, made at its first use; kNoFolder for a record that does not exist or belongs
  // to the metadata. Any thread.
  [[nodiscard]] TFolderId IdOf(TFileReference folder) {
    if (folder.Record() >= FRecordCount) return kNoFolder;
    const std::uint64_t held = Slot(folder).load(std::memory_order_relaxed);
    if (held != 0 && static_cast<std::uint16_t>(held) == folder.Sequence())
      return static_cast<TFolderId>((held >> 16) - 1);
    return IdOfNewcomer(folder);
  }

  // Has the system give the table's memory, a part at each call; false when there is none left. A page that
  // is read before it is written to would be given twice, and all processors told. Any thread.
  [[nodiscard]] bool PreparePart();

  // Asks for the memory that IdOf will look at.
  void Prefetch(TFileReference folder) const;

  // From now on there is nothing for pairs not seen before. While no other thread asks.
  void Close() { FClosed = true; }

  // True if pairs were refused because far more of them share a record than on any sound volume.
  [[nodiscard]] bool Overfull() const { return FOverfull.load(std::memory_order_relaxed); }

 private:
  struct TFree {
    void operator()(std::uint64_t* slots) const { std::free(slots); }
  };

  [[nodiscard]] std::atomic_ref<std::uint64_t> Slot(TFileReference folder) const {
    return std::atomic_ref(FSlots[folder.Record()]);
  }
  [[nodiscard]] TFolderId IdOfNewcomer(TFileReference folder);
  [[nodiscard]] TFolderId IdOfRival(TFileReference folder);

  TIndexBuilder& FBuilder;
  std::uint64_t FRecordCount;
  bool FClosed = false;
  // Per record the first pair seen: identifier + 1, then the 16 bits of the sequence number. 0 is none.
  std::unique_ptr<std::uint64_t[], TFree> FSlots;
  std::atomic<std::uint64_t> FPrepared{0};
  std::mutex FRivalLock;
  std::map<TFileReference, TFolderId> FRivals;  // pairs whose record has another pair in its slot
  std::atomic<bool> FOverfull{false};
};

}  // namespace volindex::ntfs
