// The order of events under real mouse and key events.
#include "ShownList.h"

using TListEvents = TShownList;

TEST_F(TListEvents, ClicksOnRows) {
  Show({.CheckBoxes = true}, 5);
  const std::tuple<QPoint, Qt::MouseButton, const char16_t*> cases[] = {
      {TextOf(1), Qt::LeftButton, u"+1, down, click, up"},
      {TextOf(1), Qt::LeftButton, u"down, click, up"},
      {TextOf(3), Qt::LeftButton, u"-1, +3, down, click, up"},
      {BoxOf(0), Qt::LeftButton, u"check 0, down, click, up"},
      {BoxOf(0), Qt::LeftButton, u"uncheck 0, down, click, up"},
      {TextOf(2), Qt::RightButton, u"-3, +2, down, up, popup"},
      {TextOf(2), Qt::RightButton, u"down, up, popup"},
      {TextOf(4), Qt::MiddleButton, u"down, up"},
      {Blank(), Qt::LeftButton, u"-2, down, click, up"},
      {Blank(), Qt::RightButton, u"down, up, popup"}};
  for (const auto& [pos, button, events] : cases) {
    Click(pos, button);
    EXPECT_EQ(TakeLog(), events);
  }
}

TEST_F(TListEvents, DoubleClicks) {
  Show({.CheckBoxes = true}, 5);
  const std::pair<QPoint, const char16_t*> cases[] = {
      {TextOf(1), u"+1, down, click, up, dblclick, down, up"},
      {BoxOf(2), u"check 2, down, click, up, uncheck 2, down, up"},
      {Blank(), u"-1, down, click, up, dblclick, down, up"}};
  for (const auto& [pos, events] : cases) {
    DoubleClick(pos);
    EXPECT_EQ(TakeLog(), events);
  }
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, TextOf(1));
  QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, QPoint(-50, -50));
  EXPECT_EQ(TakeLog(), u"+1, down, up") << "no click";
  QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, TextOf(1));
  EXPECT_EQ(TakeLog(), u"up") << "nor by a second release";
}

TEST_F(TListEvents, OneOfSeveralSelectedRowsIsPressed) {
  Show({.MultiSelect = true});
  Click(TextOf(4));
  TakeLog();
  Click(TextOf(1));
  EXPECT_EQ(TakeLog(), u"-4, +1, down, click, up");
  Click(TextOf(3), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_EQ(TakeLog(), u"+2, +3, down, click, up");
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, TextOf(2));
  EXPECT_EQ(TakeLog(), u"down");
  QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, TextOf(2));
  EXPECT_EQ(TakeLog(), u"-1, -3, click, up");
  Click(TextOf(2), Qt::LeftButton, Qt::ControlModifier);
  EXPECT_EQ(TakeLog(), u"-2, down, click, up");
  List.Items()[1]->SetSelected(true);
  List.Items()[2]->SetSelected(true);
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, TextOf(2));
  List.Items().Add()->SetCaption(u"row 10"_qs);
  QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, TextOf(2));
  EXPECT_EQ(TakeLog(), u"+1, +2, down, click, up") << "the rows are others: the selection stays";
}

TEST_F(TListEvents, Keys) {
  Show({.CheckBoxes = true});
  const std::pair<Qt::Key, const char16_t*> cases[] = {
      {Qt::Key_Return, u""},       {Qt::Key_Down, u"+0"},         {Qt::Key_Down, u"-0, +1"},
      {Qt::Key_Space, u"check 1"}, {Qt::Key_Return, u"dblclick"}, {Qt::Key_End, u"-1, +9"}};
  for (const auto& [key, events] : cases) {
    QTest::keyClick(&List, key);
    EXPECT_EQ(TakeLog(), events) << key;
  }
  QTest::keyClicks(&List, u"row"_qs);
  EXPECT_EQ(List.ItemIndex(), 0) << "the first letter goes on to the next row, the others stay";
  List.OnKeyDown = [](int& key, Qt::KeyboardModifiers) { key = key == Qt::Key_Down ? 0 : key; };
  QTest::keyClick(&List, Qt::Key_Down);
  EXPECT_EQ(List.ItemIndex(), 0) << "swallowed";
}

