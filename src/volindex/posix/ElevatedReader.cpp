// How it goes: Accepts only where a bulk reader on the other side could serve the volume, so that nobody is
// asked in vain. Read starts the sender (TSender) with two pipes, feeds what comes to TStreamParser and hands
// over at anything wrong: a refusal, a sender that falls silent, bytes that do not hold together.
//
// What may be hostile: the sender's answer is the word of another process, hence the parser's bounds. The
// program is taken from beside this library and by its full path, so that nothing in the environment names
// it.
#include "volindex/posix/ElevatedReader.h"

#include "volindex/elevated/VolumeStream.h"
#include "volindex/include/volindex_elevation.h"
#include "volindex/system/Elevation.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>
#include <thread>
#include <utility>

namespace volindex {

namespace {

using TClock = std::chrono::steady_clock;

constexpr const char* kAsk = "/usr/bin/pkexec";
constexpr const char* kProgram = "tallyscope-volume";
// Until the mark comes a box may be on the screen that a user reads and types into; after that the sender's
// heartbeat comes every second.
constexpr std::chrono::seconds kUserTakesAtMost{120};
constexpr int kLookMilliseconds = 20;

std::atomic<int32_t> gAsk{TALLYSCOPE_ASK_NEVER};
std::atomic<bool> gRefused{false};

// The folder of the library, or of the program that has it in itself.
std::string ProgramBeside() {
  Dl_info facts{};
  if (::dladdr(reinterpret_cast<const void*>(&SetElevation), &facts) == 0 || facts.dli_fname == nullptr)
    return {};
  const std::string_view file = facts.dli_fname;
  return std::string(file.substr(0, file.rfind('/') + 1)) + kProgram;
}

// Empty when nobody can be asked.
std::vector<std::string> AskingCommand() {
  const int32_t ask = gAsk.load();
  const std::string program = ProgramBeside();
  if (ask == TALLYSCOPE_ASK_NEVER || gRefused.load() || ::geteuid() == 0) return {};
  if (!program.starts_with('/') || ::access(program.c_str(), X_OK) != 0 || ::access(kAsk, X_OK) != 0)
    return {};
  std::vector<std::string> command{kAsk};
  if (ask != TALLYSCOPE_ASK_ON_TERMINAL_TOO) command.emplace_back("--disable-internal-agent");
  command.push_back(program);
  return command;
}

// Those that a reader of bytes or in bulk knows.
bool HasBulkReader(const std::string& fileSystem) {
  static constexpr std::array<std::string_view, 8> kKnown{"ext2",  "ext3",    "ext4", "ntfs",
                                                          "ntfs3", "fuseblk", "xfs",  "btrfs"};
  return std::find(kKnown.begin(), kKnown.end(), fileSystem) != kKnown.end();
}

// More folders than that the volume can't have: it says how many inodes there are, or it has that many
// blocks.
uint64_t MostFolders(const std::string& path) {
  struct statvfs facts {};
  if (::statvfs(path.c_str(), &facts) != 0) return 0;
  return facts.f_files != 0 ? facts.f_files : facts.f_blocks;
}

class TDescriptor {
 public:
  explicit TDescriptor(int number = -1) : FNumber(number) {}
  ~TDescriptor() { Close(); }
  TDescriptor(TDescriptor&& other) noexcept : FNumber(std::exchange(other.FNumber, -1)) {}
  TDescriptor& operator=(TDescriptor&& other) noexcept {
    std::swap(FNumber, other.FNumber);
    return *this;
  }

  [[nodiscard]] int Get() const { return FNumber; }
  void Close() {
    if (FNumber >= 0) ::close(std::exchange(FNumber, -1));
  }

