#include "scan/UnitTextProgressThread.h"

#include "platform/Paths.h"
#include "scan/ScanMessages.h"

#include <chrono>
#include <thread>

namespace {

constexpr std::chrono::milliseconds kStartPause{500};
constexpr std::chrono::milliseconds kEntryPause{20};

}  // namespace

TTextProgressThread::TTextProgressThread(TMessageWindow* statusWnd) : FStatusWnd(statusWnd) {}

void TTextProgressThread::Start(const QString& path) {
  FIdle.acquire();
  FFolders = QStringList{path};
  FStopped.store(false);
  std::this_thread::sleep_for(kStartPause);
  Resume();
}

void TTextProgressThread::Execute() {
  while (!Terminated()) {
    FEnumeration.ConfineTo(FFolders.value(0));
    while (!FFolders.isEmpty() && !FStopped && !Terminated())
      VisitFolder(FFolders.takeFirst());
    FFolders.clear();
    FIdle.release();
    Suspend();
  }
}

// Only a folder with no other attribute is entered later; one that is hidden or read-only is shown like a
// file, which keeps the wander away from folders that carry extra attributes.
void TTextProgressThread::VisitFolder(const QString& path) {
  const QString folder = IncludeTrailingPathDelimiter(path);
  TFoundFile found;
  for (bool more = FEnumeration.First(folder, found); more && !FStopped && !Terminated();
       more = FEnumeration.Next(found)) {
    if (found.Attributes == kAttributeDirectory)
      FFolders.append(folder + found.Name);
    else
      PostPathText(folder + found.Name);
    std::this_thread::sleep_for(kEntryPause);
  }
  FEnumeration.Close();
}

void TTextProgressThread::PostPathText(const QString& text) {
  FTextBuffer.Store(text);
  PostMessage(FStatusWnd, WM_SCANSTATUS, kScanStatusPath, reinterpret_cast<qintptr>(&FTextBuffer));
}
