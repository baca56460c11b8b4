// Walk lists the root (WalkRoot) and then takes each direct subfolder to its end (WalkSubfolder),
// breadth-first by a work list. Both get a folder's entries from TakeFolder, which waits for the listings
// that the read-ahead has, part by part, and counts them in TakePart: records, totals and every twentieth
// path go by the order of the entries, whatever the threads did. A stop is seen between two entries.
#include "scan/Volindex.h"

#include "platform/Paths.h"
#include "scan/ScanMessages.h"

#include <QStringBuilder>

#include <utility>

namespace {

// One path text per so many entries, so that the status label doesn't flood the queue.
constexpr int kEntriesPerPost = 20;

constexpr int kSubfolder = -1;  // in the place of a file's index

}  // namespace

TTallyscope::TTallyscope(TMessageWindow* statusWnd, const TReadAheadLimits& limits)
    : FStatusWnd(statusWnd), FLimits(limits) {}

void TTallyscope::SetProgressTarget(TMessageWindow* progressWnd, unsigned progressMsg) {
  FProgressWnd = progressWnd;
  FProgressMsg = progressMsg;
}

void TTallyscope::Scan(const QString& path) {
  FPath = path;
  FFileCount = 0;
  FFolderCount = 0;
  FTotalSize = 0;
  Walk();
}

void TTallyscope::Clear() {
  FFiles.Clear();
  FFolders.Clear();
}

bool TTallyscope::Walk() {
  Clear();
  FStopped.store(false);
  PostPercent(1);
  FPath = IncludeTrailingPathDelimiter(FPath);
  PostPathText(FPath);
  TReadAhead ahead(FPath, FStopped, FLimits);
  TFolders subfolders = WalkRoot(ahead);
  PostPercent(3);
  const auto count = static_cast<qint64>(subfolders.size());
  for (qint64 i = 0; i != count && !FStopped; ++i) {
    WalkSubfolder(ahead, std::exchange(subfolders[static_cast<size_t>(i)], nullptr));
    // By subfolders, as nothing is known of their sizes before; the walk of the root has had 1 to 3.
    if (const auto percent = static_cast<int>(i * 99 / count); percent > FPercent) PostPercent(percent);
  }
  return !FStopped;
}

// The root's own files belong to no folder record.
TTallyscope::TFolders TTallyscope::WalkRoot(TReadAhead& ahead) {
  TFolders subfolders;
  int entries = 0;
  TakeFolder(ahead, ahead.Root(), subfolders, [&](const TListingPart& part, int file) {
    if (++entries % kEntriesPerPost != 0) return;
    PostPathText(file == kSubfolder ? subfolders.back()->Path.chopped(1) : FPath % part.Files.NameOf(file));
  });
  return subfolders;
}

// A folder leaves the work list when its turn comes, so that the list holds only what is still to visit.
void TTallyscope::WalkSubfolder(TReadAhead& ahead, const TListedFolderPtr& subfolder) {
  FFolders.Add({FPath, subfolder->Path.mid(FPath.size()).chopped(1), 0});
  quint64& size = FFolders[FFolders.Count() - 1].Size;
  TFolders work{subfolder};
  int entries = 0;
  while (!work.empty() && !FStopped) {
    const TListedFolderPtr folder = std::move(work.front());
    work.pop_front();
    size += TakeFolder(ahead, folder, work, [&](const TListingPart&, int) {
      if (++entries % kEntriesPerPost == 0) PostPathText(folder->Path);
    });
  }
}

// Tells each entry of the folder by its part and, for a file, its index there. The bytes of the files.
template <typename TSeen>
quint64 TTallyscope::TakeFolder(TReadAhead& ahead, const TListedFolderPtr& folder, TFolders& found,
                                const TSeen& seen) {
  quint64 bytes = 0;
  for (bool more = true; more && !FStopped;) {
    more = ahead.Take(folder, FParts);
    for (TListingPart& part : FParts)
      bytes += TakePart(part, found, seen);
  }
  return bytes;
}

// Of a stop, what came before it is kept.
template <typename TSeen>
quint64 TTallyscope::TakePart(TListingPart& part, TFolders& found, const TSeen& seen) {
  quint64 bytes = 0;
  int files = 0;
  for (auto subfolder = part.Subfolders.begin(); !FStopped;) {
    if (subfolder != part.Subfolders.end() && subfolder->FilesBefore == files) {
      found.push_back(std::move(subfolder++->Folder));
      ++FFolderCount;
      seen(part, kSubfolder);
    } else if (files != part.Files.Count()) {
      bytes += part.Files.SizeOf(files);
      seen(part, files++);
    } else {
      break;
    }
  }
  part.Files.Truncate(files);
  FFiles.Add(std::move(part.Files));
  FFileCount += files;
  FTotalSize += bytes;
  return bytes;
}

void TTallyscope::PostPercent(int value) {
  FPercent = value;
  PostProgress(0, value);
}

void TTallyscope::PostProgress(quintptr code, int value) {
  PostMessage(FProgressWnd, FProgressMsg, code, code == 0 ? value : 0);
}

void TTallyscope::PostPathText(const QString& text) {
  FTextBuffer.Store(text);
  PostMessage(FStatusWnd, WM_SCANSTATUS, kScanStatusPath, reinterpret_cast<qintptr>(&FTextBuffer));
}
