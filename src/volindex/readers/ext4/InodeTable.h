// What is kept of every inode between the reading of the inode tables and that of the folders: eight bytes
// each, and 16 more for a file with large holes or with far more blocks than its length fills.
#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "volindex/index/FolderTable.h"
#include "volindex/readers/PackedSize.h"
#include "volindex/readers/ext4/GroupTable.h"
#include "volindex/readers/ext4/Inode.h"

namespace volindex::ext4 {

// A part of a group's inode table that is read and kept in one go.
struct TTablePiece {
  std::uint64_t Offset;      // bytes on the volume
  std::uint32_t Length;      // bytes
  std::uint32_t FirstInode;  // its number
  std::uint32_t Inodes;
};

class TInodeTable {
 public:
  // What an inode is: nothing, a file with one name or with several, or a folder.
  enum class TUse : std::uint8_t { None, File, LinkedFile, Folder };

  struct TKnown {
    TUse Use = TUse::None;
    TFolderId Folder = kNoFolder;
    TFileSize Size;
  };

  // The use in the two highest bits, then either the folder or a file's size: packed, or its place in a list.
  class TEntry {
   public:
    TEntry() = default;
    TEntry(TUse use, std::uint64_t value) : FBits(static_cast<std::uint64_t>(use) << kUseShift | value) {}
    [[nodiscard]] TUse Use() const { return static_cast<TUse>(FBits >> kUseShift); }
    [[nodiscard]] TFolderId Folder() const { return static_cast<TFolderId>(FBits); }

   private:
    friend class TInodeTable;
    static constexpr unsigned kUseShift = 62;
    static constexpr std::uint64_t kListed = std::uint64_t{1} << TPackedSize::kBits;
    std::uint64_t FBits = 0;
  };

  TInodeTable(const TSuperblock& super, std::vector<TGroup> groups);

  // All that was ever used, in the order on the volume. Nothing if tables overlap, or when the stop flag was
  // seen.
  [[nodiscard]] std::optional<std::vector<TTablePiece>> Pieces(const std::atomic<bool>& stop) const;

  // The entry for a file; a size that can't be packed is put into the list of its piece.
  [[nodiscard]] TEntry EntryFor(const TInode& file, std::vector<TFileSize>& list) const;

  // Keeps what was found in a piece. Threads may store different pieces at the same time.
  void Store(const TTablePiece& piece, std::span<const TEntry> entries, std::span<const TFileSize> list);

  // number: 1 up to the volume's count of inodes.
  [[nodiscard]] TKnown Find(std::uint32_t number) const;

  [[nodiscard]] std::uint32_t GroupOf(std::uint32_t number) const {
    return (number - 1) / FSuper.InodesPerGroup;
  }
  // Whether the inode lies in the part of its group's table that has ever been used, as the group tells.
  [[nodiscard]] bool IsInUsedPart(std::uint32_t number, const TGroup& group) const {
    return (number - 1) % FSuper.InodesPerGroup < group.UsedInodes;
  }
  [[nodiscard]] const TGroup& Group(std::uint32_t group) const { return FGroups[group]; }

  // Where the inode's bytes lie on the volume; the number must be one that Find knows as used.
  [[nodiscard]] std::uint64_t OffsetOf(std::uint32_t number) const;

  // Calls visit(number, folder) for each folder, in rising order of the numbers, as long as it answers true;
  // the last answer.
  template <class TVisit>
  [[nodiscard]] bool ForEachFolder(TVisit&& visit) const;

 private:
  // Trailing unused inodes are not kept.
  struct TKept {
    std::unique_ptr<TEntry[]> Entries;
    std::uint32_t Count = 0;
    std::vector<TFileSize> List;
  };
  [[nodiscard]] std::size_t SlotOf(std::uint32_t group, std::uint32_t within) const {
    return std::size_t{group} * FSlotsPerGroup + within / FPieceInodes;
  }

  const TSuperblock& FSuper;
  TPackedSize FPacking;
  std::vector<TGroup> FGroups;
  std::uint32_t FPieceInodes;
  std::uint32_t FSlotsPerGroup;
  std::vector<TKept> FKept;
};

template <class TVisit>
bool TInodeTable::ForEachFolder(TVisit&& visit) const {
  for (std::size_t slot = 0; slot < FKept.size(); ++slot) {
    const auto group = static_cast<std::uint32_t>(slot / FSlotsPerGroup);
    const auto piece = static_cast<std::uint32_t>(slot % FSlotsPerGroup);
    const std::uint32_t first = group * FSuper.InodesPerGroup + piece * FPieceInodes + 1;
    for (std::uint32_t i = 0; i < FKept[slot].Count; ++i) {
      const TEntry entry = FKept[slot].Entries[i];
      if (entry.Use() == TUse::Folder && !visit(first + i, entry.Folder())) return false;
    }
  }
  return true;
}

}  // namespace volindex::ext4
