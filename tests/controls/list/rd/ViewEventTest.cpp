// The order of events under real mouse and key events on the gallery's list, and editing in its cells.
#include "GalleryRig.h"

#include <QApplication>

using TRdEvents = TGalleryRig;

TEST_F(TRdEvents, ClicksOnCells) {
  const std::pair<QPoint, const char16_t*> cases[] = {
      {Hot(1, kButtonColumn), u"+Picture, down, click, up, button Picture 1"},
      {Hot(1, kLabelColumn), u"down, click, up, label Picture 2"},
      {Hot(2, kStarColumn), u"-Picture, +Recorder, down, click, up, star Recorder 4"},
      {Hot(2, kNameColumn), u"down, click, up, iconlabel Recorder 0"},
      {Cell(2, kNameColumn).Cell.topLeft() + QPoint(16, 22), u"down, click, up, icon Recorder 0"},
      {Hot(2, kCheckColumn), u"checking, checked, down, click, up"},
      {Hot(2, kCheckColumn), u"unchecking, checked, down, click, up"},
      {Cell(2, kProgressColumn).Cell.center(), u"down, click, up"},
      {Cell(9, kButtonColumn).Cell.center(), u"-Recorder, +Archive, down, click, up"},
      {Cell(9, kLabelColumn).Cell.center(), u"down, click, up"},
      {Hot(9, kStarColumn), u"down, click, up, star Archive 4"}};
  for (const auto& [pos, events] : cases) {
    Click(pos);
    EXPECT_EQ(TakeLog(), events);
  }
}

TEST_F(TRdEvents, ClicksOnBoxesLeaveTheSelectionAndASecondPressActsOnThemAndExpandButtonsAlone) {
  Click(Hot(3, kLabelColumn));
  TakeLog();
  Click(Box(1));
  EXPECT_EQ(TakeLog(), u"box Picture, uncheck Picture, down, click, up");
  Click(Box(8));
  EXPECT_EQ(TakeLog(), u"box Tools, check Tools, check Archive, check Night, down, click, up");
  EXPECT_EQ(List.Selected(), List.Items()[3]);
  EXPECT_EQ(List.ItemFocused(), List.Items()[8]);
  DoubleClick(Box(2));
  EXPECT_EQ(TakeLog(),
            u"box Recorder, check Recorder, down, click, up, box Recorder, uncheck Recorder, down, up");

  DoubleClick(Hot(1, kButtonColumn));
  EXPECT_EQ(TakeLog(), u"-Film, +Picture, down, click, up, button Picture 1, dblclick, down, up");
  DoubleClick(Hot(1, kCheckColumn));
  EXPECT_EQ(TakeLog(), u"unchecking, checked, down, click, up, dblclick, down, up");
  List.AllSkinGroup().GroupClickExpand = true;
  DoubleClick(List.Layout().RowRect(4).center());
  EXPECT_EQ(TakeLog(), u"-Picture, +Office, hide Office, down, click, up, dblclick, down, up");
}

TEST_F(TRdEvents, CellsThatARowDoesNotHaveDoNotReact) {
  std::vector<QPoint> places;
  for (const int column : {kButtonColumn, kLabelColumn, kStarColumn, kCheckColumn})
    places.push_back(Hot(1, column));
  List.Items()[1]->SubItems().Clear();
  for (const QPoint& place : places) {
    Click(place);
    MoveTo(place);
    EXPECT_EQ(List.MouseState().CellHotState, kCellNormal);
  }
  for (int column = 0; column < kEditColumn; ++column) {
    QTest::keyClick(&List, Qt::Key_Right, Qt::ControlModifier);
    if (column > 0) QTest::keyClick(&List, Qt::Key_F2);
  }
  EXPECT_EQ(TakeLog(), u"+Picture, down, click, up, down, click, up, down, click, up, down, click, up");
}

TEST_F(TRdEvents, TheColumnOfTheCursorShows) {
  const auto section = [this](int column) { return List.Layout().SectionRect(column, 1); };
  List.Columns()[1].SetWidth(3 * List.viewport()->width());
  List.SetHorzPos(0);
  for (const int column : {0, 1, 2}) {
    QTest::keyClick(&List, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_GE(section(column).left(), 0) << column;
    EXPECT_TRUE(section(column).left() == 0 || section(column).right() < List.viewport()->width()) << column;
  }
  QTest::keyClick(&List, Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(section(1).left(), 0);
}

TEST_F(TRdEvents, AReleaseThatWasLostIsMadeUpFor) {
  const QPoint button = Hot(1, kButtonColumn);
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, button);
  MoveTo(button);
  EXPECT_EQ(List.MouseState().CellHotState, kCellHot);
  QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, button);
  EXPECT_EQ(TakeLog(), u"+Picture, down, up") << "no click of row or button";
  QTest::mousePress(Header(), Qt::LeftButton, {}, {12, 10});
  TListRig::MoveTo(*Header(), {40, 10});
  QTest::mouseRelease(Header(), Qt::LeftButton, {}, {12, 10});
  EXPECT_EQ(TakeLog(), u"");
}

