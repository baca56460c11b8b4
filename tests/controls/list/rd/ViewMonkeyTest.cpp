// Gestures at random on the gallery's list while the handlers of all its events do anything at random:
// nothing may dangle, no count may go wrong. TALLYSCOPE_MONKEY_STEPS asks for a longer run.
#include "GalleryList.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <functional>
#include <random>

namespace {

constexpr int kShortRun = 3000;
constexpr Qt::Key kKeys[] = {Qt::Key_Down, Qt::Key_Up,    Qt::Key_Home,     Qt::Key_End,   Qt::Key_Space,
                             Qt::Key_F2,   Qt::Key_Right, Qt::Key_PageDown, Qt::Key_Minus, Qt::Key_Plus,
                             Qt::Key_0,    Qt::Key_Left,  Qt::Key_Return,   Qt::Key_A,     Qt::Key_Escape};
constexpr Qt::KeyboardModifier kShifts[] = {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier};
constexpr QEvent::Type kMouse[] = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseMove,
                                   QEvent::MouseButtonDblClick};

int Steps() {
  const int asked = qEnvironmentVariableIntValue("TALLYSCOPE_MONKEY_STEPS");
  return asked > 0 ? asked : kShortRun;
}

class TRdMonkey : public ::testing::Test {
 protected:
  int Below(int bound) { return std::uniform_int_distribution<int>(0, std::max(1, bound) - 1)(FRandom); }
  bool Rarely(int times) { return Below(times) == 0; }
  [[nodiscard]] TRdListView& List() { return FGallery->List(); }
  // The rows tell of their end while the list is destroyed: it is not touched any more.
  [[nodiscard]] bool Dead() const { return FGallery == nullptr || FDying; }

  void Make() {
    FGallery = std::make_unique<TGalleryList>();
    Handle();
    List().Bars().SetShowCustomVertScroll(Rarely(2));
    List().Bars().SetShowCustomHorzScroll(Rarely(2));
    List().AllSkinGroup().GroupClickExpand = Rarely(2);
    List().SetOpenOwnerDraw(!Rarely(5));
    List().resize(500 + Below(700), 200 + Below(300));
    List().show();
  }

  void Destroy() {
    if (std::exchange(FDying, true)) return;
    FGallery.reset();
    FDying = false;
  }

  void Refill() {
    const TEventScope scope(List().EventLife());  // keeps the rows that are being filled
    while (List().Groups().Count() < 3)
      List().Groups().Add(u"group"_qs);
    while (!Dead() && List().Columns().Count() < 9) {
      List().Columns().Add().SetColumnType(static_cast<TListColumnType>(Below(ltDefault + 1)));
      if (!Dead()) List().Columns()[List().Columns().Count() - 1].ComboBoxItems = {u"a"_qs, u"b"_qs};
    }
    for (int row = Below(15); row > 0 && !Dead(); --row) {
      TkListItem* const item = List().Items().Add(Below(6) - 1);
      for (int column = Below(12); column > 0 && !Dead() && item != nullptr && !item->Gone(); --column)
        item->SubItems().Add(QString::number(column));
    }
  }

  TkListItem* SomeRow() {
    const TkItemQuickList& all = List().Model().AllItems();
    return all.Count() > 0 ? all[Below(all.Count())] : nullptr;
  }
  TkListGroup* SomeGroup() { return List().Groups().Find(Below(List().Groups().Count() + 1)); }

  void Anything() {
    if (Dead() || FDepth > 3) return;
    ++FDepth;
    if (Rarely(5)) ToAll();
    if (!Dead() && Rarely(3)) ToRow(SomeRow());
    if (!Dead() && Rarely(6)) ToGroup(SomeGroup());
    --FDepth;
  }

  // One of them, at random.
  void Any(std::initializer_list<std::function<void()>> acts) {
    (acts.begin() + Below(static_cast<int>(acts.size())))->operator()();
  }

