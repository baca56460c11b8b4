#include "scan/Volindex.h"

#include "platform/Paths.h"
#include "scan/ScanMessages.h"

#include <QStringBuilder>

#include <deque>
#include <utility>

namespace {

// One path text per so many entries, so that the status label doesn't flood the queue.
constexpr int kEntriesPerPost = 20;

}  // namespace

TTallyscope::TTallyscope(TMessageWindow* statusWnd) : FStatusWnd(statusWnd) {}

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
  FEnumeration.ConfineTo(FPath);
  FEnumeration.SkipFolderDetails();
  PostPathText(FPath);
  const TNames subfolders = WalkRoot();
  PostPercent(3);
  const auto count = static_cast<qint64>(subfolders.size());
  for (qint64 i = 0; i != count && !FStopped; ++i) {
    WalkSubfolder(subfolders[static_cast<size_t>(i)]);
    if (const auto percent = static_cast<int>(i * 99 / count); percent > FPercent) PostPercent(percent);
  }
  return !FStopped;
}

// The root's own files belong to no folder record. A system file here (a page file, a hibernation file) stays
// out of all totals; one level down it counts like any other.
TTallyscope::TNames TTallyscope::WalkRoot() {
  TNames subfolders;
  int entries = 0;
  ListFolder(FPath, [&](TFoundFile& found) {
    if (!found.IsDirectory() && (found.Attributes & kAttributeSystem) != 0) return;
    if (++entries % kEntriesPerPost == 0) PostPathText(FPath + found.Name);
    if (found.IsDirectory()) {
      ++FFolderCount;
      subfolders.push_back(std::move(found.Name));
    } else {
      AddFile(FPath, found);
    }
  });
  return subfolders;
}

// A folder leaves the work list when its turn comes, so that the list holds only what is still to visit.
void TTallyscope::WalkSubfolder(const QString& name) {
  FFolders.Add({FPath, name, 0});
  quint64& size = FFolders[FFolders.Count() - 1].Size;
  std::deque<QString> work{FPath % name % PathDelim};
  int entries = 0;
  while (!work.empty() && !FStopped) {
    const QString folder = std::move(work.front());
    work.pop_front();
    ListFolder(folder, [&](TFoundFile& found) {
      if (found.IsDirectory()) {
        ++FFolderCount;
        work.push_back(folder % found.Name % PathDelim);
      } else {
        size += found.Size;
        AddFile(folder, found);
      }
      if (++entries % kEntriesPerPost == 0) PostPathText(folder);
    });
  }
}

template <typename TEntry>
void TTallyscope::ListFolder(const QString& folder, const TEntry& entry) {
  TFoundFile found;
  if (!FEnumeration.First(folder, found)) return;
  do {
    entry(found);
  } while (FEnumeration.Next(found) && !FStopped);
  FEnumeration.Close();
}

// The name moves into its record: a walk makes one text per file and no copy of it.
void TTallyscope::AddFile(const QString& folder, TFoundFile& found) {
  FFiles.Add({folder, std::move(found.Name), found.Size});
  FTotalSize += found.Size;
  ++FFileCount;
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
