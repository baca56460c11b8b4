#include "controls/list/rd/model/RdListColumn.h"

#include <algorithm>

#include "controls/list/rd/model/RdListItem.h"
#include "platform/Paths.h"

TkListColumn::TkListColumn(TkListColumns& owner)
    : TListColumn(owner), FColumnFont(owner.ListFont()), FColumnHeaderFont(owner.ListFont()) {}

template <typename T>
void TkListColumn::SetField(T& field, const T& value) {
  if (field == value) return;
  field = value;
  Changed();
}

void TkListColumn::SetColumnType(TListColumnType type) {
  SetField(FColumnType, type);
}

// Its own from now on, even if it is the one that it had.
void TkListColumn::SetColumnFont(const QFont& font) {
  FParentFont = false;
  SetField(FColumnFont, font);
}

void TkListColumn::SetColumnHeaderFont(const QFont& font) {
  FParentFont = false;
  SetField(FColumnHeaderFont, font);
}

void TkListColumn::SetParentFont(bool parent) {
  if (parent) TakeListFont(static_cast<TkListColumns&>(Owner()).ListFont());
  SetField(FParentFont, parent);
}

void TkListColumn::TakeListFont(const QFont& font) {
  FColumnFont = font;
  FColumnHeaderFont = font;
}

void TkListColumn::SetFixedWidth(bool fixed) {
  SetField(FFixedWidth, fixed);
}

void TkListColumn::SetAutoSize(bool autoSize) {
  SetField(FAutoSize, autoSize);
}

void TkListColumn::SetIconImgList(TImageList* images) {
  if (images == IconImgList()) return;
  FIcons.SetImages(images);
  Changed();
}

TkListColumn& TkListColumns::operator[](int index) const {
  return static_cast<TkListColumn&>(TListColumns::operator[](index));
}

void TkListColumns::SetListFont(const QFont& font) {
  FListFont = font;
  for (int index = 0; index < Count(); ++index) {
    TkListColumn& column = (*this)[index];
    if (column.ParentFont()) column.TakeListFont(font);
  }
  if (OnChange) OnChange();
}

std::unique_ptr<TListColumn> TkListColumns::CreateColumn() {
  return std::make_unique<TkListColumn>(*this);
}

namespace {

constexpr char16_t kLastPrefix = ltDefault + 1;

QString NameOf(const QString& line) {
  return line.section(u'=', 0, 0);
}

char16_t PrefixOf(QStringView text) {
  if (text.isEmpty()) return 0;
  const char16_t first = text.front().unicode();
  return first <= kLastPrefix ? first : 0;
}

TListColumnType RowType(const TkListItem& item, int column, TListColumnType columnType) {
  if (item.ColumnTypes() == nullptr) return columnType;
  bool isNumber = false;
  const int type = item.ColumnTypes()->Value(QString::number(column)).toInt(&isNumber);
  return isNumber && type >= ltNone && type <= ltDefault ? static_cast<TListColumnType>(type) : columnType;
}

}  // namespace

int TStringValueList::LowerBound(const QString& name) const {
  const auto before = [](const QString& line, const QString& key) {
    return CompareText(NameOf(line), key) < 0;
  };
  return static_cast<int>(std::lower_bound(FLines.begin(), FLines.end(), name, before) - FLines.begin());
}

int TStringValueList::IndexOfName(const QString& name) const {
  const int place = LowerBound(name);
  return place < Count() && CompareText(NameOf(FLines[place]), name) == 0 ? place : -1;
}

int TStringValueList::Add(const QString& line) {
  const QString name = NameOf(line);
  const int place = LowerBound(name);
  if (IndexOfName(name) < 0) FLines.insert(place, line);
  return place;
}

QString TStringValueList::Value(const QString& name) const {
  const int place = IndexOfName(name);
  return place >= 0 ? FLines[place].section(u'=', 1) : QString();
}

void TStringValueList::SetValue(const QString& name, const QString& value) {
  if (const int place = IndexOfName(name); place >= 0) Delete(place);
  Add(name + u'=' + value);
}

bool HasCell(const TkListItem& item, int column) {
  return column >= 0 && column <= item.SubItems().Count();
}

QString CellText(const TkListItem& item, int column) {
  return column == 0 ? item.Caption() : item.SubItems().Text(column - 1);
}

TkCell CellOf(const TkListItem& item, const TkListColumn& column) {
  const int index = column.Index();
  const QString text = CellText(item, index);
  if (const char16_t prefix = PrefixOf(text); prefix != 0)
    return {static_cast<TListColumnType>(prefix - 1), text.mid(1), prefix};
  return {RowType(item, index, column.ColumnType()), text, 0};
}

QString ShownText(const TkListItem& item, int column) {
  return ShownView(item, column).toString();
}

QStringView ShownView(const TkListItem& item, int column) {
  if (!HasCell(item, column)) return {};
  // A view, for sorts, which ask for every row: no text is copied.
  const QStringView text = column == 0 ? item.Caption() : item.SubItems()[column - 1];
  return PrefixOf(text) != 0 ? text.sliced(1) : text;
}

bool SetShownText(TkListItem& item, int column, const QString& text) {
  if (!HasCell(item, column)) return false;
  const char16_t prefix = PrefixOf(CellText(item, column));
  const QString whole = prefix != 0 ? QChar(prefix) + text : text;
  if (column == 0)
    item.SetCaption(whole);
  else
    item.SubItems().Put(column - 1, whole);
  return true;
}
