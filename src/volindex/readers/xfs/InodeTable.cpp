#include "volindex/readers/xfs/InodeTable.h"

#include "volindex/index/RunThreads.h"

#include <algorithm>
#include <bit>

namespace volindex::xfs {
namespace {

// 48 KiB of chunks and, with 1,024 inodes, 192 KiB of inodes in one answer: enough that the call itself costs
// little, and little enough that a Stop is seen between two.
constexpr std::uint32_t kChunksAtOnce = 2048;
constexpr std::size_t kSliceChunks = 16;
constexpr std::uint64_t kOneName = 1;

// An entry: 0 when nothing is known, else what the inode is and its packed size.
constexpr unsigned kUseShift = 61;
constexpr std::uint64_t kSizeMask = (std::uint64_t{1} << kUseShift) - 1;
static_assert(TPackedSize::kBits <= kUseShift);
constexpr std::uint64_t kMet = std::uint64_t{1} << 63;
enum class TUse : std::uint64_t { None, File, LinkedFile, Folder };

[[nodiscard]] constexpr std::uint64_t EntryFor(TUse use, std::uint64_t size) {
  return static_cast<std::uint64_t>(use) << kUseShift | size;
}
[[nodiscard]] constexpr TUse UseOf(std::uint64_t entry) {
  return static_cast<TUse>(entry >> kUseShift & 3);
}

// Layout of the header: u64 number, u32 flags, u32 room in records, u32 records filled.
[[nodiscard]] std::optional<TBytes> RecordsOf(TBytes answer, std::size_t recordSize) {
  const std::uint64_t count = Load<std::uint32_t>(answer, 16);
  if (count * recordSize > answer.size() - kHeaderSize) return std::nullopt;
  return answer.subspan(kHeaderSize, count * recordSize);
}

// Layout of a record: u64 number, u64 size, u64 blocks … u32 links at 112 … u16 version at 124 … u16 mode at
// 132.
struct TInode {
  std::uint64_t Number;
  std::uint64_t Size;
  std::uint64_t Blocks;
  std::uint32_t Links;
  std::uint16_t Version;
  std::uint16_t Mode;
};
[[nodiscard]] TInode LoadInode(TBytes record) {
  return {Load<std::uint64_t>(record, 0),   Load<std::uint64_t>(record, 8),
          Load<std::uint64_t>(record, 16),  Load<std::uint32_t>(record, 112),
          Load<std::uint16_t>(record, 124), Load<std::uint16_t>(record, 132)};
}

// Lengths count for files and symbolic links alone. One that has no room here is asked for later.
[[nodiscard]] std::uint64_t EntryOf(const TInode& inode, const TPackedSize& packing) {
  constexpr unsigned kKindMask = 0170000, kFolder = 0040000, kFile = 0100000, kLink = 0120000;
  const unsigned kind = inode.Mode & kKindMask;
  if (kind == kFolder) return EntryFor(TUse::Folder, 0);
  const std::uint64_t size = kind == kFile || kind == kLink ? inode.Size : 0;
  const auto packed = packing.Pack(size, inode.Blocks);
  return packed ? EntryFor(inode.Links > kOneName ? TUse::LinkedFile : TUse::File, *packed) : 0;
}

}  // namespace

bool TInodeTable::Read(unsigned threads, const TProgress& progress) {
  if (!ReadChunks()) return false;
  FEntries = std::make_unique<std::atomic<std::uint64_t>[]>(FCount);
  MakeGroups();
  std::atomic<bool> failed{false};
  const auto useful = std::clamp<std::size_t>(FGroups.size(), 1, threads);
  RunThreads(static_cast<unsigned>(useful), [&](unsigned thread) {
    if (!ReadGroups(thread, progress)) failed = true;
  });
  return !failed && !FStop;
}

// By one thread: each question begins behind the last answer. The numbers must rise from chunk to chunk and
// their count stay below what the volume has room for, so any answers come to an end and to a bounded table.
bool TInodeTable::ReadChunks() {
  std::vector<std::byte> answer(kHeaderSize + kChunksAtOnce * kChunkSize);
  for (;;) {
    const std::uint64_t from = FChunks.empty() ? 0 : FChunks.back().First + kChunkInodes;
    if (FStop || !FSource.Ask(TQuestion::Chunks, from, kChunksAtOnce, answer)) return false;
    const auto records = RecordsOf(answer, kChunkSize);
    if (!records || !TakeChunks(*records)) return false;
    if (records->empty()) return true;
  }
}

// Layout: u64 first number, u64 which of them are used, u8 how many, u8 version.
bool TInodeTable::TakeChunks(TBytes records) {
  for (; !records.empty(); records = records.subspan(kChunkSize)) {
    const TChunk chunk{Load<std::uint64_t>(records, 0), Load<std::uint64_t>(records, 8), FCount};
    const bool isNext = FChunks.empty() || (chunk.First >= FChunks.back().First + kChunkInodes);
    if (!isNext || chunk.First > ~std::uint64_t{0} - 2 * kChunkInodes) return false;
    FCount += static_cast<std::size_t>(std::popcount(chunk.Used));
    if (FCount > FSource.MostInodes() || FChunks.size() > FSource.MostInodes()) return false;
    FChunks.push_back(chunk);
  }
  return true;
}

void TInodeTable::MakeGroups() {
  const unsigned bits = FSource.GroupBits();
  for (std::size_t begin = 0, end = 0; begin < FChunks.size(); begin = end) {
    while (end < FChunks.size() && FChunks[end].First >> bits == FChunks[begin].First >> bits)
      ++end;
    FGroups.push_back(std::make_unique<TGroup>(begin, end));
  }
}

// Begins with the group of the thread's own number and helps with the others when that is done.
bool TInodeTable::ReadGroups(unsigned thread, const TProgress& progress) {
  std::vector<std::byte> answer(kHeaderSize + kSliceChunks * kChunkInodes * kInodeSize);
  for (std::size_t i = 0; i < FGroups.size(); ++i) {
    TGroup& group = *FGroups[(thread + i) % FGroups.size()];
    for (;;) {
      const std::size_t begin = group.Next.fetch_add(kSliceChunks, std::memory_order_relaxed);
      if (begin >= group.End) break;
      const std::size_t end = std::min(begin + kSliceChunks, group.End);
      if (FStop || !ReadSlice(begin, end, answer)) return false;
      const std::size_t done = FChunksRead.fetch_add(end - begin, std::memory_order_relaxed);
      if (thread == 0) progress(static_cast<int>(100 * done / FChunks.size()));
    }
  }
  return true;
}

// The answer may go beyond the slice when inodes of it are gone; these are then told twice, and the later
// word stays.
bool TInodeTable::ReadSlice(std::size_t begin, std::size_t end, std::span<std::byte> answer) {
  std::uint32_t count = 0;
  for (std::size_t chunk = begin; chunk < end; ++chunk)
    count += static_cast<std::uint32_t>(std::popcount(FChunks[chunk].Used));
  if (count == 0) return true;
  const std::uint64_t from = FChunks[begin].First;
  if (!FSource.Ask(TQuestion::Inodes, from, count, answer)) return false;
  const auto records = RecordsOf(answer.first(kHeaderSize + count * kInodeSize), kInodeSize);
  return records && TakeInodes(*records, from);
}

// An inode that is not in the table has come since the chunks were told.
bool TInodeTable::TakeInodes(TBytes records, std::uint64_t from) {
  constexpr std::uint16_t kVersion = 5;
  for (; !records.empty(); records = records.subspan(kInodeSize)) {
    const TInode inode = LoadInode(records);
    if (inode.Version != kVersion || inode.Number < from) return false;
    from = inode.Number + 1;
    if (auto* const entry = EntryOf(inode.Number))
      entry->store(xfs::EntryOf(inode, FPacking), std::memory_order_relaxed);
  }
  return true;
}

// What a thread asks for one after the other are mostly neighbours.
const TInodeTable::TChunk* TInodeTable::ChunkOf(std::uint64_t number) const {
  thread_local std::size_t last = 0;
  if (last < FChunks.size() && number - FChunks[last].First < kChunkInodes) return &FChunks[last];
  const auto behind = std::ranges::upper_bound(FChunks, number, {}, &TChunk::First);
  if (behind == FChunks.begin()) return nullptr;
  last = static_cast<std::size_t>(behind - FChunks.begin()) - 1;
  return number - FChunks[last].First < kChunkInodes ? &FChunks[last] : nullptr;
}

std::atomic<std::uint64_t>* TInodeTable::EntryOf(std::uint64_t number) const {
  const TChunk* const chunk = ChunkOf(number);
  if (chunk == nullptr) return nullptr;
  const std::uint64_t bit = std::uint64_t{1} << (number - chunk->First);
  if ((chunk->Used & bit) == 0) return nullptr;
  // Its place is the count of used numbers before it: 64 bits tell it without a table of their own.
  return &FEntries[chunk->Base + static_cast<std::size_t>(std::popcount(chunk->Used & (bit - 1)))];
}

std::optional<TAccess> TInodeTable::Find(TEntryFacts& facts) {
  auto* const entry = EntryOf(facts.Number);
  if (entry == nullptr) return std::nullopt;
  const std::uint64_t known = entry->load(std::memory_order_relaxed);
  const TUse use = UseOf(known);
  // A number that was given to another file since.
  if (use == TUse::None || facts.IsFolder != (use == TUse::Folder)) return std::nullopt;
  const TFileSize size = use == TUse::Folder ? TFileSize() : FPacking.Unpack(known & kSizeMask);
  facts.Size = size.Length;
  facts.Allocated = size.Allocated;
  facts.Links = use == TUse::LinkedFile ? 2 : 1;
  if (use != TUse::File) return TAccess::Ok;
  return (entry->fetch_or(kMet, std::memory_order_relaxed) & kMet) == 0 ? TAccess::Ok : TAccess::Gone;
}

}  // namespace volindex::xfs