TEST_F(TListEvents, TheMenuKeyAsksAtTheFocusedRowAndTheMouseOnce) {
  Show({});
  QContextMenuEvent mouse(QContextMenuEvent::Mouse, TextOf(1), QPoint(0, 0));
  QCoreApplication::sendEvent(List.viewport(), &mouse);
  EXPECT_EQ(TakeLog(), u"") << "the release asks, on every system";
  List.Items()[3]->SetFocused(true);
  QPoint asked;
  List.OnContextPopup = [&asked](const QPoint& pos, bool& handled) {
    asked = pos;
    handled = true;
  };
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(0, 0), QPoint(0, 0));
  QCoreApplication::sendEvent(&List, &event);
  EXPECT_EQ(List.GetItemAt(asked.x(), asked.y()), List.Items()[3]);
}

TEST_F(TListEvents, TheProgramSelectsAsAUserDoes) {
  Show({}, 3);
  List.SetSelected(List.Items()[0]);
  List.SetSelected(List.Items()[2]);
  EXPECT_EQ(List.ItemFocused(), List.Items()[2]);
  List.SetSelected(nullptr);
  List.SetSelected(nullptr);
  List.Items()[1]->SetChecked(true);
  List.Items()[1]->SetChecked(true);
  EXPECT_EQ(TakeLog(), u"+0, -0, +2, -2, check 1");
  EXPECT_EQ(List.Selected(), nullptr);
}

TEST_F(TListEvents, DeletionComesOncePerRow) {
  Show({.MultiSelect = true}, 5);
  for (const int row : {1, 2})
    List.Items()[row]->SetSelected(true);
  TakeLog();
  List.DeleteSelected();
  EXPECT_EQ(TakeLog(), u"-1, deletion 1, -2, deletion 2");
  auto other = std::make_unique<TListView>();
  other->OnDeletion = List.OnDeletion;
  other->Items().Add()->SetCaption(u"row x"_qs);
  other.reset();
  EXPECT_EQ(TakeLog(), u"deletion x");
}

TEST_F(TListEvents, HeaderClicks) {
  Show({});
  const auto click = [this](int column) {
    QTest::mouseClick(Header(), Qt::LeftButton, {}, List.Layout().SectionRect(column, 10).center());
    return TakeLog();
  };
  EXPECT_EQ(click(1), u"column 1");
  EXPECT_EQ(click(0), u"column 0");
  QTest::mousePress(Header(), Qt::LeftButton, {}, {20, 5});
  QTest::mouseRelease(Header(), Qt::LeftButton, {}, {170, 5});
  EXPECT_EQ(TakeLog(), u"") << "not in one section";
  QTest::keyClick(&List, Qt::Key_2, Qt::ControlModifier);
  QTest::keyClick(&List, Qt::Key_3, Qt::ControlModifier);
  EXPECT_EQ(TakeLog(), u"column 1") << "there is no third column";
  QTest::mouseClick(Header(), Qt::RightButton, {}, QPoint(20, 5));
  EXPECT_EQ(TakeLog(), u"");
  List.SetOptions({.ColumnClick = false});
  EXPECT_EQ(click(1), u"");
  QTest::keyClick(&List, Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(TakeLog(), u"");
}

TEST_F(TListEvents, ADoubleClickMayOpenAWindowThatTakesTheRelease) {
  Show({});
  List.OnDblClick = [this] {
    Log << u"dblclick"_qs;
    List.Clear();
  };
  Click(TextOf(1));
  TakeLog();
  QTest::mouseDClick(List.viewport(), Qt::LeftButton, {}, TextOf(1));
  EXPECT_TRUE(TakeLog().starts_with(u"dblclick, deletion 0"));
  Click(TextOf(1));
  EXPECT_EQ(TakeLog(), u"down, click, up");
}
