// What the lists of result rows have in common: columns, rows with their size, and sorting by a click on a
// column. Where two lists differ, the difference is a value of TResultRules. Main thread.
//
// A new column is a value of TResultColumn, its caption and its share of the growth in ResultRows.cpp, a
// width in each of the three rules, a text in AddResultRow, and what it compares by in TResultSort::Compare.
// What one list alone is to do is a field of TResultRules.
#pragma once

#include <array>

#include "scan/ScanRecords.h"
#include "views/main/Looks.h"

class TCustomListView;
class TImageList;
class TLanguage;
class TListColumn;
class TListItem;

inline constexpr int kResultColumns = 4;

// The columns of a result row; all but the name are sub-items, one less by index.
enum TResultColumn : int { kNameColumn = 0, kLocationColumn = 1, kSizeColumn = 2, kTypeColumn = 3 };

// How one list differs from its siblings.
struct TResultRules {
  std::array<int, kResultColumns> Widths;  // pixels, by design
  const char* Indent;                      // before the first caption
  int KeptImage;                           // sort marks in the list's images: direction kept, and negated
  int NegatedImage;
  int OwnImages;    // icons of rows begin at this index of the images
  int LargerIs;     // what the comparison gives where the first size is the larger one
  bool StartFlag;   // the present column's direction before the sort that ends a fill
  int RowLimit;     // of a fill, of each kind of row
  int RowsPerPump;  // a fill handles waiting input each so many rows; 0 never
};

// The three lists side by side.
inline constexpr TResultRules kTopRules = {
    {207, 327, 120, 120}, "", DockImage::kAscending, DockImage::kDescending, DockImage::kOwn, 1, true, 10, 4};
inline constexpr TResultRules kTopFileRules = {{210, 320, 120, 120},
                                               "",
                                               FileImage::kAscending,
                                               FileImage::kDescending,
                                               FileImage::kOwn,
                                               1,
                                               true,
                                               100,
                                               4};
inline constexpr TResultRules kDownloadRules = {{210, 320, 120, 120},
                                                "     ",
                                                DownloadImage::kAscending,
                                                DownloadImage::kDescending,
                                                DownloadImage::kOwn,
                                                -1,
                                                false,
                                                500,
                                                0};

// The columns of the list with their captions and design widths.
void AddResultColumns(TCustomListView& list, const TResultRules& rules);

// What a screen reader says of the sorted column, in the user's language.
void NameSortDirections(TCustomListView& list, const TLanguage& language);

// Widens the columns by their share of what the form has grown since its making, in pixels.
void SpreadResultColumns(TCustomListView& list, const TResultRules& rules, int growth);

// A row with name, location, size text and type; image -1 is none.
TListItem* AddResultRow(TCustomListView& list, const TFileInfoEx& record, const QString& type, int image);

// A row for a file: with its type's name, and its icon added to the images.
TListItem* AddFileRow(TCustomListView& list, TImageList& images, const TFileInfoEx& record);

// Hangs the record's size on the row's Data. A row without one compares equal to every other by size.
void KeepSize(TListItem& item, const TFileInfoEx& record);

// Frees a row's size: what the deletion handlers of the lists do.
void FreeResultRow(TListItem& item);

// Location followed by name.
[[nodiscard]] QString ResultPath(const TListItem& item);

// Sort column and directions of one list. A direction of 0 negates the comparison.
class TResultSort {
 public:
  explicit TResultSort(const TResultRules& rules) : FRules(rules) {}

  // Sorts by the column: its mark appears, or turns if it is there already.
  void ColumnClick(TCustomListView& list, TListColumn& column);

  // Before the click on the size column that ends a fill. From the start values on, the largest come first.
  void SetStartFlag() { FSortDir[static_cast<size_t>(FSortColumn)] = FRules.StartFlag; }

  [[nodiscard]] int Compare(const TListItem& item1, const TListItem& item2) const;

 private:
  const TResultRules& FRules;
  int FSortColumn = kSizeColumn;
  std::array<bool, kResultColumns> FSortDir = {false, false, true, false};
};
