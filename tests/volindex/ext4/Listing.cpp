#include "Listing.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

namespace volindex::ext4 {
namespace {

struct TWalk {
  TListing Listing;
  dev_t Device = 0;
  std::map<ino_t, std::pair<std::string, std::uint64_t>> Linked;

  void Enter(const std::string& root, const std::string& folder);
  void AddEntry(const std::string& root, const std::string& path);
  void AddFile(const std::string& path, std::uint64_t size);
};

void TWalk::Enter(const std::string& root, const std::string& folder) {
  Listing.Totals[folder];
  DIR* open = opendir((root + "/" + folder).c_str());
  ASSERT_NE(open, nullptr) << folder;
  while (const dirent* entry = readdir(open)) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") AddEntry(root, folder.empty() ? name : folder + "/" + name);
  }
  closedir(open);
}

void TWalk::AddEntry(const std::string& root, const std::string& path) {
  struct stat status;
  ASSERT_EQ(lstat((root + "/" + path).c_str(), &status), 0) << path;
  const auto size = static_cast<std::uint64_t>(status.st_size);
  if (S_ISDIR(status.st_mode)) {
    Listing.Totals[path];
    if (status.st_dev == Device) Enter(root, path);
  } else if (status.st_nlink > 1) {
    auto& known = Linked[status.st_ino];
    if (known.first.empty() || path < known.first) known = {path, size};
  } else {
    AddFile(path, size);
  }
}

void TWalk::AddFile(const std::string& path, std::uint64_t size) {
  ++Listing.Files;
  Listing.Top.emplace_back(size, path);
  for (std::size_t end = path.rfind('/'); end != path.npos;
       end = end == 0 ? path.npos : path.rfind('/', end - 1))
    Listing.Totals[path.substr(0, end)] += size;
  Listing.Totals[""] += size;
}

}  // namespace

TListing WalkTree(const std::string& root) {
  TWalk walk;
  struct stat status;
  EXPECT_EQ(stat(root.c_str(), &status), 0) << root;
  walk.Device = status.st_dev;
  walk.Enter(root, "");
  for (const auto& [inode, file] : walk.Linked)
    walk.AddFile(file.first, file.second);
  auto& top = walk.Listing.Top;
  std::ranges::sort(top, [](const auto& a, const auto& b) {
    return a.first != b.first ? a.first > b.first : a.second < b.second;
  });
  if (top.size() > kTopCount) top.resize(kTopCount);
  return walk.Listing;
}

void AddLostFound(TListing& listing) {
  listing.Totals["lost+found"];
}

void ExpectSame(const TVolumeIndex& index, const TListing& listing) {
  EXPECT_EQ(index.FileCount(), listing.Files);
  EXPECT_EQ(index.FolderCount(), listing.Totals.size() - 1);
  std::size_t wrong = 0;
  for (const auto& [path, total] : listing.Totals) {
    const auto folder = index.FindFolder(path);
    if (folder && index.FolderTotal(*folder) == total) continue;
    if (++wrong < 5)
      ADD_FAILURE() << path << " has " << (folder ? index.FolderTotal(*folder) : 0) << " not " << total;
  }
  EXPECT_EQ(wrong, 0u);
  decltype(listing.Top) top;
  for (const TFileRecord& file : index.TopFiles())
    top.emplace_back(file.Size, index.FolderPath(file.Folder) + file.Name);
  EXPECT_EQ(top, listing.Top);
}

}  // namespace volindex::ext4
