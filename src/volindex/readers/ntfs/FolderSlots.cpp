#include "volindex/readers/ntfs/FolderSlots.h"

#include <algorithm>
#include <new>

namespace volindex::ntfs {

namespace {

// A record has rivals where a folder was deleted and its record given away while files still name it. A sound
// volume has hardly any; a hostile one could make one per name, each with a place in the map and an
// identifier.
constexpr std::size_t kMaxRivals = 1u << 16;

std::uint64_t Packed(TFolderId id, std::uint16_t sequence) {
  return (std::uint64_t{id} + 1) << 16 | sequence;
}

}  // namespace

TFolderSlots::TFolderSlots(TIndexBuilder& builder, std::uint64_t recordCount, TFileReference root)
    : FBuilder(builder),
      FRecordCount(recordCount),
      FSlots(static_cast<std::uint64_t*>(std::calloc(recordCount, sizeof(std::uint64_t)))) {
  if (!FSlots) throw std::bad_alloc();
  FSlots[root.Record()] = Packed(0, root.Sequence());
}

bool TFolderSlots::PreparePart() {
  constexpr std::uint64_t kSlotsPerPage = 4096 / sizeof(std::uint64_t);
  constexpr std::uint64_t kPart = 64 * kSlotsPerPage;
  const std::uint64_t first = FPrepared.fetch_add(kPart, std::memory_order_relaxed);
  for (std::uint64_t slot = first; slot < std::min(first + kPart, FRecordCount); slot += kSlotsPerPage)
    std::atomic_ref(FSlots[slot]).fetch_or(0, std::memory_order_relaxed);
  return first < FRecordCount;
}

void TFolderSlots::Prefetch([[maybe_unused]] TFileReference folder) const {
#ifdef __has_builtin
#if __has_builtin(__builtin_prefetch)
  if (folder.Record() < FRecordCount) __builtin_prefetch(&FSlots[folder.Record()], 1);
#endif
#endif
}

TFolderId TFolderSlots::IdOfNewcomer(TFileReference folder) {
  if (folder.Record() < kFirstUserRecord && folder.Record() != kRootRecord) return kNoFolder;
  const auto slot = Slot(folder);
  std::uint64_t held = slot.load(std::memory_order_relaxed);
  if (held == 0) {
    if (FClosed) return kNoFolder;
    const TFolderId id = FBuilder.ReserveFolder();
    // The identifier of a thread that loses is never set, and so left out by the index. Relaxed is enough:
    // the slot is all that is told, nothing else is read by way of it.
    if (slot.compare_exchange_strong(held, Packed(id, folder.Sequence()), std::memory_order_relaxed))
      return id;
  }
  if (static_cast<std::uint16_t>(held) == folder.Sequence()) return static_cast<TFolderId>((held >> 16) - 1);
  return IdOfRival(folder);
}

TFolderId TFolderSlots::IdOfRival(TFileReference folder) {
  const std::lock_guard lock(FRivalLock);
  const auto found = FRivals.find(folder);
  if (found != FRivals.end()) return found->second;
  if (FClosed) return kNoFolder;
  if (FRivals.size() == kMaxRivals) {
    FOverfull = true;
    return kNoFolder;
  }
  return FRivals.emplace(folder, FBuilder.ReserveFolder()).first->second;
}

}  // namespace volindex::ntfs
