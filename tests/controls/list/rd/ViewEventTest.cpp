// The order of events under real mouse and key events on the gallery's list.
#include "GalleryRig.h"

#include <QMouseEvent>
#include <QWheelEvent>

using TRdEvents = TGalleryRig;

TEST_F(TRdEvents, ClicksOnCells) {
  const struct {
    QPoint Pos;
    const char16_t* Events;
  } cases[] = {
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
      {Hot(9, kStarColumn), u"down, click, up, star Archive 4"},
  };
  for (const auto& one : cases) {
    Click(one.Pos);
    EXPECT_EQ(TakeLog(), one.Events);
  }
}

TEST_F(TRdEvents, ClicksOnBoxesLeaveTheSelection) {
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
}

TEST_F(TRdEvents, ASecondPressActsOnExpandButtonsAndBoxesAlone) {
  DoubleClick(Hot(1, kButtonColumn));
  EXPECT_EQ(TakeLog(), u"+Picture, down, click, up, button Picture 1, dblclick, down, up");
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

TEST_F(TRdEvents, AReleaseThatWasLostIsMadeUpFor) {
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, Hot(1, kButtonColumn));
  MoveTo(Hot(1, kButtonColumn));
  EXPECT_EQ(List.MouseState().CellHotState, kCellHot);
  QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, Hot(1, kButtonColumn));
  EXPECT_EQ(TakeLog(), u"+Picture, down, up") << "no click of row or button";
  QTest::mousePress(Header(), Qt::LeftButton, {}, {12, 10});
  QMouseEvent move(QEvent::MouseMove, QPointF(40, 10), Header()->mapToGlobal(QPointF(40, 10)), Qt::NoButton,
                   {}, {});
  QCoreApplication::sendEvent(Header(), &move);
  QTest::mouseRelease(Header(), Qt::LeftButton, {}, {12, 10});
  EXPECT_EQ(TakeLog(), u"");
}

TEST_F(TRdEvents, ButtonsFireWhereTheyWerePressed) {
  const QPoint first = Hot(1, kButtonColumn);
  const QPoint second = Hot(2, kButtonColumn);
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, first);
  EXPECT_EQ(List.MouseState().CellHotState, kCellPressed);
  MoveTo(second, Qt::LeftButton);
  EXPECT_EQ(List.MouseState().CellHotState, kCellHot);
  MoveTo(first, Qt::LeftButton);
  EXPECT_EQ(List.MouseState().CellHotState, kCellPressed);
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
  const struct {
    int Column;
    const char16_t* Events;
  } cases[] = {
      {kTextColumn, u"column 8 1"},  {kTextColumn, u"column 8 2"},   {kTextColumn, u"column 8 1"},
      {kLabelColumn, u"column 2 2"}, {kButtonColumn, u"column 1 0"}, {kLabelColumn, u"column 2 1"},
  };
  for (const auto& one : cases) {
    ClickHeader(Middle(one.Column));
    EXPECT_EQ(TakeLog(), one.Events);
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
  const QString log = QString::fromStdU16String(TakeLog());
  EXPECT_TRUE(log.endsWith(u", all")) << qPrintable(log);
  EXPECT_FALSE(log.contains(u"check Picture")) << "it was checked before";
  EXPECT_EQ(log.count(u"check "), 8);
  Click(Box(2));
  EXPECT_FALSE(List.CheckAll());
  QTest::mousePress(Header(), Qt::LeftButton, {}, {inBox, 10});
  QTest::mouseRelease(Header(), Qt::LeftButton, {}, {Middle(0), 10});
  EXPECT_FALSE(List.CheckAll()) << "released elsewhere";
  List.Clear();
  TakeLog();
  ClickHeader(inBox);
  EXPECT_EQ(TakeLog(), u"all");
  QTest::keyClick(&List, Qt::Key_Space, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(TakeLog(), u"none");
}

TEST_F(TRdEvents, DividersKeepToTheirBounds) {
  const auto drag = [this](int column, int by) {
    const int edge = List.Layout().SectionRect(column, 1).right();
    QTest::mousePress(Header(), Qt::LeftButton, {}, {edge, 10});
    const QPointF to(edge + by, 10);
    QMouseEvent move(QEvent::MouseMove, to, Header()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(Header(), &move);
    QTest::mouseRelease(Header(), Qt::LeftButton, {}, to.toPoint());
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
  const struct {
    Qt::Key Key;
    Qt::KeyboardModifiers Shift;
    const char16_t* Events;
  } cases[] = {
      {Qt::Key_Down, {}, u"+Media"},
      {Qt::Key_Minus, {}, u"hide Media"},
      {Qt::Key_Plus, Qt::ShiftModifier, u"show Media"},
      {Qt::Key_Return, {}, u"hide Media"},
      {Qt::Key_Return, {}, u"show Media"},
      {Qt::Key_Home, {}, u"-Media, +Picture"},
      {Qt::Key_Minus, {}, u"hide Media, -Picture, +Media"},
      {Qt::Key_Plus, {}, u"show Media"},
      {Qt::Key_Home, {}, u"-Media, +Picture"},
      {Qt::Key_Space, {}, u"box Picture, uncheck Picture"},
      {Qt::Key_Right, Qt::ControlModifier, u""},
      {Qt::Key_F2, {}, u"iconlabel Picture 0"},
      {Qt::Key_F2, Qt::ShiftModifier, u"icon Picture 0"},
      {Qt::Key_Right, Qt::ControlModifier, u""},
      {Qt::Key_Return, Qt::ControlModifier, u"button Picture 1"},
      {Qt::Key_0, Qt::ControlModifier, u"column 1 0"},
      {Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier, u""},
      {Qt::Key_Right, Qt::ControlModifier, u""},
      {Qt::Key_F2, {}, u"label Picture 2"},
      {Qt::Key_Return, {}, u"dblclick"},
      {Qt::Key_End, {}, u"-Picture, +Night"},
      {Qt::Key_Down, {}, u""},
  };
  for (const auto& one : cases) {
    QTest::keyClick(&List, one.Key, one.Shift);
    EXPECT_EQ(TakeLog(), one.Events) << one.Key;
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
