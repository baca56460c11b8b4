// A window that keeps every message of a scan, for tests. Main thread.
#pragma once

#include "platform/Messages.h"
#include "scan/ScanMessages.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <vector>

class TScanRecorder {
 public:
  [[nodiscard]] TMessageWindow* Window() { return &FWindow; }

  // Handles messages until the condition holds; false if it does not within a minute.
  [[nodiscard]] static bool WaitUntil(const std::function<bool()>& condition) {
    QElapsedTimer clock;
    clock.start();
    QTimer wake;
    wake.start(20);
    PumpMessages();
    while (!condition() && clock.elapsed() < 60'000)
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return condition();
  }
  // ... until the scan is done or stopped.
  [[nodiscard]] bool WaitForEnd() {
    return WaitUntil([this] { return Log.endsWith(u"done"_qs) || Log.endsWith(u"stopped"_qs); });
  }

  // What came so far, one text each: "row N", "path", "step N of M", "phase N", "done", "stopped".
  QStringList Log;
  std::vector<int> Phases;
  QStringList Paths;

  void Clear() { Log.clear(), Phases.clear(), Paths.clear(); }

 private:
  void TakeStatus(const TMessage& message) {
    const bool isPath = message.WParam == kScanStatusPath;
    Log.append(isPath ? u"path"_qs : u"row %1"_qs.arg(message.LParam));
    if (isPath) Paths.append(reinterpret_cast<const TPathText*>(message.LParam)->Load());
  }
  void TakeProgress(const TMessage& message) {
    if (message.WParam == 0) Phases.push_back(static_cast<int>(message.LParam));
    Log.append(
        message.WParam == 0
            ? u"phase %1"_qs.arg(message.LParam)
            : u"step %1 of %2"_qs.arg(ScanStepCurrent(message.WParam)).arg(ScanStepTotal(message.WParam)));
  }

  TMessageWindow FWindow{{{WM_SCANSTATUS, [this](const TMessage& message) { TakeStatus(message); }},
                          {WM_SCANPROGRESS, [this](const TMessage& message) { TakeProgress(message); }},
                          {WM_SCANDONE, [this](const TMessage&) { Log.append(u"done"_qs); }},
                          {WM_SCANSTOPPED, [this](const TMessage&) { Log.append(u"stopped"_qs); }}}};
};
