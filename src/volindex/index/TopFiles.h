// The largest files, in bounded room: at least the kTopCount largest of those added, and what had to be
// dropped said by its size.
#pragma once

#include "volindex/index/FolderTable.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace volindex {

inline constexpr size_t kTopCount = 1000;

struct TFileRecord {
  uint64_t Size = 0;
  TFolderId Folder = kNoFolder;
  std::string Name;
};

// One thread at a time.
class TTopFiles {
 public:
  // With `pathsKnown`, files of the same size are told apart by their paths as they come; the list is then
  // exactly the kTopCount first. Without, room is given to some more, and then files are dropped unseen.
  TTopFiles(const TFolderTable& folders, bool pathsKnown) : FFolders(folders), FPathsKnown(pathsKnown) {}

  // False if Add would not take a file of that size whatever its name.
  [[nodiscard]] bool MayTake(uint64_t size) const {
    return size > FFloor || (size == FFloor && (!FFull || FPathsKnown));
  }

  void Add(TFolderId folder, std::string_view name, uint64_t size) {
    if (size >= FFloor && !(FFull && size == FFloor && !WinsTie(folder, name))) Insert(folder, name, size);
  }

  // Whether a file was dropped whose path was not compared, and the largest size of such.
  [[nodiscard]] bool Dropped() const { return FDropped; }
  [[nodiscard]] uint64_t DroppedSize() const { return FDroppedSize; }

  // What is kept, in no order and more than kTopCount perhaps; the list is empty then.
  [[nodiscard]] std::vector<TFileRecord> Take();

  // Forgets all; from now on paths are known.
  void Restart();

  // Sorts by size, largest first, then by path, and cuts at kTopCount.
  static void SortAndCut(const TFolderTable& folders, std::vector<TFileRecord>& records);

 private:
  [[nodiscard]] bool WinsTie(TFolderId folder, std::string_view name) const;
  void Insert(TFolderId folder, std::string_view name, uint64_t size);
  void Prune();
  void PruneBySize();
  void NoteDropped(uint64_t size);

  const TFolderTable& FFolders;
  bool FPathsKnown;
  bool FFull = false;   // FFloor is the size of a file that a newcomer has to beat
  uint64_t FFloor = 0;  // smaller files are not looked at
  TFileRecord FWorst;   // the last of the list at the last pruning, with pathsKnown
  bool FDropped = false;
  uint64_t FDroppedSize = 0;
  std::vector<TFileRecord> FRecords;
};

}  // namespace volindex
