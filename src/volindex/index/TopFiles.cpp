// The list is an unsorted pile of records with a floor: what is smaller is refused by one comparison, and
// when it has grown to kRoom it is cut back by a partial sort, whose cost is spread over the records that
// came in between. Where paths are known a tie is decided as it comes. Where they are not, files of one size
// can't be told apart: as many are kept as there is room for, and NoteDropped says from which size on the
// list may miss one.
#include "volindex/index/TopFiles.h"

#include <algorithm>
#include <utility>

namespace volindex {

namespace {

constexpr size_t kRoom = 5 * kTopCount / 2;  // records before the list is pruned
constexpr size_t kTieRoom = 2 * kTopCount;   // records after that, where paths are not known

auto BySizeThenPath(const TFolderTable& folders) {
  return [&folders](const TFileRecord& a, const TFileRecord& b) {
    if (a.Size != b.Size) return a.Size > b.Size;
    return folders.ComparePaths(a.Folder, a.Name, b.Folder, b.Name) < 0;
  };
}

auto NthPlace(std::vector<TFileRecord>& records, size_t count) {
  return records.begin() + static_cast<std::ptrdiff_t>(count - 1);
}

// A name that goes here for want of room, or for another, is told no more; the file's first one always stays,
// since all others are further down the list.
void DropFurtherNames(const TFolderTable& folders, std::vector<TFileRecord>& records) {
  const auto linked = std::partition(records.begin(), records.end(),
                                     [](const TFileRecord& record) { return record.Link == 0; });
  std::sort(linked, records.end(), [&folders](const TFileRecord& a, const TFileRecord& b) {
    if (a.Link != b.Link) return a.Link < b.Link;
    return folders.ComparePaths(a.Folder, a.Name, b.Folder, b.Name) < 0;
  });
  const auto same = [](const TFileRecord& a, const TFileRecord& b) { return a.Link == b.Link; };
  records.erase(std::unique(linked, records.end(), same), records.end());
}

}  // namespace

void TTopFiles::SortAndCut(const TFolderTable& folders, std::vector<TFileRecord>& records) {
  const auto before = BySizeThenPath(folders);
  DropFurtherNames(folders, records);
  if (records.size() > kTopCount) {
    std::nth_element(records.begin(), NthPlace(records, kTopCount), records.end(), before);
    records.resize(kTopCount);
  }
  std::sort(records.begin(), records.end(), before);
}

std::vector<TFileRecord> TTopFiles::Take() {
  return std::exchange(FRecords, {});
}

void TTopFiles::Restart() {
  FRecords.clear();
  FPathsKnown = true;
  FFull = FDropped = false;
  FFloor = FDroppedSize = 0;
}

bool TTopFiles::WinsTie(TFolderId folder, std::string_view name) const {
  return FPathsKnown && FFolders.ComparePaths(folder, name, FWorst.Folder, FWorst.Name) < 0;
}

void TTopFiles::Insert(TFileRecord record) {
  FRecords.push_back(std::move(record));
  if (FRecords.size() < kRoom) return;
  if (FPathsKnown)
    Prune();
  else
    PruneBySize();
}

void TTopFiles::Prune() {
  DropFurtherNames(FFolders, FRecords);
  if (FRecords.size() <= kTopCount) return;
  const auto last = NthPlace(FRecords, kTopCount);
  std::nth_element(FRecords.begin(), last, FRecords.end(), BySizeThenPath(FFolders));
  FWorst = *last;
  FFloor = last->Size;
  FFull = true;
  FRecords.resize(kTopCount);
}

// Keeps all files as large as the kTopCount-th, but of too many of one size just some.
void TTopFiles::PruneBySize() {
  const auto larger = [](const TFileRecord& a, const TFileRecord& b) { return a.Size > b.Size; };
  const auto last = NthPlace(FRecords, kTopCount);
  std::nth_element(FRecords.begin(), last, FRecords.end(), larger);
  const uint64_t floor = last->Size;
  const auto smaller = std::partition(last, FRecords.end(),
                                      [floor](const TFileRecord& record) { return record.Size == floor; });
  FRecords.erase(smaller, FRecords.end());
  FFull = FRecords.size() >= kTieRoom;
  if (FFull) FRecords.resize(kTieRoom);
  FFloor = floor;
  if (FFull)
    NoteDropped(floor);
  else if (floor > 0)
    NoteDropped(floor - 1);
}

void TTopFiles::NoteDropped(uint64_t size) {
  FDropped = true;
  FDroppedSize = std::max(FDroppedSize, size);
}

}  // namespace volindex
