// The TRdListView model, without a window: cell types and columns, rows and update brackets, groups, checks.
#include "PlainRdList.h"

#include "controls/list/rd/model/RdListColumn.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

int ByCaption(TListItem& a, TListItem& b) {
  return QString::compare(a.Caption(), b.Caption());
}

class RdGroups : public ::testing::Test {
 protected:
  void SetUp() override {
    List.State.OpenGroupDraw = true;
    List.States.SetSingleSelect(false);
    List.AddGroups(3);
  }

  TPlainRdList List;
};

class RdChecks : public ::testing::Test {
 protected:
  void SetUp() override {
    List.State.OpenGroupDraw = true;
    List.AddGroups(2);
    List.Fill(u"abc"_qs, 0);
    List.Fill(u"d"_qs);
    List.LogChecks = true;
    List.Log.clear();
  }
  [[nodiscard]] TkListItem& Row(const QString& caption) {
    const auto& all = List.Model.AllItems();
    return **std::ranges::find_if(all, [&caption](TkListItem* item) { return item->Caption() == caption; });
  }

  TPlainRdList List;
};

}  // namespace

TEST(RdCells, TheTypeIsTheTextsElseTheRowsElseTheColumns) {
  TPlainRdList list;
  TkListColumns columns;
  for (int column = 0; column < 3; ++column)
    columns.Add().SetColumnType(ltStar);
  TkListItem& row = *list.Add(u"a"_qs);
  row.SubItems().Add(u"x"_qs);
  // The types of the row, and the prefix of the text, 0 for none.
  const std::tuple<const char*, int, TListColumnType, QString> cases[] = {
      {"", 0, ltStar, u"x"_qs},     {"1=7", 0, ltEdit, u"x"_qs},     {"1=no", 0, ltStar, u"x"_qs},
      {"1=12", 0, ltStar, u"x"_qs}, {"2=7", 0, ltStar, u"x"_qs},     {"1=7", 5, ltLabel, u"x"_qs},
      {"1=7", 1, ltNone, u"x"_qs},  {"1=7", 12, ltDefault, u"x"_qs}, {"1=7", 13, ltEdit, u"\x0dx"_qs}};
  for (const auto& [rowTypes, prefix, type, shown] : cases) {
    row.DropColumnTypes();
    row.MakeColumnTypes().Add(QString::fromLatin1(rowTypes));
    row.SubItems().Put(0, prefix != 0 ? QChar(prefix) + u"x"_qs : u"x"_qs);
    const TkCell cell = CellOf(row, columns[1]);
    EXPECT_EQ(cell.Type, type) << rowTypes << ", " << prefix;
    EXPECT_EQ(cell.Text, shown);
  }
  EXPECT_FALSE(HasCell(row, 2));
  row.SubItems().Put(0, {});
  EXPECT_EQ(CellOf(row, columns[1]).Type, ltEdit) << "an empty text has no prefix";
}

TEST(RdCells, TheLinesOfARowAreKeptByName) {
  TStringValueList lines;
  for (const char* const line : {"b=1", "A=2", "a=3"})
    lines.Add(QString::fromLatin1(line));
  EXPECT_EQ(lines.Count(), 2);
  EXPECT_EQ(lines[0], u"A=2");
  EXPECT_EQ(lines.Value(u"B"_qs), u"1");
  lines.SetValue(u"a"_qs, u"x=y"_qs);
  EXPECT_EQ(lines.Value(u"A"_qs), u"x=y");
  EXPECT_EQ(lines.IndexOfName(u"c"_qs), -1);
}

