// What handlers may do to a list while it tells them: anything. First each fault by itself, then all at
// random.
#include "ShownList.h"

#include "controls/picture/ImageList.h"

#include <QMouseEvent>
#include <QPointer>

#include <algorithm>
#include <random>

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
  const std::map<QString, int> all{{u"row 0"_qs, 1}, {u"row 1"_qs, 1}, {u"row 2"_qs, 1},
                                   {u"row 3"_qs, 1}, {u"row 4"_qs, 1}, {u"row 5"_qs, 1}};
  List.Clear();
  EXPECT_EQ(told, all);
  EXPECT_EQ(List.Items().Count(), 0);
  EXPECT_EQ(List.States().Count(), 0);
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
  EXPECT_EQ(List.Selected()->Caption(), u"row 5");
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
  const auto move = [](QWidget& widget, QPoint pos) {
    QMouseEvent event(QEvent::MouseMove, pos, widget.mapToGlobal(pos), Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&widget, &event);
  };
  QTest::mousePress(Header(), Qt::LeftButton, {}, {150, 5});
  move(*Header(), {220, 5});
  EXPECT_EQ(List.Columns()[0].Width(), 150);
  QTest::mousePress(Header(), Qt::LeftButton, {}, {20, 5});
  move(*Header(), {20, 5});
  QTest::mouseRelease(Header(), Qt::LeftButton, {}, {20, 5});
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, TextOf(1));
  TakeLog();
  move(*List.viewport(), TextOf(2));
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

constexpr int kShortRun = 3000;

int Steps() {
  const int asked = qEnvironmentVariableIntValue("TALLYSCOPE_MONKEY_STEPS");
  return asked > 0 ? asked : kShortRun;
}

