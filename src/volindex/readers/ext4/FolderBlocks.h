// Finds the blocks of a folder's entries through its extent tree or its old block map. The order of the
// blocks within the folder is of no interest.
#pragma once

#include <atomic>
#include <vector>

#include "volindex/readers/ByteSource.h"
#include "volindex/readers/ext4/Inode.h"

namespace volindex::ext4 {

struct TBlockRun {
  std::uint64_t First;  // on the volume
  std::uint64_t Count;
};

// Made once per volume and shared by the threads that read it. Each block belongs to one folder in a sound
// volume, so all that is followed is counted: a tree that leads to the same blocks over and over comes to its
// end.
class TFolderBlocks {
 public:
  TFolderBlocks(const TByteSource& source, const TSuperblock& super, const std::atomic<bool>& stop)
      : FSource(source), FSuper(super), FStop(stop) {}

  // Puts the runs of the folder's blocks into runs, which is emptied first. False if the tree is damaged or
  // when the stop flag was seen.
  [[nodiscard]] bool Find(const TInode& inode, TBytes map, std::vector<TBlockRun>& runs);

 private:
  [[nodiscard]] bool FindExtents(TBytes root, std::uint64_t blocks, std::vector<TBlockRun>& runs);
  [[nodiscard]] bool FindMapped(TBytes map, std::uint64_t blocks, std::vector<TBlockRun>& runs);
  [[nodiscard]] bool ReadBlock(std::uint64_t block, std::vector<std::byte>& bytes);
  [[nodiscard]] bool Take(std::uint64_t first, std::uint64_t count, std::vector<TBlockRun>& runs);
  [[nodiscard]] bool Count(std::uint64_t blocks);

  const TByteSource& FSource;
  const TSuperblock& FSuper;
  const std::atomic<bool>& FStop;
  std::atomic<std::uint64_t> FCounted{0};
};

}  // namespace volindex::ext4
