#include "volindex/Answer.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <ostream>
#include <set>
#include <stdexcept>

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

// Not a device, pipe or socket, of which some file systems tell a length.
bool IsSized(char kind) {
  return kind == 'f' || kind == 'l';
}

std::string OutputOf(const std::string& command) {
  std::string output;
  FILE* const pipe = ::popen(command.c_str(), "r");
  char block[4096];
  while (const size_t got = pipe == nullptr ? 0 : std::fread(block, 1, sizeof block, pipe))
    output.append(block, got);
  if (pipe == nullptr || ::pclose(pipe) != 0) throw std::runtime_error(command);
  return output;
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

TAnswer AnswerOfFind(const std::string& root) {
  const std::string output = OutputOf("find '" + root + "' -xdev -mindepth 1 -printf '%y%i %s %P\\0'");
  std::vector<TPlainFile> files;
  std::vector<std::string> folders;
  for (size_t begin = 0; begin < output.size();) {
    const std::string line = output.c_str() + begin;
    begin += line.size() + 1;
    const size_t size = line.find(' ') + 1;
    const std::string path = line.substr(line.find(' ', size) + 1);
    if (line[0] == 'd')
      folders.push_back(path);
    else
      files.push_back(
          {path, IsSized(line[0]) ? std::stoull(line.substr(size)) : 0, std::stoull(line.substr(1))});
  }
  return AnswerOf(files, folders);
}

}  // namespace volindex
