// The system's calls beneath the file actions, which a test program's linker leads through here (--wrap), so
// that each can fail, be slow or be the last one of the process.
#pragma once

#include <QByteArray>

#include <atomic>
#include <functional>

// What befalls the calls of one thread. Calls are counted from 1.
struct TCallPlan {
  int At = 0;     // the call that is struck; 0: none
  int Error = 0;  // it is not made and gives this error number; 0: the process is killed before it
  // Instead of that: what another program does just before the call and each one after it.
  std::function<void()> Meanwhile = {};
  bool OtherVolume = false;   // a rename from one folder to another gives EXDEV
  bool NoFlags = false;       // the file system can't rename without replacing
  bool Undeletable = false;   // no entry can be unlinked
  qint64 Room = -1;           // bytes that writes may take before the disk is full; -1: no end
  qsizetype WriteAtOnce = 0;  // at most so many bytes a write; 0: no bound
  bool Interrupted = false;   // each second read and write is broken off by a signal first
  // Paths that begin with "/etc" or "/run" are taken below this folder, and it stands for the top of its
  // volume.
  QByteArray Redirected = {};
};

// What befalls the calls of all threads, planned or not.
struct TDisk {
  std::atomic<bool> IsOther{false};  // a rename from one folder to another gives EXDEV
  std::atomic<bool> Stalls{false};   // it takes no content but the main thread's
};
inline TDisk gDisk;

// The plan holds for the thread while this lives; one at a time.
class TPlannedCalls {
 public:
  explicit TPlannedCalls(const TCallPlan& plan);
  ~TPlannedCalls();
  TPlannedCalls(const TPlannedCalls&) = delete;
  TPlannedCalls& operator=(const TPlannedCalls&) = delete;

  // How many calls there were, and the name of the one that was struck.
  [[nodiscard]] static int Count();
  [[nodiscard]] static QByteArray Struck();
  // The names of all, each with a blank behind it.
  [[nodiscard]] static QByteArray Names();
};
