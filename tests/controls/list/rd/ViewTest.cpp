// The skinned list in its window: modes, bars, tips, columns, and what assistive technology is told.
#include "GalleryRig.h"
#include "GallerySkins.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QImage>
#include <QScrollBar>
#include <QWheelEvent>

class TRdView : public TGalleryRig {
 protected:
  void RdTipText(int column, const QString& text, bool tips) {
    if (column == 0)
      List.Items()[1]->SetCaption(text);
    else
      List.Items()[1]->SubItems().Put(column - 1, text);
    EXPECT_EQ(TRdTip(List).TextAt(List.Layout().CellRect(1, column).center()), tips ? text : QString())
        << column;
  }
};

TEST_F(TRdView, OwnDrawingSetsItsOptions) {
  TRdListView list;
  list.SetOptions({.RowSelect = false, .ReadOnly = false});
  const int hostHeight = list.Layout().Metrics().RowHeight;
  list.AllSkinItem().ItemHeight = 50;
  for (const bool open : {false, true, false}) {
    list.SetOpenOwnerDraw(open);
    EXPECT_EQ(list.Layout().Metrics().RowHeight, open ? 50 : hostHeight) << "the host's rows have its own";
  }
  EXPECT_TRUE(list.Options().RowSelect && list.Options().ReadOnly);
}

TEST_F(TRdView, TheTwoBarsOfAnAxisExcludeOneAnother) {
  TRdBars& bars = List.Bars();
  EXPECT_TRUE(bars.ShowVertScroll() && bars.ShowHorzScroll());
  bars.SetShowCustomVertScroll(true);
  EXPECT_FALSE(bars.ShowVertScroll());
  bars.SetShowVertScroll(true);
  EXPECT_FALSE(bars.ShowCustomVertScroll());
  bars.SetShowVertScroll(false);
  List.AllSkinVertScroll().SetAutoHide(true);
  List.resize(1300, 200);
  QTest::qWait(1);
  EXPECT_FALSE(bars.VertBar().isVisible()) << "AutoHide shows no bar that was not chosen";
  bars.SetShowCustomVertScroll(true);
  QTest::qWait(1);
  EXPECT_TRUE(bars.VertBar().isVisible());
}

TEST_F(TRdView, SkinnedBarsMirrorTheHost) {
  List.Bars().SetShowCustomVertScroll(true);
  List.Bars().SetShowCustomHorzScroll(true);
  List.resize(500, 300);
  QTest::qWait(1);
  TRdScrollBar& vert = List.Bars().VertBar();
  TRdScrollBar& horz = List.Bars().HorzBar();
  const int page = List.Layout().RowsPerPage();
  EXPECT_FALSE(List.verticalScrollBar()->isVisible());
  EXPECT_EQ(vert.Max(), 11);
  EXPECT_EQ(vert.PageSize(), page);
  EXPECT_EQ(List.viewport()->width(), horz.width());
  EXPECT_EQ(vert.geometry().left(), List.viewport()->geometry().right() + 1);
  EXPECT_EQ(List.HeaderRect().width(), List.viewport()->width() + vert.width()) << "over the bar";
  EXPECT_EQ(vert.y(), List.viewport()->y());
  List.AllSkinHeader().VertScrollBarCross = true;
  QTest::qWait(1);
  EXPECT_EQ(List.HeaderRect().width(), List.viewport()->width());
  EXPECT_EQ(vert.y(), List.HeaderRect().y());
  vert.SetPosition(3);
  EXPECT_EQ(List.TopIndex(), 3);
  List.SetTopIndex(1);
  EXPECT_EQ(vert.Position(), 1);
  horz.SetPosition(40);
  EXPECT_EQ(List.HorzPos(), 40);
  QTest::keyClick(&List, Qt::Key_End);
  EXPECT_EQ(vert.Position(), List.TopIndex());
  List.Groups()[0].SetGroupExpand(false);
  QTest::qWait(1);
  EXPECT_EQ(vert.Max(), 8);
  List.Clear();
  QTest::qWait(1);
  EXPECT_FALSE(vert.isVisible());
}

