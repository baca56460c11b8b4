// What a scan has to say of a tree, worked out the plain way.
#pragma once

#include <algorithm>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "volindex/index/TopFiles.h"

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

inline void PrintTo(const TAnswer& answer, std::ostream* stream) {
  *stream << answer.FileCount << " files, " << answer.FolderCount << " folders, " << answer.Total
          << " bytes\n";
  for (const auto* list : {&answer.Files, &answer.Folders})
    for (const TListed& listed : *list)
      *stream << listed.Size << ' ' << listed.Path << '\n';
}

// A file under one of its names; names with the same Link other than 0 are those of one file.
struct TPlainFile {
  std::string Path;
  uint64_t Size = 0;
  uint64_t Link = 0;
};

inline std::vector<TListed> FirstOf(std::vector<TListed> all) {
  std::ranges::sort(all, [](const TListed& a, const TListed& b) {
    return a.Size != b.Size ? a.Size > b.Size : a.Path < b.Path;
  });
  if (all.size() > kTopCount) all.resize(kTopCount);
  return all;
}

// From all files and folders (without the root) in any order.
[[nodiscard]] inline TAnswer AnswerOf(std::vector<TPlainFile> files,
                                      const std::vector<std::string>& folders) {
  std::ranges::sort(files, {}, &TPlainFile::Path);
  std::set<uint64_t> seen;
  std::erase_if(files,
                [&seen](const TPlainFile& file) { return file.Link != 0 && !seen.insert(file.Link).second; });
  TAnswer answer;
  std::map<std::string, uint64_t> totals;
  for (const std::string& folder : folders)
    totals[folder];
  std::vector<TListed> listed, sized;
  for (const TPlainFile& file : files) {
    listed.push_back({file.Size, file.Path});
    answer.Total += file.Size;
    for (size_t at = file.Path.find('/'); at != std::string::npos; at = file.Path.find('/', at + 1))
      totals.at(file.Path.substr(0, at)) += file.Size;
  }
  for (const auto& [path, total] : totals)
    sized.push_back({total, path});
  answer.FileCount = listed.size();
  answer.FolderCount = sized.size();
  answer.Files = FirstOf(std::move(listed));
  answer.Folders = FirstOf(std::move(sized));
  return answer;
}

}  // namespace volindex