// Gestures at random on a list whose handlers do anything at random. A list that a handler destroyed is made
// anew.
class TListMonkey : public ::testing::Test {
 protected:
  int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(FRandom); }
  bool Rarely(int times) { return Below(times) == 0; }

  void Make() {
    FList = new TListView;
    FList->resize(260, 180);
    FList->SetOptions({.MultiSelect = Rarely(2), .CheckBoxes = Rarely(2), .RowSelect = !Rarely(4)});
    Handle();
    FList->show();
  }

  void Refill() {
    const TListUpdate update(FList->Items());
    while (FList->Columns().Count() < 3)
      FList->Columns().Add(u"column"_qs, 20 + Below(120));
    for (int row = Below(30); row >= 0 && FList != nullptr; --row)
      FList->Items().Insert(Below(FList->Items().Count() + 1))->SetCaption(QString::number(Below(1000)));
  }

  // The rows tell of their end while the list is destroyed: it is not destroyed twice.
  void Destroy() {
    if (std::exchange(FDying, true)) return;
    delete FList.data();
    FDying = false;
  }

  // What a handler does to the list that it was told of.
  void Anything() {
    if (FList == nullptr || FDepth > 3) return;
    ++FDepth;
    Something(*FList);
    --FDepth;
  }

  TListItem* SomeRow() { return FList->Items().Item(Below(std::max(1, FList->Items().Count()))); }

  void Something(TCustomListView& list) {
    TListItem* const row = SomeRow();
    switch (Below(60)) {
      case 0:
        return list.Clear();
      case 1:
        return list.AlphaSort();
      case 2:
        return list.DeleteSelected();
      case 3:
        return list.Columns().Count() > 0 ? list.Columns().Delete(Below(list.Columns().Count())) : void();
      case 4:
        return Destroy();
      case 5:
        list.OnSelectItem = nullptr;
        return Handle();
      case 6:
        return list.SetSelected(row);
      case 7:
      case 8:
      case 9:
        return row != nullptr ? row->Delete() : void();
      case 10:
        return row != nullptr ? row->SetChecked(!row->Checked()) : void();
      case 11:
        return list.Columns().Clear();
      case 12:
        return Refill();
      case 13:
        return row != nullptr ? row->SetCaption(u"new"_qs) : void();
      default:
        return;
    }
  }

  void Handle() {
    const auto anything = [this] { Anything(); };
    FList->OnSelectItem = [=](TListItem* item, bool) {
      anything();
      (void)item->Caption().size();
    };
    FList->OnItemChecked = [=](TListItem*) { anything(); };
    FList->OnChange = [=](TListItem* item, TItemChange) {
      anything();
      (void)item->Index();
    };
    FList->OnDeletion = [=](TListItem*) { anything(); };
    FList->OnCompare = [=, this](TListItem* a, TListItem* b, int& result) {
      if (Rarely(20)) anything();
      result = Rarely(30) ? Below(3) - 1 : QString::compare(a->Caption(), b->Caption());
    };
    FList->OnColumnClick = [=](TListColumn*) { anything(); };
    FList->OnMouseDown = [=](Qt::MouseButton, Qt::KeyboardModifiers, int, int) { anything(); };
    FList->OnMouseUp = FList->OnMouseDown;
    FList->OnClick = anything;
    FList->OnDblClick = anything;
    FList->OnKeyDown = [=](int&, Qt::KeyboardModifiers) { anything(); };
    FList->OnContextPopup = [=](const QPoint&, bool& handled) {
      anything();
      handled = true;
    };
  }

  void Mouse(QWidget& widget, QEvent::Type type) {
    constexpr Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::LeftButton, Qt::LeftButton, Qt::RightButton};
    const Qt::MouseButton button = buttons[Below(4)];
    const QPoint pos(Below(widget.width() + 10), Below(widget.height() + 10));
    const bool moves = type == QEvent::MouseMove;
    QMouseEvent event(type, pos, widget.mapToGlobal(pos), moves ? Qt::NoButton : button,
                      Rarely(8) ? Qt::NoButton : button, Shift());
    QCoreApplication::sendEvent(&widget, &event);
  }

  Qt::KeyboardModifiers Shift() {
    constexpr Qt::KeyboardModifier shifts[] = {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier};
    return shifts[Below(3)];
  }

  void Gesture() {
    constexpr QEvent::Type presses[] = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                        QEvent::MouseMove, QEvent::MouseButtonDblClick};
    constexpr Qt::Key keys[] = {Qt::Key_Down, Qt::Key_Up,    Qt::Key_Home, Qt::Key_End,    Qt::Key_PageDown,
                                Qt::Key_A,    Qt::Key_Space, Qt::Key_1,    Qt::Key_Return, Qt::Key_PageUp};
    switch (Below(8)) {
      case 0:
      case 1:
        if (QWidget* const header = FList->childAt(FList->HeaderRect().center()))
          Mouse(*header, presses[Below(4)]);
        return;
      case 2: {
        QKeyEvent event(QEvent::KeyPress, keys[Below(std::size(keys))], Shift(), u"5"_qs);
        QCoreApplication::sendEvent(FList, &event);
        return;
      }
      case 3: {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(FList, &event);
        return;
      }
      case 4:
        return Anything();
      default:
        return Mouse(*FList->viewport(), presses[Below(4)]);
    }
  }

  // The bits of the rows fit the rows.
  void Check(int step) {
    const TListItems& items = FList->Items();
    const TRowStates& states = std::as_const(*FList).States();
    ASSERT_EQ(states.Count(), items.Count()) << step;
    int selected = 0;
    int focused = 0;
    for (int row = 0; row < items.Count(); ++row) {
      ASSERT_FALSE(items[row]->Gone()) << step;
      ASSERT_EQ(items[row]->Index(), row) << step;
      selected += items[row]->Selected() ? 1 : 0;
      focused += items[row]->Focused() ? 1 : 0;
    }
    ASSERT_EQ(FList->SelCount(), selected) << step;
    ASSERT_LE(focused, 1) << step;
    ASSERT_TRUE(FList->Options().MultiSelect || selected <= 1) << step;
    ASSERT_FALSE(FList->EventLife()->Telling()) << step;
  }

  std::mt19937 FRandom{11};
  QPointer<TCustomListView> FList;
  int FDepth = 0;
  bool FDying = false;
};

}  // namespace

TEST_F(TListMonkey, NoHandlerLeavesAnythingDangling) {
  for (int step = 0; step < Steps(); ++step) {
    if (FList == nullptr) Make();
    if (FList->Items().Count() < 5 || FList->Columns().Count() == 0) Refill();
    if (FList != nullptr) Gesture();
    if (FList != nullptr && step % 40 == 0) FList->grab();
    if (FList != nullptr) Check(step);
    if (HasFatalFailure()) break;
  }
  Destroy();
}
