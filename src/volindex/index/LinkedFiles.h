// The names of files that have several: in the first pass all of them in few bytes each, and those files for
// which that is not enough until a second pass has told the names again.
#pragma once

#include "volindex/index/ContentKinds.h"
#include "volindex/index/FolderTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace volindex {

// What tells the files with several names apart.
struct TLinkKey {
  uint64_t File = 0;    // inode or record number
  uint32_t Device = 0;  // 0 where all files lie on one device
};

struct TLinkedName {
  uint64_t File = 0;
  uint64_t Size = 0;
  uint64_t Allocated = 0;
  uint32_t Device = 0;
  TFolderId Parent = kNoFolder;
  TKind Kind = TKind::Other;
  bool HasText = false;   // without it nothing but the folder is known of the name
  std::string_view Text;  // void when the part that it comes from changes

  [[nodiscard]] bool SameFile(const TLinkedName& other) const {
    return File == other.File && Device == other.Device;
  }
};

// One thread's names, kept in parts by file so that no step over them takes long. A name is a run of bytes:
// file, device with kind, folder, size and what is allocated as numbers of 7 bits a byte, then its length
// plus one and the text, or 0. That is 12 to 24 bytes without the text.
class TLinkedFiles {
 public:
  static constexpr size_t kParts = 64;  // all names of a file are in one part

  // With `pathsKnown` names that are surely not the first one are forgotten now and then. Without, of the
  // names in one folder the first is kept, and no more than `textRoom` bytes of text in all.
  TLinkedFiles(const TFolderTable& folders, bool pathsKnown, size_t textRoom);

  void Add(TFolderId parent, std::string_view name, uint64_t size, TLinkKey key, uint64_t allocated,
           TKind kind = TKind::Other);

  void Append(size_t part, std::vector<TLinkedName>& names) const { FParts[part].AppendTo(names); }
  void Clear(size_t part) { FParts[part] = TPart(); }

  // Brings the names of each file together, of these the one with the first path to the front; a name without
  // text stands where the first one in its folder would.
  static void Sort(const TFolderTable& folders, std::vector<TLinkedName>& names);

 private:
  struct TPart {
    std::vector<std::string> Blocks;  // each filled as far as it was reserved and never moved
    size_t Count = 0;
    size_t TextBytes = 0;
    size_t CompactAt = kFirstCompaction;

    void Put(const TLinkedName& name);
    void AppendTo(std::vector<TLinkedName>& names) const;
  };
  static constexpr size_t kFirstCompaction = 4096;

  void Compact(TPart& part) const;

  const TFolderTable& FFolders;
  bool FPathsKnown;
  size_t FTextRoom;  // of a part
  std::array<TPart, kParts> FParts;
};

// The files whose first name can't be told from the folders that hold their names, since one of these lies
// within another and no text was kept: "a/b/name" comes before "a/c" and behind "a/a".
class TOpenLinks {
 public:
  [[nodiscard]] bool Empty() const;
  void Clear() { FParts = {}; }

  // The names of one file, brought in order here. The folder of the first one, or none if the file was taken
  // in. Files come in the order of TLinkedFiles::Sort, part by part.
  [[nodiscard]] TFolderId FirstFolder(const TFolderTable& folders, std::span<TLinkedName> names);
  // A name told once more. Any thread, when all files are taken in.
  void Note(const TFolderTable& folders, TFolderId parent, std::string_view name, uint64_t file);

  // Adds each file to the folder in which it has its first name, and to the kinds where these are given. Its
  // kind is that of one of its names, which as a rule end alike.
  void Settle(TFolderTable& folders, TFolderKinds* kinds) const;

 private:
  struct TFile {
    uint64_t File;
    uint64_t Size;
    uint64_t Allocated;
    uint32_t Places;  // the end of its places in the part
    TKind Kind;
  };
  // A folder in which a file has names, behind the one that it lies in.
  struct TPlace {
    TFolderId Folder;
    TFolderId Below;  // the folder in it on the way to the next place; none when a name comes before that
  };
  // By rising File. Grows in small pieces, for which the room of the names counted by then serves.
  struct TPart {
    std::deque<TFile> Files;
    std::deque<TPlace> Places;

    [[nodiscard]] size_t Begin(size_t file) const { return file == 0 ? 0 : Files[file - 1].Places; }
  };
  std::array<TPart, TLinkedFiles::kParts> FParts;
};

}  // namespace volindex
