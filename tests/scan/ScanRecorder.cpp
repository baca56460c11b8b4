#include "ScanRecorder.h"

#include "platform/PathText.h"
#include "scan/ScanMessages.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

TScanRecorder::TScanRecorder()
    : FWindow({
          {WM_SCANSTATUS, [this](const TMessage& message) { TakeStatus(message); }},
          {WM_SCANPROGRESS, [this](const TMessage& message) { TakeProgress(message); }},
          {WM_SCANDONE, [this](const TMessage&) { Log.append(u"done"_qs); }},
          {WM_SCANSTOPPED, [this](const TMessage&) { Log.append(u"stopped"_qs); }},
      }) {}

bool TScanRecorder::WaitUntil(const std::function<bool()>& condition) {
  QElapsedTimer clock;
  clock.start();
  QTimer wake;
  wake.start(20);
  PumpMessages();
  while (!condition() && clock.elapsed() < 60'000)
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  return condition();
}

bool TScanRecorder::WaitForEnd() {
  return WaitUntil([this] { return Log.endsWith(u"done"_qs) || Log.endsWith(u"stopped"_qs); });
}

void TScanRecorder::TakeStatus(const TMessage& message) {
  if (message.WParam == kScanStatusPath) {
    Log.append(u"path"_qs);
    Paths.append(reinterpret_cast<const TPathText*>(message.LParam)->Load());
  } else {
    Log.append(u"row %1"_qs.arg(message.LParam));
  }
}

void TScanRecorder::TakeProgress(const TMessage& message) {
  if (message.WParam == 0) {
    Phases.push_back(static_cast<int>(message.LParam));
    Log.append(u"phase %1"_qs.arg(message.LParam));
  } else {
    Log.append(u"step %1 of %2"_qs.arg(ScanStepCurrent(message.WParam)).arg(ScanStepTotal(message.WParam)));
  }
}
