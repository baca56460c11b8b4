#include "report/ReportScan.h"

#include "download/DownloadDirectoryScan.h"
#include "platform/Messages.h"
#include "platform/Process.h"
#include "scan/ScanMessages.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>

namespace {

// The program's own message to itself: a Ctrl-C came.
constexpr unsigned kInterrupted = 1;

// How often the line on the terminal is drawn, at most.
constexpr std::chrono::milliseconds kTick{100};

void WriteToStdErr(const QByteArray& bytes) {
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
}

std::span<const TFileInfoEx> Rows(const TList<TFileInfoEx>& list) {
  return {list.begin(), list.end()};
}

}  // namespace

TReportScan::TReportScan(bool showProgress)
    : FShowProgress(showProgress),
      FLine(WriteToStdErr),
      FWindow({
          {WM_SCANSTATUS, [this](const TMessage& message) { TakeStatus(message); }},
          {WM_SCANPROGRESS,
           [this](const TMessage& message) { FLine.TakeProgress(message.WParam, message.LParam); }},
          {WM_SCANDONE, [this](const TMessage&) { End(false); }},
          {WM_SCANSTOPPED, [this](const TMessage&) { End(true); }},
          {kInterrupted, [this](const TMessage&) { FInterrupted = true, FScan->Stop(); }},
      }),
      FScan(new TTallyscopeScan(
          &FWindow, [this](const QStringList& folders) { return FindLocations(folders); },
          showProgress ? TPathDisplay::Shown : TPathDisplay::None)) {
  // Download folders are steps of the line too.
  CountDownloads = true;
  FScan->SetProgressTarget(&FWindow, WM_SCANPROGRESS);
  QObject::connect(&FTick, &QTimer::timeout, [this] { Tick(); });
}

TReport TReportScan::Run(const QStringList& paths, bool folderMode) {
  FPaths = paths;
  FBegun = QDateTime::currentDateTime();
  FClock.start();
  FTick.start(kTick);
  FScan->Start(paths, folderMode);
  QCoreApplication::exec();
  FTick.stop();
  FLine.Erase();

  const TList<TPathTotals>& totals = FScan->PathTotals();
  return {.Paths = paths,
          .PathTotals = {totals.begin(), totals.end()},
          .Folders = Rows(FScan->Folders()),
          .Files = Rows(FScan->Files()),
          .DownloadFiles = Rows(FScan->DownloadFiles()),
          .Unreadable = ListUnreadable ? std::optional(FScan->UnreadableFolders()) : std::nullopt,
          .Trees = FScan->FolderTrees(),
          .Downloads = FDownloads,
          .Begun = FBegun,
          .Stopped = FStopped,
          .Milliseconds = FClock.elapsed()};
}

// On the scan's thread, as it begins. What is kept here is read after its last message.
QStringList TReportScan::FindLocations(const QStringList& paths) {
  FDownloads = FindDownloads(paths);
  QStringList directories;
  for (const TDownloadLocation& location : FDownloads)
    directories.append(location.Directory);
  return directories;
}

void TReportScan::Interrupt() {
  PostMessage(&FWindow, kInterrupted, 0, 0);
}

// The text of a path is read at once, as its sender writes the next one over it.
void TReportScan::TakeStatus(const TMessage& message) {
  if (!FShowProgress) return;
  if (message.WParam == kScanStatusPath)
    FLine.SetPath(reinterpret_cast<const TPathText*>(message.LParam)->Load());
  else if (message.WParam == kScanStatusRow && message.LParam < FPaths.size())
    FLine.SetPath(FPaths[message.LParam]);
}

// A stop that comes just before a walk begins is lost on that walk, so it is asked for until it is answered.
void TReportScan::Tick() {
  if (FInterrupted) FScan->Stop();
  if (FShowProgress) FLine.Draw(TerminalColumns());
}

void TReportScan::End(bool stopped) {
  FStopped = stopped;
  QCoreApplication::quit();
}
