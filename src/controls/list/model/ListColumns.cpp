#include "controls/list/model/ListColumns.h"

#include "controls/list/ListTypes.h"

#include <algorithm>
#include <utility>

int TListColumn::Index() const {
  return FOwner.IndexOf(*this);
}

void TListColumn::SetWidth(int width) {
  if (FMaxWidth > 0) width = std::min(width, FMaxWidth);
  Set(FWidth, std::max({width, FMinWidth, 0}));
}

void TListColumn::SetMinWidth(int width) {
  Set(FMinWidth, width);
  SetWidth(FWidth);
}

void TListColumn::SetMaxWidth(int width) {
  Set(FMaxWidth, width);
  SetWidth(FWidth);
}

void TListColumn::Changed() {
  if (!FGone) FOwner.Changed();
}

TListColumn& TListColumns::Add() {
  FColumns.push_back(CreateColumn());
  TListColumn& added = *FColumns.back();
  Changed();
  return added;
}

TListColumn& TListColumns::Add(const QString& caption, int width, TAlignment alignment) {
  TListColumn& column = Add();
  column.SetCaption(caption);
  column.SetWidth(width);
  column.SetAlignment(alignment);
  return column;
}

void TListColumns::Delete(int index) {
  const auto place = FColumns.begin() + IndexOf((*this)[index]);
  std::unique_ptr<TListColumn> column = std::move(*place);
  FColumns.erase(place);
  Bury(std::move(column));
  Changed();
}

void TListColumns::Clear() {
  for (auto& column : std::exchange(FColumns, {}))
    Bury(std::move(column));
  Changed();
}

void TListColumns::Bury(std::unique_ptr<TListColumn> column) {
  column->FGone = true;
  FLife->Bury(std::move(column));
}

void TListColumns::SetSorted(int index, TSortState state) {
  for (int column = 0; column < Count(); ++column)
    (*this)[column].SetSortState(column == index ? state : ssNone);
}

TListColumn& TListColumns::operator[](int index) const {
  if (index < 0 || index >= Count()) throw EListError("TListColumns: index out of range");
  return *FColumns[static_cast<size_t>(index)];
}

int TListColumns::IndexOf(const TListColumn& column) const {
  const auto is = [&column](const auto& one) { return one.get() == &column; };
  const auto found = std::find_if(FColumns.begin(), FColumns.end(), is);
  return found == FColumns.end() ? -1 : static_cast<int>(found - FColumns.begin());
}

std::unique_ptr<TListColumn> TListColumns::CreateColumn() {
  return std::make_unique<TListColumn>(*this);
}

void TListColumns::Changed() const {
  if (OnChange) OnChange();
}
