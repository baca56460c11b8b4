// What both systems do alike.
#include "platform/FileActions.h"

#include "platform/FileTests.h"
#include "platform/Paths.h"

#include <chrono>
#include <utility>

namespace {

// Where the folder lies from the root on; nothing if not below it.
std::optional<QString> PathBelow(const QString& root, const QString& folder) {
  const QString top = IncludeTrailingPathDelimiter(root);
  const QString whole = IncludeTrailingPathDelimiter(folder);
  if (root.isEmpty() || !SameFolder(whole.left(top.size()), top)) return std::nullopt;
  return whole.mid(top.size());
}

}  // namespace

TOpenFolder OpenBelowRoot(const QString& root, const QString& folder) {
  const std::optional<QString> below = PathBelow(root, folder);
  return below ? TOpenFolder::Open(root).Below(*below) : TOpenFolder();
}

// The real path is gone down from its volume's top, without links. Windows: one that no drive letter begins
// has no such way.
TKnownRoot::TKnownRoot(const QString& root) : FRoot(root), FReal(RealFolder(root)) {
  const QLatin1String longPath("\\\\?\\");
  if (!FReal.startsWith(longPath)) return;
  FReal.remove(0, longPath.size());
  if (FReal.indexOf(u':') != 1) FReal.clear();
}

TOpenFolder TKnownRoot::Open(const QString& folder) const {
  if (FReal.isEmpty()) return OpenBelowRoot(FRoot, folder);
  const std::optional<QString> below = PathBelow(FRoot, folder);
  const QString top = FReal.section(PathDelim, 0, 0) + PathDelim;
  return below ? OpenBelowRoot(top, FReal + *below) : TOpenFolder();
}

TDeleteStage DeleteOneFile(const TOpenFolder& folder, const QString& name) {
  if (DeletePlain(folder, name)) return TDeleteStage::Plain;
  if (ShellDeleteSilent(folder, name)) return TDeleteStage::Silent;
  return ScheduleDelete(folder, name) ? TDeleteStage::Scheduled : TDeleteStage::Failed;
}

TFileMove::TFileMove(TOpenFolder from, QString name, TOpenFolder to) {
  FThread = std::thread([this, from = std::move(from), name = std::move(name), to = std::move(to)] {
    const bool moved = MoveEntry(from, name, to, FProgress);
    const std::lock_guard lock(FGuard);
    FMoved = moved;
    FEnded = true;
    FEnd.notify_all();
  });
}

// Waits without a bound, unlike other threads: a copy must not be left half made. On Linux the request ends
// the copying within one buffer.
TFileMove::~TFileMove() {
  FProgress.Stop = true;
  FThread.join();
}

bool TFileMove::WaitFor(int milliseconds) {
  std::unique_lock lock(FGuard);
  return FEnd.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return FEnded; });
}

bool TFileMove::Result() {
  std::unique_lock lock(FGuard);
  FEnd.wait(lock, [this] { return FEnded; });
  return FMoved;
}
