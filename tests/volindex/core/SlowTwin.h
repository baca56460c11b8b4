// What an index must say of a tree, worked out the plain way, and a tree on disk to try it on.
#pragma once

#include "volindex/index/VolumeIndex.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace volindex {

// Paths are relative to the root of the scan, without a delimiter at the end.
struct TListed {
  uint64_t Size = 0;
  std::string Path;

  auto operator<=>(const TListed&) const = default;
};

struct TAnswer {
  std::vector<TListed> Files;    // the first 1,000
  std::vector<TListed> Folders;  // likewise
  uint64_t FileCount = 0;
  uint64_t FolderCount = 0;
  uint64_t Total = 0;

  bool operator==(const TAnswer&) const = default;
};

// A file under one of its names; names with the same Link other than 0 are those of one file.
struct TPlainFile {
  std::string Path;
  uint64_t Size = 0;
  uint64_t Link = 0;
};

// From all files and folders (without the root) in any order.
[[nodiscard]] TAnswer AnswerOf(const std::vector<TPlainFile>& files, const std::vector<std::string>& folders);

// From the disk by a recursive walk, one entry after the other.
[[nodiscard]] TAnswer WalkSlowly(const std::filesystem::path& root);

[[nodiscard]] TAnswer AnswerOf(const TVolumeIndex& index);

// A folder of its own for a test, removed with all in it at the end.
class TTestTree {
 public:
  TTestTree();
  ~TTestTree();
  TTestTree(const TTestTree&) = delete;
  TTestTree& operator=(const TTestTree&) = delete;

  [[nodiscard]] const std::filesystem::path& Root() const { return FRoot; }
  // A file of that length without content, and the folders above it.
  void AddFile(const std::string& path, uint64_t size);
  void AddFolder(const std::string& path);

 private:
  std::filesystem::path FRoot;
};

}  // namespace volindex
