// The columns of a TRdListView: a type for their cells, fonts, icons and events of their own; and how the
// type of a cell is decided: by its column, its row, its own text. Main thread.
#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

#include "controls/list/model/ListColumns.h"
#include "controls/picture/ImageList.h"

// Words that the model of a TRdListView shares with layout and painters.
//
// The type of a cell is looked up three times: the prefix of its text, then the types of its row, then the
// type of its column.

// How a cell is drawn and hit. A cell text that begins with the character of code N+1 makes its cell of
// type N.
enum TListColumnType {
  ltNone,
  ltIconCaption,
  ltNormalIconCaption,
  ltButton,
  ltLabel,
  ltProgress,
  ltStar,
  ltEdit,
  ltComboBox,
  ltCheckbox,
  ltEmpty,
  ltDefault
};

// Where a group row has its expand button.
enum TkGroupBtnAlign { tkgNone, tkgLeft, tkgRight };

class TkListColumn;
class TkListItem;

// Name=value lines, kept in the order of their names, each name once. Names compare without regard to the
// case of ASCII letters; what stands behind "=" never counts.
//
// Few rows have one, and then of a few lines: a sorted list of texts is enough.
class TStringValueList {
 public:
  [[nodiscard]] int Count() const { return static_cast<int>(FLines.size()); }
  [[nodiscard]] const QString& operator[](int index) const { return FLines.at(index); }

  // A line whose name is there already is dropped. Gives the place of the name.
  int Add(const QString& line);
  [[nodiscard]] int IndexOfName(const QString& name) const;

  // The value, empty for a name that is not there. Setting adds or replaces the line.
  [[nodiscard]] QString Value(const QString& name) const;
  void SetValue(const QString& name, const QString& value);
  void Delete(int index) { FLines.removeAt(index); }

 private:
  [[nodiscard]] int LowerBound(const QString& name) const;
  QStringList FLines;
};

// A cell as it is shown and hit. Prefix is the type character that the text began with, 0 if it had none.
struct TkCell {
  TListColumnType Type = ltNone;
  QString Text;
  char16_t Prefix = 0;
};

// The row has a text, be it empty, for the column.
[[nodiscard]] bool HasCell(const TkListItem& item, int column);
// The whole text of a cell with its prefix; empty for a cell that the row does not have.
[[nodiscard]] QString CellText(const TkListItem& item, int column);
[[nodiscard]] TkCell CellOf(const TkListItem& item, const TkListColumn& column);

// The text without the prefix. Writing keeps the prefix that the cell has; it gives false, and changes
// nothing, for a cell that the row does not have.
[[nodiscard]] QString ShownText(const TkListItem& item, int column);
[[nodiscard]] QStringView ShownView(const TkListItem& item, int column);
bool SetShownText(TkListItem& item, int column, const QString& text);

class TkListItem;
class TkListColumns;

using TOnEditChange = std::function<void(TkListItem* item, int columnIndex)>;
using TOnComboBoxChange = std::function<void(TkListItem* item, int columnIndex, int comboBoxIndex)>;

class TkListColumn : public TListColumn {
 public:
  explicit TkListColumn(TkListColumns& owner);

  TOnEditChange OnColumnEditChange;
  TOnComboBoxChange OnColumnComboBoxDropDown;
  TOnComboBoxChange OnColumnComboBoxChange;

  // A click on the header cell sorts.
  bool AutoClickSort = true;
  // The choices of an ltComboBox column.
  QStringList ComboBoxItems;

  // How the cells are drawn and hit, where neither row nor cell says otherwise.
  [[nodiscard]] TListColumnType ColumnType() const { return FColumnType; }
  void SetColumnType(TListColumnType type);

  // Fonts of the cells and of the header cell. They are the list's as long as ParentFont is set; setting one
  // clears it.
  [[nodiscard]] const QFont& ColumnFont() const { return FColumnFont; }
  void SetColumnFont(const QFont& font);
  [[nodiscard]] const QFont& ColumnHeaderFont() const { return FColumnHeaderFont; }
  void SetColumnHeaderFont(const QFont& font);
  [[nodiscard]] bool ParentFont() const { return FParentFont; }
  void SetParentFont(bool parent);

  // The user cannot drag the divider.
  [[nodiscard]] bool FixedWidth() const { return FFixedWidth; }
  void SetFixedWidth(bool fixed);
  [[nodiscard]] bool Resizable() const override { return !FFixedWidth; }

  // Shares the width that the others leave.
  [[nodiscard]] bool AutoSize() const { return FAutoSize; }
  void SetAutoSize(bool autoSize);

  // Icons of this column; null means the list's. Not owned: a freed image list is forgotten.
  [[nodiscard]] TImageList* IconImgList() const { return FIcons.Images(); }
  void SetIconImgList(TImageList* images);

 private:
  friend class TkListColumns;
  template <typename T>
  void SetField(T& field, const T& value);
  void TakeListFont(const QFont& font);

  QFont FColumnFont;
  QFont FColumnHeaderFont;
  TImageListLink FIcons{[this] { Changed(); }};
  TListColumnType FColumnType = ltNone;
  bool FParentFont = true;
  bool FFixedWidth = false;
  bool FAutoSize = false;
};

class TkListColumns : public TListColumns {
 public:
  [[nodiscard]] TkListColumn& operator[](int index) const;
  TkListColumn& Add() { return static_cast<TkListColumn&>(TListColumns::Add()); }

  // The font of the list, which the columns with ParentFont take.
  [[nodiscard]] const QFont& ListFont() const { return FListFont; }
  void SetListFont(const QFont& font);

 protected:
  [[nodiscard]] std::unique_ptr<TListColumn> CreateColumn() override;

 private:
  QFont FListFont;
};