 private:
  int FNumber;
};

struct TPipe {
  TPipe() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return;
    Out = TDescriptor(ends[0]);
    In = TDescriptor(ends[1]);
  }
  TDescriptor Out;
  TDescriptor In;
};

// The other process. It reads its standard input and ends when that does, whatever rights it has by then.
class TSender {
 public:
  explicit TSender(const std::vector<std::string>& command) {
    TPipe orders;
    TPipe answers;
    if (answers.In.Get() < 0 || orders.In.Get() < 0) return;
    std::vector<char*> arguments;
    for (const std::string& word : command)
      arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, orders.Out.Get(), STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, answers.In.Get(), STDOUT_FILENO);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (::posix_spawn(&FProcess, arguments.front(), &actions, nullptr, arguments.data(), environ) != 0)
      FProcess = -1;
    ::posix_spawn_file_actions_destroy(&actions);
    FOrders = std::move(orders.In);
    FAnswers = std::move(answers.Out);
  }

  // Before the consent the process can be told to end; then it sees the pipe close. Nobody waits for it.
  ~TSender() {
    if (FProcess < 0) return;
    FOrders.Close();
    FAnswers.Close();
    ::kill(FProcess, SIGTERM);
    std::thread([process = FProcess] { ::waitpid(process, nullptr, 0); }).detach();
  }
  TSender(const TSender&) = delete;
  TSender& operator=(const TSender&) = delete;

  [[nodiscard]] bool Runs() const { return FProcess >= 0; }

  // More than 0 bytes; 0 when nothing came within a short time; less than 0 at the end.
  [[nodiscard]] ssize_t Receive(std::span<std::byte> room) {
    pollfd look{FAnswers.Get(), POLLIN, 0};
    if (::poll(&look, 1, kLookMilliseconds) <= 0) return 0;
    const ssize_t count = ::read(FAnswers.Get(), room.data(), room.size());
    return count == 0 || (count < 0 && errno != EINTR) ? -1 : std::max<ssize_t>(count, 0);
  }

 private:
  pid_t FProcess = -1;
  TDescriptor FOrders;
  TDescriptor FAnswers;
};

}  // namespace

void SetElevation(int32_t ask) {
  gAsk = ask;
  gRefused = false;
}

bool TElevatedReader::Accepts(const TScanRoot& root) const {
  return root.IsVolumeRoot && !root.Device.empty() && HasBulkReader(root.FileSystem) &&
         (!FCommand.empty() || !AskingCommand().empty());
}

TReadResult TElevatedReader::Read(const TScanRoot& root, TIndexBuilder& builder,
                                  const TScanControl& control) {
  std::vector<std::string> command = FCommand.empty() ? AskingCommand() : FCommand;
  if (command.empty()) return TReadResult::HandedOver;
  command.push_back(root.Path);
  if (control.KeepKinds) command.emplace_back(kKindsWord);
  TStreamParser parser(builder, MostFolders(root.Path), control.Progress);
  TSender sender(command);
  if (!sender.Runs()) return TReadResult::HandedOver;
  std::vector<std::byte> room(size_t{64} << 10);
  TStreamState state = TStreamState::Reading;
  TClock::time_point heard = TClock::now();
  for (ssize_t count = 0; count >= 0 && state != TStreamState::Wrong;) {
    count = sender.Receive(room);
    // Returning ends the sender: its pipes are closed by then.
    if (control.Stop.load()) return TReadResult::Stopped;
    if (count > 0) {
      heard = TClock::now();
      state = parser.Feed(std::span(room).first(static_cast<size_t>(count)));
    }
    const auto patience = parser.Begun() ? std::chrono::seconds(FPatience) : kUserTakesAtMost;
    if (TClock::now() - heard > patience) break;
  }
  // Nothing has begun: the user has said no, or could not be asked. He is not asked again for the next
  // volume.
  if (!parser.Begun()) gRefused = true;
  if (state != TStreamState::Done) return TReadResult::HandedOver;
  return builder.Finish(control.Stop) == TFinish::Done ? TReadResult::Done : TReadResult::Stopped;
}

}  // namespace volindex
