// What an XFS volume tells of its inodes in bulk: sizes, blocks and numbers of links of all of them, but no
// names.
// Kept in eight bytes an inode until the folders are listed.
//
// First the volume lists its chunks, each of 64 neighbouring numbers of which some are used. They are cut
// into slices, and threads ask for the inodes of a slice at a time. Numbers begin with the number of an
// allocation group, in which the system lets one thread after the other look inodes up, so that each thread
// keeps to a group of its own as long as there is one.
//
// The records are those of the requests that the man pages ioctl_xfs_inumbers(2) and ioctl_xfs_bulkstat(2)
// describe; how a number is made is told in "XFS Algorithms & Data Structures", Inode Numbers. Only the
// system's driver writes answers, but of a volume that anybody may have made: so they are checked like bytes
// of a disk.
//
// Read runs before Find is called. Find may be called by all threads that list folders: entries are atomic
// because it marks those of files with one name as met.
#pragma once

#include "volindex/readers/DiskBytes.h"
#include "volindex/readers/PackedSize.h"
#include "volindex/readers/folders/KnownFiles.h"

#include <atomic>
#include <bit>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace volindex::xfs {

// Answers begin with a header, in which the number of records stands, and go on with these.
inline constexpr std::size_t kHeaderSize = 64;
inline constexpr std::size_t kChunkSize = 24;
inline constexpr std::size_t kInodeSize = 192;

enum class TQuestion { Chunks, Inodes };

// Who answers: a mounted volume, or a test.
class TInodeSource {
 public:
  virtual ~TInodeSource() = default;

  // Fills `answer` with a header and records of the chunks or inodes in use from the number `from` on, at
  // most `most` of them; the room for the rest is left as it is. False when there is no right to ask, or the
  // answer is an error. Any thread. Blocks.
  [[nodiscard]] virtual bool Ask(TQuestion question, std::uint64_t from, std::uint32_t most,
                                 std::span<std::byte> answer) const = 0;

  // No more inodes than these have room on the volume.
  [[nodiscard]] virtual std::uint64_t MostInodes() const = 0;

  // A power of two, at most 64 KiB.
  [[nodiscard]] virtual std::uint32_t BlockSize() const = 0;

  // The bits of a number below that of its allocation group.
  [[nodiscard]] virtual unsigned GroupBits() const = 0;
};

class TInodeTable : public TKnownFiles {
 public:
  // Of the inodes in all. Called by one of the threads.
  using TProgress = std::function<void(int percent)>;

  // The source must outlive the table.
  TInodeTable(const TInodeSource& source, const std::atomic<bool>& stop)
      : FSource(source), FStop(stop), FPacking(static_cast<unsigned>(std::countr_zero(source.BlockSize()))) {}

  // Asks for all inodes. False when the source fails, its answer does not hold together or the stop flag is
  // seen.
  [[nodiscard]] bool Read(unsigned threads, const TProgress& progress);

  // What is not known has come since or could not be kept. A file with one name is told once.
  [[nodiscard]] std::optional<TAccess> Find(TEntryFacts& facts) override;

 private:
  static constexpr unsigned kChunkInodes = 64;
  // Bit i of Used: First + i is in use, and kept behind those of the lower bits from Base on.
  struct TChunk {
    std::uint64_t First;
    std::uint64_t Used;
    std::size_t Base;
  };
  // An allocation group's chunks, and the next that nobody has asked for.
  struct TGroup {
    TGroup(std::size_t begin, std::size_t end) : End(end), Next(begin) {}

    std::size_t End;
    std::atomic<std::size_t> Next;
  };

  [[nodiscard]] bool ReadChunks();
  [[nodiscard]] bool TakeChunks(TBytes records);
  void MakeGroups();
  [[nodiscard]] bool ReadGroups(unsigned thread, const TProgress& progress);
  [[nodiscard]] bool ReadSlice(std::size_t begin, std::size_t end, std::span<std::byte> answer);
  [[nodiscard]] bool TakeInodes(TBytes records, std::uint64_t from);
  [[nodiscard]] const TChunk* ChunkOf(std::uint64_t number) const;
  [[nodiscard]] std::atomic<std::uint64_t>* EntryOf(std::uint64_t number) const;

  const TInodeSource& FSource;
  const std::atomic<bool>& FStop;
  const TPackedSize FPacking;
  std::vector<TChunk> FChunks;  // by rising First
  std::size_t FCount = 0;       // inodes
  std::unique_ptr<std::atomic<std::uint64_t>[]> FEntries;
  std::vector<std::unique_ptr<TGroup>> FGroups;
  std::atomic<std::size_t> FChunksRead{0};
};

}  // namespace volindex::xfs
