// The background threads of the program: one that works again and again for its owner, and one that nobody
// waits for. The work of both may hang in a system call that never returns, as on a mount whose server is
// gone.
#pragma once

#include "platform/Messages.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

// A background thread that is made suspended, runs one piece of work per Resume and suspends itself at the
// end of it. An owner that must not hang with it holds the thread by TOwnedThread.
//
// Owned by the thread that makes it. A derived class calls Finish() first in its destructor, so that
// Execute has returned before the members that it uses go.
class TWorkerThread {
 public:
  TWorkerThread(const TWorkerThread&) = delete;
  TWorkerThread& operator=(const TWorkerThread&) = delete;

  // Lets the thread go on from where it is suspended. A Resume that comes while the thread still runs
  // holds for its next Suspend. Any other thread.
  void Resume();

  // True from its making to its first Resume and between pieces of work. Any thread.
  [[nodiscard]] bool Suspended() const { return FSuspended.load(); }

  // Asks Execute to return at its next test of Terminated(); a derived class also asks its work to stop. May
  // be called again and again. Any thread.
  virtual void Terminate() { FTerminated.store(true); }
  [[nodiscard]] bool Terminated() const { return FTerminated.load(); }

  // What the owner's pointer does at its end: asks the thread to terminate and deletes it once it has ended.
  // One that does not end within a second is left behind: it keeps its object until it ends, and then deletes
  // it.
  struct TEnd {
    void operator()(TWorkerThread* thread) const;
  };

 protected:
  TWorkerThread();
  virtual ~TWorkerThread();

  // The body, on the thread itself, begun by the first Resume. It loops while Terminated() is false and
  // ends each round with Suspend().
  virtual void Execute() = 0;

  // Waits for the next Resume; returns at once if one came already. The thread itself.
  void Suspend();

  // Waits until the thread is suspended with no Resume under way, or has ended. Any other thread.
  void WaitForRest();

  // Terminates, resumes and joins. Safe to call twice. The owner.
  void Finish();

 private:
  void Run();
  void WaitForResume();
  [[nodiscard]] bool WaitForEnd();

  std::mutex FGuard;
  std::condition_variable FChanged;  // FResumed, FSuspended or FEnded
  bool FResumed = false;             // under FGuard, like the next two
  bool FEnded = false;
  bool FLeftBehind = false;
  std::atomic<bool> FSuspended{true};
  std::atomic<bool> FTerminated{false};
  std::thread FThread;
};

// The one owner of a worker thread on the heap.
template <typename TThread>
using TOwnedThread = std::unique_ptr<TThread, TWorkerThread::TEnd>;

// Work that may take for ever, as a look at a folder whose server is gone does, on a thread that nobody waits
// for, with answers for the thread that asked.
//
//   FTask.Start([this, path](TDetachedTask::TLine& line) {
//     const bool found = DirectoryExists(path);
//     line.Tell([this, found] { Show(found); });
//   });
//
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
