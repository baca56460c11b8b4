// Gestures at random on a list while the handlers of all its events do anything at random: nothing may
// dangle, no count may go wrong. What the monkeys of both lists have in common. TALLYSCOPE_MONKEY_STEPS asks
// for a longer run.
#pragma once

#include "controls/list/ListView.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMouseEvent>

#include <algorithm>
#include <functional>
#include <random>

class TMonkey : public ::testing::Test {
 protected:
  static int Steps() {
    const int asked = qEnvironmentVariableIntValue("TALLYSCOPE_MONKEY_STEPS");
    return asked > 0 ? asked : 3000;
  }

  int Below(int bound) { return std::uniform_int_distribution<int>(0, std::max(1, bound) - 1)(FRandom); }
  bool Rarely(int times) { return Below(times) == 0; }
  // One of them, at random.
  void Any(std::initializer_list<std::function<void()>> acts) {
    (acts.begin() + Below(static_cast<int>(acts.size())))->operator()();
  }

  // What a handler does to the list that it was told of, unless that is gone or going.
  virtual void Something() = 0;
  void Anything() {
    if (FDying || FDepth > 3) return;
    ++FDepth;
    Something();
    --FDepth;
  }

  // What was told of is still whole when a handler has done its worst.
  void ToldOf(const TListItem& item) {
    Anything();
    (void)(item.Caption().size() + item.Index());
  }
  void Handle(TCustomListView& list) {
    const auto anything = [this](auto&&...) { Anything(); };
    const auto item = [this](TListItem* told, auto&&...) { ToldOf(*told); };
    list.OnSelectItem = item;
    list.OnItemChecked = list.OnDeletion = item;
    list.OnChange = [this, item](TListItem* told, TItemChange) {
      if (Rarely(4)) item(told);
    };
    list.OnCompare = [this](TListItem* a, TListItem* b, int& result) {
      if (Rarely(30)) Anything();
      result = Rarely(30) ? Below(3) - 1 : QString::compare(a->Caption(), b->Caption());
    };
    list.OnColumnClick = [this](TListColumn* column) {
      Anything();
      (void)column->Caption().size();
    };
    list.OnMouseDown = list.OnMouseUp = anything;
    list.OnClick = list.OnDblClick = anything;
    list.OnKeyDown = anything;
    list.OnContextPopup = anything;
  }

  void Mouse(QWidget& widget) {
    constexpr QEvent::Type types[] = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseMove,
                                      QEvent::MouseButtonDblClick};
    const QEvent::Type type = types[Below(std::size(types))];
    const QPoint pos(Below(widget.width() + 10), Below(widget.height() + 10));
    const Qt::MouseButton button = Rarely(6) ? Qt::RightButton : Qt::LeftButton;
    QMouseEvent event(type, pos, widget.mapToGlobal(pos), type == QEvent::MouseMove ? Qt::NoButton : button,
                      Rarely(6) ? Qt::NoButton : button, Shift());
    QCoreApplication::sendEvent(&widget, &event);
  }

  void Header(TCustomListView& list) {
    if (QWidget* const header = list.childAt(list.HeaderRect().center())) Mouse(*header);
  }

  void Key(QWidget& widget) {
    constexpr Qt::Key keys[] = {Qt::Key_Down,  Qt::Key_Up,     Qt::Key_Home,  Qt::Key_End, Qt::Key_Space,
                                Qt::Key_F2,    Qt::Key_Right,  Qt::Key_Minus, Qt::Key_A,   Qt::Key_PageDown,
                                Qt::Key_Plus,  Qt::Key_0,      Qt::Key_Left,  Qt::Key_1,   Qt::Key_PageUp,
                                Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Return};
    QKeyEvent event(QEvent::KeyPress, keys[Below(std::size(keys))], Shift(), u"5"_qs);
    QCoreApplication::sendEvent(&widget, &event);
  }

  static void Menu(QWidget& widget) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(&widget, &event);
  }

  // The bits of the rows fit the rows.
  static void CheckRows(TCustomListView& list) {
    const TListItems& items = list.Items();
    ASSERT_EQ(list.States().Count(), items.Count());
    int selected = 0;
    int focused = 0;
    for (int row = 0; row < items.Count(); ++row) {
      ASSERT_TRUE(!items[row]->Gone() && items[row]->Index() == row);
      selected += items[row]->Selected() ? 1 : 0;
      focused += items[row]->Focused() ? 1 : 0;
    }
    ASSERT_EQ(list.SelCount(), selected);
    ASSERT_LE(focused, 1);
    ASSERT_TRUE(list.Options().MultiSelect || selected <= 1);
    ASSERT_FALSE(list.EventLife()->Telling());
  }

  std::mt19937 FRandom{11};
  int FDepth = 0;
  bool FDying = false;  // the rows tell of their end while the list is destroyed

 private:
  Qt::KeyboardModifiers Shift() {
    constexpr Qt::KeyboardModifier shifts[] = {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier};
    return shifts[Below(3)];
  }
};
