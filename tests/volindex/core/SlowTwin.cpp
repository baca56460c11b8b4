#include "volindex/core/SlowTwin.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <set>
#include <stdexcept>

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

void WalkInto(const std::string& folder, const std::string& relative, std::vector<TPlainFile>& files,
              std::vector<std::string>& folders) {
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    struct stat facts {};
    const std::string path = relative + entry.path().filename().string();
    if (::lstat(entry.path().c_str(), &facts) != 0) throw std::runtime_error(path);
    if (S_ISDIR(facts.st_mode)) {
      folders.push_back(path);
      WalkInto(entry.path().string(), path + '/', files, folders);
      continue;
    }
    const bool sized = S_ISREG(facts.st_mode) || S_ISLNK(facts.st_mode);
    files.push_back({path, sized ? static_cast<uint64_t>(facts.st_size) : 0,
                     facts.st_nlink > 1 ? static_cast<uint64_t>(facts.st_ino) : 0});
  }
}

std::string WithoutDelimiter(std::string path) {
  if (!path.empty()) path.pop_back();
  return path;
}

}  // namespace

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

TAnswer WalkSlowly(const std::filesystem::path& root) {
  std::vector<TPlainFile> files;
  std::vector<std::string> folders;
  WalkInto(root.string(), "", files, folders);
  return AnswerOf(files, folders);
}

TAnswer AnswerOf(const TVolumeIndex& index) {
  TAnswer answer;
  for (const TFileRecord& file : index.TopFiles())
    answer.Files.push_back({file.Size, index.FolderPath(file.Folder) + file.Name});
  for (const TFolderId folder : index.TopFolders())
    answer.Folders.push_back({index.FolderTotal(folder), WithoutDelimiter(index.FolderPath(folder))});
  answer.FileCount = index.FileCount();
  answer.FolderCount = index.FolderCount();
  answer.Total = index.FolderTotal(kRootFolder);
  return answer;
}

TTestTree::TTestTree() {
  std::string path = (std::filesystem::temp_directory_path() / "volindex-XXXXXX").string();
  if (::mkdtemp(path.data()) == nullptr) throw std::runtime_error("no temporary folder");
  FRoot = path;
}

TTestTree::~TTestTree() {
  std::error_code ignored;
  std::filesystem::remove_all(FRoot, ignored);
}

void TTestTree::AddFile(const std::string& path, uint64_t size) {
  const std::filesystem::path file = FRoot / path;
  std::filesystem::create_directories(file.parent_path());
  if (!std::ofstream(file)) throw std::runtime_error(path);
  std::filesystem::resize_file(file, size);
}

void TTestTree::AddFolder(const std::string& path) {
  std::filesystem::create_directories(FRoot / path);
}

}  // namespace volindex
