#include "platform/FolderWatch.h"

#include "platform/Paths.h"
#include "platform/posix/FileDescriptor.h"

#include <QSocketNotifier>
#include <QTimer>

#include <fcntl.h>
#include <sys/inotify.h>
#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr int kJoinedMilliseconds = 200;
constexpr uint32_t kChanges = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY | IN_ATTRIB;
// After one of these the folder is gone or lies elsewhere, so nothing more is told of it.
constexpr uint32_t kEnds = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;

// By way of an open file, as its path may be longer than the system's call takes.
bool AddWatch(int watch, const QString& folder) {
  const TFileDescriptor opened = OpenPath(NameToBytes(folder), O_PATH | O_DIRECTORY);
  if (!opened.IsOpen()) return false;
  const QByteArray path = "/proc/self/fd/" + QByteArray::number(opened.Get());
  return inotify_add_watch(watch, path, kChanges | kEnds | IN_EXCL_UNLINK) >= 0;
}

}  // namespace

// Of a folder the events of an inotify instance. Of the computer level the kernel's table of mounts, which is
// never read here: its file is in an exceptional state from a change of the table until the next look at that
// state.
class TFolderChanges {
 public:
  TFolderChanges(TFileDescriptor source, QSocketNotifier::Type signal)
      : FSource(std::move(source)), FSignal(signal) {}

  [[nodiscard]] std::unique_ptr<QSocketNotifier> Notifier() const {
    return std::make_unique<QSocketNotifier>(FSource.Get(), FSignal);
  }

  // Takes all that waits. True if nothing more will come.
  [[nodiscard]] bool TakeAll() const {
    // Holds an event with the longest name many times; the kernel never cuts one.
    std::array<char, 64 * 1024> buffer;
    uint32_t seen = 0;
    if (FSignal == QSocketNotifier::Exception) return false;
    for (ssize_t got = 0; (got = read(FSource.Get(), buffer.data(), buffer.size())) > 0;) {
      inotify_event event;
      for (size_t at = 0; at < static_cast<size_t>(got); at += sizeof event + event.len) {
        std::memcpy(&event, buffer.data() + at, sizeof event);
        seen |= event.mask;
      }
    }
    return (seen & kEnds) != 0;
  }

 private:
  const TFileDescriptor FSource;
  const QSocketNotifier::Type FSignal;
};

std::shared_ptr<TFolderChanges> KeepChanges(const QString& folder) {
  if (folder.isEmpty()) {
    TFileDescriptor mounts = OpenPath("/proc/self/mountinfo", O_RDONLY);
    if (!mounts.IsOpen()) return nullptr;
    return std::make_shared<TFolderChanges>(std::move(mounts), QSocketNotifier::Exception);
  }
  TFileDescriptor watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!watch.IsOpen() || !AddWatch(watch.Get(), folder)) return nullptr;
  return std::make_shared<TFolderChanges>(std::move(watch), QSocketNotifier::Read);
}

class TFolderWatch::TImpl {
 public:
  explicit TImpl(TFolderWatch& owner) : FOwner(owner) {
    FTimer.setSingleShot(true);
    FTimer.setInterval(kJoinedMilliseconds);
    QObject::connect(&FTimer, &QTimer::timeout, [this] { Tell(); });
  }

  void Watch(std::shared_ptr<TFolderChanges> changes) {
    FTimer.stop();
    FNotifier.reset();  // before the file that it looks at
    FChanges = std::move(changes);
    if (!FChanges) return;
    FNotifier = FChanges->Notifier();
    QObject::connect(FNotifier.get(), &QSocketNotifier::activated, [this] { Join(); });
  }

 private:
  // What comes until the timer fires stays where it is, with the system.
  void Join() {
    FNotifier->setEnabled(false);
    FTimer.start();
  }

  void Tell() {
    if (FChanges->TakeAll())
      Watch(nullptr);
    else
      FNotifier->setEnabled(true);
    if (FOwner.OnChange) FOwner.OnChange();
  }

  TFolderWatch& FOwner;
  std::shared_ptr<TFolderChanges> FChanges;
  std::unique_ptr<QSocketNotifier> FNotifier;
  QTimer FTimer;
};

TFolderWatch::TFolderWatch() : FImpl(std::make_unique<TImpl>(*this)) {}

TFolderWatch::~TFolderWatch() = default;

void TFolderWatch::Watch(std::shared_ptr<TFolderChanges> changes) {
  FImpl->Watch(std::move(changes));
}
