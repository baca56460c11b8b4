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
  uint64_t Link = 0;  // other than 0: the records with it are names of one file, of which the first stays
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

  void Add(TFolderId folder, std::string_view name, uint64_t size, uint64_t link = 0) {
    if (size >= FFloor && !(FFull && size == FFloor && !WinsTie(folder, name)))
      Insert({size, folder, std::string(name), link});
  }

  // A file of that size is left out, since its name is not known.
  void NoteDropped(uint64_t size);
  // Whether a file was dropped whose path was not compared, and the largest size of such.
  [[nodiscard]] bool Dropped() const { return FDropped; }
  [[nodiscard]] uint64_t DroppedSize() const { return FDroppedSize; }

  // What is kept, in no order and more than kTopCount perhaps; the list is empty then.
  [[nodiscard]] std::vector<TFileRecord> Take();

  // Forgets all; from now on paths are known.
  void Restart();

  // Sorts by size, largest first, then by path, leaves each linked file its first name and cuts at kTopCount.
  static void SortAndCut(const TFolderTable& folders, std::vector<TFileRecord>& records);

 private:
  [[nodiscard]] bool WinsTie(TFolderId folder, std::string_view name) const;
  void Insert(TFileRecord record);
  void Prune();
  void PruneBySize();

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
