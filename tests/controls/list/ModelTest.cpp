// Rows, columns and state bits without a window.
#include "PlainList.h"

#include "controls/list/model/ListColumns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

int ByCaption(TListItem& a, TListItem& b) {
  return QString::compare(a.Caption(), b.Caption());
}

void Fill(TPlainList& list, const QString& captions) {
  for (const QChar caption : captions)
    list.Add(caption);
  list.Log.clear();
}

}  // namespace

TEST(EventScope, WhatIsBuriedIsFreedWithTheOutermostScope) {
  const auto life = std::make_shared<TListLife>();
  const auto watched = std::make_shared<int>(0);
  {
    const TEventScope outer(life);
    auto inner = std::make_unique<TEventScope>(life);
    life->Bury(std::make_unique<std::shared_ptr<int>>(watched));
    inner.reset();
    EXPECT_EQ(watched.use_count(), 2);
  }
  EXPECT_EQ(watched.use_count(), 1);
}

TEST(ListItems, BitsStayWithTheirItemsAndTheFocusIsHandedOn) {
  TPlainList list;
  Fill(list, u"dbeac"_qs);
  list.Items[2]->SetSelected(true);        // e
  list.Items[2]->SetFocused(true);         // e
  list.Items[1]->SetChecked(true);         // b
  list.Items[4]->SetState(kRowCut, true);  // c
  TListItem* const focused = list.Items[2];

  list.Items.Sort(ByCaption);
  EXPECT_EQ(list.Captions(), u"a b c d e");
  EXPECT_EQ(focused->Index(), 4);
  list.Items.Delete(0);
  list.Items.Insert(1)->SetCaption(u"x"_qs);
  EXPECT_EQ(list.Captions(), u"b x c d e");
  EXPECT_EQ(list.Having(kRowSelected | kRowFocused), u"e");
  EXPECT_EQ(list.Having(kRowChecked), u"b");
  EXPECT_EQ(list.Having(kRowCut), u"c");
  list.Log.clear();
  focused->Delete();
  EXPECT_EQ(list.Log, (QStringList{u"deselect e"_qs, u"delete e"_qs, u"rows"_qs}));
  EXPECT_EQ(list.Having(kRowFocused), u"d") << "it was the last";
  list.Items[0]->SetFocused(true);
  list.Items.Delete(0);
  EXPECT_EQ(list.Having(kRowFocused), u"x");
  list.Items.Clear();
  EXPECT_EQ(list.States.Count(), 0);
}

TEST(ListItems, BracketsNestTellOnceAndRefuseASurplusClose) {
  TPlainList list;
  EXPECT_TRUE(list.Items.BeginUpdate() && !list.Items.BeginUpdate());
  list.Add(u"a"_qs);
  list.Add(u"b"_qs);
  EXPECT_TRUE(!list.Items.EndUpdate() && list.Items.Updating() && list.Items.EndUpdate());
  EXPECT_EQ(list.Log, (QStringList{u"begin"_qs, u"rows"_qs, u"end"_qs}));

  EXPECT_THROW(list.Items.EndUpdate(), EListError);
  list.Items.TolerateSurplusEndUpdate(true);
  EXPECT_FALSE(list.Items.EndUpdate());
  EXPECT_TRUE(list.Items.BeginUpdate()) << "the surplus close was counted";
}

TEST(ListItems, StrangeIndexesAreRefused) {
  TPlainList list;
  TPlainList other;
  Fill(list, u"a"_qs);
  EXPECT_TRUE(list.Items.Item(1) == nullptr && list.Items.Item(-1) == nullptr);
  EXPECT_THROW((void)list.Items[1], EListError);
  EXPECT_THROW(list.Items.Insert(2), EListError);
  EXPECT_THROW(list.Items.Delete(-1), EListError);
  EXPECT_THROW((void)list.Items[0]->SubItems()[0], EListError);
  EXPECT_EQ(other.Items.IndexOf(list.Items[0]), -1);
}

// Comparisons that a quicksort cannot trust: never below 0, at random.
TEST(ListItems, ASortAlwaysEndsWithEveryRowInPlace) {
  std::mt19937 random(7);
  TPlainList list;
  for (int row = 0; row < 300; ++row)
    list.Add(QString::number(random() % 40));
  const std::vector<TListItem*> before(list.Items.begin(), list.Items.end());
  const auto sort = [&](const auto& compare) {
    list.Items.Sort(compare);
    EXPECT_TRUE(std::is_permutation(before.begin(), before.end(), list.Items.begin(), list.Items.end()));
  };
  list.Items[5]->SetChecked(true);
  const TListItem* const checked = list.Items[5];
  sort([](TListItem& a, TListItem& b) { return a.Caption() >= b.Caption() ? 1 : 0; });
  sort([&random](TListItem&, TListItem&) { return static_cast<int>(random() % 3) - 1; });
  EXPECT_TRUE(checked->Checked());
  EXPECT_EQ(list.States.CountOf(kRowChecked), 1);
}

TEST(SubItems, TextsAndImagesStayParallel) {
  TPlainList list;
  TSubItems& texts = list.Add(u"a"_qs)->SubItems();
  texts.Assign({u"1"_qs, u"2"_qs, u"3"_qs});
  texts.SetImageIndex(2, 9);
  texts.Delete(0);
  texts.Insert(0, u"0"_qs);
  texts.Insert(3, texts[2]);
  texts.Put(1, u"two"_qs);
  EXPECT_EQ(texts.Text(1), u"two");
  EXPECT_EQ(texts.ImageIndex(2), 9);
  EXPECT_EQ(texts.ImageIndex(0), -1);
  EXPECT_EQ(texts.Text(3), u"3") << "inserted from the list itself";
  EXPECT_EQ(texts.ImageIndex(3), -1);
  EXPECT_EQ(texts.Text(4), QString()) << "a painter asks beyond the end";
}

TEST(ListColumns, WidthKeepsToItsBounds) {
  TListColumns columns;
  int changes = 0;
  columns.OnChange = [&changes] { ++changes; };
  TListColumn& column = columns.Add(u"Name"_qs, 200);
  column.SetMaxWidth(150);
  EXPECT_EQ(column.Width(), 150);
  column.SetMaxWidth(0);
  column.SetWidth(-5);
  EXPECT_EQ(column.Width(), 0);
  const int before = changes;
  column.SetWidth(0);
  EXPECT_EQ(changes, before) << "nothing changed, nothing told";
  TListColumn& second = columns.Add(u"b"_qs, 1);
  columns.Delete(0);
  EXPECT_EQ(second.Index(), 0);
  EXPECT_THROW((void)columns[1], EListError);
}
