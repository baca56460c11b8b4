#include "support/DetachedTask.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace {

constexpr unsigned kAnswer = 1;
constexpr int kLongestWait = 100;  // milliseconds

}  // namespace

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
  const std::shared_ptr<TJob> job = FJob;
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
