// What handlers may do to a list while it tells them: anything. First each fault by itself, then all at
// random.
#include "Monkey.h"
#include "ShownList.h"

#include "controls/picture/ImageList.h"

#include <QPointer>

using TListLifetime = TShownList;

TEST_F(TListLifetime, AClickSelectsTheRowItHitWhereverHandlersMoveIt) {
  Show({}, 4);
  List.SetSelected(List.Items()[0]);
  TListItem* const hit = List.Items()[2];
  List.OnSelectItem = [this](TListItem* item, bool selected) {
    if (!selected) item->Delete();
  };
  Click(TextOf(2));
  EXPECT_EQ(List.Selected(), hit);
  EXPECT_EQ(List.Items().Count(), 3);
}

TEST_F(TListLifetime, ARangeIsTheRowsThatWereMeant) {
  Show({.MultiSelect = true}, 8);
  Click(TextOf(1));
  List.OnSelectItem = [this](TListItem*, bool selected) {
    if (selected && List.Items().Count() == 8) List.Items().Delete(0);
  };
  Click(TextOf(4), Qt::LeftButton, Qt::ShiftModifier);
  QString selected;
  for (TListItem* item = List.Selected(); item != nullptr; item = List.GetNextSelected(item))
    selected += item->Caption().mid(4);
  EXPECT_EQ(selected, u"1234");
  EXPECT_EQ(List.ItemFocused()->Caption(), u"row 4");
}

TEST_F(TListLifetime, EveryRowHearsOfItsDeletionOnce) {
  Show({.MultiSelect = true}, 6);
  std::map<QString, int> told;
  List.OnDeletion = [&](TListItem* item) {
    ++told[item->Caption()];
    item->Delete();
    if (item->Caption() == u"row 1") List.Items()[3]->Delete();
    if (item->Caption() == u"row 2") List.Clear();
  };
  List.Clear();
  EXPECT_EQ(told.size(), 6U);
  EXPECT_TRUE(std::ranges::all_of(told, [](const auto& row) { return row.second == 1; }));
  EXPECT_EQ(List.Items().Count() + List.States().Count(), 0);
}

TEST_F(TListLifetime, OnlyTheRowsSelectedAtFirstAreDeleted) {
  Show({.MultiSelect = true}, 6);
  for (const int row : {1, 3})
    List.Items()[row]->SetSelected(true);
  List.OnSelectItem = [this](TListItem*, bool selected) {
    if (!selected) List.Items()[5]->SetSelected(true);
  };
  List.DeleteSelected();
  EXPECT_EQ(List.Items().Count(), 4);
}

TEST_F(TListLifetime, AComparisonMayChangeTheRows) {
  Show({}, 40);
  List.Items()[39]->SetSelected(true);
  int calls = 0;
  List.OnCompare = [&](TListItem* a, TListItem* b, int& result) {
    result = b->SubItems()[0].toInt() - a->SubItems()[0].toInt();
    if (++calls == 20) List.Items().Delete(7);
    if (calls == 30) List.Items().Add()->SubItems().Add(u"1000"_qs);
  };
  List.AlphaSort();
  EXPECT_EQ(List.Items().Count(), 40);
  EXPECT_EQ(List.ItemIndex(), 0);
  EXPECT_EQ(List.Items()[39]->SubItems()[0], u"1000") << "a row added meanwhile comes last";
  EXPECT_EQ(List.Items()[38]->Caption(), u"row 0");
  List.OnCompare = [&](TListItem*, TListItem*, int&) { throw std::runtime_error("compare"); };
  EXPECT_THROW(List.AlphaSort(), std::runtime_error);
  EXPECT_EQ(List.ItemIndex(), 0) << "the order is as before";
  List.OnCompare = nullptr;
  TakeLog();
  List.AlphaSort();
  EXPECT_EQ(List.Selected()->Caption(), u"row 39");
  EXPECT_EQ(TakeLog(), u"") << "no row changed its state";
}

TEST_F(TListLifetime, AHandlerMayReplaceItselfAndItsColumn) {
  Show({}, 3);
  auto kept = std::make_shared<int>(7);
  List.OnColumnClick = [this, kept](TListColumn* column) {
    List.OnColumnClick = nullptr;
    List.Columns().Clear();
    EXPECT_TRUE(column->Gone());
    EXPECT_EQ(column->Index(), -1);
    column->SetWidth(*kept);
  };
  QTest::mouseClick(Header(), Qt::LeftButton, {}, {20, 5});
  EXPECT_EQ(List.Columns().Count(), 0);
  QContextMenuEvent menu(QContextMenuEvent::Keyboard, {}, {});
  List.Items()[1]->SetFocused(true);
  QCoreApplication::sendEvent(&List, &menu);
  EXPECT_EQ(TakeLog(), u"popup") << "a list without columns answers the menu key";
}

