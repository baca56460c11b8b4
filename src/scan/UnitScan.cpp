#include "scan/UnitScan.h"

#include "scan/ScanMessages.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

// The walk's results are taken over in the order of discovery, up to this many of each kind and path.
constexpr int kRowsPerPath = 100;

// The pause before each download location.
constexpr std::chrono::milliseconds kLocationPause{100};

template <typename T>
TFileInfoEx ResultRow(const T& record) {
  return {record.Path, record.Name, record.Size};
}

}  // namespace

TTallyscopeScan::TTallyscopeScan(TMessageWindow* statusWnd) : FStatusWnd(statusWnd), FWalker(statusWnd) {}

TTallyscopeScan::~TTallyscopeScan() {
  Stop();
  Finish();
}

void TTallyscopeScan::SetProgressTarget(TMessageWindow* progressWnd, unsigned progressMsg) {
  FProgressWnd = progressWnd;
  FProgressMsg = progressMsg;
  FWalker.SetProgressTarget(progressWnd, progressMsg);
}

void TTallyscopeScan::Start(const QStringList& paths, bool folderMode) {
  FFolders.Clear();
  FFiles.Clear();
  FDownloadFiles.Clear();
  FPathTotals.Clear();
  FPaths = paths;
  FFolderMode = folderMode;
  FStopped.store(false);
  Resume();
}

void TTallyscopeScan::Stop() {
  FStopped.store(true);
  FWalker.Stop();
}

void TTallyscopeScan::Execute() {
  while (!Terminated()) {
    RunScan();
    AutoScan.store(false);
    CountDownloads.store(true);
    Suspend();
  }
}

void TTallyscopeScan::RunScan() {
  const QStringList noLocationsYet;  // nothing looks for download folders so far
  const auto paths = static_cast<int>(FPaths.size());
  const int total = paths + (CountDownloads ? static_cast<int>(noLocationsYet.size()) : 0);
  PostStatus(0);
  PostStep(total, 0);
  if (FFolderMode)
    ScanFolder(FPaths.value(0));
  else
    ScanDrives(total, 0);
  ScanDownloadFolders(total, paths, noLocationsYet);
  if (FStopped) {
    PostMessage(FProgressWnd, WM_SCANSTOPPED, 0, 0);
    return;
  }
  SortResults();
  PostMessage(FStatusWnd, WM_SCANDONE, 0, 0);
}

// The cut comes before the sort: of the walk's records the first ones are taken, whatever their size.
void TTallyscopeScan::ScanFolder(const QString& path) {
  FWalker.Scan(path);
  const TList<TFileInfo>& files = FWalker.Files();
  for (int i = 0; i < files.Count() && i < kRowsPerPath && !FStopped; ++i) {
    FFiles.Add(ResultRow(files[i]));
    PostPhase(kPhaseFiles + i + 1);
  }
  const TList<TFolderInfo>& folders = FWalker.Folders();
  for (int i = 0; i < folders.Count() && i < kRowsPerPath && !FStopped; ++i) {
    FFolders.Add(ResultRow(folders[i]));
    PostPhase(kPhaseFolders + i + 1);
  }
  FFileCount = static_cast<quint32>(FWalker.FileCount());
  FFolderCount = static_cast<quint32>(FWalker.FolderCount());
  FTotalSize = FWalker.TotalSize();
  FPathTotals.Add({FFileCount, FFolderCount, FTotalSize});
  PostPhase(kPhaseDone);
}

void TTallyscopeScan::ScanDrives(int total, int first) {
  for (int i = 0; i < FPaths.size() && !FStopped; ++i) {
    PostStatus(i);
    PostStep(total, first + i);
    ScanFolder(FPaths[i]);
  }
}

void TTallyscopeScan::ScanDownloadFolders(int total, int first, const QStringList& locations) {
  PostStatus(first);
  for (int i = 0; i < locations.size() && !FStopped; ++i) {
    PostStep(total, first + i);
    std::this_thread::sleep_for(kLocationPause);
    FWalker.Scan(locations[i]);
    TakeDownloadFiles();
    PostPhase(kPhaseDone);
  }
}

// All files of one location, with a post at every hundredth of them.
void TTallyscopeScan::TakeDownloadFiles() {
  const TList<TFileInfo>& files = FWalker.Files();
  const int step = std::max(files.Count() / 100, 1);
  int posts = 0;
  for (int i = 0; i < files.Count() && !FStopped;) {
    FDownloadFiles.Add(ResultRow(files[i]));
    if (++i % step == 0) PostPhase(kPhaseFiles + ++posts);
  }
}

void TTallyscopeScan::SortResults() {
  if (FFolders.Count() > 1) FFolders.Sort(TFolderComparer());
  if (FFiles.Count() > 1) FFiles.Sort(TFileComparer());
  if (FDownloadFiles.Count() > 1) FDownloadFiles.Sort(TFileComparer());
}

void TTallyscopeScan::PostStatus(int row) {
  PostMessage(FStatusWnd, WM_SCANSTATUS, kScanStatusRow, row);
}

void TTallyscopeScan::PostStep(int total, int current) {
  PostMessage(FProgressWnd, FProgressMsg, ScanStepWord(total, current), 0);
}

void TTallyscopeScan::PostPhase(int value) {
  PostMessage(FProgressWnd, FProgressMsg, 0, value);
}
