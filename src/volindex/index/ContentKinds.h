// What files hold, as far as the ending of a name tells: a small table, no look into any file.
#pragma once

#include "volindex/index/FolderTable.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string_view>

namespace volindex {

// The numbers are those of include/volindex_folders.h.
enum class TKind : uint8_t { Other, Pictures, Video, Audio, Documents, Archives, Code, Programs };
inline constexpr size_t kKinds = 8;

using TKindBytes = std::array<uint64_t, kKinds>;

// Case does not count, numbers at the end are passed over: "libx.so.6" is a program's. Code units of UTF-8 or
// UTF-16, valid or not.
[[nodiscard]] TKind KindOf(std::string_view name);
[[nodiscard]] TKind KindOf(std::u16string_view name);

// The bytes of each folder's own files by their kind, 64 bytes of memory a folder. Grows without moving, like
// the folder table whose numbers it goes by. Add, Remove and Clear: any thread, at the same time too; Of when
// no thread changes anything any more.
class TFolderKinds {
 public:
  TFolderKinds() = default;
  ~TFolderKinds();
  TFolderKinds(const TFolderKinds&) = delete;
  TFolderKinds& operator=(const TFolderKinds&) = delete;

  // Throws std::bad_alloc.
  void Add(TFolderId id, TKind kind, uint64_t bytes);
  void Add(TFolderId id, const TKindBytes& bytes);
  // No more than there is.
  void Remove(TFolderId id, TKind kind, uint64_t bytes);
  void Clear(TFolderId id);

  [[nodiscard]] TKindBytes Of(TFolderId id) const;

 private:
  // The folder table's scheme with larger chunks, since most of a chunk costs nothing until it is written to.
  static constexpr unsigned kFirstChunkBits = 12;

  struct TPlace {
    unsigned Chunk;
    size_t Cell;
  };
  [[nodiscard]] static TPlace PlaceOf(TFolderId id);
  [[nodiscard]] uint64_t* MakeChunk(unsigned chunk);

  // Chunk k holds 4096 << k folders of kKinds numbers.
  std::array<std::atomic<uint64_t*>, 21> FChunks{};
  std::mutex FGrowLock;
};

}  // namespace volindex