TEST(RdCells, ACheckBoxCellKeepsItsPrefixAndAsksFirst) {
  TPlainRdList list;
  TkListItem& row = *list.Add(u"a"_qs);
  row.SubItems().Add(u"\x0a"_qs);
  list.Log.clear();
  EXPECT_FALSE(row.SubItemChecked(1));
  row.SetSubItemChecked(1, true);
  EXPECT_EQ(row.SubItems()[0],
            u"\x0a"
            u"1");
  EXPECT_TRUE(row.SubItemChecked(1));
  EXPECT_EQ(list.Log, (QStringList{u"checking a1"_qs, u"show a"_qs, u"checked a1"_qs}));
  row.SetSubItemChecked(1, false);
  list.Log.clear();
  list.RefuseSubItem = true;
  row.SetSubItemChecked(1, true);
  EXPECT_FALSE(row.SubItemChecked(1));
  for (const int column : {-1, 0, 2})
    row.SetSubItemChecked(column, true);
  EXPECT_EQ(list.Log, QStringList(u"checking a1"_qs));
  list.OnSubItemChecking = [](TkListItem& item) { item.Delete(); };
  row.SetSubItemChecked(1, true);
  EXPECT_EQ(list.Log.last(), u"delete a"_qs) << "a handler may delete the row";
}

TEST(RdColumns, FontsFollowTheListUntilOneIsSet) {
  TkListColumns columns;
  TkListColumn& column = columns.Add();
  const QFont font({u"one"_qs}, 23);
  columns.SetListFont(font);
  EXPECT_EQ(column.ColumnFont(), font);
  EXPECT_EQ(columns.Add().ColumnHeaderFont(), font);
  const QFont own({u"one"_qs}, 31);
  column.SetColumnFont(own);
  EXPECT_FALSE(column.ParentFont());
  columns.SetListFont(QFont());
  EXPECT_EQ(column.ColumnFont(), own);
  column.SetParentFont(true);
  EXPECT_EQ(column.ColumnFont(), QFont());
}

TEST(RdListItems, ABracketChangesTheCountOfTheHostOnceAhead) {
  const std::tuple<int, int, int, int> cases[] = {{5, 3, 0, 8},   {5, 3, 2, 8},   {2, 4, 0, 7},
                                                  {-10, 0, 2, 3}, {-10, 1, 2, 4}, {0, 2, 1, 4}};
  for (const auto& [delta, added, deleted, during] : cases) {
    TPlainRdList list;
    list.Fill(u"abc"_qs);
    list.Items.BeginUpdate(delta);
    list.Fill(QString(added, u'x'));
    for (int row = 0; row < deleted; ++row)
      list.Items.Delete(0);
    EXPECT_EQ(list.States.Count(), during) << delta;
    EXPECT_EQ(list.Items.Count(), 3 + added - deleted) << delta;
    list.Items.EndUpdate();
    EXPECT_EQ(list.States.Count(), list.Items.Count()) << delta;
    EXPECT_THROW(list.Items.EndUpdate(), EListError);
  }

  TPlainRdList list;
  list.HorzPos = 30;
  list.Items.BeginUpdate(2);
  list.HorzPos = 0;
  list.Items.EndUpdate();
  EXPECT_EQ(list.HorzPos, 30) << "the outermost close restores the scroll";
  EXPECT_EQ(list.Realigned, 1);
}

TEST(RdListItems, OnlyRowsOfItsClassAreLetInAndChangesShowUnlessABracketIsOpen) {
  TPlainRdList list;
  list.PlainFactory = true;
  EXPECT_THROW(list.Items.Add(), EListError);
  list.PlainFactory = false;
  EXPECT_EQ(list.Model.AllItems().Count() + list.States.Count(), 0);

  TkListItem* const item = list.Add(u"a"_qs);
  list.Log.clear();
  item->SetEnabled(false);
  item->SubItems().Add(u"x"_qs);
  EXPECT_EQ(list.Log.size(), 2);
  list.Items.BeginUpdate();
  item->SetOverlayIndex(2);
  list.Items.EndUpdate();
  EXPECT_EQ(list.Log.size(), 2);
}

TEST(RdListItems, SortsGoByOnCompareByCaptionOrByTextPastThePrefix) {
  TPlainRdList list;
  list.Fill(u"bca"_qs);
  list.Model.AlphaSort();
  EXPECT_EQ(list.Captions(), u"abc");
  list.OnCompare = [](TListItem& a, TListItem& b) { return -ByCaption(a, b); };
  list.Model.AlphaSort();
  EXPECT_EQ(list.Captions(), u"cba");

  list.Items.Clear();
  list.Fill(u"abcd"_qs);
  const QString texts[] = {u"2"_qs, QChar(4) + u"3"_qs, u"1"_qs};
  for (int row = 0; row < 3; ++row)
    list.Items[row]->SubItems().Add(texts[row]);
  const auto ordinal = [](QStringView a, QStringView b) { return a.compare(b); };
  list.Items.SortByText(1, ordinal);
  EXPECT_EQ(list.Captions(), u"dcab");
  list.Items.SortByText(1, ordinal, true);
  EXPECT_EQ(list.Captions(), u"bacd");
}

