#include "platform/FolderWatch.h"

#include "platform/Paths.h"
#include "platform/windows/FileEntry.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QTimer>
#include <QWinEventNotifier>

#include <windows.h>

#include <dbt.h>

#include <utility>

namespace {

constexpr int kJoinedMilliseconds = 200;
constexpr DWORD kContent = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME |
                           FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE |
                           FILE_NOTIFY_CHANGE_ATTRIBUTES;

// One change handle of the system, which is signalled from the first change on; does nothing where the system
// gives none.
// The system notes changes from the making on, and after each signal from the next FindNextChangeNotification
// on; what comes in between is told then, so that none is lost.
class TChangeHandle {
 public:
  TChangeHandle() = default;
  TChangeHandle(const QString& folder, DWORD changes)
      : FHandle(FindFirstChangeNotificationW(LongPath(folder).c_str(), FALSE, changes)) {}
  TChangeHandle(const TChangeHandle&) = delete;
  TChangeHandle& operator=(const TChangeHandle&) = delete;
  ~TChangeHandle() {
    if (IsOpen()) FindCloseChangeNotification(FHandle);
  }

  [[nodiscard]] bool IsOpen() const { return FHandle != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE Get() const { return FHandle; }

 private:
  const HANDLE FHandle = INVALID_HANDLE_VALUE;
};

// Hears that a volume has come or gone, which the system tells every window of the program.
class TVolumeNews : public QAbstractNativeEventFilter {
 public:
  explicit TVolumeNews(std::function<void()> onNews) : FOnNews(std::move(onNews)) {
    QCoreApplication::instance()->installNativeEventFilter(this);
  }

  bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
    const MSG& told = *static_cast<const MSG*>(message);
    const bool isNews = told.message == WM_DEVICECHANGE &&
                        (told.wParam == DBT_DEVICEARRIVAL || told.wParam == DBT_DEVICEREMOVECOMPLETE);
    if (isNews) FOnNews();
    return false;
  }

 private:
  const std::function<void()> FOnNews;
};

}  // namespace

// The folder above is watched as well: it alone tells that the folder got another name. Neither handle is
// open for the computer level.
class TFolderChanges {
 public:
  explicit TFolderChanges(const QString& folder)
      : Content(folder, kContent),
        Above(IsVolumeRoot(folder) ? QString() : ExtractFilePath(WithoutDelimitersAtEnd(folder)),
              FILE_NOTIFY_CHANGE_DIR_NAME) {}
  TFolderChanges() = default;

  const TChangeHandle Content;
  const TChangeHandle Above;
};

std::shared_ptr<TFolderChanges> KeepChanges(const QString& folder) {
  if (folder.isEmpty()) return std::make_shared<TFolderChanges>();
  auto changes = std::make_shared<TFolderChanges>(folder);
  return changes->Content.IsOpen() ? changes : nullptr;
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
    FContent.reset();  // before the handle that it waits for
    FAbove.reset();
    FVolumes.reset();
    FChanges = std::move(changes);
    if (!FChanges) return;
    FContent = WaitFor(FChanges->Content);
    FAbove = WaitFor(FChanges->Above);
    if (!FContent) FVolumes = std::make_unique<TVolumeNews>([this] { FTimer.start(); });
  }

 private:
  using TNotifier = std::unique_ptr<QWinEventNotifier>;

  TNotifier WaitFor(const TChangeHandle& handle) {
    if (!handle.IsOpen()) return nullptr;
    auto notifier = std::make_unique<QWinEventNotifier>(handle.Get());
    QObject::connect(notifier.get(), &QWinEventNotifier::activated,
                     [this, waiting = notifier.get()] { Join(*waiting); });
    return notifier;
  }

  // Nothing is asked of the system until the timer fires.
  void Join(QWinEventNotifier& notifier) {
    notifier.setEnabled(false);
    FTimer.start();
  }

  // That another folder beside this one came or went is told too: which it was would have to be asked of the
  // file system.
  void Tell() {
    for (const TNotifier* const notifier : {&FContent, &FAbove}) {
      if (!*notifier || (*notifier)->isEnabled()) continue;
      if (FindNextChangeNotification((*notifier)->handle()) != 0) (*notifier)->setEnabled(true);
    }
    if (FOwner.OnChange) FOwner.OnChange();
  }

  TFolderWatch& FOwner;
  std::shared_ptr<TFolderChanges> FChanges;
  TNotifier FContent;
  TNotifier FAbove;
  std::unique_ptr<TVolumeNews> FVolumes;
  QTimer FTimer;
};

TFolderWatch::TFolderWatch() : FImpl(std::make_unique<TImpl>(*this)) {}

TFolderWatch::~TFolderWatch() = default;

void TFolderWatch::Watch(std::shared_ptr<TFolderChanges> changes) {
  FImpl->Watch(std::move(changes));
}
