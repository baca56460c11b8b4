#include "views/rows/ResultRows.h"

#include <gtest/gtest.h>

#include "controls/list/ListView.h"
#include "fixtures/QtPrinters.h"

namespace {

constexpr TResultRules kRules = {{100, 200, 60, 60}, "", 4, 5, 7, 1, true, 10, 4};

class ResultRows : public testing::Test {
 protected:
  ResultRows() {
    AddResultColumns(FList, kRules);
    FList.OnDeletion = [](TListItem* item) { FreeResultRow(*item); };
    FList.OnCompare = [this](TListItem* item1, TListItem* item2, int& result) {
      result = FSort.Compare(*item1, *item2);
    };
    Add(u"b"_qs, 20, u"PNG"_qs);
    Add(u"A"_qs, 3000000000, u"TXT"_qs);
    Add(u"c"_qs, 1, u"iso"_qs);
  }

  void Add(const QString& name, quint64 size, const QString& type) {
    const TFileInfoEx record{u"/home/"_qs, name, size};
    KeepSize(*AddResultRow(FList, record, type, -1), record);
  }
  void SortBySize() {
    FSort.SetStartFlag();
    Click(kSizeColumn);
  }
  void Click(int column) { FSort.ColumnClick(FList, FList.Columns()[column]); }
  [[nodiscard]] QString Order() const {
    QString names;
    for (const TListItem* item : FList.Items())
      names += item->Caption();
    return names;
  }
  [[nodiscard]] QString Marks() const {
    QString marks;
    for (int column = 0; column < FList.Columns().Count(); ++column)
      marks += QString::number(FList.Columns()[column].ImageIndex()) + u' ';
    return marks;
  }

  TListView FList;
  TResultSort FSort{kRules};
};

}  // namespace

TEST_F(ResultRows, AFillEndsWithTheLargestFirstAndTheMarkForIt) {
  SortBySize();
  EXPECT_EQ(Order(), u"Abc"_qs);
  EXPECT_EQ(Marks(), u"-1 -1 5 -1 "_qs);
}

TEST_F(ResultRows, AClickOnTheMarkedColumnTurnsTheOrder) {
  SortBySize();
  Click(kSizeColumn);
  EXPECT_EQ(Order(), u"cbA"_qs);
  EXPECT_EQ(Marks(), u"-1 -1 4 -1 "_qs);
}

TEST_F(ResultRows, AClickOnAnotherColumnMovesTheMark) {
  SortBySize();
  Click(kNameColumn);
  EXPECT_EQ(Order(), u"Abc"_qs) << "names compare without regard to case";
  EXPECT_EQ(Marks(), u"4 -1 -1 -1 "_qs);
  Click(kTypeColumn);
  EXPECT_EQ(Order(), u"cbA"_qs);
  EXPECT_EQ(Marks(), u"-1 -1 -1 4 "_qs);
}

TEST_F(ResultRows, SizesFromTheSignBitOnCompareSigned) {
  Add(u"huge"_qs, 1ULL << 63, u""_qs);
  SortBySize();
  EXPECT_EQ(Order(), u"Abchuge"_qs);
}

TEST_F(ResultRows, RowsWithoutASizeKeepTheirOrder) {
  FList.Clear();
  for (const QString& name : {u"c"_qs, u"a"_qs, u"b"_qs, u"e"_qs, u"d"_qs})
    AddResultRow(FList, {u"/"_qs, name, 1}, {}, -1);
  SortBySize();
  Click(kSizeColumn);
  EXPECT_EQ(Order(), u"cabed"_qs);
}

TEST_F(ResultRows, ColumnsShareTheGrowthOfTheForm) {
  SpreadResultColumns(FList, kRules, 105);
  EXPECT_EQ(FList.Columns()[0].Width(), 100 + 21);
  EXPECT_EQ(FList.Columns()[1].Width(), 200 + 73);
  EXPECT_EQ(FList.Columns()[2].Width(), 60);
  EXPECT_EQ(FList.Columns()[3].Width(), 60 + 10);
  SpreadResultColumns(FList, kRules, 0);
  EXPECT_EQ(FList.Columns()[1].Width(), 200) << "the rule works from the design width";
}

TEST_F(ResultRows, TheFullPathIsLocationAndName) {
  EXPECT_EQ(ResultPath(*FList.Items()[0]), u"/home/b"_qs);
}