TEST(RdListItems, DeletionIsToldOnceForEachRow) {
  TPlainRdList list;
  list.State.OpenGroupDraw = true;
  list.AddGroups(1);
  list.Fill(u"ab"_qs);
  list.Fill(u"cd"_qs, 0);
  list.Group(0).SetGroupExpand(false);
  list.Log.clear();
  list.Group(0).HiddenItems()[0]->Delete();
  list.Items.Delete(list.Items.Count() - 1);
  EXPECT_EQ(list.Log, (QStringList{u"delete c"_qs, u"delete b"_qs}));
  list.Log.clear();
  list.Items.Clear();
  EXPECT_EQ(list.Log, (QStringList{u"reset mouse"_qs, u"delete a"_qs, u"delete d"_qs}));
  EXPECT_EQ(list.RowsGone, 4);
  EXPECT_EQ(list.HeadersGone, 1);
  EXPECT_EQ(list.Group(0).Items().Count(), 0);

  list.Fill(u"abcdef"_qs);
  list.Log.clear();
  list.OnDeletion = [&](TListItem& item) {
    item.Delete();
    if (item.Caption() == u"b") list.Items[3]->Delete();
    if (item.Caption() == u"c") list.Items.Clear();
    if (item.Caption() == u"f") list.Add(u"new"_qs);
  };
  list.Items.Clear();
  EXPECT_EQ(list.Log.filter(u"delete"_qs).size(), 6) << "once, though handlers delete and clear";
  EXPECT_EQ(list.RowsGone, 10);
  EXPECT_EQ(list.Captions(), u"new");
}

TEST(RdListItems, OnlyTheRowsThatWereSelectedAreDeleted) {
  TPlainRdList list;
  list.States.SetSingleSelect(false);
  list.Fill(u"abcd"_qs);
  for (const int row : {0, 2})
    list.Items[row]->SetSelected(true);
  list.OnState = [&](int, unsigned state) {
    if ((state & kRowSelected) == 0) list.Items[3]->SetSelected(true);
  };
  list.Model.DeleteSelected();
  EXPECT_EQ(list.Captions(), u"bd");
  EXPECT_EQ(list.Having(kRowSelected), u"d");
}

TEST(RdListItems, AssignCopiesRowsHiddenOnesToo) {
  TPlainRdList source;
  source.State.OpenGroupDraw = true;
  source.AddGroups(2);
  source.Fill(u"ab"_qs, 1);
  source.Fill(u"u"_qs);
  source.Items[1]->SetChecked(true);
  source.Items[1]->SetBackColor(clCream);
  source.Group(1).SetGroupExpand(false);

  TPlainRdList list;
  list.State.OpenGroupDraw = true;
  list.AddGroups(2);
  list.Fill(u"old"_qs, 0);
  list.Log.clear();
  list.Items.Assign(source.Items);
  EXPECT_EQ(list.Captions(), u"[0][1]abu");
  EXPECT_TRUE(!list.Log.contains(u"delete o"_qs) && list.Items[2]->Checked());
  EXPECT_EQ(list.Items[2]->BackColor(), clCream);
  EXPECT_EQ(list.Model.Checks().CheckedTotal(), 1);
}

