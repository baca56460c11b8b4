// Shares tasks out to the threads that do them. Each thread works on a stack of its own and touches the
// shared one only when another has run dry.
//
// FLock guards the shared stack and the three numbers; FWanted and FEnded are written under it and read
// without, as hints that may come a task late. The end is found by the thread that goes to wait last: all
// that have joined wait, and the shared stack is empty, so nobody is left who could add to it. Threads that
// were never invited do not count.
//
// A thread that leaves by an exception must call Cancel, or the others wait for it for ever.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <iterator>
#include <mutex>
#include <utility>
#include <vector>

namespace volindex {

template <class TTask>
class TWorkQueue {
 public:
  // The first `invited` threads may join at once.
  TWorkQueue(std::vector<TTask> first, unsigned invited) : FShared(std::move(first)), FInvited(invited) {}

  // Once by each thread, 0 and up, before its first Next. Waits until the thread is invited; false when the
  // end comes first.
  [[nodiscard]] bool Join(unsigned thread) {
    std::unique_lock lock(FLock);
    FChanged.wait(lock, [&] { return thread < FInvited || FEnded.load(std::memory_order_relaxed); });
    ++FThreads;
    return !FEnded.load(std::memory_order_relaxed);
  }

  // Lets one thread more join. Any thread.
  void Invite() {
    const std::lock_guard guard(FLock);
    ++FInvited;
    FChanged.notify_all();
  }

  // Takes the thread's next task from its own stack, giving some away when others wait; with an empty one
  // waits for those of others. False when there will be none any more.
  [[nodiscard]] bool Next(std::vector<TTask>& own, TTask& task) {
    if (FEnded.load(std::memory_order_relaxed)) return false;
    if (own.size() > 1 && IsWanted()) GiveAway(own);
    if (own.empty()) return TakeShared(task);
    task = std::move(own.back());
    own.pop_back();
    return true;
  }

  // Whether a thread waits for tasks, and one for it; by a thread that is at a task.
  [[nodiscard]] bool IsWanted() const { return FWanted.load(std::memory_order_relaxed); }
  void Give(TTask task) {
    std::vector<TTask> given;
    given.push_back(std::move(task));
    Share(given.begin(), given.end());
  }

  // Lets all calls of Next answer false. Any thread.
  void Cancel() {
    const std::lock_guard guard(FLock);
    FEnded.store(true, std::memory_order_relaxed);
    FChanged.notify_all();
  }

 private:
  using TPlace = typename std::vector<TTask>::iterator;

  void Share(TPlace begin, TPlace end) {
    {
      const std::lock_guard guard(FLock);
      FShared.insert(FShared.end(), std::move_iterator(begin), std::move_iterator(end));
      FWanted.store(false, std::memory_order_relaxed);
    }
    FChanged.notify_all();
  }

  // The older half: of a tree's folders these lie highest and are likely to be the most work.
  void GiveAway(std::vector<TTask>& own) {
    const auto half = own.begin() + static_cast<std::ptrdiff_t>(own.size() / 2);
    Share(own.begin(), half);
    own.erase(own.begin(), half);
  }

  // When all threads wait, nobody is left who could find a task.
  [[nodiscard]] bool TakeShared(TTask& task) {
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

  std::atomic<bool> FWanted{false};
  std::atomic<bool> FEnded{false};
  std::mutex FLock;
  std::condition_variable FChanged;
  std::vector<TTask> FShared;
  unsigned FInvited;
  unsigned FThreads = 0;  // that have joined
  unsigned FWaiting = 0;  // of these
};

}  // namespace volindex