TEST_F(TRdEvents, ButtonsFireWhereTheyWerePressed) {
  const QPoint first = Hot(1, kButtonColumn);
  const QPoint second = Hot(2, kButtonColumn);
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, first);
  for (const QPoint& over : {first, second, first}) {
    MoveTo(over, Qt::LeftButton);
    EXPECT_EQ(List.MouseState().CellHotState, over == first ? kCellPressed : kCellHot);
  }
  QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, second);
  EXPECT_EQ(TakeLog(), u"+Picture, down, click, up");
  EXPECT_EQ(List.MouseState().CellHotState, kCellNormal);
  EXPECT_EQ(List.MouseState().PressedRow, -1);
}

TEST_F(TRdEvents, GroupsExpandByTheirButton) {
  Click(Arrow(0));
  EXPECT_EQ(TakeLog(), u"up, +Media, hide Media");
  EXPECT_EQ(List.Items().Count(), 9);
  DoubleClick(Arrow(0));
  EXPECT_EQ(TakeLog(), u"up, show Media, up, hide Media") << "the second press is one more";
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, Arrow(0));
  QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, Arrow(1));
  EXPECT_EQ(TakeLog(), u"up");
  const QPoint text = List.Layout().RowRect(1).center();
  Click(text);
  EXPECT_EQ(TakeLog(), u"-Media, +Office, down, click, up") << "the rest of the row selects";
  List.AllSkinGroup().GroupClickExpand = true;
  Click(text);
  EXPECT_EQ(TakeLog(), u"hide Office, down, click, up");
}

TEST_F(TRdEvents, HeaderClicksSort) {
  const std::pair<int, const char16_t*> cases[] = {
      {kTextColumn, u"column 8 1"},  {kTextColumn, u"column 8 2"},   {kTextColumn, u"column 8 1"},
      {kLabelColumn, u"column 2 2"}, {kButtonColumn, u"column 1 0"}, {kLabelColumn, u"column 2 1"}};
  for (const auto& [column, events] : cases) {
    ClickHeader(Middle(column));
    EXPECT_EQ(TakeLog(), events);
  }
  EXPECT_EQ(List.SortColumnIndex(), kLabelColumn);
  QTest::keyClick(&List, Qt::Key_9, Qt::ControlModifier);
  EXPECT_EQ(TakeLog(), u"column 8 2");
  List.Clear();
  EXPECT_EQ(List.SortColumnIndex(), -1);
}

