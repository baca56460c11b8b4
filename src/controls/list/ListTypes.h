// Words that every part of the list control shares. Rows and columns are counted from 0, -1 is none;
// rectangles and positions are in pixels of the client area, which is the viewport below the header.
#pragma once

#include <QString>

#include <stdexcept>

class TListColumns;

// State bits of a row. The first four are those that a row host keeps in any mode.
// Six bits, as many as TRowStateList counts. Focus and anchor are one row's alone; so is the selection
// without MultiSelect.
inline constexpr unsigned kRowFocused = 1;      // at most one row
inline constexpr unsigned kRowSelected = 2;     // at most one row unless MultiSelect
inline constexpr unsigned kRowCut = 4;          // painted faint
inline constexpr unsigned kRowDropHilited = 8;  // painted as the target of a drop
inline constexpr unsigned kRowChecked = 16;     // the mark of the check box
inline constexpr unsigned kRowAnchor = 32;      // the end that Shift extends from, at most one row
inline constexpr unsigned kRowStateMask = 15;
inline constexpr unsigned kRowAllBits = 63;

// What lies at a point, as bits.
inline constexpr unsigned htAbove = 1;          // above the client area
inline constexpr unsigned htBelow = 2;          // below it
inline constexpr unsigned htNowhere = 4;        // in it, but on no row
inline constexpr unsigned htOnIcon = 32;        // the small image
inline constexpr unsigned htOnLabel = 128;      // any other place of a row
inline constexpr unsigned htOnStateIcon = 512;  // the check box, or the state image without check boxes
inline constexpr unsigned htToLeft = 1024;      // left of the client area
inline constexpr unsigned htToRight = 2048;     // right of it

// What OnChange tells about.
enum class TItemChange { Text, Image, State };

enum TSortState { ssNone, ssUp, ssDown };

// What a screen reader says of the sorted column.
struct TSortTexts {
  QString Up = QStringLiteral("ascending");
  QString Down = QStringLiteral("descending");
};

// A mistake of the caller: an index out of range, one close too many of an update bracket.
class EListError : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

// What a list offers and shows; a value, handed over as a whole.
struct TListViewOptions {
  bool MultiSelect = false;
  bool CheckBoxes = false;
  bool RowSelect = true;    // the whole row is hit and highlighted, else the first cell alone
  bool ReadOnly = true;     // captions are not edited in place
  bool ColumnClick = true;  // header cells can be pressed
  bool ShowColumnHeaders = true;
  bool GridLines = false;      // lines between rows and columns
  bool HideSelection = false;  // the highlight shows only while the list has the focus
  bool ShowHint = true;        // Hint shows when the mouse rests
};

// Where a row host gets what it shows: rows and cells by index, asked for only when they are painted,
// measured or read aloud.
class TRowSource {
 public:
  virtual ~TRowSource() = default;

  [[nodiscard]] virtual const TListColumns& RowColumns() const = 0;

  // Column 0 is the caption; column n is text n - 1 of the sub-items.
  // Text and small image of a cell; empty and -1 for a cell that the row does not have.
  [[nodiscard]] virtual QString CellText(int row, int column) const = 0;
  [[nodiscard]] virtual int CellImage(int row, int column) const = 0;
  [[nodiscard]] virtual int StateImage(int row) const = 0;
};
