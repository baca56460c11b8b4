// What the reader makes of a volume, in a form that compares and prints.
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "volindex/MemorySource.h"
#include "volindex/readers/ntfs/NtfsReader.h"

namespace volindex::ntfs {

// The paths of a tree relative to its root with their sizes; folders end in '/' and have their total. Beyond
// the largest of each kind that an index keeps, only the counts and the root's total tell of the rest.
struct TTree {
  std::map<std::string, std::uint64_t> Entries;
  std::uint64_t Files = 0;
  std::uint64_t Folders = 0;
  std::uint64_t Total = 0;
  std::uint64_t Unreadable = 0;

  bool operator==(const TTree&) const = default;
};

inline TTree TreeOf(const TVolumeIndex& index) {
  TTree tree;
  for (const TFileRecord& file : index.TopFiles())
    tree.Entries[index.FolderPath(file.Folder) + file.Name] = file.Size;
  for (const TFolderId folder : index.TopFolders())
    tree.Entries[index.FolderPath(folder)] = index.FolderTotal(folder);
  tree.Files = index.FileCount();
  tree.Folders = index.FolderCount();
  tree.Total = index.FolderTotal(kRootFolder);
  tree.Unreadable = index.Statistics().Unreadable;
  return tree;
}

// Nothing if the reader hands over.
inline std::optional<TTree> ReadTree(const TByteSource& source, unsigned threads = 2,
                                     TDriver driver = TDriver::Ntfs3g) {
  static const std::atomic<bool> kNoStop{false};
  TIndexBuilder builder;
  if (ReadNtfs(source, driver, builder, {kNoStop, {}}, threads) != TReadResult::Done) return std::nullopt;
  return TreeOf(builder.TakeIndex());
}

inline std::optional<TTree> ReadTree(std::span<const std::byte> image, unsigned threads = 2) {
  return ReadTree(TMemorySource(image), threads);
}

}  // namespace volindex::ntfs
