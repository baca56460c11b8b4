#include "controls/list/rd/model/RdListColumn.h"

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
