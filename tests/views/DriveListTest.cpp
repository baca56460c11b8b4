#include "views/rows/DriveList.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <algorithm>

#include "controls/list/ListView.h"
#include "fixtures/QtPrinters.h"
#include "platform/KnownFolders.h"
#include "views/main/Looks.h"
#include "views/rows/ListHelpers.h"

namespace {

constexpr double kGigabyte = 1024.0 * 1024 * 1024;

qint64 Gigabytes(double count) {
  return static_cast<qint64>(count * kGigabyte);
}

}  // namespace

TEST(DriveList, SizesHaveTheDecimalsOfTheirMagnitude) {
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(DriveSizeText(0), u"0.00 GB"_qs);
  EXPECT_EQ(DriveSizeText(Gigabytes(9.994)), u"9.99 GB"_qs);
  EXPECT_EQ(DriveSizeText(Gigabytes(10)), u"10.0 GB"_qs);
  EXPECT_EQ(DriveSizeText(Gigabytes(99.94)), u"99.9 GB"_qs);
  EXPECT_EQ(DriveSizeText(Gigabytes(100)), u"100 GB"_qs);
  EXPECT_EQ(DriveSizeText(Gigabytes(20480)), u"20480 GB"_qs);
}

TEST(DriveList, ThisComputersDrivesAddUpAndOneIsTheSystems) {
  TDriveList drives;
  drives.Enumerate(u"No label"_qs);
  ASSERT_FALSE(drives.Drives().empty());
  qint64 size = 0;
  qint64 available = 0;
  for (const TDriveInfo& drive : drives.Drives()) {
    EXPECT_FALSE(drive.Label.isEmpty());
    EXPECT_LE(drive.Free, drive.Size);
    size += drive.Size;
    available += drive.Free;
  }
  EXPECT_EQ(drives.TotalSize(), size);
  EXPECT_EQ(drives.TotalFree(), available);
  EXPECT_EQ(std::count_if(drives.Drives().begin(), drives.Drives().end(),
                          [](const TDriveInfo& drive) { return drive.IsSystem; }),
            1);
}

TEST(DriveList, RowsCarryTheirDriveAndTheSystemsIsChecked) {
  TDriveList drives;
  drives.Enumerate(u"Local Disk"_qs);
  TListView list;
  list.SetOptions({.CheckBoxes = true});
  list.OnDeletion = [](TListItem* item) { FreeDriveRow(*item); };
  FillDriveRows(list, drives);
  ASSERT_EQ(list.Items().Count(), static_cast<int>(drives.Drives().size()));
  for (int row = 0; row < list.Items().Count(); ++row) {
    const TDriveInfo& drive = drives.Drives()[static_cast<size_t>(row)];
    const TListItem* item = list.Items()[row];
    EXPECT_EQ(item->Caption(), drive.Caption());
    EXPECT_EQ(item->SubItems()[1], DriveSizeText(drive.Free));
    EXPECT_EQ(item->Checked(), drive.IsSystem);
    EXPECT_EQ(item->ImageIndex(), drive.IsSystem ? StaticImage::kSystemDrive : StaticImage::kDrive);
    EXPECT_EQ(FindDriveRow(list, drive.Root), item);
  }
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
