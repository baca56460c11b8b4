// The three levels of checks of the TRdListView model: row, group, whole list.
#include "PlainRdList.h"

#include <gtest/gtest.h>

namespace {

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
    for (TkListItem* item : List.Model.AllItems()) {
      if (item->Caption() == caption) return *item;
    }
    throw std::out_of_range("no such row");
  }

  TPlainRdList List;
};

}  // namespace

TEST(RdCheckAll, StaysFalseWithoutRowsUnlessTheBoxIsPressed) {
  TPlainRdList list;
  EXPECT_FALSE(list.Model.Checks().CheckAll());
  list.Add(u"a"_qs)->SetChecked(true);
  EXPECT_TRUE(list.Model.Checks().CheckAll());
  list.Fill(u"b"_qs);
  EXPECT_FALSE(list.Model.Checks().CheckAll());
  list.Items.Clear();
  EXPECT_FALSE(list.Model.Checks().CheckAll());
  list.Model.Checks().SetAll(true);
  EXPECT_TRUE(list.Model.Checks().CheckAll());
}

TEST_F(RdChecks, TheHeaderRowTakesItsRowsAlongAndOneRowDoesNotTakeTheOthers) {
  List.Items[0]->SetChecked(true);
  EXPECT_EQ(List.Log, (QStringList{u"check Group"_qs, u"check a"_qs, u"check b"_qs, u"check c"_qs}));
  EXPECT_EQ(List.Group(0).CheckedCount(), 3);
  List.Log.clear();
  Row(u"b"_qs).SetChecked(false);
  EXPECT_EQ(List.Log, QStringList(u"uncheck b"_qs));
  EXPECT_FALSE(List.Group(0).GroupChecked());
  EXPECT_FALSE(List.Items[0]->Checked());
  EXPECT_EQ(List.Having(kRowChecked), u"ac");
  Row(u"b"_qs).SetChecked(true);
  EXPECT_TRUE(List.Group(0).GroupChecked());
  EXPECT_TRUE(List.Items[0]->Checked());
  EXPECT_EQ(Row(u"b"_qs).CheckChangeCount(), 3);
}

TEST_F(RdChecks, TheBoxOfTheListChecksShownRowsThenHiddenOnes) {
  List.Group(0).SetGroupExpand(false);
  List.Log.clear();
  List.Model.Checks().SetAll(true);
  EXPECT_EQ(List.Log,
            (QStringList{u"check Group"_qs, u"check d"_qs, u"check a"_qs, u"check b"_qs, u"check c"_qs}));
  EXPECT_TRUE(List.Model.Checks().CheckAll());
  EXPECT_EQ(List.Group(0).CheckedCount(), 3);
}

TEST_F(RdChecks, RowsWithoutBoxesChangeWithoutEvents) {
  const struct {
    bool HeadBox, RowBoxes;
    QString Expected;
    int Checked;
  } cases[] = {{false, true, u""_qs, 1}, {true, false, u""_qs, 1}, {true, true, u"check Group"_qs, 4}};
  for (const auto& one : cases) {
    List.Model.Checks().SetAll(false);
    List.Group(0).SetGroupHeadCheckbox(one.HeadBox);
    List.Group(0).SetGroupCheckboxes(one.RowBoxes);
    List.Log.clear();
    List.Items[0]->SetChecked(true);
    EXPECT_EQ(List.Log.value(0), one.Expected);
    EXPECT_EQ(List.Model.Checks().CheckedTotal(), one.Checked);
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

TEST_F(RdChecks, ACheckBoxCellMayLoseItsRowToItsHandler) {
  Row(u"a"_qs).SubItems().Add({});
  List.Log.clear();
  List.OnSubItemChecking = [](TkListItem& item) { item.Delete(); };
  Row(u"a"_qs).SetSubItemChecked(1, true);
  EXPECT_EQ(List.Log, (QStringList{u"checking a1"_qs, u"delete a"_qs}));
}
