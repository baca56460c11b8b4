// What a scan has to say of a tree, worked out the plain way.
#pragma once

#include <cstdint>
#include <iosfwd>
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

void PrintTo(const TAnswer& answer, std::ostream* stream);

// A file under one of its names; names with the same Link other than 0 are those of one file.
struct TPlainFile {
  std::string Path;
  uint64_t Size = 0;
  uint64_t Link = 0;
};

// From all files and folders (without the root) in any order.
[[nodiscard]] TAnswer AnswerOf(const std::vector<TPlainFile>& files, const std::vector<std::string>& folders);

}  // namespace volindex
