#include "support/TWorkerThread.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace {

// How long an owner waits for the end, and how often it asks for it: a request may come just before a piece
// of work that begins by forgetting it.
constexpr std::chrono::milliseconds kEndAskedEvery{20};
constexpr int kEndAskedTimes = 50;

constexpr unsigned kAnswer = 1;
constexpr int kLongestWait = 100;  // milliseconds

}  // namespace

TWorkerThread::TWorkerThread() : FThread([this] { Run(); }) {}

TWorkerThread::~TWorkerThread() {
  Finish();
}

void TWorkerThread::Resume() {
  const std::lock_guard lock(FGuard);
  FResumed = true;
  FSuspended.store(false);
  FChanged.notify_all();
}

void TWorkerThread::Suspend() {
  WaitForResume();
}

void TWorkerThread::WaitForRest() {
  std::unique_lock lock(FGuard);
  FChanged.wait(lock, [this] { return FSuspended.load() || FEnded; });
}

void TWorkerThread::Finish() {
  Terminate();
  Resume();  // a suspended thread has to wake to see that it is to end
  if (FThread.joinable()) FThread.join();
}

void TWorkerThread::TEnd::operator()(TWorkerThread* thread) const {
  if (thread->WaitForEnd()) delete thread;
}

// False for a thread that was left behind: nobody but itself may touch its object from then on.
bool TWorkerThread::WaitForEnd() {
  for (int asked = 0; asked < kEndAskedTimes; ++asked) {
    Terminate();
    Resume();
    std::unique_lock lock(FGuard);
    if (FChanged.wait_for(lock, kEndAskedEvery, [this] { return FEnded; })) return true;
  }
  const std::lock_guard lock(FGuard);
  if (FEnded) return true;
  FLeftBehind = true;
  FThread.detach();
  return false;
}

// The lock decides whether the owner or the thread itself comes last and deletes the object.
void TWorkerThread::Run() {
  WaitForResume();
  if (!Terminated()) Execute();
  std::unique_lock lock(FGuard);
  FEnded = true;
  FChanged.notify_all();
  const bool isLast = FLeftBehind;
  lock.unlock();
  if (isLast) delete this;
}

void TWorkerThread::WaitForResume() {
  std::unique_lock lock(FGuard);
  FSuspended.store(!FResumed);
  FChanged.notify_all();
  FChanged.wait(lock, [this] { return FResumed; });
  FResumed = false;
}

// What the thread and its task have in common; goes with the last of the two.
class TDetachedTask::TJob : public TLine {
 public:
  explicit TJob(TMessageWindow* window) : FLine(window) {}

  void Run(const std::function<void(TLine&)>& work) {
    work(*this);
    const std::lock_guard lock(FGuard);
    FDone = true;
    FEnded.notify_all();
  }

  void Tell(std::function<void()> answer) override {
    {
      const std::lock_guard lock(FGuard);
      FAnswers.push_back(std::move(answer));
    }
    FLine.Post(kAnswer, 0, 0);
  }
  [[nodiscard]] bool Abandoned() const override { return FAbandoned.load(); }

  [[nodiscard]] std::function<void()> Take() {
    const std::lock_guard lock(FGuard);
    if (FAnswers.empty()) return nullptr;
    std::function<void()> answer = std::move(FAnswers.front());
    FAnswers.pop_front();
    return answer;
  }

  void Abandon() {
    FAbandoned.store(true);
    // From here on no answer reaches the window, not even one that the work is just telling.
    FLine.Close();
  }

  void WaitForEnd(int milliseconds) {
    std::unique_lock lock(FGuard);
    FEnded.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return FDone; });
  }

 private:
  TMessageLine FLine;
  std::atomic<bool> FAbandoned{false};
  std::mutex FGuard;
  std::condition_variable FEnded;
  std::deque<std::function<void()>> FAnswers;  // under FGuard
  bool FDone = false;                          // under FGuard
};

TDetachedTask::TDetachedTask() : FWindow({{kAnswer, [this](const TMessage&) { (void)TakeOne(); }}}) {}

TDetachedTask::~TDetachedTask() {
  const std::shared_ptr<TJob> job = FJob;  // which Abandon lets go
  Abandon();
  if (job) job->WaitForEnd(kLongestWait);
}

void TDetachedTask::Start(std::function<void(TLine&)> work) {
  Abandon();
  FJob = std::make_shared<TJob>(&FWindow);
  std::thread([job = FJob, work = std::move(work)] { job->Run(work); }).detach();
}

void TDetachedTask::Abandon() {
  if (FJob) FJob->Abandon();
  FJob.reset();
}

void TDetachedTask::WaitFor(int milliseconds) {
  if (FJob) FJob->WaitForEnd(milliseconds);
  while (TakeOne()) {
  }
}

// The answer may be the end of this.
bool TDetachedTask::TakeOne() {
  const std::function<void()> answer = FJob ? FJob->Take() : nullptr;
  if (answer) answer();
  return answer != nullptr;
}
