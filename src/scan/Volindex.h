// The folder walker: reads one folder tree through the system's file enumeration and keeps a record of each
// file and the total of each direct subfolder of the root.
//
// The walk has two levels. The first one lists the root; the second one takes the root's subfolders one at a
// time and empties each breadth-first, without recursion, so that no depth is too deep. It stays on the file
// system of its root and enters nothing twice. What can't be read counts for nothing, in silence. The folders
// are read ahead of it by threads of its own; a thread that hangs in the file system holds up no Stop.
#pragma once

#include "platform/Messages.h"
#include "scan/ReadAhead.h"
#include "scan/ScanRecords.h"

#include <QString>

#include <atomic>
#include <deque>
#include <utility>
#include <vector>

// Owned by the scan thread, which alone walks and reads the results; only Stop may come from another thread.
class TTallyscope {
 public:
  // The status window receives path texts, whose buffer is the walker's own; a null window drops them.
  explicit TTallyscope(TMessageWindow* statusWnd, const TReadAheadLimits& limits = {});
  TTallyscope(const TTallyscope&) = delete;
  TTallyscope& operator=(const TTallyscope&) = delete;

  // Where the percentages go; until this call nowhere.
  void SetProgressTarget(TMessageWindow* progressWnd, unsigned progressMsg);

  // Walks the tree of this path and returns when it is done or stopped. Blocks on the file system. A root
  // that can't be read gives empty lists.
  void Scan(const QString& path);

  // Ends the walk in progress at its next entry; its results stay partial. A request before a walk begins
  // has no effect on that walk. Any thread.
  void Stop() { FStopped.store(true); }

  // Empties both lists.
  void Clear();

  // What the last walk has found: all files in the order of discovery, one record per direct subfolder of
  // the root in enumeration order, the folders at every depth, and the bytes of all files.
  [[nodiscard]] const TFileList& Files() const { return FFiles; }
  // Hands the files over, so that none is copied.
  [[nodiscard]] TFileList TakeFiles() { return std::exchange(FFiles, {}); }
  [[nodiscard]] const TList<TFolderInfo>& Folders() const { return FFolders; }
  [[nodiscard]] int FileCount() const { return FFileCount; }
  [[nodiscard]] int FolderCount() const { return FFolderCount; }
  [[nodiscard]] quint64 TotalSize() const { return FTotalSize; }

 private:
  using TFolders = std::deque<TListedFolderPtr>;

  bool Walk();
  [[nodiscard]] TFolders WalkRoot(TReadAhead& ahead);
  void WalkSubfolder(TReadAhead& ahead, const TListedFolderPtr& subfolder);
  template <typename TSeen>
  quint64 TakeFolder(TReadAhead& ahead, const TListedFolderPtr& folder, TFolders& found, const TSeen& seen);
  template <typename TSeen>
  quint64 TakePart(TListingPart& part, TFolders& found, const TSeen& seen);

  void PostProgress(quintptr code, int value);
  void PostPercent(int value);
  void PostPathText(const QString& text);

  QString FPath;     // the root; ends in the delimiter once the walk has begun
  int FPercent = 0;  // the last percentage posted
  TPathText FTextBuffer;
  TMessageWindow* const FStatusWnd;
  std::atomic<bool> FStopped{false};
  TMessageWindow* FProgressWnd = nullptr;
  unsigned FProgressMsg = 0;
  int FFileCount = 0;
  int FFolderCount = 0;
  quint64 FTotalSize = 0;
  TList<TFolderInfo> FFolders;
  TFileList FFiles;
  const TReadAheadLimits FLimits;
  std::vector<TListingPart> FParts;  // of the folder at hand
};
