// The form's object and its thread share TWork, which goes with the last of them, so that a thread that hangs
// can be left behind. Execute sums the first of the queue with the crew (GetFolderSize), sends the answer and
// only then takes the folder off the queue. Send waits until the form's handler has run, which copies
// FResult; Terminate closes the line first, which ends that wait, then stops the crew, which ends the sum.
#include "scan/FolderSizeThread.h"

#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "scan/FolderCrew.h"

#include <QStringBuilder>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace {

// Tells which links of one sum may be entered, so that every folder is entered once: it knows the folders
// whose trees are summed, by where they really lie. Which of two threads comes first makes no difference:
// what is reached from several of them is left to the one that holds it.
class TReachedTrees {
 public:
  explicit TReachedTrees(const QString& root) : FTops{root} {}

  // The folder behind a link if no tree reaches it yet, else nothing.
  [[nodiscard]] QString Enter(const QString& link) {
    const QString real = RealFolder(link);
    const std::lock_guard lock(FLock);
    const auto holds = [&](const QString& top) { return real.startsWith(top, Qt::CaseInsensitive); };
    if (real.isEmpty() || std::any_of(FTops.begin(), FTops.end(), holds)) return {};
    FTops.push_back(real);
    FHasSeveral.store(true, std::memory_order_relaxed);
    return real;
  }

  // A folder on the way down that is the top of another tree is left to that one.
  [[nodiscard]] bool IsTop(const QString& folder) {
    if (!FHasSeveral.load(std::memory_order_relaxed)) return false;
    const std::lock_guard lock(FLock);
    const auto same = [&](const QString& top) { return folder.compare(top, Qt::CaseInsensitive) == 0; };
    return std::any_of(FTops.begin(), FTops.end(), same);
  }

 private:
  std::mutex FLock;
  std::atomic<bool> FHasSeveral{false};
  std::vector<QString> FTops;  // with their delimiters; under FLock
};

class TSum : public TFolderVisitor {
 public:
  TSum(unsigned threads, const QString& root) : FTrees(root), FParts(threads) {}

  bool EntryFound(unsigned thread, const TFolderTask& folder, TFoundFile& found) override {
    TPart& part = FParts[thread];
    if (found.IsDirectory())
      AddFolder(part, folder, folder.Path % found.Name, found.IsFolderLink);
    else
      part.Size += found.Size;
    return true;
  }

  void FolderRead(unsigned thread, const TFolderTask&, std::vector<TFolderTask>& next) override {
    FParts[thread].Subfolders.swap(next);
  }

  [[nodiscard]] quint64 Total() const {
    quint64 total = 0;
    for (const TPart& part : FParts)
      total += part.Size;
    return total;
  }

 private:
  // Of one thread; apart in memory from those of others.
  struct alignas(64) TPart {
    quint64 Size = 0;
    std::vector<TFolderTask> Subfolders;  // of the folder that is read
  };

  // What only looks like a link lies where its path says. Deeper folders come first.
  void AddFolder(TPart& part, const TFolderTask& parent, const QString& path, bool mayBeLink) {
    const QString folder = IncludeTrailingPathDelimiter(path);
    const QString entered = mayBeLink && RealFolder(path) != folder ? FTrees.Enter(path) : folder;
    if (!entered.isEmpty() && !(entered == folder && FTrees.IsTop(folder)))
      part.Subfolders.push_back({entered, parent.Turn - 1, nullptr});
  }

  TReachedTrees FTrees;
  std::vector<TPart> FParts;  // by thread
};

constexpr std::chrono::milliseconds kLongestWait{100};

}  // namespace

quint64 GetFolderSize(const QString& path, TFolderCrew& crew) {
  if (path.isEmpty()) return 0;
  const QString real = RealFolder(path);
  const QString root = real.isEmpty() ? IncludeTrailingPathDelimiter(path) : real;
  const auto sum = std::make_shared<TSum>(crew.Size(), root);
  crew.Begin({root, ~quint64{0}, nullptr}, sum);
  return crew.Finish() ? sum->Total() : 0;
}

// What the form's object and the thread have in common; goes with the last of the two.
class TGetFolderSizeThread::TWork {
 public:
  explicit TWork(TMessageWindow* window) : FLine(window) {}

  void Execute() {
    while (WaitForFolder()) {
      FResult.Size = GetFolderSize(First(), FCrew);
      FResult.Path = First();
      FLine.Send(WM_FOLDERSIZE, FTag, reinterpret_cast<qintptr>(&FResult));
      DeleteFirst();
    }
    const std::lock_guard lock(FLock);
    FEnded = true;
    FChanged.notify_all();
  }

  void AddFolder(const QString& path) {
    const std::lock_guard lock(FLock);
    FFolders.push_back(path);
    FChanged.notify_all();
  }

  void Terminate() {
    FLine.Close();  // first, so that no partial sum goes out
    FCrew.Stop();
    const std::lock_guard lock(FLock);
    FChanged.notify_all();
  }

  void WaitForEnd() {
    std::unique_lock lock(FLock);
    FChanged.wait_for(lock, kLongestWait, [this] { return FEnded; });
  }

 private:
  [[nodiscard]] bool WaitForFolder() {
    std::unique_lock lock(FLock);
    FChanged.wait(lock, [this] { return !FFolders.empty() || FCrew.Stopped(); });
    return !FCrew.Stopped();
  }

  [[nodiscard]] QString First() {
    const std::lock_guard lock(FLock);
    return FFolders.front();
  }

  void DeleteFirst() {
    const std::lock_guard lock(FLock);
    FFolders.pop_front();
  }

  static constexpr quintptr FTag = 0;
  TFolderCrew FCrew;
  TMessageLine FLine;
  TFolderSizeInfo FResult;
  std::mutex FLock;
  std::condition_variable FChanged;
  std::deque<QString> FFolders;  // the first is being summed; under FLock
  bool FEnded = false;           // under FLock
};

TGetFolderSizeThread::TGetFolderSizeThread(TMessageWindow* window) : FWork(std::make_shared<TWork>(window)) {
  std::thread([work = FWork] { work->Execute(); }).detach();
}

TGetFolderSizeThread::~TGetFolderSizeThread() {
  Terminate();
  FWork->WaitForEnd();
}

void TGetFolderSizeThread::AddFolder(const QString& path) {
  FWork->AddFolder(path);
}

void TGetFolderSizeThread::Terminate() {
  FWork->Terminate();
}