TEST_F(TListLifetime, ALostReleaseHoldsNothing) {
  Show({.MultiSelect = true});
  QTest::mousePress(Header(), Qt::LeftButton, {}, {150, 5});
  MoveTo(*Header(), {220, 5});
  EXPECT_EQ(List.Columns()[0].Width(), 150);
  QTest::mousePress(Header(), Qt::LeftButton, {}, {20, 5});
  MoveTo(*Header(), {20, 5});
  QTest::mouseRelease(Header(), Qt::LeftButton, {}, {20, 5});
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, TextOf(1));
  TakeLog();
  MoveTo(*List.viewport(), TextOf(2));
  QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, TextOf(2));
  EXPECT_EQ(TakeLog(), u"up") << "no click of a header cell or of a row";
}

TEST_F(TListLifetime, AFreedImageListIsForgotten) {
  Show({}, 3);
  auto images = std::make_unique<TImageList>(QSize(16, 48));
  List.SetSmallImages(images.get());
  List.SetStateImages(images.get());
  const int height = List.Layout().Metrics().RowHeight;
  images.reset();
  EXPECT_EQ(List.SmallImages(), nullptr);
  EXPECT_LT(List.Layout().Metrics().RowHeight, height);
  List.grab();
}

namespace {

// A list that a handler destroyed is made anew.
class TListMonkey : public TMonkey {
 protected:
  void Make() {
    FList = new TListView;
    FList->resize(260, 180);
    FList->SetOptions({.MultiSelect = Rarely(2), .CheckBoxes = Rarely(2), .RowSelect = !Rarely(4)});
    Handle(*FList);
    FList->show();
  }

  void Refill() {
    const TListUpdate update(FList->Items());
    while (FList->Columns().Count() < 3)
      FList->Columns().Add(u"column"_qs, 20 + Below(120));
    for (int row = Below(30); row >= 0 && FList != nullptr; --row)
      FList->Items().Insert(Below(FList->Items().Count() + 1))->SetCaption(QString::number(Below(1000)));
  }

  void Destroy() {
    if (std::exchange(FDying, true)) return;
    delete FList.data();
    FDying = false;
  }

  void Something() override {
    if (FList == nullptr || !Rarely(4)) return;
    TCustomListView& list = *FList;
    TListItem* const row = list.Items().Item(Below(list.Items().Count()));
    if (row != nullptr && Rarely(2))
      return Any({[&] { row->Delete(); }, [&] { row->SetChecked(!row->Checked()); },
                  [&] { row->SetCaption(u"new"_qs); }, [&] { list.SetSelected(row); }});
    Any({[&] { list.Clear(); }, [&] { list.AlphaSort(); }, [&] { list.DeleteSelected(); }, [&] { Destroy(); },
         [&] { Refill(); }, [&] { list.Columns().Clear(); },
         [&] {
           if (list.Columns().Count() > 0) list.Columns().Delete(Below(list.Columns().Count()));
         },
         [&] {
           list.OnSelectItem = nullptr;
           Handle(list);
         }});
  }

  void Gesture() {
    TCustomListView& list = *FList;
    Any({[&] { Header(list); }, [&] { Header(list); }, [&] { Key(list); }, [&] { Menu(list); },
         [&] { Anything(); }, [&] { Mouse(*list.viewport()); }, [&] { Mouse(*list.viewport()); },
         [&] { Mouse(*list.viewport()); }});
  }

  QPointer<TCustomListView> FList;
};

}  // namespace

TEST_F(TListMonkey, NoHandlerLeavesAnythingDangling) {
  for (int step = 0; step < Steps() && !HasFatalFailure(); ++step) {
    SCOPED_TRACE(step);
    if (FList == nullptr) Make();
    if (FList->Items().Count() < 5 || FList->Columns().Count() == 0) Refill();
    if (FList != nullptr) Gesture();
    if (FList != nullptr && step % 40 == 0) FList->grab();
    if (FList != nullptr) CheckRows(*FList);
  }
  Destroy();
}
