#include "controls/list/rd/model/RdListItem.h"

#include "controls/list/rd/model/RdListModel.h"

#include <algorithm>
#include <cstdlib>

namespace {
// The published values for "no colour of its own" beside clNone and clDefault are this and 1.
constexpr TColor kNoOverride = -16777215;
}  // namespace

// What few rows need.
struct TkListItem::TExtras {
  TColor BackColor = clDefault;
  int OverlayIndex = -1;
  std::unique_ptr<TStringValueList> ColumnTypes;
};

TkListItem::TkListItem(TkListItems& owner)
    : TListItem(owner), FSerial(owner.NextSerial()), FIsGroupHeader(owner.Model().TakeNextItemIsHeader()) {}

TkListItem::~TkListItem() = default;

TkListItems& TkListItem::OwnerItems() const {
  return static_cast<TkListItems&>(Owner());
}

TkListModel& TkListItem::Model() const {
  return OwnerItems().Model();
}

TkListItem::TExtras& TkListItem::Extras() {
  if (FExtras == nullptr) FExtras = std::make_unique<TExtras>();
  return *FExtras;
}

int TkListItem::Index() const {
  return OwnerItems().IndexOfRow(*this);
}

void TkListItem::SetEnabled(bool enabled) {
  if (enabled == FEnabled) return;
  FEnabled = enabled;
  Update();
}

TColor TkListItem::BackColor() const {
  return FExtras != nullptr ? FExtras->BackColor : clDefault;
}

bool TkListItem::HasBackColor() const {
  const TColor color = BackColor();
  return color != clNone && color != clDefault && color != 1 && color != kNoOverride;
}

void TkListItem::SetBackColor(TColor color) {
  if (color == BackColor()) return;
  Extras().BackColor = color;
  Update();
}

int TkListItem::OverlayIndex() const {
  return FExtras != nullptr ? FExtras->OverlayIndex : -1;
}

void TkListItem::SetOverlayIndex(int index) {
  if (index != OverlayIndex()) SetImage(Extras().OverlayIndex, index);
}

const TStringValueList* TkListItem::ColumnTypes() const {
  return FExtras != nullptr ? FExtras->ColumnTypes.get() : nullptr;
}

TStringValueList& TkListItem::MakeColumnTypes() {
  if (ColumnTypes() == nullptr) Extras().ColumnTypes = std::make_unique<TStringValueList>();
  return *FExtras->ColumnTypes;
}

void TkListItem::DropColumnTypes() {
  if (FExtras != nullptr) FExtras->ColumnTypes.reset();
}

void TkListItem::SetGroupID(int groupID) {
  if (Gone()) return;
  const TEventScope scope(OwnerItems().Life());
  Model().Placing().SetGroup(*this, groupID);
  if (!scope.ListGone()) OwnerItems().Tell();
}

void TkListItem::SetChecked(bool checked) {
  Model().Checks().Set(*this, checked);
}

bool TkListItem::SubItemChecked(int column) const {
  return column > 0 && !ShownText(*this, column).isEmpty();
}

// OnSubItemChecking comes even if the box has that state already, as its handler may turn the wish over;
// OnSubItemChecked only after a change.
void TkListItem::SetSubItemChecked(int column, bool checked) {
  if (Gone() || column <= 0 || !HasCell(*this, column)) return;
  const TEventScope scope(OwnerItems().Life());
  const bool before = SubItemChecked(column);
  if (!Model().ListView().DoSubItemChecking(*this, column, checked) || Gone() || checked == before) return;
  SetShownText(*this, column, checked ? QStringLiteral("1") : QString());
  if (scope.ListGone() || Gone()) return;
  (void)Model().ListView().DoSubItemChecked(*this, column, checked);
}

int TkListItem::HiddenIndex() const {
  return FHidden ? FSameIndexOrder : -1;
}

void TkListItem::Hide(int index) {
  if (FHidden || Gone()) return;
  OwnerItems().TakeOut(*this, index);
  OwnerItems().Tell();
}

void TkListItem::Show(int index) {
  if (!FHidden || Gone()) return;
  Model().Placing().Show(*this, index);
  OwnerItems().Tell();
}

void TkListItem::MoveTo(int newIndex) {
  const int from = Index();
  if (from < 0) return;
  const int to = std::clamp(newIndex, 0, OwnerItems().Count() - 1);
  // Neighbours change places, which costs nothing but the two.
  if (std::abs(to - from) < 2) return ExchangeWith(to);
  OwnerItems().Shift(from, to);
  OwnerItems().Tell();
}

void TkListItem::ExchangeWith(int index) {
  const int own = Index();
  if (own < 0 || index == own || index < 0 || index >= OwnerItems().Count()) return;
  OwnerItems().Exchange(own, index);
  OwnerItems().Tell();
}

void TkListItem::Delete() {
  if (!Gone()) OwnerItems().DeleteRows({this});
}
