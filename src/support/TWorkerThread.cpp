#include "support/TWorkerThread.h"

TWorkerThread::TWorkerThread() : FThread([this] { Run(); }) {}

TWorkerThread::~TWorkerThread() {
  Finish();
}

void TWorkerThread::Resume() {
  const std::lock_guard lock(FGuard);
  FResumed = true;
  FSuspended.store(false);
  FResumedChanged.notify_all();
}

void TWorkerThread::Suspend() {
  WaitForResume();
}

void TWorkerThread::Finish() {
  Terminate();
  Resume();
  if (FThread.joinable()) FThread.join();
}

void TWorkerThread::Run() {
  WaitForResume();
  if (!Terminated()) Execute();
}

void TWorkerThread::WaitForResume() {
  std::unique_lock lock(FGuard);
  FSuspended.store(!FResumed);
  FResumedChanged.wait(lock, [this] { return FResumed; });
  FResumed = false;
}