  // The row may lack the cell that was edited; no exception may pass through Qt.
  void Hide() {
    try {
      List().HideEditors();
    } catch (const EListError&) {
    }
  }

  void ToAll() {
    TRdListView& list = List();
    Any({[&] { list.Clear(); }, [&] { list.AlphaSort(); }, [&] { list.DeleteSelected(); }, [&] { Hide(); },
         [&] { list.Model().Checks().SetAll(Rarely(2)); },
         [&] { list.SetOpenGroupDraw(!list.OpenGroupDraw()); }, [&] { Refill(); },
         [&] {
           if (list.Columns().Count() > 0) list.Columns().Delete(Below(list.Columns().Count()));
         },
         [&] {
           list.OnSelectItem = nullptr;
           Handle();
         },
         [&] {
           if (Rarely(3))
             Any({[&] { Destroy(); }, [&] { list.Columns().Clear(); }, [&] { list.Groups().Clear(); }});
         }});
  }

  void ToRow(TkListItem* row) {
    if (row == nullptr) return;
    Any({[&] { row->Delete(); }, [&] { row->Delete(); }, [&] { row->SetChecked(!row->Checked()); },
         [&] { row->SetGroupID(Below(5) - 1); }, [&] { Rarely(2) ? row->Hide() : row->Show(); },
         [&] { row->MoveTo(Below(20)); }, [&] { row->SetSubItemChecked(Below(9), Rarely(2)); },
         [&] { row->SetSelected(!row->Selected()); },
         [&] { row->SetCaption(QString::number(Below(1000))); }});
  }

  void ToGroup(TkListGroup* group) {
    if (group == nullptr) return;
    Any({[&] { List().Groups().Delete(group->GroupID()); },
         [&] { group->SetGroupChecked(!group->GroupChecked()); },
         [&] { group->SetGroupExpand(!group->GroupExpand()); }});
  }

  void Handle();
  void Gesture();
  void Mouse(QWidget& widget);
  void Key(QWidget& widget);
  void Check(int step);

  std::mt19937 FRandom{7};
  std::unique_ptr<TGalleryList> FGallery;
  int FDepth = 0;
  bool FDying = false;
};

void TRdMonkey::Handle() {
  TRdListView& list = List();
  const auto anything = [this](auto&&...) { Anything(); };
  // What was told of is still whole when the handler has done its worst.
  const auto item = [this](TListItem* told, auto&&...) {
    Anything();
    (void)(told->Caption().size() + told->Index());
  };
  list.OnSelectItem = item;
  list.OnItemChecked = item;
  list.OnChange = [this, item](TListItem* told, TItemChange) {
    if (Rarely(4)) item(told);
  };
  list.OnDeletion = item;
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
  list.GroupShowHide = [this](TRdListView&, TkListGroup& group, bool& show) {
    Anything();
    (void)group.Header().size();
    if (Rarely(8)) show = !show;
  };
  list.OnButtonClick = list.OnLabelClick = list.OnIconLabelClick = list.OnLabelIconClick =
      list.OnStarCaptionClick = item;
  list.OnCheckBoxClick = anything;
  list.OnItemCheckBoxClick = item;
  list.OnSubItemChecking = list.OnSubItemChecked = item;
  list.EditOnEnter = list.EditOnExit = list.EditOnChange = item;
  list.EditOnKeyPress = anything;
  list.OnColumnComboBoxDropDown = list.OnColumnComboBoxChange = item;
  list.OnWriteLog = anything;
}

void TRdMonkey::Mouse(QWidget& widget) {
  const QEvent::Type type = kMouse[Below(std::size(kMouse))];
  const QPoint pos(Below(widget.width() + 10), Below(widget.height() + 10));
  const Qt::MouseButton button = Rarely(6) ? Qt::RightButton : Qt::LeftButton;
  const bool moves = type == QEvent::MouseMove;
  QMouseEvent event(type, pos, widget.mapToGlobal(pos), moves ? Qt::NoButton : button,
                    Rarely(6) ? Qt::NoButton : button, kShifts[Below(3)]);
  QCoreApplication::sendEvent(&widget, &event);
}

