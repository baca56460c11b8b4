// The folders of a volume: 40 bytes each and their names. Grows without moving, so that threads may fill and
// read different folders at the same time.
//
// Ids are dense, so a folder is found by its number in chunks that double: chunk k begins at id 256 * (2^k -
// 1), and 25 of them hold every id. A chunk is never moved or given back, hence a reference to a folder stays
// good while other threads make more.
//
// What is atomic and what is not: the sums may be added to by any thread. Name is set once, by the thread
// that wins, and Parent, Depth and Jump are written by that thread alone, or by Finish. Who reads them on
// another thread has learnt of the folder through a lock, or after the threads have ended.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace volindex {

using TFolderId = uint32_t;  // dense; the root of the scan is 0
inline constexpr TFolderId kRootFolder = 0;
inline constexpr TFolderId kNoFolder = 0xFFFFFFFF;

// Keeps names, two bytes of length before each, until it is destroyed. One thread at a time.
class TNameArena {
 public:
  // A name longer than 65,535 bytes is cut.
  const char* Add(std::string_view name);

  [[nodiscard]] static std::string_view Text(const char* stored);

 private:
  std::vector<std::unique_ptr<char[]>> FBlocks;
  char* FNext = nullptr;
  size_t FLeft = 0;
  size_t FBlockSize = 0;  // of the last block that holds several names
};

class TFolderTable {
 public:
  // With the root, which has an empty name and is its own parent.
  TFolderTable();
  ~TFolderTable();
  TFolderTable(const TFolderTable&) = delete;
  TFolderTable& operator=(const TFolderTable&) = delete;

  // Any thread. Throws std::bad_alloc when there are no ids left.
  [[nodiscard]] TFolderId Reserve();
  [[nodiscard]] uint32_t Count() const { return FCount.load(std::memory_order_acquire); }

  // Any thread, `storedName` from a TNameArena that outlives the table. False when it is set already.
  [[nodiscard]] bool Set(TFolderId id, TFolderId parent, const char* storedName);
  // Any thread. The sums are of what lies directly in the folder until totals are made. `allocated` is what
  // the files occupy on the disk.
  void AddContent(TFolderId id, uint64_t size, uint32_t files, uint64_t allocated = 0);
  // Of what has been or will be added; of what is allocated no more than has been.
  void RemoveContent(TFolderId id, uint64_t size, uint32_t files, uint64_t allocated = 0);

  // Places a set folder below its parent, which must be placed; the path functions need it.
  void Place(TFolderId id);

  [[nodiscard]] bool IsSet(TFolderId id) const;
  [[nodiscard]] TFolderId Parent(TFolderId id) const { return At(id).Parent; }
  [[nodiscard]] std::string_view Name(TFolderId id) const;
  [[nodiscard]] uint64_t Size(TFolderId id) const { return At(id).Size.load(std::memory_order_relaxed); }
  [[nodiscard]] uint64_t Allocated(TFolderId id) const {
    return At(id).Allocated.load(std::memory_order_relaxed);
  }
  [[nodiscard]] uint32_t Files(TFolderId id) const { return At(id).Files.load(std::memory_order_relaxed); }
  void ClearContent(TFolderId id);

  // The order of full paths as bytes: less than 0, 0, more than 0. Of the files `nameA` and `nameB` in placed
  // folders, or with an empty name of the folder itself. Takes time in the logarithm of the depth.
  [[nodiscard]] int ComparePaths(TFolderId a, std::string_view nameA, TFolderId b,
                                 std::string_view nameB) const;

  // The folder in `id` in which the placed folder `descendant` lies, or which it is; none if it is elsewhere.
  [[nodiscard]] TFolderId ChildTowards(TFolderId id, TFolderId descendant) const;

  // The folder's path relative to the root, '/' between and at the end; empty for the root.
  [[nodiscard]] std::string Path(TFolderId id) const;
  // The same for who takes no more than `limit` bytes: false, and no work spent on it, when it is longer.
  [[nodiscard]] bool PathWithin(TFolderId id, size_t limit, std::string& path) const;

 private:
  struct TRecord {
    std::atomic<const char*> Name;
    std::atomic<uint64_t> Size;
    std::atomic<uint64_t> Allocated;
    std::atomic<uint32_t> Files;
    TFolderId Parent;
    uint32_t Depth;
    TFolderId Jump;  // an ancestor, chosen so that any ancestor is reached in logarithmically many steps
  };
  static constexpr unsigned kFirstChunkBits = 8;

  [[nodiscard]] TRecord& At(TFolderId id) const;
  void MakeChunk(unsigned chunk);
  [[nodiscard]] TFolderId AncestorAtDepth(TFolderId id, uint32_t depth) const;
  void ClimbBelowCommon(TFolderId& a, TFolderId& b) const;
  [[nodiscard]] int CompareWithDescendant(TFolderId a, std::string_view nameA, TFolderId b,
                                          std::string_view nameB) const;

  // Chunk k holds 256 << k folders.
  std::array<std::atomic<TRecord*>, 25> FChunks{};
  std::mutex FGrowLock;
  std::atomic<uint32_t> FCount{0};
};

}  // namespace volindex
