// What a screen reader gets of a list.
#include "ShownList.h"

#include "controls/list/accessible/ListAccessible.h"

#include <QAccessible>

#include <vector>

namespace {

using TNotices = std::vector<std::pair<QAccessible::Event, int>>;

TNotices Notices;

void Notice(QAccessibleEvent& event) {
  Notices.emplace_back(event.type(), event.child());
}

// What is told of while that is done.
TNotices ToldBy(const std::function<void()>& act) {
  Notices.clear();
  SetListNoticeSink(Notice);
  act();
  SetListNoticeSink(nullptr);
  return Notices;
}

class TListAccessibility : public TShownList {
 protected:
  void SetUp() override {
    Show({.MultiSelect = true, .CheckBoxes = true}, 3);
    Root = QAccessible::queryAccessibleInterface(&List);
    ASSERT_NE(Root, nullptr);
    Table = Root->tableInterface();
    ASSERT_NE(Table, nullptr);
  }

  QAccessibleInterface* Root = nullptr;
  QAccessibleTableInterface* Table = nullptr;
};

}  // namespace

TEST_F(TListAccessibility, RowsCellsAndHeaders) {
  EXPECT_EQ(Root->role(), QAccessible::Table);
  EXPECT_EQ(Table->rowCount(), 3);
  EXPECT_EQ(Table->columnCount(), 2);
  EXPECT_EQ(Table->cellAt(2, 1)->text(QAccessible::Name), u"20");
  EXPECT_EQ(Table->cellAt(3, 0), nullptr);
  ASSERT_EQ(Root->childCount(), 2 + 3 * 2);
  EXPECT_EQ(Root->child(1)->role(), QAccessible::ColumnHeader);
  for (int child = 0; child < Root->childCount(); ++child)
    EXPECT_EQ(Root->indexOfChild(Root->child(child)), child);

  const QPoint global = List.viewport()->mapToGlobal(TextOf(1));
  EXPECT_EQ(Root->childAt(global.x(), global.y())->text(QAccessible::Name), u"row 1");
  EXPECT_TRUE(Table->cellAt(1, 0)->rect().contains(global));
  EXPECT_EQ(Table->cellAt(1, 1)->tableCellInterface()->columnHeaderCells().value(0), Root->child(1));
}

TEST_F(TListAccessibility, StatesKeysActionsAndSortAreTold) {
  List.Items()[1]->SetChecked(true);
  List.SetSelected(List.Items()[1]);
  const QAccessible::State state = Table->cellAt(1, 0)->state();
  EXPECT_TRUE(state.checkable && state.checked && state.selected && state.focused);
  EXPECT_FALSE(Table->cellAt(1, 1)->state().checkable || Table->cellAt(1, 1)->state().focused) << "one cell";
  EXPECT_FALSE(Table->cellAt(0, 0)->state().selected);
  EXPECT_EQ(Table->selectedRows(), QList<int>{1});
  EXPECT_EQ(Root->focusChild(), Table->cellAt(1, 0));

  const QString press = QAccessibleActionInterface::pressAction();
  const auto key = [&press](QAccessibleInterface* part) {
    return part->actionInterface()->keyBindingsForAction(press).join(u' ');
  };
  EXPECT_EQ(key(Table->cellAt(1, 0)), u"Return");
  EXPECT_EQ(key(Root->child(1)), u"Ctrl+2");
  TakeLog();
  Table->cellAt(1, 0)->actionInterface()->doAction(press);
  Root->child(1)->actionInterface()->doAction(press);
  EXPECT_EQ(TakeLog(), u"dblclick, column 1");
  EXPECT_EQ(Root->child(1)->text(QAccessible::Value), QString());
  List.SetSortTexts({u"rising"_qs, u"falling"_qs});
  List.Columns().SetSorted(0, ssUp);
  List.Columns().SetSorted(1, ssDown);
  EXPECT_EQ(Root->child(0)->text(QAccessible::Value), QString()) << "one column sorts";
  EXPECT_EQ(Root->child(1)->text(QAccessible::Value), u"falling");
  List.SetOptions({.ColumnClick = false});
  EXPECT_EQ(key(Root->child(1)), QString());
  List.setEnabled(false);
  EXPECT_TRUE(Table->cellAt(1, 0)->state().disabled);
}

TEST_F(TListAccessibility, ChangesAreToldAndCellsFollowTheColumns) {
  const TNotices changes = ToldBy([this] {
    List.SetSelected(List.Items()[1]);
    List.Items()[2]->SetChecked(true);
    List.Items().Delete(0);
  });
  EXPECT_EQ(changes, (TNotices{{QAccessible::SelectionAdd, 4},
                               {QAccessible::Focus, 4},
                               {QAccessible::StateChanged, 6},
                               {QAccessible::TableModelChanged, -1}}));
  const auto expectIndexes = [this] {
    for (int child = 0; child < Root->childCount(); ++child)
      EXPECT_EQ(Root->indexOfChild(Root->child(child)), child);
  };
  expectIndexes();
  EXPECT_EQ(ToldBy([this] { List.Columns().Add(u"Type"_qs, 40); }),
            (TNotices{{QAccessible::TableModelChanged, -1}}));
  List.Columns().Delete(0);
  EXPECT_EQ(Root->child(0)->text(QAccessible::Name), u"Size");
  expectIndexes();
  List.Columns().Add(u"Last"_qs, 40);
  EXPECT_EQ(Table->cellAt(0, 2)->tableCellInterface()->columnIndex(), 2);
}

TEST_F(TListAccessibility, ACellOutlivesItsRowAndItsListHarmlessly) {
  auto list = std::make_unique<TListView>();
  list->Columns().Add(u"Name"_qs, 100);
  list->Items().Add()->SetCaption(u"gone"_qs);
  QAccessibleInterface* const table = QAccessible::queryAccessibleInterface(list.get());
  QAccessibleInterface* const cell = table->tableInterface()->cellAt(0, 0);
  EXPECT_TRUE(cell->isValid());
  list->Clear();
  EXPECT_FALSE(cell->isValid());
  EXPECT_EQ(cell->text(QAccessible::Name), QString());
  cell->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  const QAccessible::Id id = QAccessible::uniqueId(cell);
  list.reset();
  EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}