void TRdMonkey::Key(QWidget& widget) {
  QKeyEvent event(QEvent::KeyPress, kKeys[Below(std::size(kKeys))], kShifts[Below(3)], u"5"_qs);
  QCoreApplication::sendEvent(&widget, &event);
}

void TRdMonkey::Gesture() {
  TRdEditors& editors = List().Editors();
  if (editors.Shown() && Rarely(2)) {
    QWidget& editor = editors.Edit().isVisible() ? static_cast<QWidget&>(editors.Edit()) : editors.ComboBox();
    return Rarely(2) ? Key(editor) : Mouse(*editors.ComboBox().viewport());
  }
  switch (Below(12)) {
    case 0:
      if (QWidget* const header = List().childAt(List().HeaderRect().center())) Mouse(*header);
      return;
    case 1:
      return Mouse(Rarely(2) ? List().Bars().VertBar() : List().Bars().HorzBar());
    case 2:
      return List().SetTopIndex(Below(12));
    case 3:
      return Anything();
    case 4: {
      QWheelEvent event({50, 50}, {50, 50}, {}, {0, 120 * (Below(3) - 1)}, {}, {}, Qt::NoScrollPhase, false);
      QCoreApplication::sendEvent(List().viewport(), &event);
      return;
    }
    case 5:
      if (TkListItem* const row = SomeRow())
        List().Editors().Open(*row, Below(List().Columns().Count()), std::nullopt, false);
      return;
    case 6:
    case 7:
    case 8:
      return Key(List());
    default:
      return Mouse(*List().viewport());
  }
}

void TRdMonkey::Check(int step) {
  const auto& all = List().Model().AllItems();
  const auto checked = [](const TkListItem* row) { return row->Checked(); };
  ASSERT_EQ(List().States().Count(), List().Items().Count()) << step;
  ASSERT_EQ(List().Model().Checks().CheckedTotal(), std::count_if(all.begin(), all.end(), checked)) << step;
  for (int row = 0; row < List().Items().Count(); ++row) {
    const TkListItem& item = *List().Items()[row];
    ASSERT_TRUE(!item.Gone() && all.Contains(item) && item.Index() == row) << step;
    ASSERT_EQ(item.HasState(kRowChecked), item.Checked()) << step;
  }
  for (const auto& group : List().Groups()) {
    const TkItemQuickList& members = group->Items();
    ASSERT_EQ(group->CheckedCount(), std::count_if(members.begin(), members.end(), checked)) << step;
    for (const TkListItem* row : members)
      ASSERT_TRUE(all.Contains(*row) && row->Group() == group.get()) << step;
    for (const TkListItem* row : group->HiddenItems())
      ASSERT_TRUE(row->Hidden() && members.Contains(*row)) << step;
  }
  const TkListItem* const edited = List().MouseState().EditItem;
  ASSERT_TRUE(edited == nullptr || all.Contains(*edited)) << step;
  ASSERT_EQ(edited != nullptr, List().Editors().Shown()) << step;
  ASSERT_FALSE(List().EventLife()->Telling()) << step;
}

}  // namespace

TEST_F(TRdMonkey, NoHandlerLeavesAnythingDangling) {
  for (int step = 0; step < Steps() && !HasFatalFailure(); ++step) {
    if (FGallery == nullptr) Make();
    if (List().Items().Count() < 6 || List().Columns().Count() < 5) Refill();
    if (FGallery != nullptr) Gesture();
    if (FGallery != nullptr && step % 40 == 0) List().grab();
    if (step % 50 == 0) QCoreApplication::processEvents();
    if (FGallery != nullptr) Check(step);
  }
  Destroy();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
