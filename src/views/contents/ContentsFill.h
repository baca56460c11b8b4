// What the program writes into the rows of the Contents list: the size of each row of a folder, or capacity
// and free space of each drive. A file's size comes with the listing; a folder's is known already or is asked
// of the folder size thread, with "..." in the row until it answers. Main thread.
#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <unordered_map>

#include "controls/shell/RzShellList.h"
#include "platform/Messages.h"
#include "scan/FolderSizeThread.h"

struct TMainState;

// Posted by the form to itself, with these words: the last fill was stopped and nothing else was gone to, so
// that its folder is to be opened anew. With other words it says nothing.
inline constexpr unsigned WM_RESTOREFOLDER = 2340;
inline constexpr quintptr kRestoreWord = 5;
inline constexpr qintptr kRestoreMore = 23;

// By the path of a folder, as SameFolder sees it.
struct TFolderHash {
  size_t operator()(const QString& folder) const;
};
struct TSameFolder {
  bool operator()(const QString& a, const QString& b) const;
};
template <typename T>
using TFolderMap = std::unordered_map<QString, T, TFolderHash, TSameFolder>;

// Bytes below each folder that was ever measured. Nothing leaves it and no size changes, so that a folder is
// summed once as long as the program runs, and a size grows old with the disk.
class TFolderSizes {
 public:
  // A folder that is known keeps its size.
  void Add(const QString& folder, qint64 size) { FSizes.try_emplace(folder, size); }
  [[nodiscard]] std::optional<qint64> Find(const QString& folder) const;

 private:
  TFolderMap<qint64> FSizes;
};

// A fill begins with a new path, goes on row by row as they come into the list, and ends when all are there.
// Each row of a folder has its size in a cell on the free slot of its data.
class TContentsFill {
 public:
  // The list outlives this, and its deletion handler calls Forget.
  TContentsFill(TRzShellList& list, const TMainState& state);

  // The steps of the list: another path, a row that needs its cells, all rows there, a row that goes.
  void Begin();
  void FillItem(TListItem& item);
  void End();
  void Forget(TListItem& item);

  // All rows once more, as if their folder had been gone to again; they stay.
  void Repeat();

  // A navigation is about to leave: a fill under way writes no more. Should nothing be gone to after all, the
  // end of the fill opens its folder again.
  void Stop();
  [[nodiscard]] bool Filling() const { return FFilling; }

  // The size of a row in a folder; null if it has none.
  [[nodiscard]] static const qint64* SizeOf(const TListItem& item);

  [[nodiscard]] TFolderSizes& FolderSizes() { return FFolderSizes; }
  // The path as of the end of the last fill.
  [[nodiscard]] const QString& CurrentFolder() const { return FCurrentFolder; }
  void SetCurrentFolder(const QString& path) { FCurrentFolder = path; }

  // Where the form's messages arrive.
  [[nodiscard]] TMessageWindow& Window() { return FWindow; }

  // Ends the thread, which is not waited for; sizes that are pending never come.
  void FormClose() { FFolderSizeThread.Terminate(); }

  // The size of a folder row has come from the thread.
  std::function<void(TListItem& item)> OnSized;

 private:
  void SetCaptions();
  void FillDrive(TListItem& item);
  void FillSize(TListItem& item);
  void ShowSize(TListItem& item, qint64 size);
  void FolderSize(const TFolderSizeInfo& info);
  void RestoreFolder(const TMessage& message);

  TRzShellList& FList;
  const TMainState& FState;
  TFolderSizes FFolderSizes;
  // The list tells of each row before it is freed (Forget), so no pointer here outlives its row.
  TFolderMap<TListItem*> FFolderRows;  // of the folder shown
  QString FCurrentFolder;
  // A Stop while filling takes it away and only the next fill gives it back; rows that are told meanwhile get
  // no cells.
  bool FAllowFill = true;  // false from a Stop until the next fill begins
  bool FFilling = false;
  TMessageWindow FWindow;
  TGetFolderSizeThread FFolderSizeThread;  // sends to the window, so goes before it
};
