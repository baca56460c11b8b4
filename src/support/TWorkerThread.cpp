#include "support/TWorkerThread.h"

#include <chrono>

namespace {

// How long an owner waits for the end, and how often it asks for it: a request may come just before a piece
// of work that begins by forgetting it.
constexpr std::chrono::milliseconds kEndAskedEvery{20};
constexpr int kEndAskedTimes = 50;

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

void TWorkerThread::Finish() {
  Terminate();
  Resume();
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
  FChanged.wait(lock, [this] { return FResumed; });
  FResumed = false;
}
