// What a folder or the computer level holds, listed on a thread that nobody waits for.
//
// The computer level lists the fixed volumes, the removable and network ones and the home folder, in this
// order; a folder its subfolders and then its files, both by name. Names of any bytes come as they are.
#pragma once

#include "platform/FileActions.h"
#include "platform/FolderWatch.h"
#include "support/TWorkerThread.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

enum class TShellKind { FixedVolume, RemovableVolume, NetworkVolume, Home, Folder, File };

struct TShellEntry {
  TShellKind Kind = TShellKind::File;
  QString Name;         // as it is shown
  QString Path;         // a volume's with its delimiter
  quint64 Size = 0;     // bytes, of a file
  qint64 Modified = 0;  // milliseconds since the beginning of 1970, of a file or folder
  QString SizeText;     // of a file
  QString DateText;     // of a file or folder, in the short form of the user's locale

  [[nodiscard]] bool IsFolder() const { return Kind != TShellKind::File; }
};

// The order of rows: true if the first comes before the second. Equal only for entries of one path.
[[nodiscard]] bool ComesBefore(const TShellEntry& a, const TShellEntry& b);

// What a listing tells.
struct TShellListed {
  std::vector<TShellEntry> Entries;
  bool IsAll = true;     // false: some, in their order, so that there is something to see
  bool Readable = true;  // false for a folder that is not there or can't be opened
  TOpenFolder Folder;    // held open since before its entries were read; not open for the computer level
  std::shared_ptr<TFolderChanges> Changes;  // since then; null if they can't be kept. Told with all entries.
};

// Lists a folder, or for an empty path the computer level, and tells the entries: some at first if it takes
// long, and then all. All that touches the folder is done here, on the thread of the task.
void ListShell(const QString& path, TDetachedTask::TLine& line,
               const std::function<void(TShellListed listed)>& told);

struct TShellPlace {
  QString Name;
  QString Path;
};

// Tells the places that can be gone to from anywhere, again and again as one more is found: the fixed,
// removable and network volumes, then the home folder and those for the desktop, documents and downloads as
// far as they are there; each once. Any thread.
void ListShortcuts(const std::function<void(const std::vector<TShellPlace>& places)>& told);
