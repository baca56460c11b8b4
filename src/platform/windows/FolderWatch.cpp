#include "platform/FolderWatch.h"

#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "platform/windows/LongPath.h"

#include <QTimer>
#include <QWinEventNotifier>

#include <windows.h>

#include <utility>

namespace {

constexpr int kJoinedMilliseconds = 200;

// One change handle of the system and what waits for it; does nothing where the system gives none.
class TChangeHandle {
 public:
  TChangeHandle(const QString& folder, DWORD changes, const std::function<void()>& onChange)
      : FHandle(FindFirstChangeNotificationW(LongPath(folder).c_str(), FALSE, changes)) {
    if (!IsOpen()) return;
    FNotifier = std::make_unique<QWinEventNotifier>(FHandle);
    QObject::connect(FNotifier.get(), &QWinEventNotifier::activated, [this, onChange] {
      FNotifier->setEnabled(false);
      FChanged = true;
      onChange();
    });
  }
  TChangeHandle(const TChangeHandle&) = delete;
  TChangeHandle& operator=(const TChangeHandle&) = delete;
  ~TChangeHandle() {
    FNotifier.reset();
    if (IsOpen()) FindCloseChangeNotification(FHandle);
  }

  [[nodiscard]] bool IsOpen() const { return FHandle != INVALID_HANDLE_VALUE; }

  // Whether there was a change since the last call; goes on waiting for the next one.
  [[nodiscard]] bool TakeChange() {
    if (!std::exchange(FChanged, false)) return false;
    if (FindNextChangeNotification(FHandle) != 0) FNotifier->setEnabled(true);
    return true;
  }

 private:
  const HANDLE FHandle;
  std::unique_ptr<QWinEventNotifier> FNotifier;
  bool FChanged = false;
};

}  // namespace

// The folder above is watched as well: it alone tells that the folder got another name.
class TFolderWatch::TImpl {
 public:
  explicit TImpl(TFolderWatch& owner) : FOwner(owner) {
    FTimer.setSingleShot(true);
    FTimer.setInterval(kJoinedMilliseconds);
    QObject::connect(&FTimer, &QTimer::timeout, [this] { Tell(); });
  }

  bool Watch(const QString& folder) {
    End();
    FFolder = folder;
    if (folder.isEmpty()) return false;
    constexpr DWORD kContent = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME |
                               FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE |
                               FILE_NOTIFY_CHANGE_ATTRIBUTES;
    FContent = std::make_unique<TChangeHandle>(folder, kContent, [this] { FTimer.start(); });
    if (!IsVolumeRoot(folder))
      FAbove = std::make_unique<TChangeHandle>(ExtractFilePath(ExcludeTrailingPathDelimiter(folder)),
                                               FILE_NOTIFY_CHANGE_DIR_NAME, [this] { FTimer.start(); });
    if (!FContent->IsOpen()) End();
    return FContent != nullptr;
  }

 private:
  void Tell() {
    const bool changed = FContent->TakeChange();
    (void)(FAbove && FAbove->TakeChange());
    const bool gone = !DirectoryExists(FFolder);
    if (gone) End();
    if ((changed || gone) && FOwner.OnChange) FOwner.OnChange();
  }

  void End() {
    FTimer.stop();
    FContent.reset();
    FAbove.reset();
  }

  TFolderWatch& FOwner;
  QString FFolder;
  std::unique_ptr<TChangeHandle> FContent;
  std::unique_ptr<TChangeHandle> FAbove;
  QTimer FTimer;
};

TFolderWatch::TFolderWatch() : FImpl(std::make_unique<TImpl>(*this)) {}

TFolderWatch::~TFolderWatch() = default;

bool TFolderWatch::Watch(const QString& folder) {
  return FImpl->Watch(folder);
}
