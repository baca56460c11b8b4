// Rows and update brackets of the TRdListView model.
#include "PlainRdList.h"

#include <gtest/gtest.h>

namespace {

int ByCaption(TListItem& a, TListItem& b) {
  return QString::compare(a.Caption(), b.Caption());
}

}  // namespace

TEST(RdListItems, ABracketChangesTheCountOfTheHostOnceAhead) {
  const struct {
    int Delta, Added, Deleted, During;
  } cases[] = {{5, 3, 0, 8}, {5, 3, 2, 8}, {2, 4, 0, 7}, {-10, 0, 2, 3}, {-10, 1, 2, 4}, {0, 2, 1, 4}};
  for (const auto& one : cases) {
    TPlainRdList list;
    list.Fill(u"abc"_qs);
    list.Items.BeginUpdate(one.Delta);
    list.Fill(QString(one.Added, u'x'));
    for (int row = 0; row < one.Deleted; ++row)
      list.Items.Delete(0);
    EXPECT_EQ(list.States.Count(), one.During) << one.Delta;
    EXPECT_EQ(list.Items.Count(), 3 + one.Added - one.Deleted) << one.Delta;
    list.Items.EndUpdate();
    EXPECT_EQ(list.States.Count(), list.Items.Count()) << one.Delta;
    EXPECT_THROW(list.Items.EndUpdate(), EListError);
  }
}

TEST(RdListItems, TheOutermostCloseRestoresTheScrollAndRealigns) {
  TPlainRdList list;
  list.HorzPos = 30;
  list.Items.BeginUpdate(2);
  list.HorzPos = 0;
  list.Items.EndUpdate();
  EXPECT_EQ(list.HorzPos, 30);
  EXPECT_EQ(list.Realigned, 1);
}

TEST(RdListItems, OnlyRowsOfItsClassAreLetIn) {
  TPlainRdList list;
  list.PlainFactory = true;
  EXPECT_THROW(list.Items.Add(), EListError);
  EXPECT_EQ(list.Model.AllItems().Count() + list.States.Count(), 0);
}

TEST(RdListItems, AlphaSortGoesByOnCompareElseByCaption) {
  TPlainRdList list;
  list.Fill(u"bca"_qs);
  list.Model.AlphaSort();
  EXPECT_EQ(list.Captions(), u"abc");
  list.OnCompare = [](TListItem& a, TListItem& b) { return -ByCaption(a, b); };
  list.Model.AlphaSort();
  EXPECT_EQ(list.Captions(), u"cba");
}

TEST(RdListItems, SortByTextLooksPastThePrefixAndTakesMissingCellsAsEmpty) {
  TPlainRdList list;
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
  source.Items[1]->SubItems().Add(u"sub"_qs);
  source.Items[1]->SubItems().SetImageIndex(0, 7);
  source.Items[1]->SetBackColor(clCream);
  source.Group(1).SetGroupExpand(false);

  TPlainRdList list;
  list.State.OpenGroupDraw = true;
  list.AddGroups(2);
  list.Fill(u"old"_qs, 0);
  list.Log.clear();
  list.Items.Assign(source.Items);
  EXPECT_EQ(list.Captions(), u"[0][1]abu");
  EXPECT_FALSE(list.Log.contains(u"delete o"_qs));
  TkListItem& a = *list.Items[2];
  EXPECT_TRUE(a.Checked());
  EXPECT_EQ(a.SubItems().ImageIndex(0), 7);
  EXPECT_EQ(a.BackColor(), clCream);
  EXPECT_EQ(list.Model.Checks().CheckedTotal(), 1);
}

TEST(RdListItems, ChangesShowUnlessABracketIsOpen) {
  TPlainRdList list;
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
