#include "BareLoop.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>
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

// The folders still to be read. There will be no more when all threads wait for one.
class TStack {
 public:
  TStack(std::string first, unsigned threads) : FThreads(threads) { FFolders.push_back(std::move(first)); }

  bool Take(std::string& folder) {
    std::unique_lock lock(FLock);
    ++FWaiting;
    FChanged.wait(lock, [this] { return !FFolders.empty() || FWaiting == FThreads; });
    if (FFolders.empty()) {
      FChanged.notify_all();
      return false;
    }
    --FWaiting;
    folder = std::move(FFolders.back());
    FFolders.pop_back();
    return true;
  }

  void Put(std::vector<std::string>& folders) {
    if (folders.empty()) return;
    const std::lock_guard lock(FLock);
    for (std::string& folder : folders)
      FFolders.push_back(std::move(folder));
    folders.clear();
    if (FWaiting != 0) FChanged.notify_all();
  }

 private:
  std::mutex FLock;
  std::condition_variable FChanged;
  std::vector<std::string> FFolders;
  const unsigned FThreads;
  unsigned FWaiting = 0;
};

class TLoop {
 public:
  TLoop(TStack& stack, dev_t device) : FStack(stack), FDevice(device) {}

  void Run() {
    for (std::string folder; FStack.Take(folder); FStack.Put(FFound))
      List(folder);
  }

  [[nodiscard]] const TBareTotals& Totals() const { return FTotals; }

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
      if (status.st_dev == FDevice) FFound.push_back(path + '/' + name);
    } else {
      ++FTotals.Files;
      FTotals.Bytes += static_cast<uint64_t>(status.st_size);
    }
  }

  TStack& FStack;
  const dev_t FDevice;
  std::vector<std::string> FFound;
  std::vector<char> FBuffer = std::vector<char>(128 * 1024);
  TBareTotals FTotals;
};

}  // namespace

TBareTotals BareLoop(const std::string& root, unsigned threads) {
  struct stat status;
  if (stat(root.c_str(), &status) != 0) return {};
  TStack stack(root, threads);
  std::vector<TLoop> loops(threads, TLoop(stack, status.st_dev));
  {
    std::vector<std::jthread> others;
    for (unsigned i = 1; i < threads; ++i)
      others.emplace_back([&loop = loops[i]] { loop.Run(); });
    loops[0].Run();
  }
  TBareTotals totals;
  for (const TLoop& loop : loops) {
    totals.Files += loop.Totals().Files;
    totals.Folders += loop.Totals().Folders;
    totals.Bytes += loop.Totals().Bytes;
  }
  return totals;
}
