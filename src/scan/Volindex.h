// The folder walker: reads one folder tree through the system's file enumeration and keeps a record of each
// file and the total of each direct subfolder of the root.
//
// The walk has two levels. The first one lists the root; the second one takes the root's subfolders one at a
// time and empties each breadth-first, without recursion, so that no depth is too deep. It stays on the file
// system of its root and enters nothing twice. What can't be read counts for nothing, in silence.
#pragma once

#include "platform/FileEnumeration.h"
#include "platform/Messages.h"
#include "platform/PathText.h"
#include "scan/ScanRecords.h"

#include <QString>

#include <atomic>
#include <utility>
#include <vector>

// Owned by the scan thread, which alone walks and reads the results; only Stop may come from another thread.
class TTallyscope {
 public:
  // The status window receives path texts, whose buffer is the walker's own; a null window drops them.
  explicit TTallyscope(TMessageWindow* statusWnd);
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
  [[nodiscard]] const TList<TFileInfo>& Files() const { return FFiles; }
  // Hands the files over, so that none is copied.
  [[nodiscard]] TList<TFileInfo> TakeFiles() { return std::move(FFiles); }
  [[nodiscard]] const TList<TFolderInfo>& Folders() const { return FFolders; }
  [[nodiscard]] int FileCount() const { return FFileCount; }
  [[nodiscard]] int FolderCount() const { return FFolderCount; }
  [[nodiscard]] quint64 TotalSize() const { return FTotalSize; }

 private:
  using TNames = std::vector<QString>;

  bool Walk();
  [[nodiscard]] TNames WalkRoot();
  void WalkSubfolder(const QString& name);
  template <typename TEntry>
  void ListFolder(const QString& folder, const TEntry& entry);
  void AddFile(const QString& folder, TFoundFile& found);

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
  TList<TFileInfo> FFiles;
  TFileEnumeration FEnumeration;
};
