// Runs one scan for the console program: the event loop on the main thread, fed by the scan's messages.
//
// The scan runs on its own thread and posts to FWindow; Run sits in the event loop until the last message
// ends it. A Ctrl-C comes on a thread of the system and is posted like any other message. The lists of the
// scan are read after the last message and not before.
#pragma once

#include "platform/Messages.h"
#include "report/ProgressLine.h"
#include "report/ReportOutput.h"
#include "scan/UnitScan.h"

#include <QElapsedTimer>
#include <QTimer>

// Main thread; a QCoreApplication must exist. The results stay readable as long as the object lives.
class TReportScan {
 public:
  // With showProgress a line on standard error shows how far the scan is.
  explicit TReportScan(bool showProgress);

  // Scans the absolute paths and returns when it is done or stopped.
  [[nodiscard]] TReport Run(const QStringList& paths, bool folderMode);

  // Ends the run early. Any thread, as long as the object lives.
  void Interrupt();

 private:
  [[nodiscard]] QStringList FindLocations(const QStringList& paths);
  void TakeStatus(const TMessage& message);
  void Tick();
  void End(bool stopped);

  const bool FShowProgress;
  QStringList FPaths;  // of the present run
  TProgressLine FLine;
  std::vector<TDownloadLocation> FDownloads;  // written by the scan, as its own results are
  QDateTime FBegun;
  bool FInterrupted = false;
  bool FStopped = false;
  QElapsedTimer FClock;
  QTimer FTick;
  // The thread posts to the window and writes FDownloads, so it stands behind both and goes first.
  TMessageWindow FWindow;
  TOwnedThread<TTallyscopeScan> FScan;
};
