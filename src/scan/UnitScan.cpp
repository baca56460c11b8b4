// A scan's way on its thread: Execute waits for a Start and calls RunScan; this finds the download locations,
// has ScanFolder walk the one folder or ScanDrives go through the drives, each by ScanVolume where the
// library serves it and by ScanFolder where it does not, then ScanDownloadFolders, and ends with the one
// final message.
//
// From Start to that message this thread alone touches the lists. What crosses threads before it are posted
// numbers, the path texts and three stop flags, which Stop sets in this order: this object's, the library's,
// the walker's. The first stands until the next Start; each of the others is taken back as the library or the
// walker begins a path.
#include "scan/UnitScan.h"

#include "platform/Paths.h"
#include "platform/Process.h"
#include "scan/ScanMessages.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace {

// The walk's results are taken over in the order of discovery, up to this many of each kind and path.
constexpr int kRowsPerPath = 100;

// The pause before each download location.
constexpr std::chrono::milliseconds kLocationPause{100};

template <typename T>
TFileInfoEx ResultRow(const T& record) {
  return {record.Path, record.Name, record.Size};
}

const char16_t* Utf16(const QString& text) {
  return reinterpret_cast<const char16_t*>(text.utf16());
}

quint64 Joined(quint32 high, quint32 low) {
  return quint64{high} << 32 | low;
}

// Nothing for a record that the library can't deliver.
std::optional<TFileInfoEx> RecordAt(int index) {
  constexpr quint32 kOption = 4;
  const auto units = static_cast<quint32>(kLongestPath);
  std::vector<char16_t> name(units);
  std::vector<char16_t> path(units);
  quint32 high = 0;
  quint32 low = 0;
  if (Tallyscope_GetRecordByIndex(index, name.data(), units, path.data(), units, &high, &low, kOption) == 0)
    return std::nullopt;
  return TFileInfoEx{QString::fromUtf16(path.data()), QString::fromUtf16(name.data()), Joined(high, low)};
}

quint64 VolumeBytes(const QString& path) {
  quint32 high = 0;
  quint32 low = 0;
  Tallyscope_GetFolderSize(Utf16(path), &high, &low);
  return Joined(high, low);
}

// Nothing after a stop.
std::optional<TPathUsage> VolumeUsage() {
  TTallyscopeUsage usage{};
  if (Tallyscope_GetUsage(&usage) == 0) return std::nullopt;
  return TPathUsage{usage.Allocated,
                    usage.IsVolume != 0 ? std::optional<quint64>(usage.VolumeUsed) : std::nullopt,
                    usage.Unreadable};
}

void PostToWindow(void* window, unsigned message, uintptr_t wparam, intptr_t lparam) {
  PostMessage(static_cast<TMessageWindow*>(window), message, wparam, lparam);
}

// Of the ticker.
// The first path shows after half a second, and no more than fifty a second.
constexpr std::chrono::milliseconds kStartPause{500};
constexpr std::chrono::milliseconds kEntryPause{20};

}  // namespace

TTextProgressThread::TTextProgressThread(TMessageWindow* statusWnd) : FStatusWnd(statusWnd) {}

