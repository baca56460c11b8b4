// tallyscope-volume: reads one volume in bulk and writes its index to standard output (see VolumeStream.h).
// The window starts it as the administrator, so it takes nothing from its surroundings: the mount point of a
// fixed volume and perhaps one word more, whether kinds of content are asked for; no environment, no open
// files, and of the administrator's rights only those that reading takes. It ends as soon as its standard
// input does, which is when the one who started it has gone or wants no more.
#include "volindex/elevated/VolumeStream.h"
#include "volindex/index/VolumeScan.h"
#include "volindex/system/ScanRoot.h"

#include <linux/capability.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>

namespace {

using volindex::TBytes;

enum TExitCode { kDone = 0, kUnreadable = 1, kWrongUsage = 2 };

constexpr int kHeartbeatMilliseconds = 1000;

// Bulk calls of the file systems ask for the first, folders that the user may not enter for the second. The
// devices belong to the administrator himself.
constexpr std::array<int, 2> kKeptRights{CAP_SYS_ADMIN, CAP_DAC_READ_SEARCH};

bool DropRights() {
  std::array<__user_cap_data_struct, 2> rights{};
  for (const int kept : kKeptRights) {
    const auto index = static_cast<size_t>(CAP_TO_INDEX(kept));
    rights[index].permitted |= CAP_TO_MASK(kept);
    rights[index].effective |= CAP_TO_MASK(kept);
  }
  for (int right = 0; prctl(PR_CAPBSET_READ, right) >= 0; ++right)
    if (right != kKeptRights[0] && right != kKeptRights[1] && prctl(PR_CAPBSET_DROP, right) != 0)
      return false;
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && syscall(SYS_capset, &header, rights.data()) == 0;
}

bool LeaveSurroundings() {
  constexpr rlimit kNoDump{0, 0};
  signal(SIGPIPE, SIG_IGN);  // a closed pipe is seen when it is written to
  umask(077);
  const bool closed = close_range(STDERR_FILENO + 1, ~0U, 0) == 0;
  return clearenv() == 0 && chdir("/") == 0 && closed && setrlimit(RLIMIT_CORE, &kNoDump) == 0 &&
         (geteuid() != 0 || DropRights());
}

// Frames of several threads, one after the other.
class TOutput {
 public:
  bool Send(TBytes bytes) {
    const std::lock_guard guard(FLock);
    FBeats = FBeats.value_or(true);
    return Write(bytes);
  }

  // Nothing may stand behind the index, so there are none from here on.
  void EndHeartbeats() {
    const std::lock_guard guard(FLock);
    FBeats = false;
  }

  // Unless another thread is at it, and then the receiver hears something anyhow.
  void SendHeartbeat() {
    const std::unique_lock guard(FLock, std::try_to_lock);
    if (guard.owns_lock() && FBeats.value_or(false))
      (void)volindex::SendProgress([this](TBytes bytes) { return Write(bytes); }, 0);
  }

 private:
  static bool Write(TBytes bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(STDOUT_FILENO, bytes.data(), bytes.size());
      if (written < 0 && errno != EINTR) return false;
      if (written > 0) bytes = bytes.subspan(static_cast<size_t>(written));
    }
    return true;
  }

  std::mutex FLock;
  std::optional<bool> FBeats;  // not before the mark, which is the first that is sent
};

// Ends the process with its standard input, and says every second that it lives.
void KeepWatch(TOutput& output) {
  for (;;) {
    pollfd look{STDIN_FILENO, POLLIN, 0};
    const int seen = poll(&look, 1, kHeartbeatMilliseconds);
    if (seen > 0 || (seen < 0 && errno != EINTR)) _exit(kDone);
    if (seen == 0) output.SendHeartbeat();
  }
}

// The device is there, is one of blocks, and its medium can't be taken out.
bool IsFixed(const std::string& device) {
  struct stat facts {};
  if (stat(device.c_str(), &facts) != 0 || !S_ISBLK(facts.st_mode)) return false;
  const std::string folder =
      "/sys/dev/block/" + std::to_string(major(facts.st_rdev)) + ':' + std::to_string(minor(facts.st_rdev));
  for (const char* file : {"/removable", "/../removable"}) {  // a partition's is that of the disk above it
    std::ifstream removable(folder + file);
    if (int answer = 0; removable >> answer) return answer == 0;
  }
  return true;
}

// Those that need the rights; who reads folders can do so himself.
volindex::TReaders BulkReaders() {
  volindex::TReaders readers = volindex::MakeReaders();
  std::erase_if(readers, [](const auto& reader) {
    const std::string_view name = reader->Name();
    return name == "folders" || name == "elevated";
  });
  return readers;
}

int SendVolume(const std::string& path, bool kinds, TOutput& output) {
  const volindex::TStreamSink sink = [&output](TBytes bytes) { return output.Send(bytes); };
  if (!volindex::SendMark(sink)) return kDone;
  const auto root = volindex::DescribeScanRoot(path);
  if (!root || !root->IsVolumeRoot || root->Path != path || !IsFixed(root->Device)) return kUnreadable;
  const std::atomic<bool> stop{false};  // to stop is to end
  const auto progress = [&sink](int percent) {
    if (!volindex::SendProgress(sink, percent)) _exit(kDone);
  };
  const volindex::TVolumeIndex index = volindex::ScanVolume(path, {stop, progress, kinds}, BulkReaders());
  output.EndHeartbeats();
  return index.FolderEnd() != 0 && volindex::SendIndex(sink, index) ? kDone : kUnreadable;
}

}  // namespace

// The order matters: arguments are looked at while nothing is done yet, rights are dropped before the first
// thread, so that it has no more, and the watch begins before anything that may take long.
int main(int count, char** arguments) {
  const bool kinds = count == 3 && arguments[2] == volindex::kKindsWord;
  const std::string path = count == 2 || kinds ? arguments[1] : "";
  if (!path.starts_with('/')) return kWrongUsage;
  if (!LeaveSurroundings()) return kUnreadable;
  static TOutput output;  // outlives the watch
  int exitCode = kUnreadable;
  try {
    std::thread([] { KeepWatch(output); }).detach();
    exitCode = SendVolume(path, kinds, output);
  } catch (...) {
    // For want of memory: the other side reads the volume in another way.
  }
  _exit(exitCode);  // the watch is still there
}