TEST_F(TRdEvents, TheHeaderBoxChecksAll) {
  const int inBox = 12;
  ClickHeader(inBox);
  EXPECT_TRUE(List.CheckAll());
  EXPECT_EQ(Log.filter(u"check "_qs).size(), 8) << "one was checked before";
  EXPECT_EQ(Log.last(), u"all");
  Click(Box(2));
  EXPECT_FALSE(List.CheckAll());
  QTest::mousePress(Header(), Qt::LeftButton, {}, {inBox, 10});
  QTest::mouseRelease(Header(), Qt::LeftButton, {}, {Middle(0), 10});
  EXPECT_FALSE(List.CheckAll()) << "released elsewhere";
  List.Clear();
  TakeLog();
  ClickHeader(inBox);
  EXPECT_TRUE(List.CheckAll()) << "though there is no row";
  EXPECT_EQ(TakeLog(), u"all");
  QTest::keyClick(&List, Qt::Key_Space, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(TakeLog(), u"none");
}

TEST_F(TRdEvents, DividersKeepToTheirBounds) {
  const auto drag = [this](int column, int by) {
    const int edge = List.Layout().SectionRect(column, 1).right();
    QTest::mousePress(Header(), Qt::LeftButton, {}, {edge, 10});
    TListRig::MoveTo(*Header(), {edge + by, 10}, Qt::LeftButton);
    QTest::mouseRelease(Header(), Qt::LeftButton, {}, {edge + by, 10});
    return List.Columns()[column].Width();
  };
  EXPECT_EQ(drag(kLabelColumn, 25), 135);
  EXPECT_EQ(drag(kNameColumn, -200), 120);
  EXPECT_EQ(drag(kCheckColumn, 30), 46) << "fixed";
  List.Columns()[kLabelColumn].SetMaxWidth(150);
  EXPECT_EQ(drag(kLabelColumn, 80), 150);
  const int shared = List.Columns()[kEditColumn].Width();
  const int dragged = drag(kEditColumn, 30);
  EXPECT_EQ(dragged, shared + 30);
  QTest::qWait(1);
  EXPECT_EQ(List.Columns()[kEditColumn].Width(), dragged) << "an auto column keeps what it was dragged to";
  List.resize(1400, 650);
  EXPECT_EQ(List.Layout().TotalWidth(), List.viewport()->width()) << "until the room changes";
  EXPECT_EQ(TakeLog().find(u"column"), std::u16string::npos) << "a drag is no click, but on a fixed divider";
}

TEST_F(TRdEvents, KeysReachWhatTheMouseDoes) {
  const std::pair<const char*, const char16_t*> cases[] = {{"Down", u"+Media"},
                                                           {"-", u"hide Media"},
                                                           {"Shift++", u"show Media"},
                                                           {"Return", u"hide Media"},
                                                           {"Return", u"show Media"},
                                                           {"Home", u"-Media, +Picture"},
                                                           {"-", u"hide Media, -Picture, +Media"},
                                                           {"+", u"show Media"},
                                                           {"Home", u"-Media, +Picture"},
                                                           {"Space", u"box Picture, uncheck Picture"},
                                                           {"Ctrl+Right", u""},
                                                           {"F2", u"iconlabel Picture 0"},
                                                           {"Shift+F2", u"icon Picture 0"},
                                                           {"Ctrl+Right", u""},
                                                           {"Ctrl+Return", u"button Picture 1"},
                                                           {"Ctrl+0", u"column 1 0"},
                                                           {"Ctrl+Shift+Right", u""},
                                                           {"Ctrl+Right", u""},
                                                           {"F2", u"label Picture 2"},
                                                           {"Return", u"dblclick"},
                                                           {"End", u"-Picture, +Night"},
                                                           {"Down", u""}};
  for (const auto& [keys, events] : cases) {
    const QKeyCombination key = QKeySequence(QString::fromLatin1(keys))[0];
    QTest::keyClick(&List, key.key(), key.keyboardModifiers());
    EXPECT_EQ(TakeLog(), events) << keys;
  }
  EXPECT_EQ(List.Columns()[kButtonColumn].Width(), 128);
}

TEST_F(TRdEvents, HoverFollowsTheMouseButNotEachMove) {
  const QPoint label = Hot(1, kLabelColumn);
  MoveTo(label, {}, 1000);
  EXPECT_EQ(List.MouseState().HotRow, 1);
  EXPECT_EQ(List.MouseState().CellHotState, kCellHot);
  EXPECT_EQ(List.viewport()->cursor().shape(), Qt::PointingHandCursor);
  MoveTo(Hot(2, kButtonColumn), {}, 1050);
  EXPECT_EQ(List.MouseState().HotRow, 1) << "within 51 milliseconds";
  MoveTo(Hot(2, kButtonColumn), {}, 1051);
  EXPECT_EQ(List.MouseState().HotRow, 2);
  EXPECT_EQ(List.MouseState().PrevHotRow, 1);
  EXPECT_NE(List.viewport()->cursor().shape(), Qt::PointingHandCursor);
  MoveTo(Cell(9, kButtonColumn).Cell.center(), {}, 2000);
  EXPECT_EQ(List.MouseState().CellHotState, kCellNormal) << "the row is disabled";
  MoveTo(Arrow(4), {}, 3000);
  EXPECT_EQ(List.MouseState().HotGroupRow, 4);
  EXPECT_EQ(List.MouseState().HotColumn, -1);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(List.viewport(), &leave);
  EXPECT_EQ(List.MouseState().HotRow, -1);
  EXPECT_EQ(List.MouseState().HotGroupRow, -1);
}

TEST_F(TRdEvents, EnterWritesEscapeDropsAndThePrefixOfACellSurvives) {
  Click(Hot(1, kEditColumn));
  EXPECT_EQ(TakeLog(), u"enter Picture 5, +Picture, up");
  ASSERT_TRUE(List.Editors().Edit().isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &List.Editors().Edit());
  QTest::keyClicks(&List.Editors().Edit(), u"Ab"_qs);
  QTest::keyClick(&List.Editors().Edit(), Qt::Key_Return);
  EXPECT_EQ(TakeLog(), u"change Picture 5, change Picture 5, exit Picture 5");
  EXPECT_EQ(List.Items()[1]->SubItems()[kEditColumn - 1], u"Ab");
  EXPECT_FALSE(List.Editors().Shown());
  EXPECT_EQ(QApplication::focusWidget(), &List);

  Click(Hot(1, kEditColumn));
  QTest::keyClicks(&List.Editors().Edit(), u"x"_qs);
  QTest::keyClick(&List.Editors().Edit(), Qt::Key_Escape);
  EXPECT_EQ(List.Items()[1]->SubItems()[kEditColumn - 1], u"Ab");

  List.Items()[1]->SubItems().Put(kTextColumn - 1, QChar(ltEdit + 1) + u"big"_qs);
  List.Editors().Open(*List.Items()[1], kTextColumn, std::nullopt, false);
  EXPECT_EQ(List.Editors().Edit().text(), u"big");
  List.Editors().Edit().setText(u"small"_qs);
  List.HideEditors();
  EXPECT_EQ(List.Items()[1]->SubItems()[kTextColumn - 1], QChar(ltEdit + 1) + u"small"_qs);
}

TEST_F(TRdEvents, WhatLeavesTheEditorWrites) {
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"a press on a row", [this] { Click(Hot(3, kLabelColumn)); }},
      {"a press on the header", [this] { ClickHeader(Middle(kTextColumn)); }},
      {"a scroll", [this] { List.SetTopIndex(1); }},
      {"another focus", [this] { List.setFocus(); }},
      {"the program", [this] { List.HideEditors(); }}};
  List.resize(1300, 400);
  int number = 0;
  for (const auto& [what, act] : cases) {
    List.SetTopIndex(0);
    List.Editors().Open(*List.Items()[1], kEditColumn, std::nullopt, false);
    List.Editors().Edit().setText(QString::number(++number));
    act();
    EXPECT_FALSE(List.Editors().Shown()) << what;
    EXPECT_EQ(List.Items()[1]->SubItems()[kEditColumn - 1], QString::number(number)) << what;
  }
}

