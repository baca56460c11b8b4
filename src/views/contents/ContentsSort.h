// How the Contents list is sorted by a click on a column. Main thread.
#pragma once

#include <QString>

#include <array>
#include <unordered_map>

class TDriveList;
struct TDriveInfo;
class TListColumn;
class TListItem;
class TRzShellCombo;
class TRzShellList;

// The size in decimal digits, with zeros before it up to 15 characters.
[[nodiscard]] QString PaddedSizeKey(qint64 size);

// Each column has a direction of its own, which its clicks turn and which outlives a change of the folder. No
// mark shows it. Sizes order the folders among each other: files stay in their rows.
class TContentsSort {
 public:
  TContentsSort(TRzShellList& list, const TRzShellCombo& combo, const TDriveList& drives);

  void ColumnClick(const TListColumn& column);

  // By the column that was clicked last; 0 before the first click. A drive is never less than another.
  [[nodiscard]] int Compare(const TListItem& item1, const TListItem& item2) const;

 private:
  [[nodiscard]] int CompareDrives(const TListItem& item1, const TListItem& item2,
                                  qint64 TDriveInfo::*bytes) const;
  void PlaceFolders();

  TRzShellList& FList;
  const TRzShellCombo& FCombo;
  const TDriveList& FDrives;
  // By index, and for both sets of columns, that of the computer level and that of folders: a direction
  // belongs to the place, not to what stands there.
  int FContentSortColumn = -1;
  std::array<bool, 4> FContentSortDir = {false, true, false, false};  // false negates the comparison
  std::unordered_map<const TListItem*, int> FPlaces;                  // of all rows, within a sort by size
};
