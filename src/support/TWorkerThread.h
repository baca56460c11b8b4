// A background thread that is made suspended, runs one piece of work per Resume and suspends itself at the
// end of it.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

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

  // Asks Execute to return at its next test of Terminated(). Any thread.
  void Terminate() { FTerminated.store(true); }
  [[nodiscard]] bool Terminated() const { return FTerminated.load(); }

 protected:
  TWorkerThread();
  virtual ~TWorkerThread();

  // The body, on the thread itself, begun by the first Resume. It loops while Terminated() is false and
  // ends each round with Suspend().
  virtual void Execute() = 0;

  // Waits for the next Resume; returns at once if one came already. The thread itself.
  void Suspend();

  // Terminates, resumes and joins. Safe to call twice. The owner.
  void Finish();

 private:
  void Run();
  void WaitForResume();

  std::mutex FGuard;
  std::condition_variable FResumedChanged;
  bool FResumed = false;  // under FGuard
  std::atomic<bool> FSuspended{true};
  std::atomic<bool> FTerminated{false};
  std::thread FThread;
};
