#include "volindex/readers/ntfs/FolderSlots.h"

#include <new>

namespace volindex::ntfs {

namespace {

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

std::optional<TFolderId> TFolderSlots::IdOfNewcomer(TFileReference folder) {
  if (folder.Record() < kFirstUserRecord && folder.Record() != kRootRecord) return std::nullopt;
  const auto slot = Slot(folder);
  std::uint64_t held = slot.load(std::memory_order_relaxed);
  if (held == 0) {
    if (FClosed) return std::nullopt;
    const TFolderId id = FBuilder.ReserveFolder();
    if (slot.compare_exchange_strong(held, Packed(id, folder.Sequence()), std::memory_order_relaxed))
      return id;
  }
  if (static_cast<std::uint16_t>(held) == folder.Sequence()) return static_cast<TFolderId>((held >> 16) - 1);
  return IdOfRival(folder);
}

std::optional<TFolderId> TFolderSlots::IdOfRival(TFileReference folder) {
  const std::lock_guard lock(FRivalLock);
  const auto found = FRivals.find(folder);
  if (found != FRivals.end()) return found->second;
  if (FClosed) return std::nullopt;
  if (FRivals.size() == kMaxRivals) {
    FOverfull = true;
    return std::nullopt;
  }
  return FRivals.emplace(folder, FBuilder.ReserveFolder()).first->second;
}

}  // namespace volindex::ntfs
