// What lists share: rows of results with their order, rows of drives, columns.
#include "controls/list/ListView.h"
#include "fixtures/FormTest.h"
#include "views/main/Looks.h"
#include "views/rows/DriveList.h"
#include "views/rows/ListHelpers.h"
#include "views/rows/ResultRows.h"

namespace {

qint64 Gigabytes(double count) {
  return static_cast<qint64>(count * 1024 * 1024 * 1024);
}

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

TEST_F(ResultRows, TheLargestComeFirstAndClicksTurnTheOrderAndMoveTheMark) {
  SortBySize();
  EXPECT_EQ(Order() + u' ' + Marks(), u"Abc -1 -1 5 -1 "_qs);
  Click(kSizeColumn);
  EXPECT_EQ(Order() + u' ' + Marks(), u"cbA -1 -1 4 -1 "_qs);
  SortBySize();
  Click(kNameColumn);
  EXPECT_EQ(Order() + u' ' + Marks(), u"Abc 4 -1 -1 -1 "_qs) << "names compare without regard to case";
  Click(kTypeColumn);
  EXPECT_EQ(Order() + u' ' + Marks(), u"cbA -1 -1 -1 4 "_qs);
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

TEST(DriveList, SizesHaveTheDecimalsOfTheirMagnitude) {
  QLocale::setDefault(QLocale::c());
  for (const auto& [gigabytes, text] : {std::pair(0.0, u"0.00 GB"_qs),
                                        {9.994, u"9.99 GB"_qs},
                                        {10, u"10.0 GB"_qs},
                                        {99.94, u"99.9 GB"_qs},
                                        {100, u"100 GB"_qs},
                                        {20480, u"20480 GB"_qs}})
    EXPECT_EQ(DriveSizeText(Gigabytes(gigabytes)), text);
}

TEST(DriveList, DrivesAddUpAndRowsCarryThemWithTheSystemsChecked) {
  TDriveList drives;
  drives.Enumerate(u"Local Disk"_qs);
  ASSERT_FALSE(drives.Drives().empty());
  TListView list;
  list.SetOptions({.CheckBoxes = true});
  list.OnDeletion = [](TListItem* item) { FreeDriveRow(*item); };
  FillDriveRows(list, drives);
  ASSERT_EQ(list.Items().Count(), static_cast<int>(drives.Drives().size()));
  qint64 size = 0;
  qint64 available = 0;
  int systems = 0;
  for (int row = 0; row < list.Items().Count(); ++row) {
    const TDriveInfo& drive = drives.Drives()[static_cast<size_t>(row)];
    const TListItem* item = list.Items()[row];
    EXPECT_EQ(item->Caption(), drive.Caption());
    EXPECT_EQ(item->SubItems()[1], DriveSizeText(drive.Free));
    EXPECT_EQ(item->Checked(), drive.IsSystem);
    EXPECT_EQ(item->ImageIndex(), drive.IsSystem ? StaticImage::kSystemDrive : StaticImage::kDrive);
    EXPECT_EQ(FindDriveRow(list, drive.Root), item);
    EXPECT_FALSE(drive.Label.isEmpty());
    EXPECT_LE(drive.Free, drive.Size);
    size += drive.Size;
    available += drive.Free;
    systems += drive.IsSystem ? 1 : 0;
  }
  EXPECT_EQ(drives.TotalSize(), size);
  EXPECT_EQ(drives.TotalFree(), available);
  EXPECT_EQ(systems, 1);
  EXPECT_EQ(FindDriveRow(list, QString()), nullptr);
}

TEST(ListHelpers, TheLastColumnTakesWhatIsLeft) {
  TListView list;
  list.resize(400, 200);
  list.show();
  list.Columns().Add(u"A"_qs, 100);
  list.Columns().Add(u"B"_qs, 30);
  FitLastColumn(list);
  EXPECT_EQ(list.Columns()[1].Width(), list.ClientWidth() - 100 - list.VertScrollBarWidth());
  list.Items().Add();
  FitLastColumn(list);
  EXPECT_EQ(list.Columns()[1].Width(), list.ClientWidth() - 100);
  list.Columns()[0].SetWidth(1000);
  list.Columns()[1].SetWidth(30);
  FitLastColumn(list);
  EXPECT_EQ(list.Columns()[1].Width(), 30);
}
