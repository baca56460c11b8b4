#include "volindex/index/RunThreads.h"

#include <chrono>
#include <exception>
#include <future>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace volindex {

namespace {

class TGuardedWork {
 public:
  explicit TGuardedWork(const std::function<void(unsigned)>& work) : FWork(work) {}

  void Run(unsigned thread) {
    try {
      // An exception that left a thread's function would end the process.
      FWork(thread);
    } catch (...) {
      const std::lock_guard guard(FLock);
      if (FFailure == nullptr) FFailure = std::current_exception();
    }
  }

  void Rethrow() const {
    if (FFailure != nullptr) std::rethrow_exception(FFailure);
  }

 private:
  const std::function<void(unsigned)>& FWork;
  std::mutex FLock;
  std::exception_ptr FFailure;
};

}  // namespace

void RunThreads(unsigned count, const std::function<void(unsigned thread)>& work) {
  TGuardedWork guarded(work);
  {
    std::vector<std::jthread> threads;
    try {
      for (unsigned thread = 1; thread < count; ++thread)
        threads.emplace_back([&guarded, thread] { guarded.Run(thread); });
    } catch (const std::system_error&) {
      // The threads that there are do the work.
    }
    guarded.Run(0);
  }
  guarded.Rethrow();
}

bool RunAbandonable(const std::atomic<bool>& stop, std::function<bool()> work) {
  constexpr std::chrono::milliseconds kLook{10};
  std::packaged_task<bool()> task(std::move(work));
  std::future<bool> answer = task.get_future();
  std::thread(std::move(task)).detach();
  // Polled instead of awaited: the flag of a stop is an atomic that nobody notifies.
  while (answer.wait_for(kLook) != std::future_status::ready) {
    if (stop.load(std::memory_order_relaxed)) return false;
  }
  return answer.get();
}

}  // namespace volindex
