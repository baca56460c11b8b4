#include "volindex/index/FolderTable.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

namespace volindex {

namespace {

// Bytes. Blocks double from small ones, as each thread has an arena and most have few names.
constexpr size_t kFirstBlock = 1024;
constexpr size_t kLargestBlock = 64 * 1024;
constexpr size_t kLengthSize = sizeof(uint16_t);
constexpr size_t kLongestName = 0xFFFF;
constexpr char kEmptyName[kLengthSize] = {};

// The byte after a component at the place where another one goes on: a delimiter, or the end as -1.
// Paths are compared as whole texts, so that "a b/c" comes before "a/c": a blank is less than a delimiter.
int NextByte(std::string_view component, size_t at, bool delimiterFollows) {
  if (at < component.size()) return static_cast<unsigned char>(component[at]);
  return delimiterFollows ? '/' : -1;
}

int CompareComponents(std::string_view a, bool delimiterAfterA, std::string_view b, bool delimiterAfterB) {
  const size_t common = std::min(a.size(), b.size());
  if (const int order = std::memcmp(a.data(), b.data(), common); order != 0) return order;
  return NextByte(a, common, delimiterAfterA) - NextByte(b, common, delimiterAfterB);
}

}  // namespace

const char* TNameArena::Add(std::string_view name) {
  name = name.substr(0, kLongestName);
  const size_t needed = kLengthSize + name.size();
  if (needed > FLeft) {
    FBlockSize = std::clamp(2 * FBlockSize, kFirstBlock, kLargestBlock);
    const size_t blockSize = std::max(FBlockSize, needed);
    FBlocks.push_back(std::make_unique_for_overwrite<char[]>(blockSize));
    FNext = FBlocks.back().get();
    FLeft = blockSize;
  }
  char* stored = FNext;
  const auto length = static_cast<uint16_t>(name.size());
  std::memcpy(stored, &length, kLengthSize);
  std::copy(name.begin(), name.end(), stored + kLengthSize);
  FNext += needed;
  FLeft -= needed;
  return stored;
}

std::string_view TNameArena::Text(const char* stored) {
  uint16_t length = 0;
  std::memcpy(&length, stored, kLengthSize);
  return {stored + kLengthSize, length};
}

TFolderTable::TFolderTable() {
  const TFolderId root = Reserve();
  At(root).Name.store(kEmptyName, std::memory_order_release);
}

TFolderTable::~TFolderTable() {
  for (std::atomic<TRecord*>& chunk : FChunks)
    delete[] chunk.load();
}

TFolderTable::TRecord& TFolderTable::At(TFolderId id) const {
  const uint64_t block = (uint64_t{id} >> kFirstChunkBits) + 1;
  const auto chunk = static_cast<unsigned>(std::bit_width(block) - 1);
  const uint64_t first = ((uint64_t{1} << chunk) - 1) << kFirstChunkBits;
  return FChunks[chunk].load(std::memory_order_acquire)[id - first];
}

TFolderId TFolderTable::Reserve() {
  const uint32_t id = FCount.fetch_add(1, std::memory_order_acq_rel);
  if (id == kNoFolder) throw std::bad_alloc();
  const uint64_t block = (uint64_t{id} >> kFirstChunkBits) + 1;
  MakeChunk(static_cast<unsigned>(std::bit_width(block) - 1));
  return id;
}

void TFolderTable::MakeChunk(unsigned chunk) {
  if (FChunks[chunk].load(std::memory_order_acquire) != nullptr) return;
  const std::lock_guard guard(FGrowLock);
  if (FChunks[chunk].load(std::memory_order_acquire) != nullptr) return;
  const size_t length = size_t{1} << (kFirstChunkBits + chunk);
  FChunks[chunk].store(new TRecord[length](), std::memory_order_release);
}

bool TFolderTable::Set(TFolderId id, TFolderId parent, const char* storedName) {
  TRecord& folder = At(id);
  const char* unset = nullptr;
  if (!folder.Name.compare_exchange_strong(unset, storedName, std::memory_order_acq_rel)) return false;
  folder.Parent = parent;
  return true;
}

void TFolderTable::AddContent(TFolderId id, uint64_t size, uint32_t files, uint64_t allocated) {
  TRecord& folder = At(id);
  folder.Size.fetch_add(size, std::memory_order_relaxed);
  folder.Allocated.fetch_add(allocated, std::memory_order_relaxed);
  folder.Files.fetch_add(files, std::memory_order_relaxed);
}

// What a file occupies is asked for anew when it is taken back, and may have grown meanwhile.
void TFolderTable::RemoveContent(TFolderId id, uint64_t size, uint32_t files, uint64_t allocated) {
  TRecord& folder = At(id);
  uint64_t before = folder.Allocated.load(std::memory_order_relaxed);
  while (!folder.Allocated.compare_exchange_weak(before, before - std::min(before, allocated),
                                                 std::memory_order_relaxed)) {
  }
  folder.Size.fetch_sub(size, std::memory_order_relaxed);
  folder.Files.fetch_sub(files, std::memory_order_relaxed);
}

void TFolderTable::ClearContent(TFolderId id) {
  At(id).Size.store(0, std::memory_order_relaxed);
  At(id).Allocated.store(0, std::memory_order_relaxed);
  At(id).Files.store(0, std::memory_order_relaxed);
}

bool TFolderTable::IsSet(TFolderId id) const {
  return id < Count() && At(id).Name.load(std::memory_order_acquire) != nullptr;
}

std::string_view TFolderTable::Name(TFolderId id) const {
  return TNameArena::Text(At(id).Name.load(std::memory_order_acquire));
}

// A folder's jump spans the two equal jumps above it, else just its parent.
// The depth of a folder's jump depends on its own depth alone: so two folders of one depth jump to one depth
// again, which is what ClimbBelowCommon goes by.
void TFolderTable::Place(TFolderId id) {
  TRecord& folder = At(id);
  const TRecord& parent = At(folder.Parent);
  const TRecord& jump = At(parent.Jump);
  const bool equalJumps = parent.Depth - jump.Depth == jump.Depth - At(jump.Jump).Depth;
  folder.Depth = parent.Depth + 1;
  folder.Jump = equalJumps ? jump.Jump : folder.Parent;
}

TFolderId TFolderTable::AncestorAtDepth(TFolderId id, uint32_t depth) const {
  while (At(id).Depth > depth) {
    const TRecord& folder = At(id);
    id = At(folder.Jump).Depth >= depth ? folder.Jump : folder.Parent;
  }
  return id;
}

TFolderId TFolderTable::ChildTowards(TFolderId id, TFolderId descendant) const {
  if (At(descendant).Depth <= At(id).Depth) return kNoFolder;
  const TFolderId child = AncestorAtDepth(descendant, At(id).Depth + 1);
  return Parent(child) == id ? child : kNoFolder;
}

// From two folders of one depth to those of their ancestors that lie side by side.
void TFolderTable::ClimbBelowCommon(TFolderId& a, TFolderId& b) const {
  while (At(a).Parent != At(b).Parent) {
    const bool far = At(a).Jump != At(b).Jump;
    a = far ? At(a).Jump : At(a).Parent;
    b = far ? At(b).Jump : At(b).Parent;
  }
}

// For `b` anywhere below `a`.
int TFolderTable::CompareWithDescendant(TFolderId a, std::string_view nameA, TFolderId b,
                                        std::string_view nameB) const {
  if (nameA.empty()) return -1;
  const TFolderId below = AncestorAtDepth(b, At(a).Depth + 1);
  return CompareComponents(nameA, false, Name(below), below != b || !nameB.empty());
}

int TFolderTable::ComparePaths(TFolderId a, std::string_view nameA, TFolderId b,
                               std::string_view nameB) const {
  if (a == b) return nameA.compare(nameB);
  const uint32_t depth = std::min(At(a).Depth, At(b).Depth);
  TFolderId aboveA = AncestorAtDepth(a, depth);
  TFolderId aboveB = AncestorAtDepth(b, depth);
  if (aboveA == aboveB)
    return aboveA == a ? CompareWithDescendant(a, nameA, b, nameB)
                       : -CompareWithDescendant(b, nameB, a, nameA);
  ClimbBelowCommon(aboveA, aboveB);
  return CompareComponents(Name(aboveA), aboveA != a || !nameA.empty(), Name(aboveB),
                           aboveB != b || !nameB.empty());
}

bool TFolderTable::PathWithin(TFolderId id, size_t limit, std::string& path) const {
  std::vector<TFolderId> folders;
  size_t length = 0;
  for (; id != kRootFolder; id = Parent(id)) {
    length += Name(id).size() + 1;
    if (length > limit) return false;
    folders.push_back(id);
  }
  path.clear();
  path.reserve(length);
  for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder)
    path.append(Name(*folder)) += '/';
  return true;
}

std::string TFolderTable::Path(TFolderId id) const {
  std::string path;
  if (!PathWithin(id, path.max_size(), path)) path.clear();
  return path;
}

}  // namespace volindex
