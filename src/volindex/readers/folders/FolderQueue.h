// Shares folders out to the threads that read them. Each thread works on a stack of its own and touches the
// shared one only when another has run dry.
#pragma once

#include "volindex/index/FolderTable.h"
#include "volindex/system/FolderAccess.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace volindex {

// An open folder that is kept for its subfolders to be opened from; counts itself in a number of open ones.
struct TKeptFolder {
  TKeptFolder(TFolderHandle handle, std::atomic<unsigned>& openCount)
      : Handle(std::move(handle)), OpenCount(openCount) {
    ++OpenCount;
  }
  ~TKeptFolder() { --OpenCount; }
  TKeptFolder(const TKeptFolder&) = delete;
  TKeptFolder& operator=(const TKeptFolder&) = delete;

  TFolderHandle Handle;
  std::atomic<unsigned>& OpenCount;
};

// A folder to be read.
struct TFolderTask {
  TFolderId Folder = kNoFolder;
  // Null when too many are open: the folder is then opened from the root.
  std::shared_ptr<TKeptFolder> Parent;
  double Share = 0;  // its part of the whole work as far as can be told, for the progress
};

class TFolderQueue {
 public:
  // The first `invited` threads may join at once.
  TFolderQueue(TFolderTask first, unsigned invited) : FInvited(invited) {
    FShared.push_back(std::move(first));
  }

  // Once by each thread, 0 and up, before its first Next. Waits until the thread is invited; false when the
  // end comes first.
  [[nodiscard]] bool Join(unsigned thread);

  // Lets one thread more join. Any thread.
  void Invite();

  // Takes the thread's next folder from its own stack, giving some away when others wait; with an empty one
  // waits for those of others. False when there will be none any more.
  [[nodiscard]] bool Next(std::vector<TFolderTask>& own, TFolderTask& task);

  // Lets all calls of Next answer false. Any thread.
  void Cancel();

 private:
  void GiveAway(std::vector<TFolderTask>& own);
  [[nodiscard]] bool TakeShared(TFolderTask& task);

  std::atomic<bool> FWanted{false};
  std::atomic<bool> FEnded{false};
  std::mutex FLock;
  std::condition_variable FChanged;
  std::vector<TFolderTask> FShared;
  unsigned FInvited;
  unsigned FThreads = 0;  // that have joined
  unsigned FWaiting = 0;  // of these
};

}  // namespace volindex
