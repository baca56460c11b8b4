#include "volindex/Answer.h"

#include <algorithm>
#include <map>
#include <ostream>
#include <set>

#include "volindex/index/TopFiles.h"

namespace volindex {

namespace {

std::vector<TListed> FirstOf(std::vector<TListed> all) {
  std::sort(all.begin(), all.end(), [](const TListed& a, const TListed& b) {
    return a.Size != b.Size ? a.Size > b.Size : a.Path < b.Path;
  });
  if (all.size() > kTopCount) all.resize(kTopCount);
  return all;
}

std::vector<TPlainFile> EachOnce(std::vector<TPlainFile> files) {
  std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.Path < b.Path; });
  std::set<uint64_t> seen;
  std::erase_if(files,
                [&seen](const TPlainFile& file) { return file.Link != 0 && !seen.insert(file.Link).second; });
  return files;
}

}  // namespace

void PrintTo(const TAnswer& answer, std::ostream* stream) {
  *stream << answer.FileCount << " files, " << answer.FolderCount << " folders, " << answer.Total
          << " bytes\n";
  for (const auto* list : {&answer.Files, &answer.Folders})
    for (const TListed& listed : *list)
      *stream << listed.Size << ' ' << listed.Path << '\n';
}

TAnswer AnswerOf(const std::vector<TPlainFile>& files, const std::vector<std::string>& folders) {
  TAnswer answer;
  std::map<std::string, uint64_t> totals;
  for (const std::string& folder : folders)
    totals[folder];
  std::vector<TListed> listed;
  for (const TPlainFile& file : EachOnce(files)) {
    listed.push_back({file.Size, file.Path});
    answer.Total += file.Size;
    for (size_t at = file.Path.find('/'); at != std::string::npos; at = file.Path.find('/', at + 1))
      totals.at(file.Path.substr(0, at)) += file.Size;
  }
  std::vector<TListed> sized;
  for (const auto& [path, total] : totals)
    sized.push_back({total, path});
  answer.FileCount = listed.size();
  answer.FolderCount = sized.size();
  answer.Files = FirstOf(std::move(listed));
  answer.Folders = FirstOf(std::move(sized));
  return answer;
}

}  // namespace volindex