TEST_F(RdGroups, TheHandlerOfGroupShowHideHasTheLastWordWhereGroupsMayCollapse) {
  List.Fill(u"ab"_qs, 0);
  QStringList asked;
  List.OnGroupShowHide = [&](TkListGroup& group, bool& show) {
    asked << QString::number(group.GroupID()) + (show ? u" show"_qs : u" hide"_qs);
    show = !show;
  };
  List.Log.clear();
  List.Group(0).SetGroupExpand(false);
  EXPECT_FALSE(List.Group(0).Collapsed());
  EXPECT_TRUE(List.Log.isEmpty());  // the button is not drawn anew
  List.OnGroupShowHide = nullptr;
  List.Group(0).SetGroupExpand(false);
  EXPECT_EQ(List.Log, QStringList(u"redraw Group"_qs));
  List.OnGroupShowHide = [](TkListGroup&, bool& show) { show = !show; };
  List.Group(0).SetGroupExpand(true);
  EXPECT_TRUE(List.Group(0).Collapsed());
  EXPECT_EQ(List.Captions(), u"[0]");
  EXPECT_EQ(asked, QStringList(u"0 hide"_qs));

  List.OnGroupShowHide = nullptr;
  List.Group(0).SetGroupExpand(true);
  List.State.GroupCanExpand = false;
  List.Group(0).SetGroupExpand(false);
  EXPECT_TRUE(List.Group(0).GroupExpand());
  List.State.GroupCanExpand = true;
  List.Group(0).SetGroupExpand(false);
  EXPECT_EQ(List.Group(0).HiddenItems()[1]->HiddenIndex(), 2);
  List.State.GroupCanExpand = false;
  List.Group(0).SetGroupExpand(true);
  EXPECT_FALSE(List.Group(0).Collapsed());
}

TEST_F(RdGroups, AComparisonThatThrowsOrDeletesLeavesHiddenRowsInOrder) {
  List.Fill(u"dcba"_qs, 0);
  List.Fill(u"yx"_qs, 1);
  List.Group(0).SetGroupExpand(false);
  int calls = 0;
  const auto compare = [&](TListItem& a, TListItem& b) {
    if (++calls == 4) throw std::runtime_error("compare");
    return ByCaption(a, b);
  };
  EXPECT_THROW(List.Items.Sort(compare), std::runtime_error);
  List.Group(0).HiddenItems()[0]->Delete();
  EXPECT_EQ(List.Group(0).HiddenItems().Count(), 3) << "found by its stamp";
  List.Items.Sort([&](TListItem& a, TListItem& b) {
    if (++calls == 5) List.Group(0).HiddenItems()[1]->Delete();
    return ByCaption(a, b);
  });
  List.Group(0).SetGroupExpand(true);
  EXPECT_EQ(List.Captions(), u"[0]ac[1]xy");
}

TEST_F(RdGroups, AHandlerMayDeleteTheGroupThatItIsAskedAbout) {
  List.Fill(u"ab"_qs, 0);
  List.Items[1]->SetSelected(true);
  List.OnGroupShowHide = [&](TkListGroup& group, bool&) { List.Model.Groups().Delete(group.GroupID()); };
  List.Group(0).SetGroupExpand(false);
  EXPECT_EQ(List.Captions(), u"ab");
  List.OnGroupShowHide = nullptr;
  for (const int row : {0, 1})
    List.Items[row]->SetGroupID(0);
  List.OnState = [&](int, unsigned) { List.Group(0).SetGroupExpand(true); };
  List.Group(0).SetGroupExpand(false);  // a is deselected
  EXPECT_EQ(List.Captions(), u"[0]ab");
  List.Items[1]->SetSelected(true);
  List.OnState = [&](int, unsigned) { List.Model.Groups().Clear(); };
  List.Group(0).SetGroupExpand(false);
  EXPECT_EQ(List.Captions(), u"ab");
  EXPECT_EQ(List.States.Count(), 2);
}

TEST_F(RdGroups, ADeletedGroupLeavesItsRowsAndAnIdWaitsForItsGroup) {
  List.Fill(u"a"_qs, 0);
  List.Fill(u"b"_qs, 1);
  List.Fill(u"c"_qs, 2);
  List.Group(0).SetGroupExpand(false);
  List.Model.Groups().Delete(0);
  EXPECT_EQ(List.Captions(), u"a[0]b[1]c");
  EXPECT_EQ(List.Group(1).Items()[0]->Caption(), u"c");
  List.Model.Groups().Clear();
  EXPECT_EQ(List.Captions(), u"abc");

  List.Items.Clear();
  List.AddGroups(3);
  List.Fill(u"ab"_qs, 0);
  List.Items[1]->SetGroupID(3);
  EXPECT_EQ(List.Items[1]->Group(), nullptr);
  EXPECT_EQ(List.Group(0).Items().Count(), 1);
  List.Add(u"c"_qs, 3)->Delete();
  List.AddGroups(1);
  EXPECT_EQ(List.Group(3).Items().Count(), 1);
  EXPECT_EQ(List.Captions(), u"[0]b[3]a");
}