TEST_F(TRdView, TheWheelMovesThreeRowsOfTheSkinnedBar) {
  List.Bars().SetShowCustomVertScroll(true);
  List.resize(1300, 200);
  QTest::qWait(1);
  const auto wheel = [this](int delta) {
    QWheelEvent event({50, 50}, {50, 50}, {}, {0, delta}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(List.viewport(), &event);
    return List.TopIndex();
  };
  EXPECT_EQ(wheel(-120), 3);
  EXPECT_EQ(wheel(-60), 3);
  EXPECT_EQ(wheel(-60), 6);
  EXPECT_EQ(wheel(120), 3);
  EXPECT_EQ(wheel(240), 0);
}

TEST_F(TRdView, TipsComeOnlyForTextsThatArePaintedCut) {
  RdTipText(kTextColumn, u"a size that is far too long for its cell"_qs, true);
  RdTipText(kTextColumn, u"9"_qs, false);
  RdTipText(kProgressColumn, u"72"_qs, false);
  RdTipText(kLabelColumn, u"a label that is longer than its column"_qs, true);
  RdTipText(kButtonColumn, u"a button that is longer than that"_qs, true);
  List.AllSkinItem().ButtonDisableImage = TPicture(QImage(300, 20, QImage::Format_RGB32));
  List.Items()[1]->SetEnabled(false);
  RdTipText(kButtonColumn, u"a button that is longer than that"_qs, false);
  List.AllSkinItem().IconCommentWordBreak = true;
  RdTipText(kNameColumn, u"many short words that are broken at the edge of the column, and so shown"_qs,
            false);
  EXPECT_EQ(TRdTip(List).TextAt(List.Layout().RowRect(0).center()), QString()) << "a group row";
  List.SetOpenOwnerDraw(false);
  RdTipText(kTextColumn, u"too long a text for the column"_qs, true);
  TRdListProperties properties = List.Properties();
  properties.ShowToolTip = false;
  List.SetProperties(properties);
  RdTipText(kTextColumn, u"too long a text for the column"_qs, false);
}

TEST_F(TRdView, FreedImageListsAreForgotten) {
  auto images = std::make_unique<TImageList>(QSize(16, 16));
  TRdListProperties properties = List.Properties();
  properties.SortImage = properties.IconImgList = properties.GroupImages = images.get();
  List.SetProperties(properties);
  List.Columns()[0].SetIconImgList(images.get());
  images.reset();
  EXPECT_TRUE(List.Properties().SortImage == nullptr && List.Properties().IconImgList == nullptr &&
              List.Properties().GroupImages == nullptr && List.Columns()[0].IconImgList() == nullptr);
  List.grab();
}

TEST_F(TRdView, TheSkinShowsHoverSelectionAndFocus) {
  ApplySkin(List, TGallerySkin::Light);
  const auto pixel = [this](int row) {
    return List.viewport()->grab().toImage().pixelColor(List.Layout().CellRect(row, kTextColumn).topLeft() +
                                                        QPoint(10, 20));
  };
  const QColor normal = pixel(2);
  MoveTo(Cell(2, kTextColumn).Cell.center());
  const QColor hot = pixel(2);
  EXPECT_NE(hot, normal);
  Click(Cell(2, kTextColumn).Cell.center());
  EXPECT_NE(pixel(2), hot);
  EXPECT_EQ(pixel(3), normal);
  MoveTo(Cell(3, kTextColumn).Cell.center());
  EXPECT_EQ(pixel(3), hot);

  Click(Cell(2, kTextColumn).Cell.center());
  const QImage focused = List.viewport()->grab().toImage();
  List.Items()[2]->SetFocused(false);
  EXPECT_NE(List.viewport()->grab().toImage(), focused);
}

TEST_F(TRdView, AListThatTheHostDrawsBehavesAsAnyList) {
  List.SetOpenGroupDraw(false);
  List.SetOpenOwnerDraw(false);
  const TListLayout layout = List.Layout();
  Click(layout.CellParts(1, 0).CheckBox.center());
  EXPECT_EQ(TakeLog(), u"box Recorder, check Recorder, down, click, up");
  Click(layout.CellRect(2, kButtonColumn).center());
  EXPECT_EQ(TakeLog(), u"+Film, down, click, up") << "its cells are texts";
  DoubleClick(layout.CellRect(2, kTextColumn).center());
  EXPECT_EQ(TakeLog(), u"down, click, up, dblclick, down, up");
  List.OnCompare = [](TListItem* a, TListItem* b, int& result) {
    result = b->Caption().compare(a->Caption());
  };
  List.AlphaSort();
  EXPECT_EQ(NameOf(*List.Selected()), u"Film") << "the selection goes with its row";
  EXPECT_EQ(List.CheckAll(), false);
}

TEST_F(TRdView, GroupRowsAndCellsAreToldApart) {
  QAccessibleInterface* const table = QAccessible::queryAccessibleInterface(&List);
  ASSERT_NE(table, nullptr);
  const auto cell = [table](int row, int column) { return table->tableInterface()->cellAt(row, column); };
  EXPECT_EQ(cell(0, 0)->text(QAccessible::Name), u"Media");
  EXPECT_EQ(cell(0, 0)->role(), QAccessible::RowHeader);
  EXPECT_TRUE(cell(0, 0)->state().expanded && cell(0, 0)->state().checkable);
  const std::pair<int, QAccessible::Role> roles[] = {
      {kNameColumn, QAccessible::Link},      {kButtonColumn, QAccessible::PushButton},
      {kLabelColumn, QAccessible::Link},     {kProgressColumn, QAccessible::ProgressBar},
      {kStarColumn, QAccessible::Indicator}, {kEditColumn, QAccessible::EditableText},
      {kComboColumn, QAccessible::ComboBox}, {kCheckColumn, QAccessible::CheckBox},
      {kTextColumn, QAccessible::Cell}};
  for (const auto& [column, role] : roles)
    EXPECT_EQ(cell(1, column)->role(), role) << column;
  EXPECT_EQ(cell(1, kNameColumn)->text(QAccessible::Name), u"Picture Album Photos by day and place");
  EXPECT_EQ(cell(1, kProgressColumn)->text(QAccessible::Value), u"72");
  EXPECT_TRUE(cell(9, kButtonColumn)->state().disabled);
  List.Items()[1]->SetFocused(true);
  EXPECT_TRUE(cell(1, 0)->state().focused);
  EXPECT_FALSE(cell(1, 1)->state().focused) << "one cell of the row";
  QAccessibleActionInterface* const button = cell(1, kButtonColumn)->actionInterface();
  EXPECT_EQ(button->keyBindingsForAction(QAccessibleActionInterface::pressAction()),
            QStringList(QKeySequence(Qt::CTRL | Qt::Key_Return).toString()));
  List.SetSort(kTextColumn, ssDown);
  EXPECT_EQ(table->child(kTextColumn)->text(QAccessible::Value), u"descending");
  EXPECT_EQ(table->child(kLabelColumn)->text(QAccessible::Value), QString());
}

TEST_F(TRdView, ActionsDoWhatClicksDo) {
  QAccessibleInterface* const table = QAccessible::queryAccessibleInterface(&List);
  const auto act = [&](int row, int column, const QString& name) {
    table->tableInterface()->cellAt(row, column)->actionInterface()->doAction(name);
    return TakeLog();
  };
  const QString press = QAccessibleActionInterface::pressAction();
  const QString toggle = QAccessibleActionInterface::toggleAction();
  EXPECT_EQ(act(1, kButtonColumn, press), u"button Picture 1");
  EXPECT_EQ(act(2, kNameColumn, toggle), u"box Recorder, check Recorder");
  EXPECT_EQ(act(2, kCheckColumn, toggle), u"checking, checked");
  EXPECT_EQ(act(2, kEditColumn, press), u"enter Recorder 5, +Recorder");
  List.HideEditors();
  TakeLog();
  EXPECT_EQ(act(0, 0, press), u"hide Media, -Recorder");
  EXPECT_TRUE(table->tableInterface()->cellAt(0, 0)->state().collapsed);
  QAccessibleInterface* const header = table->child(0);
  EXPECT_TRUE(header->state().checkable);
  header->actionInterface()->doAction(toggle);
  EXPECT_TRUE(header->state().checked && List.CheckAll() && TakeLog().ends_with(u"all"));
  table->child(kLabelColumn)->actionInterface()->doAction(press);
  EXPECT_EQ(TakeLog(), u"column 2 1");
}
