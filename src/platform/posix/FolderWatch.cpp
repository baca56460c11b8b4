#include "platform/FolderWatch.h"

#include "platform/Paths.h"
#include "platform/posix/FileDescriptor.h"

#include <QSocketNotifier>
#include <QTimer>

#include <fcntl.h>
#include <sys/inotify.h>
#include <array>
#include <cstring>

namespace {

constexpr int kJoinedMilliseconds = 200;
constexpr uint32_t kChanges = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY | IN_ATTRIB;
constexpr uint32_t kEnds = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;

// By way of an open file, as its path may be longer than the system's call takes.
bool AddWatch(int watch, const QString& folder) {
  const TFileDescriptor opened = OpenPath(NameToBytes(folder), O_PATH | O_DIRECTORY);
  if (!opened.IsOpen()) return false;
  const QByteArray path = "/proc/self/fd/" + QByteArray::number(opened.Get());
  return inotify_add_watch(watch, path, kChanges | kEnds | IN_EXCL_UNLINK) >= 0;
}

}  // namespace

class TFolderWatch::TImpl {
 public:
  explicit TImpl(TFolderWatch& owner) : FOwner(owner) {
    FTimer.setSingleShot(true);
    FTimer.setInterval(kJoinedMilliseconds);
    QObject::connect(&FTimer, &QTimer::timeout, [this] { Tell(); });
  }

  bool Watch(const QString& folder) {
    End();
    if (folder.isEmpty()) return false;
    FWatch = TFileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!FWatch.IsOpen() || !AddWatch(FWatch.Get(), folder)) return false;
    FNotifier = std::make_unique<QSocketNotifier>(FWatch.Get(), QSocketNotifier::Read);
    QObject::connect(FNotifier.get(), &QSocketNotifier::activated, [this] { Join(); });
    return true;
  }

 private:
  // What comes until the timer fires stays where it is, in the system's queue.
  void Join() {
    FNotifier->setEnabled(false);
    FTimer.start();
  }

  void Tell() {
    if (ReadAll())
      End();
    else
      FNotifier->setEnabled(true);
    if (FOwner.OnChange) FOwner.OnChange();
  }

  // Takes all that waits. True if the watch has come to its end.
  [[nodiscard]] bool ReadAll() const {
    std::array<char, 64 * 1024> buffer;
    uint32_t seen = 0;
    for (ssize_t got = 0; (got = read(FWatch.Get(), buffer.data(), buffer.size())) > 0;) {
      inotify_event event;
      for (size_t at = 0; at < static_cast<size_t>(got); at += sizeof event + event.len) {
        std::memcpy(&event, buffer.data() + at, sizeof event);
        seen |= event.mask;
      }
    }
    return (seen & kEnds) != 0;
  }

  void End() {
    FTimer.stop();
    FNotifier.reset();
    FWatch = {};
  }

  TFolderWatch& FOwner;
  TFileDescriptor FWatch;
  std::unique_ptr<QSocketNotifier> FNotifier;
  QTimer FTimer;
};

TFolderWatch::TFolderWatch() : FImpl(std::make_unique<TImpl>(*this)) {}

TFolderWatch::~TFolderWatch() = default;

bool TFolderWatch::Watch(const QString& folder) {
  return FImpl->Watch(folder);
}
