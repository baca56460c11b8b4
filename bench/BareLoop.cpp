#include "BareLoop.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <cstring>
#include <utility>
#include <vector>

namespace {

struct TEntry {
  uint64_t Inode;
  int64_t Offset;
  uint16_t Length;
  unsigned char Type;
  char Name[1];
};

class TLoop {
 public:
  explicit TLoop(const std::string& root) : FWork{root} {
    struct stat status;
    if (stat(root.c_str(), &status) == 0) FDevice = status.st_dev;
  }

  TBareTotals Run() {
    while (!FWork.empty()) {
      const std::string folder = std::move(FWork.back());
      FWork.pop_back();
      List(folder);
    }
    return FTotals;
  }

 private:
  void List(const std::string& path) {
    const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;
    for (;;) {
      const long filled = syscall(SYS_getdents64, folder, FBuffer.data(), FBuffer.size());
      if (filled <= 0) break;
      for (long place = 0; place < filled;) {
        const auto* entry = reinterpret_cast<const TEntry*>(FBuffer.data() + place);
        if (std::strcmp(entry->Name, ".") != 0 && std::strcmp(entry->Name, "..") != 0)
          Take(folder, path, entry->Name);
        place += entry->Length;
      }
    }
    close(folder);
  }

  void Take(int folder, const std::string& path, const char* name) {
    struct stat status;
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) return;
    if (S_ISDIR(status.st_mode)) {
      ++FTotals.Folders;
      if (status.st_dev == FDevice) FWork.push_back(path + '/' + name);
    } else {
      ++FTotals.Files;
      FTotals.Bytes += static_cast<uint64_t>(status.st_size);
    }
  }

  std::vector<std::string> FWork;
  std::vector<char> FBuffer = std::vector<char>(128 * 1024);
  dev_t FDevice = 0;
  TBareTotals FTotals;
};

}  // namespace

TBareTotals BareLoop(const std::string& root) {
  return TLoop(root).Run();
}
