// A window that keeps every message of a scan, for tests. Main thread.
#pragma once

#include "platform/Messages.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class TScanRecorder {
 public:
  TScanRecorder();

  [[nodiscard]] TMessageWindow* Window() { return &FWindow; }

  // Handles messages until the condition holds; false if it does not within a minute.
  [[nodiscard]] bool WaitUntil(const std::function<bool()>& condition);
  // ... until the scan is done or stopped.
  [[nodiscard]] bool WaitForEnd();

  // What came so far, one text each: "row N", "path", "step N of M", "phase N", "done", "stopped".
  QStringList Log;
  std::vector<int> Phases;
  QStringList Paths;

  void Clear() { Log.clear(), Phases.clear(), Paths.clear(); }

 private:
  void TakeStatus(const TMessage& message);
  void TakeProgress(const TMessage& message);

  TMessageWindow FWindow;
};
