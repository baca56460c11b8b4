// The names of files that have several. Kept in parts by file, so that no step over them takes long.
#pragma once

#include "volindex/index/FolderTable.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace volindex {

// What tells the files with several names apart.
struct TLinkKey {
  uint64_t File = 0;    // inode or record number
  uint32_t Device = 0;  // 0 where all files lie on one device
};

struct TLinkedName {
  uint64_t File;
  const char* Name;  // of a TNameArena
  uint64_t Size;
  uint32_t Device;
  TFolderId Parent;

  [[nodiscard]] bool SameFile(const TLinkedName& other) const {
    return File == other.File && Device == other.Device;
  }
};

// One thread at a time.
class TLinkedFiles {
 public:
  static constexpr size_t kParts = 64;  // all names of a file are in one part

  // With `pathsKnown` names that are surely not the first one are forgotten now and then.
  TLinkedFiles(const TFolderTable& folders, bool pathsKnown) : FFolders(folders), FPathsKnown(pathsKnown) {}

  void Add(TFolderId parent, std::string_view name, uint64_t size, TLinkKey key);

  // The part's names are void when Clear is called for it.
  [[nodiscard]] const std::vector<TLinkedName>& Part(size_t part) const { return FParts[part].Links; }
  void Clear(size_t part) { FParts[part] = TPart(); }

  // Brings the names of each file together, of these the one with the first path to the front.
  static void Sort(const TFolderTable& folders, std::vector<TLinkedName>& links);

 private:
  struct TPart {
    std::vector<TLinkedName> Links;
    TNameArena Names;
    size_t CompactAt = kFirstCompaction;
  };
  static constexpr size_t kFirstCompaction = 4096;

  void Compact(TPart& part) const;

  const TFolderTable& FFolders;
  bool FPathsKnown;
  std::array<TPart, kParts> FParts;
};

inline void TLinkedFiles::Add(TFolderId parent, std::string_view name, uint64_t size, TLinkKey key) {
  TPart& part = FParts[key.File % kParts];
  part.Links.push_back({key.File, part.Names.Add(name), size, key.Device, parent});
  if (FPathsKnown && part.Links.size() >= part.CompactAt) Compact(part);
}

inline void TLinkedFiles::Sort(const TFolderTable& folders, std::vector<TLinkedName>& links) {
  std::sort(links.begin(), links.end(), [&folders](const TLinkedName& a, const TLinkedName& b) {
    if (a.File != b.File) return a.File < b.File;
    if (a.Device != b.Device) return a.Device < b.Device;
    return folders.ComparePaths(a.Parent, TNameArena::Text(a.Name), b.Parent, TNameArena::Text(b.Name)) < 0;
  });
}

inline void TLinkedFiles::Compact(TPart& part) const {
  Sort(FFolders, part.Links);
  const auto same = [](const TLinkedName& a, const TLinkedName& b) { return a.SameFile(b); };
  part.Links.erase(std::unique(part.Links.begin(), part.Links.end(), same), part.Links.end());
  TNameArena names;
  for (TLinkedName& link : part.Links)
    link.Name = names.Add(TNameArena::Text(link.Name));
  part.Names = std::move(names);
  part.CompactAt = std::max(kFirstCompaction, 2 * part.Links.size());
}

}  // namespace volindex
