#include "volindex/readers/folders/FolderQueue.h"

#include <iterator>

namespace volindex {

bool TFolderQueue::Join(unsigned thread) {
  std::unique_lock lock(FLock);
  FChanged.wait(lock, [&] { return thread < FInvited || FEnded.load(std::memory_order_relaxed); });
  ++FThreads;
  return !FEnded.load(std::memory_order_relaxed);
}

void TFolderQueue::Invite() {
  const std::lock_guard guard(FLock);
  ++FInvited;
  FChanged.notify_all();
}

bool TFolderQueue::Next(std::vector<TFolderTask>& own, TFolderTask& task) {
  if (FEnded.load(std::memory_order_relaxed)) return false;
  if (own.size() > 1 && FWanted.load(std::memory_order_relaxed)) GiveAway(own);
  if (own.empty()) return TakeShared(task);
  task = std::move(own.back());
  own.pop_back();
  return true;
}

// The older half: these lie highest in the tree and are likely to be the most work.
void TFolderQueue::GiveAway(std::vector<TFolderTask>& own) {
  const auto half = own.begin() + static_cast<std::ptrdiff_t>(own.size() / 2);
  {
    const std::lock_guard guard(FLock);
    FShared.insert(FShared.end(), std::move_iterator(own.begin()), std::move_iterator(half));
    FWanted.store(false, std::memory_order_relaxed);
  }
  own.erase(own.begin(), half);
  FChanged.notify_all();
}

// When all threads wait, nobody is left who could find a folder.
bool TFolderQueue::TakeShared(TFolderTask& task) {
  std::unique_lock lock(FLock);
  ++FWaiting;
  if (FShared.empty() && FWaiting == FThreads) {
    FEnded.store(true, std::memory_order_relaxed);
    FChanged.notify_all();
  }
  while (FShared.empty() && !FEnded.load(std::memory_order_relaxed)) {
    FWanted.store(true, std::memory_order_relaxed);
    FChanged.wait(lock);
  }
  --FWaiting;
  if (FEnded.load(std::memory_order_relaxed)) return false;
  task = std::move(FShared.back());
  FShared.pop_back();
  return true;
}

void TFolderQueue::Cancel() {
  const std::lock_guard guard(FLock);
  FEnded.store(true, std::memory_order_relaxed);
  FChanged.notify_all();
}

}  // namespace volindex
