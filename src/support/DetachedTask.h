// Work that may take for ever, as a look at a folder whose server is gone does, on a thread that nobody waits
// for, with answers for the thread that asked.
//
//   FTask.Start([this, path](TDetachedTask::TLine& line) {
//     const bool found = DirectoryExists(path);
//     line.Tell([this, found] { Show(found); });
//   });
#pragma once

#include "platform/Messages.h"

#include <functional>
#include <memory>

// One piece of work at a time. Used by the thread that made it, which has an event loop.
class TDetachedTask {
 public:
  class TLine;

  TDetachedTask();
  // Abandons the work and waits a tenth of a second at most for its thread.
  ~TDetachedTask();
  TDetachedTask(const TDetachedTask&) = delete;
  TDetachedTask& operator=(const TDetachedTask&) = delete;

  // Returns at once. The work uses nothing that may go before it does, and throws nothing; work under way is
  // abandoned.
  void Start(std::function<void(TLine& line)> work);

  // None of the answers runs that has not run yet.
  void Abandon();

  // Waits so long at most for the end of the work, and runs the answers that are there. None of them may be
  // the end of this.
  void WaitFor(int milliseconds);

 private:
  class TJob;

  [[nodiscard]] bool TakeOne();

  TMessageWindow FWindow;
  std::shared_ptr<TJob> FJob;  // with its thread; null if there is none or it was abandoned
};

// What the work has of its task. The work's thread.
class TDetachedTask::TLine {
 public:
  virtual ~TLine() = default;

  // The answer runs on the task's thread, after those told before it; it may do anything to the task, and be
  // the end of it.
  virtual void Tell(std::function<void()> answer) = 0;

  // Nobody hears of the work any more: it may as well end.
  [[nodiscard]] virtual bool Abandoned() const = 0;
};
