// Reads a whole ext2, ext3 or ext4 volume: first all inode tables, then the entries of all folders, both in
// the order in which they lie on the disk.
//
// How it goes: ReadVolume parses superblock and groups, Run does the rest. ReadInodes has each piece of the
// tables taken by HandlePiece: what an inode is goes to FInodes, where a folder's blocks lie to FFound.
// SortRuns brings these into disk order, ReadFolders has HandleEntries take each entry: by its number it
// finds the inode in FInodes and tells the builder. A folder whose name did not turn up is looked at once
// more (UnnamedFoldersAreGone). If the builder wants the largest files again, ReadFolders runs a second time;
// the inode tables need not.
//
// The two phases are parted by the end of all their threads, which is the only synchronisation: FInodes is
// written in the first, each piece by one thread, and only read in the second; FFound[t] belongs to thread t;
// FRuns is made in between by the one thread that called Run. The volume may be mounted and change all the
// while.
#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "volindex/readers/Reader.h"
#include "volindex/readers/ext4/FolderBlocks.h"
#include "volindex/readers/ext4/InodeTable.h"
#include "volindex/readers/ext4/ReadCrew.h"

namespace volindex::ext4 {

// Whether the volume's changes are all to be found outside of its journal.
enum class TVolumeState {
  Mounted,  // and flushed: the system keeps the blocks up to date, the journal is the system's matter
  AtRest,   // nobody else looks after the journal, so it must be empty
};

class TVolumeScan {
 public:
  // super and source must outlive the scan.
  TVolumeScan(const TByteSource& source, const TSuperblock& super, std::vector<TGroup> groups,
              TIndexBuilder& builder, const TScanControl& control, unsigned threads);

  [[nodiscard]] TReadResult Run();

 private:
  // Neighbouring blocks of a folder, or with no blocks a folder whose entries are within its inode.
  struct TFolderRun {
    std::uint64_t First;  // block, or the byte on the volume where the inode begins
    std::uint32_t Blocks;
    TFolderId Folder;
  };
  // What a thread has found in the inode tables.
  struct TFound {
    std::vector<TFolderRun> Runs;
    std::vector<TBlockRun> Scratch;
    std::vector<TInodeTable::TEntry> Entries;
    std::vector<TFileSize> Sizes;  // those that the entries have no room for
  };

  [[nodiscard]] TReadResult ReadInodes();
  [[nodiscard]] bool HandlePiece(unsigned thread, const TTablePiece& piece, TBytes bytes);
  [[nodiscard]] bool HandleInode(TFound& found, std::uint32_t number, std::uint64_t offset, TBytes bytes,
                                 TInodeTable::TEntry& entry);
  [[nodiscard]] bool HandleFolder(TFound& found, std::uint64_t offset, const TInode& inode, TBytes bytes,
                                  TFolderId folder);
  [[nodiscard]] bool SortRuns();
  [[nodiscard]] std::pair<std::uint64_t, std::uint64_t> PlaceOf(const TFolderRun& run) const;

  [[nodiscard]] TReadResult ReadFolders(TProgressRange progress);
  [[nodiscard]] bool HandleRun(unsigned thread, const TFolderRun& run, TBytes bytes);
  [[nodiscard]] bool HandleEntries(unsigned thread, TFolderId folder, TBytes bytes);
  [[nodiscard]] bool HandleEntry(TIndexShard& shard, TFolderId parent, std::uint32_t number,
                                 std::string_view name);
  [[nodiscard]] bool IsPassedOver(std::uint32_t number) const;
  [[nodiscard]] bool NameFolder(TIndexShard& shard, TFolderId folder, TFolderId parent,
                                std::string_view name);
  [[nodiscard]] TReadResult GivenUp() const;
  [[nodiscard]] bool UnnamedFoldersAreGone() const;
  [[nodiscard]] bool IsStillFolder(std::uint32_t number) const;

  const TByteSource& FSource;
  const TSuperblock& FSuper;
  TIndexBuilder& FBuilder;
  const TScanControl& FControl;
  TReadCrew FCrew;
  TInodeTable FInodes;
  TFolderBlocks FFolderBlocks;
  std::vector<TFound> FFound;
  std::vector<TFolderRun> FRuns;
  std::vector<TReadBatch> FFolderReads;
  std::atomic<bool> FRootSeen{false};
  std::atomic<std::uint32_t> FFolderCount{0};   // the root included
  std::unique_ptr<std::atomic<bool>[]> FNamed;  // by folder
  std::atomic<std::uint32_t> FNamedCount{0};
  bool FFilesOnly = false;  // the second look for the largest files
};

// Everything from the superblock on. The builder is begun and finished here.
[[nodiscard]] TReadResult ReadVolume(const TByteSource& source, TVolumeState state, TIndexBuilder& builder,
                                     const TScanControl& control, unsigned threads);

}  // namespace volindex::ext4
