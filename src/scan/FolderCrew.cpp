// Each thread runs TCore::Serve: it sleeps until a folder may be taken, takes the one whose turn is the
// least, reads it without FLock (Read, which tells the visitor) and adds what the visitor wants read too to
// the folders that wait (Done).
//
// FLock guards all that the threads share but the model of their confinement, which has FConfining; neither
// is held with the other. FLock is held while the visitor is asked whether it has room, so a visitor must not
// call the crew with a lock of its own held that HasRoom takes as well. No other call of a visitor comes
// under a lock. FVisitor, FRoot and FRun are read without one, as they change only while no folder is being
// read.
#include "scan/FolderCrew.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace {

// A thread looks at Stop at its next entry; one that has not ended by then hangs in the system and is left
// behind.
constexpr std::chrono::milliseconds kLongestEnd{50};

// The folders that wait, by their turns.
class TWaitingFolders {
 public:
  [[nodiscard]] bool Empty() const { return FTurns.empty(); }
  [[nodiscard]] quint64 FirstTurn() const { return FTurns.begin()->first; }

  void Put(TFolderTask task) { FTurns[task.Turn].Folders.push_back(std::move(task)); }

  [[nodiscard]] TFolderTask Take() {
    TTurn& first = FTurns.begin()->second;
    TFolderTask task = std::move(first.Folders[first.Next]);
    if (++first.Next == first.Folders.size()) FTurns.erase(FTurns.begin());
    return task;
  }

 private:
  struct TTurn {
    std::vector<TFolderTask> Folders;
    size_t Next = 0;  // the ones before it were taken
  };

  // Turns are fewer than folders: one per level of a tree, or per level and branch of a walk. A lookup costs
  // little beside the reading of a folder.
  std::map<quint64, TTurn> FTurns;
};

}  // namespace

// What the crew's object and its threads have in common; goes with the last of them.
class TFolderCrew::TCore {
 public:
  explicit TCore(unsigned threads) : Size(threads), FLiving(threads) {}

  void Serve(unsigned thread);
  void Begin(TFolderTask root, std::shared_ptr<TFolderVisitor> visitor);
  void Add(TFolderTask task);
  bool Finish();
  void Wake();
  void Stop();
  void WaitForThreads();
  [[nodiscard]] bool Stopped() const { return FStopped.load(std::memory_order_relaxed); }

  const unsigned Size;

 private:
  struct TReader {
    TFileEnumeration Enumeration;
    quint64 Run = 0;  // that it is confined for
    TFoundFile Found;
    std::vector<TFolderTask> Next;
  };

  [[nodiscard]] bool MayTake() const;
  [[nodiscard]] bool IsOver() const { return FWaiting.Empty() && FReading == 0; }
  void Confine(TReader& reader);
  void Read(unsigned thread, TReader& reader, const TFolderTask& task);
  void Done(std::vector<TFolderTask>& next);

  std::atomic<bool> FStopped{false};  // written under FLock
  std::mutex FLock;
  std::condition_variable FWork;  // there is something to take, or the end
  std::condition_variable FOver;  // the run is over, or a thread has ended, or the end
  // Under FLock; FVisitor, FRoot and FRun change between runs only.
  TWaitingFolders FWaiting;
  unsigned FReading = 0;   // folders that are being read
  unsigned FSleeping = 0;  // threads
  unsigned FLiving;        // threads
  std::shared_ptr<TFolderVisitor> FVisitor;
  QString FRoot;
  quint64 FRun = 0;
  // Under FConfining, apart from FLock since the system may take its time over it:
  std::mutex FConfining;
  quint64 FConfinedRun = 0;
  TFileEnumeration FConfined;  // lists nothing: confined to the root, as a model for the threads
};

bool TFolderCrew::TCore::MayTake() const {
  return !FWaiting.Empty() && (FWaiting.FirstTurn() == TFolderTask::kAtOnce || FVisitor->HasRoom());
}

