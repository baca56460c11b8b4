#include "scan/FolderCrew.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

bool ComesLater(const TFolderTask& a, const TFolderTask& b) {
  return a.Turn > b.Turn;
}

}  // namespace

TFolderCrew::TFolderCrew(unsigned threads) {
  const unsigned wanted = threads != 0 ? threads : std::max(std::thread::hardware_concurrency(), 1U);
  for (unsigned thread = 1; thread < wanted; ++thread)
    FThreads.emplace_back([this, thread] { Serve(thread); });
}

TFolderCrew::~TFolderCrew() {
  Stop();
}

void TFolderCrew::Begin(const QString& root, TFolderVisitor& visitor) {
  std::vector<TFolderTask> first{{root, 0}};
  {
    const std::lock_guard lock(FLock);
    FRoot = root;
    FVisitor = &visitor;
    ++FRun;
  }
  Add(first);
}

void TFolderCrew::Add(std::vector<TFolderTask>& tasks) {
  if (tasks.empty()) return;
  {
    const std::lock_guard lock(FLock);
    for (TFolderTask& task : tasks) {
      FTasks.push_back(std::move(task));
      std::push_heap(FTasks.begin(), FTasks.end(), ComesLater);
    }
  }
  tasks.clear();
  FChanged.notify_all();
}

// With FLock held and a task there.
TFolderTask TFolderCrew::Take() {
  std::pop_heap(FTasks.begin(), FTasks.end(), ComesLater);
  TFolderTask task = std::move(FTasks.back());
  FTasks.pop_back();
  ++FReading;
  return task;
}

void TFolderCrew::ReadUntil(const std::function<bool()>& done) {
  std::unique_lock lock(FLock);
  for (;;) {
    FChanged.wait(lock, [&] { return !FTasks.empty() || FReading == 0 || Stopped() || done(); });
    if (Stopped()) return AwaitStop(lock);
    if (done() || FTasks.empty()) return;
    const TFolderTask task = Take();
    lock.unlock();
    Read(0, FOwn, task);
    lock.lock();
  }
}

void TFolderCrew::AwaitStop(std::unique_lock<std::mutex>& lock) {
  FTasks.clear();
  FChanged.wait(lock, [this] { return FReading == 0; });
  FTasks.clear();
}

void TFolderCrew::Serve(unsigned thread) {
  TReader reader;
  std::unique_lock lock(FLock);
  for (;;) {
    FChanged.wait(lock, [this] { return (!FTasks.empty() && !FPaused) || Stopped(); });
    if (Stopped()) return;
    const TFolderTask task = Take();
    lock.unlock();
    Read(thread, reader, task);
    lock.lock();
  }
}

void TFolderCrew::Read(unsigned thread, TReader& reader, const TFolderTask& task) {
  if (std::exchange(reader.Run, FRun) != FRun) {
    reader.Enumeration.ConfineTo(FRoot);
    reader.Enumeration.SkipFolderDetails();
  }
  TFoundFile found;
  for (bool more = reader.Enumeration.First(task.Path, found); more && !Stopped();
       more = reader.Enumeration.Next(found))
    FVisitor->EntryFound(thread, task, found);
  reader.Enumeration.Close();
  FVisitor->FolderRead(thread, task);
  Done();
}

void TFolderCrew::Done() {
  {
    const std::lock_guard lock(FLock);
    --FReading;
  }
  FChanged.notify_all();
}

void TFolderCrew::Pause(bool paused) {
  {
    const std::lock_guard lock(FLock);
    FPaused = paused;
  }
  FChanged.notify_all();
}

void TFolderCrew::Stop() {
  {
    const std::lock_guard lock(FLock);
    FStopped.store(true, std::memory_order_relaxed);
  }
  FChanged.notify_all();
}