void TTextProgressThread::Start(const QString& path) {
  WaitForRest();
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

TTallyscopeScan::TTallyscopeScan(TMessageWindow* statusWnd, TFindLocations findLocations, TPathDisplay paths)
    : FStatusWnd(statusWnd),
      FFindLocations(std::move(findLocations)),
      FPathDisplay(paths),
      FTicker(new TTextProgressThread(statusWnd)),
      FWalker(paths == TPathDisplay::Shown ? statusWnd : nullptr) {}

TTallyscopeScan::~TTallyscopeScan() {
  Finish();
  Tallyscope_SetNotifyHwnd(nullptr, 0);
}

void TTallyscopeScan::SetProgressTarget(TMessageWindow* progressWnd, unsigned progressMsg) {
  FProgressWnd = progressWnd;
  FProgressMsg = progressMsg;
  FNotify = {progressWnd, PostToWindow};
  Tallyscope_SetNotifyHwnd(&FNotify, progressMsg);
  FWalker.SetProgressTarget(progressWnd, progressMsg);
}

void TTallyscopeScan::Start(const QStringList& paths, bool folderMode) {
  FFolders.Clear();
  FFiles.Clear();
  FDownloadFiles.Clear();
  FPathTotals.Clear();
  FUnreadable.clear();
  FTrees.clear();
  FPaths = paths;
  FFolderMode = folderMode;
  FStopped.store(false);
  Tallyscope_SetElevation(AskForElevation);
  Tallyscope_KeepFolderKinds(KeepFolderTrees ? 1 : 0);
  Resume();
}

void TTallyscopeScan::Stop() {
  FStopped.store(true);
  Tallyscope_Stop();
  FWalker.Stop();
}

void TTallyscopeScan::Terminate() {
  TWorkerThread::Terminate();
  Stop();
}

// The download locations are read with the system's XML parser, which is a component.
void TTallyscopeScan::Execute() {
  const TComThread components;
  while (!Terminated()) {
    RunScan();
    AutoScan.store(false);
    CountDownloads.store(true);
    Suspend();
  }
}

void TTallyscopeScan::RunScan() {
  FLocations = FFindLocations ? FFindLocations(FPaths) : QStringList();
  const auto paths = static_cast<int>(FPaths.size());
  const int total = paths + (CountDownloads ? static_cast<int>(FLocations.size()) : 0);
  PostStatus(0);
  PostStep(total, 0);
  if (FFolderMode)
    ScanFolder(FPaths.value(0));
  else
    ScanDrives(total, 0);
  ScanDownloadFolders(total, paths, FLocations);
  if (FStopped) {
    PostMessage(FProgressWnd, WM_SCANSTOPPED, 0, 0);
    return;
  }
  SortResults();
  PostMessage(FStatusWnd, WM_SCANDONE, 0, 0);
}

// The cut comes before the sort: of the walk's records the first ones are taken, whatever their size.
void TTallyscopeScan::ScanFolder(const QString& path) {
  if (FStopped) return;  // the walk would begin by forgetting it
  FWalker.Scan(path);
  const TFileList& files = FWalker.Files();
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
  if (KeepFolderTrees) FTrees.push_back(TreeOfFiles(IncludeTrailingPathDelimiter(path), files));
  PostPhase(kPhaseDone);
}

void TTallyscopeScan::ScanDrives(int total, int first) {
  for (int i = 0; i < FPaths.size() && !FStopped; ++i) {
    PostStatus(i);
    PostStep(total, first + i);
    if (Tallyscope_CheckFileSystem(Utf16(FPaths[i])) == 0)
      ScanFolder(FPaths[i]);
    else
      ScanVolume(FPaths[i]);
  }
}

// After a stop the same calls run, and find nothing to take.
void TTallyscopeScan::ScanVolume(const QString& path) {
  const bool ticks = FPathDisplay == TPathDisplay::Shown;
  if (ticks) FTicker->Start(path);
  if (!FStopped) Tallyscope_ScanLocalDrive(Utf16(path));  // a stop during the ticker's pause is not lost
  PullRecords(kPhaseFiles, kRowsPerPath, TALLYSCOPE_FILES, FFiles);
  PullRecords(kPhaseFolders, kRowsPerPath, TALLYSCOPE_FOLDERS, FFolders);
  Tallyscope_GetRecordCount(&FFileCount, &FFolderCount);
  FPathTotals.Add({FFileCount, FFolderCount, VolumeBytes(path), VolumeUsage()});
  if (ListUnreadable) PullUnreadable();
  if (KeepFolderTrees) FTrees.push_back(TreeOfVolume());
  Tallyscope_Free();
  if (ticks) FTicker->Stop();
}

// The library gives its records largest first; one that it can't deliver takes nothing from the limit.
void TTallyscopeScan::PullRecords(int base, int limit, int kind, TList<TFileInfoEx>& list) {
  Tallyscope_OpenRecord(kind);
  const auto count = static_cast<int>(Tallyscope_GetRecordCount(nullptr, nullptr));
  if (count == 0) return;
  const int step = count / std::min(count, 100);
  int accepted = 0;
  int posts = 0;
  for (int index = 0; index < count && accepted < limit && !FStopped; ++index) {
    const auto record = RecordAt(index);
    if (!record) continue;
    list.Add(*record);
    if (++accepted % step == 0) PostPhase(base + ++posts);
  }
  PostPhase(base + 100);
}

// A path may be longer than any record's.
void TTallyscopeScan::PullUnreadable() {
  TTallyscopeUsage usage{};
  if (Tallyscope_GetUsage(&usage) == 0) return;
  std::vector<char16_t> path(size_t{1} << 16);
  for (quint32 i = 0; i < usage.Unreadable && !FStopped; ++i)
    if (Tallyscope_GetUnreadable(i, path.data(), static_cast<quint32>(path.size())) != 0)
      FUnreadable.append(QString::fromUtf16(path.data()));
}

void TTallyscopeScan::ScanDownloadFolders(int total, int first, const QStringList& locations) {
  PostStatus(first);
  for (int i = 0; i < locations.size() && !FStopped; ++i) {
    PostStep(total, first + i);
    std::this_thread::sleep_for(kLocationPause);
    if (!FStopped) FWalker.Scan(locations[i]);  // a stop during the pause is not lost
    TakeDownloadFiles();
    PostPhase(kPhaseDone);
  }
}

// All files of one location, with a post at every hundredth of them.
void TTallyscopeScan::TakeDownloadFiles() {
  const TFileList files = FWalker.TakeFiles();
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
