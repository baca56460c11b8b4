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
          {WM_SCANDONE, [this](const TMessage&) { FLog.append(u"done"_qs); }},
          {WM_SCANSTOPPED, [this](const TMessage&) { FLog.append(u"stopped"_qs); }},
      }) {}

bool TScanRecorder::WaitUntil(const std::function<bool()>& condition) {
  QElapsedTimer clock;
  clock.start();
  QTimer wake;
  wake.start(1000);
  PumpMessages();
  while (!condition() && clock.elapsed() < 60'000)
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  return condition();
}

bool TScanRecorder::WaitForEnd() {
  return WaitUntil([this] { return FLog.endsWith(u"done"_qs) || FLog.endsWith(u"stopped"_qs); });
}

void TScanRecorder::Clear() {
  FLog.clear();
  FPhases.clear();
  FPathTexts = 0;
  FLastPath.clear();
}

void TScanRecorder::TakeStatus(const TMessage& message) {
  if (message.WParam == kScanStatusPath) {
    FLog.append(u"path"_qs);
    ++FPathTexts;
    FLastPath = reinterpret_cast<const TPathText*>(message.LParam)->Load();
  } else {
    FLog.append(u"row %1"_qs.arg(message.LParam));
  }
}

void TScanRecorder::TakeProgress(const TMessage& message) {
  if (message.WParam == 0) {
    FPhases.push_back(static_cast<int>(message.LParam));
    FLog.append(u"phase %1"_qs.arg(message.LParam));
  } else {
    FLog.append(u"step %1 of %2"_qs.arg(ScanStepCurrent(message.WParam)).arg(ScanStepTotal(message.WParam)));
  }
}