void TFolderCrew::TCore::Serve(unsigned thread) {
  TReader reader;
  reader.Enumeration.SkipFolderDetails();
  std::unique_lock lock(FLock);
  for (;;) {
    ++FSleeping;
    FWork.wait(lock, [this] { return Stopped() || MayTake(); });
    --FSleeping;
    if (Stopped()) break;
    TFolderTask task = FWaiting.Take();
    ++FReading;
    lock.unlock();
    Read(thread, reader, task);
    task = {};
    lock.lock();
    Done(reader.Next);
  }
  --FLiving;
  FOver.notify_all();
}

// The calling thread takes the next folder itself.
void TFolderCrew::TCore::Done(std::vector<TFolderTask>& next) {
  --FReading;
  for (TFolderTask& task : next)
    FWaiting.Put(std::move(task));
  if (FSleeping != 0 && next.size() > 1) FWork.notify_all();
  next.clear();
  if (IsOver()) FOver.notify_all();
}

// Once per thread and run. The thread with the run's first folder asks the system, the others copy its
// answer.
void TFolderCrew::TCore::Confine(TReader& reader) {
  const std::lock_guard lock(FConfining);
  if (FConfinedRun != FRun) FConfined.ConfineTo(FRoot);
  FConfinedRun = FRun;
  reader.Enumeration.ConfineLike(FConfined);
  reader.Run = FRun;
}

void TFolderCrew::TCore::Read(unsigned thread, TReader& reader, const TFolderTask& task) {
  if (!FVisitor->FolderBegins(task)) return;
  if (reader.Run != FRun) Confine(reader);
  for (bool more = reader.Enumeration.First(task.Path, reader.Found);
       more && !Stopped() && FVisitor->EntryFound(thread, task, reader.Found);
       more = reader.Enumeration.Next(reader.Found)) {
  }
  reader.Enumeration.Close();
  FVisitor->FolderRead(thread, task, reader.Next);
}

void TFolderCrew::TCore::Begin(TFolderTask root, std::shared_ptr<TFolderVisitor> visitor) {
  {
    const std::lock_guard lock(FLock);
    FRoot = root.Path;
    FVisitor = std::move(visitor);
    ++FRun;
  }
  Add(std::move(root));
}

void TFolderCrew::TCore::Add(TFolderTask task) {
  const std::lock_guard lock(FLock);
  FWaiting.Put(std::move(task));
  FWork.notify_one();
}

bool TFolderCrew::TCore::Finish() {
  std::unique_lock lock(FLock);
  FOver.wait(lock, [this] { return IsOver() || Stopped(); });
  return !Stopped();
}

void TFolderCrew::TCore::Wake() {
  const std::lock_guard lock(FLock);
  FWork.notify_all();
}

void TFolderCrew::TCore::Stop() {
  const std::lock_guard lock(FLock);
  FStopped.store(true, std::memory_order_relaxed);
  FWork.notify_all();
  FOver.notify_all();
}

void TFolderCrew::TCore::WaitForThreads() {
  std::unique_lock lock(FLock);
  FOver.wait_for(lock, kLongestEnd, [this] { return FLiving == 0; });
}

TFolderCrew::TFolderCrew(unsigned threads) : FCore(std::make_shared<TCore>(SizeFor(threads))) {
  for (unsigned thread = 0; thread < Size(); ++thread)
    std::thread([core = FCore, thread] { core->Serve(thread); }).detach();
}

TFolderCrew::~TFolderCrew() {
  Stop();
  FCore->WaitForThreads();
}

unsigned TFolderCrew::SizeFor(unsigned threads) {
  return threads != 0 ? threads : std::max(std::thread::hardware_concurrency(), 1U);
}

unsigned TFolderCrew::Size() const {
  return FCore->Size;
}

void TFolderCrew::Begin(TFolderTask root, std::shared_ptr<TFolderVisitor> visitor) {
  FCore->Begin(std::move(root), std::move(visitor));
}

void TFolderCrew::Add(TFolderTask task) {
  FCore->Add(std::move(task));
}

bool TFolderCrew::Finish() {
  return FCore->Finish();
}

void TFolderCrew::Wake() {
  FCore->Wake();
}

void TFolderCrew::Stop() {
  FCore->Stop();
}

bool TFolderCrew::Stopped() const {
  return FCore->Stopped();
}
