// The one background thread of a scan: takes a list of paths, scans each one, sorts the results and tells a
// window by posted messages (scan/ScanMessages.h). Made once and used for every scan.
#pragma once

#include "platform/FileEnumeration.h"
#include "platform/Messages.h"
#include "scan/FolderTree.h"
#include "scan/ScanRecords.h"
#include "scan/Volindex.h"
#include "support/TWorkerThread.h"
#include "volindex/include/volindex.h"
#include "volindex/include/volindex_elevation.h"
#include "volindex/include/volindex_usage.h"

#include <QStringList>

#include <atomic>
#include <functional>
#include <optional>

// True while the first scan is to begin by itself; cleared at the end of every scan. The window's own flag.
inline std::atomic<bool> AutoScan{false};

// Whether the download locations are counted as steps. They are walked in any case. True after each scan.
inline std::atomic<bool> CountDownloads{false};

// How the user may be asked for the right to read whole volumes; see volindex_elevation.h. A refusal holds
// for one scan.
inline std::atomic<int> AskForElevation{TALLYSCOPE_ASK_NEVER};

// Whether a scan takes the names of the folders that the volume index library could not read.
inline std::atomic<bool> ListUnreadable{false};

// What a path takes on its volume; see volindex_usage.h.
struct TPathUsage {
  quint64 Allocated = 0;
  std::optional<quint64> VolumeUsed;  // of a whole volume
  quint32 Unreadable = 0;             // folders
};
// Whether a scan keeps the folders of each path with what lies in them by kind of content. Read as a path is
// begun.
inline std::atomic<bool> KeepFolderTrees{false};

// What one scanned path held.
struct TPathTotals {
  quint32 Files = 0;
  quint32 Folders = 0;
  quint64 Bytes = 0;
  std::optional<TPathUsage> Usage = {};  // not of a path that was walked
};
Q_DECLARE_TYPEINFO(TPathTotals, Q_RELOCATABLE_TYPE);

// Whether the window shows the paths that a scan is at. If not, none is posted and no ticker starts, which
// spares each volume the ticker's pause.
enum class TPathDisplay { Shown, None };

// Gives the folders below the paths of a scan into which applications download, each once. Called on the scan
// thread as a scan begins; may block on the file system and must not throw.
using TFindLocations = std::function<QStringList(const QStringList& paths)>;

// The path ticker: while a volume is read and no path is known, it wanders down the same volume at a gentle
// pace and shows what it comes across. A sign of activity, with no part in any result.
//
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
};

// Owned by the main thread, which calls everything public, through a TOwnedThread: a scan that hangs in the
// file system is left behind by its owner's end. The results belong to the scan thread from Start to its
// final message (WM_SCANDONE or WM_SCANSTOPPED) and to the main thread from then on to the next Start; they
// have no lock. After a stop they are partial and not sorted.
class TTallyscopeScan : public TWorkerThread {
 public:
  // The status window receives WM_SCANSTATUS and WM_SCANDONE. It must read no more path texts after this
  // object's end, since their buffer goes with it. Without a finder there are no download locations.
  explicit TTallyscopeScan(TMessageWindow* statusWnd, TFindLocations findLocations = {},
                           TPathDisplay paths = TPathDisplay::Shown);

  // Where the steps and phases go, under this number, and WM_SCANSTOPPED. Not during a scan.
  void SetProgressTarget(TMessageWindow* progressWnd, unsigned progressMsg);

  // Drops the results of the scan before and begins a new one: of the one folder paths[0], which must be
  // there, or of all the paths as drives. Returns at once.
  void Start(const QStringList& paths, bool folderMode);

  // Asks the scan to end; it answers with WM_SCANSTOPPED unless it was done already.
  void Stop();
  void Terminate() override;

  // Of each scanned path at most 100 rows, largest first over all paths.
  [[nodiscard]] const TList<TFileInfoEx>& Folders() const { return FFolders; }
  [[nodiscard]] const TList<TFileInfoEx>& Files() const { return FFiles; }
  // Every file of every download location, largest first.
  [[nodiscard]] const TList<TFileInfoEx>& DownloadFiles() const { return FDownloadFiles; }

  // The download locations that were walked.
  [[nodiscard]] const QStringList& DownloadLocations() const { return FLocations; }

  // Of the last path scanned.
  [[nodiscard]] quint32 FileCount() const { return FFileCount; }
  [[nodiscard]] quint32 FolderCount() const { return FFolderCount; }
  [[nodiscard]] quint64 TotalSize() const { return FTotalSize; }

  // Of each path that was scanned, in order.
  [[nodiscard]] const TList<TPathTotals>& PathTotals() const { return FPathTotals; }
  // Of all paths, if they were asked for by ListUnreadable.
  [[nodiscard]] const QStringList& UnreadableFolders() const { return FUnreadable; }
  // The same paths' folders; none without KeepFolderTrees.
  [[nodiscard]] const std::vector<TFolderTree>& FolderTrees() const { return FTrees; }

 protected:
  ~TTallyscopeScan() override;
  void Execute() override;

  // Walks each location into FDownloadFiles, whole. The scan thread.
  void ScanDownloadFolders(int total, int first, const QStringList& locations);

 private:
  void RunScan();
  void ScanFolder(const QString& path);
  void ScanDrives(int total, int first);
  void ScanVolume(const QString& path);
  void PullRecords(int base, int limit, int kind, TList<TFileInfoEx>& list);
  void PullUnreadable();
  void TakeDownloadFiles();
  void SortResults();

  void PostStatus(int row);
  void PostStep(int total, int current);
  void PostPhase(int value);

  QStringList FPaths;
  QStringList FLocations;
  quint32 FFileCount = 0;
  quint32 FFolderCount = 0;
  quint64 FTotalSize = 0;
  TList<TPathTotals> FPathTotals;
  QStringList FUnreadable;
  std::vector<TFolderTree> FTrees;
  bool FFolderMode = false;
  TList<TFileInfoEx> FFolders;
  TList<TFileInfoEx> FFiles;
  TList<TFileInfoEx> FDownloadFiles;
  std::atomic<bool> FStopped{false};
  TMessageWindow* const FStatusWnd;
  const TFindLocations FFindLocations;
  const TPathDisplay FPathDisplay;
  const TOwnedThread<TTextProgressThread> FTicker;
  TTallyscope FWalker;
  TMessageWindow* FProgressWnd = nullptr;
  unsigned FProgressMsg = 0;
  TTallyscopeNotify FNotify{};  // how the volume index library reaches FProgressWnd
};
