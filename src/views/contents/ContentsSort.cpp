#include "views/contents/ContentsSort.h"

#include <algorithm>
#include <vector>

#include "controls/shell/RzShellCombo.h"
#include "controls/shell/RzShellList.h"
#include "platform/Paths.h"
#include "views/contents/ContentsFill.h"
#include "views/rows/DriveList.h"

namespace {

// Digits of the sizes that compare as numbers do, up to a thousand terabytes; beyond, their first digits
// decide.
constexpr int kKeyLength = 15;

// The columns that are not compared as texts.
constexpr int kFolderSize = 1;
constexpr int kDriveTotal = 2;
constexpr int kDriveFree = 3;

bool HasFolderSize(const TListItem& item) {
  return TRzShellList::ShellData(item).IsFolder() && TContentsFill::SizeOf(item) != nullptr;
}

// As texts, the other way round. Rows without a folder's size stay as they are.
int CompareSizes(const TListItem& item1, const TListItem& item2) {
  if (!HasFolderSize(item1) || !HasFolderSize(item2)) return 0;
  return -CompareText(PaddedSizeKey(*TContentsFill::SizeOf(item1)),
                      PaddedSizeKey(*TContentsFill::SizeOf(item2)));
}

QString TextOf(const TListItem& item, int column) {
  return column == 0 ? item.Caption() : item.SubItems().Text(column - 1);
}

}  // namespace

QString PaddedSizeKey(qint64 size) {
  return QString::number(size).rightJustified(kKeyLength, u'0');
}

TContentsSort::TContentsSort(TRzShellList& list, const TRzShellCombo& combo, const TDriveList& drives)
    : FList(list), FCombo(combo), FDrives(drives) {
  FList.OnCompare = [this](TListItem* item1, TListItem* item2, int& result) {
    result = FPlaces.empty() ? Compare(*item1, *item2) : FPlaces[item1] - FPlaces[item2];
  };
}

void TContentsSort::ColumnClick(const TListColumn& column) {
  FContentSortColumn = column.Index();
  bool& kept = FContentSortDir[static_cast<size_t>(FContentSortColumn)];
  kept = !kept;
  if (FContentSortColumn == kFolderSize && !FCombo.Path().isEmpty()) PlaceFolders();
  FList.AlphaSort();
  // The rows may be freed from here on, and only their addresses stood in it.
  FPlaces.clear();
}

// The folders take the rows that folders have, in their new order. Pairwise comparisons alone could not do
// that: a file between two folders says nothing of them, and would keep them apart.
void TContentsSort::PlaceFolders() {
  std::vector<const TListItem*> folders;
  std::vector<int> rows;
  int row = 0;
  for (const TListItem* item : FList.Items()) {
    FPlaces[item] = row;
    if (HasFolderSize(*item)) {
      folders.push_back(item);
      rows.push_back(row);
    }
    ++row;
  }
  std::stable_sort(folders.begin(), folders.end(),
                   [this](const TListItem* a, const TListItem* b) { return Compare(*a, *b) < 0; });
  for (size_t i = 0; i < folders.size(); ++i)
    FPlaces[folders[i]] = rows[i];
}

int TContentsSort::Compare(const TListItem& item1, const TListItem& item2) const {
  if (FContentSortColumn < 0) return 0;
  const bool atComputer = FCombo.Path().isEmpty();
  int result = 0;
  if (atComputer && FContentSortColumn == kDriveTotal)
    result = CompareDrives(item1, item2, &TDriveInfo::Size);
  else if (atComputer && FContentSortColumn == kDriveFree)
    result = CompareDrives(item1, item2, &TDriveInfo::Free);
  else if (!atComputer && FContentSortColumn == kFolderSize)
    result = CompareSizes(item1, item2);
  else
    result = CompareText(TextOf(item1, FContentSortColumn), TextOf(item2, FContentSortColumn));
  return FContentSortDir[static_cast<size_t>(FContentSortColumn)] ? result : -result;
}

// What is no drive of the list has the place -1 in it. Two drives never compare as less: whichever way the
// column is turned, the sort sees them as larger or the same.
int TContentsSort::CompareDrives(const TListItem& item1, const TListItem& item2,
                                 qint64 TDriveInfo::*bytes) const {
  const int place1 = FDrives.IndexOf(TRzShellList::ShellData(item1).Path());
  const int place2 = FDrives.IndexOf(TRzShellList::ShellData(item2).Path());
  if (place1 < 0 || place2 < 0) return place1 - place2;
  const auto& drives = FDrives.Drives();
  return drives[static_cast<size_t>(place1)].*bytes >= drives[static_cast<size_t>(place2)].*bytes ? 1 : 0;
}