TEST_F(TRdEvents, ARowWithTooFewSubItemsFailsOnlyAtTheEnd) {
  TkListItem* const bare = List.Items().Insert(1);
  bare->SetCaption(u"Bare"_qs);
  ASSERT_TRUE(List.Editors().Open(*bare, kEditColumn, std::nullopt, false));
  EXPECT_THROW(List.HideEditors(), EListError);
  EXPECT_FALSE(List.Editors().Shown());
  List.Editors().Open(*bare, kEditColumn, std::nullopt, false);
  TakeLog();
  QTest::keyClick(&List.Editors().Edit(), Qt::Key_Return);
  EXPECT_EQ(TakeLog(), u"exit Bare 5, LV\\Edit\\: You Must set SubItems.Count = ColumnCount-1");
}

TEST_F(TRdEvents, ADeletedRowEndsItsEditor) {
  List.Editors().Open(*List.Items()[1], kEditColumn, std::nullopt, false);
  List.Items()[1]->Delete();
  EXPECT_FALSE(List.Editors().Shown());
  EXPECT_EQ(List.MouseState().EditItem, nullptr);
  List.EditOnExit = [](TListItem* item, int) { item->Delete(); };
  List.Editors().Open(*List.Items()[1], kEditColumn, std::nullopt, false);
  List.HideEditors();
  EXPECT_EQ(NameOf(*List.Items()[1]), u"Film");
}

TEST_F(TRdEvents, ALineIsChosenByMouseOrKeysOrNot) {
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, Hot(1, kComboColumn));
  EXPECT_EQ(TakeLog(), u"drop Picture 2, +Picture");
  TkInplaceComboBox& box = List.Editors().ComboBox();
  ASSERT_TRUE(box.isVisible());
  EXPECT_EQ(box.currentRow(), 2);
  const auto key = [&box](Qt::Key last) {
    QTest::keyClick(&box, Qt::Key_Up);
    QTest::keyClick(&box, last);
  };
  const std::tuple<std::function<void()>, const char16_t*, QString> cases[] = {
      {[&] { key(Qt::Key_Escape); }, u"", u"Weekly"_qs},
      {[&] { QTest::mousePress(&box, Qt::LeftButton, {}, QPoint(-40, -40)); }, u"", u"Weekly"_qs},
      {[&] {
         QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, box.visualItemRect(box.item(3)).center());
       },
       u"choose Picture 3", u"Monthly"_qs},
      {[&] { key(Qt::Key_Return); }, u"choose Picture 2", u"Weekly"_qs}};
  for (const auto& [act, events, text] : cases) {
    if (!box.isVisible()) List.Editors().Open(*List.Items()[1], kComboColumn, std::nullopt, false);
    TakeLog();
    act();
    EXPECT_FALSE(List.Editors().Shown());
    EXPECT_EQ(TakeLog(), events);
    EXPECT_EQ(List.Items()[1]->SubItems()[kComboColumn - 1], text);
  }
}