TEST_F(RdChecks, TheHeaderRowTakesItsRowsAlongAndTheBoxOfTheListShownRowsThenHiddenOnes) {
  List.Items[0]->SetChecked(true);
  EXPECT_EQ(List.Log, (QStringList{u"check Group"_qs, u"check a"_qs, u"check b"_qs, u"check c"_qs}));
  List.Log.clear();
  Row(u"b"_qs).SetChecked(false);
  EXPECT_EQ(List.Log, QStringList(u"uncheck b"_qs));
  EXPECT_FALSE(List.Items[0]->Checked());
  EXPECT_EQ(Row(u"b"_qs).CheckChangeCount(), 2);

  List.Model.Checks().SetAll(false);
  List.Group(0).SetGroupExpand(false);
  List.Log.clear();
  List.Model.Checks().SetAll(true);
  EXPECT_EQ(List.Log,
            (QStringList{u"check Group"_qs, u"check d"_qs, u"check a"_qs, u"check b"_qs, u"check c"_qs}));
}

TEST_F(RdChecks, RowsWithoutBoxesChangeWithoutEvents) {
  const std::tuple<bool, bool, QString, int> cases[] = {
      {false, true, u""_qs, 1}, {true, false, u""_qs, 1}, {true, true, u"check Group"_qs, 4}};
  for (const auto& [headBox, rowBoxes, expected, checked] : cases) {
    List.Model.Checks().SetAll(false);
    List.Group(0).SetGroupHeadCheckbox(headBox);
    List.Group(0).SetGroupCheckboxes(rowBoxes);
    List.Log.clear();
    List.Items[0]->SetChecked(true);
    EXPECT_EQ(List.Log.value(0), expected);
    EXPECT_EQ(List.Model.Checks().CheckedTotal(), checked);
  }
}

TEST_F(RdChecks, EveryMemberFollowsTheHeaderRowThoughHandlersDeleteEarlierOnes) {
  List.OnItemChecked = [this](TkListItem& item) {
    if (item.Caption() == u"b") Row(u"a"_qs).Delete();
    if (item.Caption() == u"b") Row(u"e"_qs).SetGroupID(1);
  };
  List.Add(u"e"_qs, 0);
  List.Items[0]->SetChecked(true);
  EXPECT_EQ(List.Having(kRowChecked), u"Groupbc");
  Row(u"e"_qs).Delete();
  List.OnItemChecked = [this](TkListItem& item) {
    if (item.IsGroupHeader()) List.Model.Groups().Clear();
  };
  List.Items[0]->SetChecked(false);
  EXPECT_EQ(List.Captions(), u"bcd");
  EXPECT_EQ(List.Model.Checks().CheckedTotal(), 2);
  List.OnItemChecked = [this](TkListItem& item) {
    if (item.Caption() == u"c" && item.Checked()) Row(u"b"_qs).Delete();
  };
  List.Model.Checks().SetAll(false);
  List.Model.Checks().SetAll(true);
  EXPECT_TRUE(Row(u"d"_qs).Checked());
}

TEST_F(RdChecks, TheMarkOfAGroupMayClearTheListWhileItsRowIsDestroyed) {
  Row(u"a"_qs).SetChecked(true);
  Row(u"b"_qs).SetChecked(true);
  List.OnState = [this](int, unsigned state) {
    if ((state & kRowChecked) != 0) List.Items.Clear();
  };
  Row(u"c"_qs).Delete();  // now all are checked
  EXPECT_EQ(List.Model.AllItems().Count(), 0);
  EXPECT_EQ(List.RowsGone + List.HeadersGone, 5);
  EXPECT_EQ(List.Model.Checks().CheckedTotal(), 0);
}
