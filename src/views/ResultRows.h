// What the lists of result rows have in common: columns, rows with their size, and sorting by a click on a
// column. Where two lists differ, the difference is a value of TResultRules. Main thread.
#pragma once

#include <array>

#include "scan/ScanRecords.h"

class TCustomListView;
class TImageList;
class TListColumn;
class TListItem;
class TListView;

inline constexpr int kResultColumns = 4;

// The columns of a result row; all but the name are sub-items, one less by index.
enum TResultColumn : int { kNameColumn = 0, kLocationColumn = 1, kSizeColumn = 2, kTypeColumn = 3 };

// How one list differs from its siblings.
struct TResultRules {
  std::array<int, kResultColumns> Widths;  // pixels, by design
  int AscendingImage;                      // sort marks in the list's images
  int DescendingImage;
  int OwnImages;  // icons of rows begin at this index of the images
};

// The columns of the list with their captions and design widths.
void AddResultColumns(TCustomListView& list, const TResultRules& rules);

// Widens the columns by their share of what the form has grown since its making, in pixels.
void SpreadResultColumns(TCustomListView& list, const TResultRules& rules, int growth);

// A row with name, location, size text and type, and its size on Data; image -1 is none.
TListItem* AddResultRow(TListView& list, const TFileInfoEx& record, const QString& type, int image);

// A row for a file: with its type's name, and its icon added to the images.
TListItem* AddFileRow(TListView& list, TImageList& images, const TFileInfoEx& record);

// Frees a row's size: what the deletion handlers of the lists do.
void FreeResultRow(TListItem& item);

// Location followed by name.
[[nodiscard]] QString ResultPath(const TListItem& item);

// Sort column and directions of one list. A direction of 0 negates the comparison.
class TResultSort {
 public:
  explicit TResultSort(const TResultRules& rules) : FRules(rules) {}

  // Sorts by the column: its mark appears, or turns if it is there already.
  void ColumnClick(TListView& list, TListColumn& column);

  // The sort after a fill: a click on the size column, with the direction of the present sort column set
  // first. From the start values on, that is the largest first.
  void SortBySize(TListView& list);

  [[nodiscard]] int Compare(const TListItem& item1, const TListItem& item2) const;

 private:
  const TResultRules& FRules;
  int FSortColumn = kSizeColumn;
  std::array<bool, kResultColumns> FSortDir = {false, false, true, false};
};
