// The rows and groups of a TRdListView without a window: the control that their model asks and tells.
#pragma once

#include "fixtures/QtPrinters.h"

#include "controls/list/model/RowStates.h"
#include "controls/list/rd/model/RdListModel.h"

#include <functional>

class TPlainRdList : public TListItemsOwner, public TkListOwner {
 public:
  TPlainRdList() : Items(*this, *this), Model(Items.Model()) {
    State.CheckBoxes = true;
    States.OnChange = [this](int row, unsigned before, unsigned after) {
      TkListItem* const item = Items[row];
      const TEventScope scope(EventLife);
      if (!Tell(EventLife, OnState, row, after) || item->Gone()) return;
      if (((before ^ after) & kRowChecked) != 0) Model.Checks().HostChanged(*item);
    };
  }

  TkListItem* Add(const QString& caption, int groupID = -1) {
    TkListItem* const item = Items.Add(groupID);
    item->SetCaption(caption);
    return item;
  }
  // One row for each letter.
  void Fill(const QString& captions, int groupID = -1) {
    for (const QChar caption : captions)
      Add(caption, groupID);
  }
  void AddGroups(int count) {
    for (int group = 0; group < count; ++group)
      Model.Groups().Add();
  }

  // The captions in order; a header row as its group's number in brackets.
  [[nodiscard]] QString Captions() const {
    QString captions;
    for (int row = 0; row < Items.Count(); ++row)
      captions += Items[row]->IsGroupHeader() ? u'[' + QString::number(Items[row]->GroupID()) + u']'
                                              : Items[row]->Caption();
    return captions;
  }
  [[nodiscard]] QString Having(unsigned bit) const {
    QString captions;
    for (int row = States.Next(-1, bit); row >= 0; row = States.Next(row, bit))
      captions += Items[row]->Caption();
    return captions;
  }
  [[nodiscard]] TkListGroup& Group(int groupID) { return Model.Groups()[groupID]; }

  std::unique_ptr<TListItem> CreateListItem(TListItems& items) override {
    if (PlainFactory) return std::make_unique<TListItem>(items);
    return std::make_unique<TkListItem>(static_cast<TkListItems&>(items));
  }
  TRowStates& RowStates() override { return States; }
  const TListLifePtr& Life() const override { return EventLife; }
  void ItemChanged(TListItem& item, TItemChange) override {
    if (Model.ItemShows(static_cast<TkListItem&>(item))) Log << u"show "_qs + item.Caption();
  }
  void ItemDeleting(TListItem& item) override {
    Log << u"delete "_qs + item.Caption();
    (void)Tell(EventLife, OnDeletion, item);
  }
  void RowsChanged() override {}
  void UpdatingChanged(bool) override {}
  void ScrollToItem(TListItem&, bool) override {}

  const TkListState& ListState() const override { return State; }
  int EndOfPage() const override { return 10; }
  int HorzScrollPos() const override { return HorzPos; }
  void ScrollToHorz(int pos) override { HorzPos = pos; }
  void RedrawRow(TkListItem& item) override { Log << u"redraw "_qs + item.Caption(); }
  void RedrawList() override { Log << u"redraw"_qs; }
  void Realign() override { ++Realigned; }
  void ResetMouseState() override { Log << u"reset mouse"_qs; }
  void ForgetBoxClick() override {}
  void ItemGone(TListItem& item) override {
    ++(static_cast<TkListItem&>(item).IsGroupHeader() ? HeadersGone : RowsGone);
  }
  TListItems::TCompare RowCompare() override { return OnCompare; }
  bool DoItemChecked(TkListItem& item) override {
    if (LogChecks) Log << (item.Checked() ? u"check "_qs : u"uncheck "_qs) + item.Caption();
    return Tell(EventLife, OnItemChecked, item);
  }
  bool DoGroupShowHide(TkListGroup& group, bool& showState) override {
    return Tell(EventLife, OnGroupShowHide, group, showState);
  }
  bool DoSubItemChecking(TkListItem& item, int column, bool& checked) override {
    Log << u"checking "_qs + item.Caption() + QString::number(column);
    checked = checked && !RefuseSubItem;
    return Tell(EventLife, OnSubItemChecking, item);
  }
  bool DoSubItemChecked(TkListItem& item, int column, bool&) override {
    Log << u"checked "_qs + item.Caption() + QString::number(column);
    return true;
  }

  TListLifePtr EventLife = std::make_shared<TListLife>();
  TRowStateList States;
  TkListState State;
  TkListItems Items;
  TkListModel& Model;
  QStringList Log;
  bool LogChecks = false;
  bool PlainFactory = false;
  bool RefuseSubItem = false;
  int HorzPos = 0;
  int Realigned = 0;
  int HeadersGone = 0;
  int RowsGone = 0;
  TListItems::TCompare OnCompare;
  std::function<void(TkListItem&)> OnItemChecked;
  std::function<void(TkListItem&)> OnSubItemChecking;
  std::function<void(TListItem&)> OnDeletion;
  std::function<void(int, unsigned)> OnState;  // a row and its bits, before its check is booked
  std::function<void(TkListGroup&, bool&)> OnGroupShowHide;
};
