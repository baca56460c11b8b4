#include "volindex/readers/ext4/InodeTable.h"

#include <algorithm>
#include <bit>

#include "volindex/readers/ext4/ReadPlan.h"

namespace volindex::ext4 {

TInodeTable::TInodeTable(const TSuperblock& super, std::vector<TGroup> groups)
    : FSuper(super),
      FPacking(static_cast<unsigned>(std::countr_zero(super.BlockSize))),
      FGroups(std::move(groups)) {
  // As much as one read brings (kLargestRead), so that a piece is never cut. Slots are counted for whole
  // tables although few pieces are read of most: an empty slot costs 40 bytes for a mebibyte of table.
  constexpr std::uint32_t kPieceBytes = 1u << 20;
  FPieceInodes = kPieceBytes / super.InodeSize;
  FSlotsPerGroup = (super.InodesPerGroup - 1) / FPieceInodes + 1;
  FKept.resize(FGroups.size() * FSlotsPerGroup);
}

std::optional<std::vector<TTablePiece>> TInodeTable::Pieces(const std::atomic<bool>& stop) const {
  std::vector<TTablePiece> pieces;
  for (std::uint32_t group = 0; group < FGroups.size(); ++group) {
    const std::uint64_t table = FGroups[group].InodeTable * FSuper.BlockSize;
    for (std::uint32_t within = 0; within < FGroups[group].UsedInodes; within += FPieceInodes) {
      const std::uint32_t inodes = std::min(FPieceInodes, FGroups[group].UsedInodes - within);
      pieces.push_back({table + std::uint64_t{within} * FSuper.InodeSize, inodes * FSuper.InodeSize,
                        group * FSuper.InodesPerGroup + within + 1, inodes});
    }
  }
  // Groups may place their tables in any order and far from themselves, as they do in flexible groups. That
  // two tables share bytes is no sound volume: the same inode would be read under two numbers.
  if (!SortUnlessStopped(pieces, &TTablePiece::Offset, stop)) return std::nullopt;
  const auto overlap = [](const TTablePiece& a, const TTablePiece& b) {
    return a.Offset + a.Length > b.Offset;
  };
  if (std::ranges::adjacent_find(pieces, overlap) != pieces.end()) return std::nullopt;
  return pieces;
}

TInodeTable::TEntry TInodeTable::EntryFor(const TInode& file, std::vector<TFileSize>& list) const {
  const TUse use = file.Links > 1 ? TUse::LinkedFile : TUse::File;
  if (const auto packed = FPacking.PackBytes(file.Size, file.Allocated)) return {use, *packed};
  list.push_back({file.Size, file.Allocated});
  return {use, TEntry::kListed | (list.size() - 1)};
}

// No lock: each piece has a slot of its own, and no slot is read before the threads that store have ended.
void TInodeTable::Store(const TTablePiece& piece, std::span<const TEntry> entries,
                        std::span<const TFileSize> list) {
  while (!entries.empty() && entries.back().Use() == TUse::None)
    entries = entries.first(entries.size() - 1);
  if (entries.empty()) return;
  const std::uint32_t index = piece.FirstInode - 1;
  TKept& kept = FKept[SlotOf(index / FSuper.InodesPerGroup, index % FSuper.InodesPerGroup)];
  kept.Entries = std::make_unique<TEntry[]>(entries.size());
  std::ranges::copy(entries, kept.Entries.get());
  kept.Count = static_cast<std::uint32_t>(entries.size());
  kept.List.assign(list.begin(), list.end());
}

TInodeTable::TKnown TInodeTable::Find(std::uint32_t number) const {
  const std::uint32_t index = number - 1;
  const std::uint32_t within = index % FSuper.InodesPerGroup;
  const TKept& kept = FKept[SlotOf(index / FSuper.InodesPerGroup, within)];
  const std::uint32_t inPiece = within % FPieceInodes;
  if (inPiece >= kept.Count) return {};
  const TEntry entry = kept.Entries[inPiece];
  if (entry.Use() == TUse::Folder) return {entry.Use(), entry.Folder(), {}};
  const std::uint64_t size = entry.FBits & (2 * TEntry::kListed - 1);
  return {entry.Use(), kNoFolder,
          (size & TEntry::kListed) != 0 ? kept.List[size - TEntry::kListed] : FPacking.Unpack(size)};
}

std::uint64_t TInodeTable::OffsetOf(std::uint32_t number) const {
  const std::uint32_t index = number - 1;
  const std::uint32_t group = index / FSuper.InodesPerGroup;
  return FGroups[group].InodeTable * FSuper.BlockSize +
         std::uint64_t{index % FSuper.InodesPerGroup} * FSuper.InodeSize;
}

}  // namespace volindex::ext4
