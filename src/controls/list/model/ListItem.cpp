#include "controls/list/model/ListItem.h"

#include "controls/list/model/ListItems.h"
#include "controls/list/model/RowStates.h"

TListItem::TListItem(TListItems& owner) : FOwner(owner), FSubItems(*this) {}

TListItem::~TListItem() = default;

int TListItem::Index() const {
  return FOwner.IndexOf(this);
}

void TListItem::SetCaption(const QString& caption) {
  if (caption == FCaption) return;
  FCaption = caption;
  Notify(TItemChange::Text);
}

void TListItem::SetImage(int& field, int index) {
  if (index == field) return;
  field = index;
  Notify(TItemChange::Image);
}

void TListItem::Notify(TItemChange change) {
  if (!Gone()) FOwner.Owner().ItemChanged(*this, change);
}

bool TListItem::HasState(unsigned bit) const {
  return !Gone() && (FOwner.Owner().RowStates().State(Index()) & bit) != 0;
}

void TListItem::SetState(unsigned bit, bool on) {
  FOwner.ChangeState(*this, on ? bit : 0, bit);
}

void TListItem::Delete() {
  if (!Gone()) FOwner.Delete(Index());
}

void TListItem::MakeVisible(bool partialOk) {
  if (!Gone()) FOwner.Owner().ScrollToItem(*this, partialOk);
}

void TListItem::Update() {
  Notify(TItemChange::Image);
}
