// Groups of the TRdListView model: where their rows lie, collapse and expand.
#include "PlainRdList.h"

#include <gtest/gtest.h>

namespace {

class RdGroups : public ::testing::Test {
 protected:
  void SetUp() override {
    List.State.OpenGroupDraw = true;
    List.States.SetSingleSelect(false);
    List.AddGroups(3);
  }
  void SortByCaption() {
    List.Items.Sort([](TListItem& a, TListItem& b) { return QString::compare(a.Caption(), b.Caption()); });
  }

  TPlainRdList List;
};

}  // namespace

TEST_F(RdGroups, CollapseTakesTheRowsOutAndExpandShowsThemInTheNewOrder) {
  List.Fill(u"ca"_qs, 0);
  List.Fill(u"x"_qs, 1);
  List.Group(0).SetGroupExpand(false);
  EXPECT_EQ(List.Captions(), u"[0][1]x");
  EXPECT_EQ(List.States.Count(), 3);
  EXPECT_EQ(List.Group(0).HiddenItems()[1]->HiddenIndex(), 2);
  List.Add(u"b"_qs, 0);
  EXPECT_EQ(List.Captions(), u"[0][1]x");
  SortByCaption();
  List.Group(0).SetGroupExpand(true);
  EXPECT_EQ(List.Captions(), u"[0]abc[1]x");
  EXPECT_EQ(List.Group(0).HiddenItems().Count(), 0);
}

TEST_F(RdGroups, TheHandlerOfGroupShowHideHasTheLastWord) {
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
  List.OnGroupShowHide = [&](TkListGroup&, bool& show) { show = !show; };
  List.Group(0).SetGroupExpand(true);
  EXPECT_TRUE(List.Group(0).Collapsed());
  EXPECT_EQ(List.Captions(), u"[0]");
  EXPECT_EQ(asked, QStringList(u"0 hide"_qs));
}

TEST_F(RdGroups, CollapsingIsRefusedWhereGroupsMayNotAndExpandingIsNot) {
  List.Fill(u"ab"_qs, 0);
  List.State.GroupCanExpand = false;
  List.Group(0).SetGroupExpand(false);
  EXPECT_TRUE(List.Group(0).GroupExpand());
  List.State.GroupCanExpand = true;
  List.Group(0).SetGroupExpand(false);
  List.State.GroupCanExpand = false;
  List.Group(0).SetGroupExpand(true);
  EXPECT_FALSE(List.Group(0).Collapsed());
}

TEST_F(RdGroups, AnIdThatNoGroupHasLeavesTheGroupUntilThereIsOne) {
  List.Fill(u"ab"_qs, 0);
  List.Items[1]->SetGroupID(3);
  EXPECT_EQ(List.Items[1]->Group(), nullptr);
  EXPECT_EQ(List.Group(0).Items().Count(), 1);
  List.Add(u"c"_qs, 3)->Delete();
  List.AddGroups(1);
  EXPECT_EQ(List.Group(3).Items().Count(), 1);
  EXPECT_EQ(List.Captions(), u"[0]b[3]a");
}

TEST_F(RdGroups, AComparisonThatThrowsOrDeletesLeavesHiddenRowsInOrder) {
  List.Fill(u"dcba"_qs, 0);
  List.Fill(u"yx"_qs, 1);
  List.Group(0).SetGroupExpand(false);
  int calls = 0;
  const auto compare = [&](TListItem& a, TListItem& b) {
    if (++calls == 4) throw std::runtime_error("compare");
    return QString::compare(a.Caption(), b.Caption());
  };
  EXPECT_THROW(List.Items.Sort(compare), std::runtime_error);
  List.Group(0).HiddenItems()[0]->Delete();
  EXPECT_EQ(List.Group(0).HiddenItems().Count(), 3) << "found by its stamp";
  List.Items.Sort([&](TListItem& a, TListItem& b) {
    if (++calls == 5) List.Group(0).HiddenItems()[1]->Delete();
    return QString::compare(a.Caption(), b.Caption());
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

TEST_F(RdGroups, ADeletedGroupLeavesItsRowsAndLaterIdsMoveUp) {
  List.Fill(u"a"_qs, 0);
  List.Fill(u"b"_qs, 1);
  List.Fill(u"c"_qs, 2);
  List.Group(0).SetGroupExpand(false);
  List.Model.Groups().Delete(0);
  EXPECT_EQ(List.Captions(), u"a[0]b[1]c");
  EXPECT_EQ(List.Group(1).Items()[0]->Caption(), u"c");
  List.Model.Groups().Clear();
  EXPECT_EQ(List.Captions(), u"abc");
}
