// Reads many folders at once: a crew of threads that share the work out among themselves, with the thread
// that uses them as one of them. Which folders are read is the user's matter: what a folder holds is told to
// its visitor, and the visitor adds the folders that it wants read too, each with its turn.
//
// A sum over a tree needs no order: it gives each folder it finds an earlier turn than all before, which goes
// down first and keeps the waiting few. A walk that needs the listings in its own order gives turns in that
// order, keeps what its visitor is told, by folder, and takes from there what it needs next, with ReadUntil
// before it for a folder that is not there yet. Its memory is bounded by Pause, called with true when it
// keeps enough and with false when it has taken enough of that away.
//
// All folders of one run lie on the file system of its root; on Linux any other counts as empty.
#pragma once

#include "platform/FileEnumeration.h"

#include <QString>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

struct TFolderTask {
  QString Path;      // with its delimiter
  quint64 Turn = 0;  // the least comes first
};

// What a run is for. The calls come from all threads of the crew at once, for one folder always from one
// thread, which has a number from 0 below TFolderCrew::Size(), 0 being the user's own.
class TFolderVisitor {
 public:
  virtual ~TFolderVisitor() = default;
  // The visitor may take the name out of `found`. Folders come without details, see SkipFolderDetails.
  virtual void EntryFound(unsigned thread, const TFolderTask& folder, TFoundFile& found) = 0;
  // The folder has been read, or can't be, or the crew is stopped. What is wanted next is best added here.
  virtual void FolderRead(unsigned thread, const TFolderTask& folder) = 0;
};

// Owned by its user, whose one thread calls everything but Stop and Add. Its threads live as long as it does
// and sleep between runs.
class TFolderCrew {
 public:
  // So many threads, the user's own included; 0: one per processor.
  explicit TFolderCrew(unsigned threads = 0);
  // Stops, and waits for the threads: each ends with the entry that it is at.
  ~TFolderCrew();
  TFolderCrew(const TFolderCrew&) = delete;
  TFolderCrew& operator=(const TFolderCrew&) = delete;

  [[nodiscard]] unsigned Size() const { return static_cast<unsigned>(FThreads.size()) + 1; }

  // A new run with its first folder. The one before has ended.
  void Begin(const QString& root, TFolderVisitor& visitor);

  // More folders, taken out of the vector. Any thread, within the run.
  void Add(std::vector<TFolderTask>& tasks);

  // Reads folders, paused or not, the one whose turn is first first, until a folder was read that makes
  // `done` true or the run is over: nothing waits and nothing is being read. `done` is called with a lock
  // held.
  void ReadUntil(const std::function<bool()>& done);
  void Finish() {
    ReadUntil([] { return false; });
  }

  // Keeps the other threads from taking folders, in later runs too, or lets them again.
  void Pause(bool paused);

  // Ends the run at once: each thread at its next entry, and no folder is begun. Holds for all later runs.
  // Any thread.
  void Stop();
  [[nodiscard]] bool Stopped() const { return FStopped.load(std::memory_order_relaxed); }

 private:
  struct TReader {
    TFileEnumeration Enumeration;
    quint64 Run = 0;  // that it is confined for
  };

  void Serve(unsigned thread);
  [[nodiscard]] TFolderTask Take();
  void Read(unsigned thread, TReader& reader, const TFolderTask& task);
  void AwaitStop(std::unique_lock<std::mutex>& lock);
  void Done();

  std::atomic<bool> FStopped{false};
  std::mutex FLock;
  std::condition_variable FChanged;
  // Under FLock, but for FRoot and FRun: these change between runs only.
  std::vector<TFolderTask> FTasks;  // a heap, the least turn at its front
  unsigned FReading = 0;            // folders that are being read
  bool FPaused = false;
  QString FRoot;
  quint64 FRun = 0;
  TFolderVisitor* FVisitor = nullptr;
  TReader FOwn;  // of the user's thread
  std::vector<std::jthread> FThreads;
};
