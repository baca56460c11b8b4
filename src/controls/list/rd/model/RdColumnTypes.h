// How the type of a cell is decided: by its column, its row, its own text.
#pragma once

#include <QString>
#include <QStringList>

// Words that the model of a TRdListView shares with layout and painters.

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
