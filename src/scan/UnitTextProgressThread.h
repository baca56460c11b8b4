// The path ticker: while a volume is read and no path is known, it wanders down the same volume at a gentle
// pace and shows what it comes across. A sign of activity, with no part in any result.
#pragma once

#include "platform/FileEnumeration.h"
#include "platform/Messages.h"
#include "platform/PathText.h"
#include "support/TWorkerThread.h"

#include <QStringList>

#include <atomic>
#include <semaphore>

// Owned by the scan thread's object through a TOwnedThread. Start and Stop come from the scan thread.
class TTextProgressThread : public TWorkerThread {
 public:
  // The status window receives path texts.
  explicit TTextProgressThread(TMessageWindow* statusWnd);

  // Waits until a former wander has come to rest, then begins a new one half a second later. Blocks for that
  // long.
  void Start(const QString& path);

  // The wander ends within one pause of it. Returns at once.
  void Stop() { FStopped.store(true); }

 protected:
  ~TTextProgressThread() override { Finish(); }
  void Execute() override;

 private:
  void VisitFolder(const QString& path);
  void PostPathText(const QString& text);

  QStringList FFolders;  // still to visit, the next one first
  TFileEnumeration FEnumeration;
  std::atomic<bool> FStopped{false};
  TPathText FTextBuffer;
  TMessageWindow* const FStatusWnd;
  std::binary_semaphore FIdle{1};  // free while the thread is at rest
};
