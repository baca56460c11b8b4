// Rows without a window: the owner that a list control would be, with a record of what it was told.
#pragma once

#include "controls/list/model/ListItems.h"
#include "controls/list/model/RowStates.h"

#include <QStringList>

class TPlainList : public TListItemsOwner {
 public:
  TPlainList() : Items(*this) {
    States.OnChange = [this](int row, unsigned before, unsigned after) {
      if (((before ^ after) & kRowSelected) != 0)
        Log << ((after & kRowSelected) != 0 ? u"select "_qs : u"deselect "_qs) + Items[row]->Caption();
    };
  }

  TListItem* Add(const QString& caption) {
    TListItem* const item = Items.Add();
    item->SetCaption(caption);
    return item;
  }

  [[nodiscard]] QString Captions() const {
    QStringList captions;
    for (const TListItem* item : Items)
      captions << item->Caption();
    return captions.join(u' ');
  }

  // The captions of the rows that have the bit.
  [[nodiscard]] QString Having(unsigned bit) const {
    QStringList captions;
    for (int row = States.Next(-1, bit); row >= 0; row = States.Next(row, bit))
      captions << Items[row]->Caption();
    return captions.join(u' ');
  }

  std::unique_ptr<TListItem> CreateListItem(TListItems& items) override {
    return std::make_unique<TListItem>(items);
  }
  TRowStates& RowStates() override { return States; }
  const TListLifePtr& Life() const override { return EventLife; }
  void ItemChanged(TListItem&, TItemChange) override {}
  void ItemDeleting(TListItem& item) override { Log << u"delete "_qs + item.Caption(); }
  void RowsChanged() override { Log << u"rows"_qs; }
  void UpdatingChanged(bool updating) override { Log << (updating ? u"begin"_qs : u"end"_qs); }
  void ScrollToItem(TListItem&, bool) override {}

  TListLifePtr EventLife = std::make_shared<TListLife>();
  TRowStateList States;
  TListItems Items;
  QStringList Log;
};
