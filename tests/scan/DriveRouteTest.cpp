#include "FakeVolindex.h"
#include "ScanRecorder.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"
#include "scan/ScanMessages.h"
#include "scan/UnitScan.h"

#include <gtest/gtest.h>

namespace {

std::vector<TFakeRecord> Records(int count) {
  std::vector<TFakeRecord> records;
  for (int i = 0; i < count; ++i)
    records.push_back({u"/v/"_qs, u"r%1"_qs.arg(i), static_cast<quint64>(count - i)});
  return records;
}

class DriveRoute : public testing::Test {
 protected:
  DriveRoute() {
    FakeVolindex() = {};
    FakeVolindex().Accepts = true;
  }
  ~DriveRoute() override { FakeVolindex() = {}; }

  void Scan(const QStringList& paths) {
    FScan.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS);
    FScan.Start(paths, false);
    ASSERT_TRUE(FRecorder.WaitForEnd());
  }

  TScanRecorder FRecorder;
  TTallyscopeScan FScan{FRecorder.Window(), {}, TPathDisplay::None};
};

}  // namespace

TEST_F(DriveRoute, TheCallsOfOneVolumeComeInTheirOrder) {
  FakeVolindex().Files = Records(2);
  FakeVolindex().FolderSize = 5'000'000'000;
  Scan({u"/v/"_qs});
  EXPECT_EQ(FakeVolindex().Calls,
            (QStringList{u"notify 1 8048"_qs, u"check /v/"_qs, u"scan /v/"_qs, u"open 0"_qs, u"count"_qs,
                         u"open 2"_qs, u"count"_qs, u"totals"_qs, u"free"_qs}));
  EXPECT_EQ(FScan.FileCount(), 2U);
  EXPECT_EQ(FScan.FolderCount(), 0U);
  EXPECT_EQ(FScan.PathTotals()[0].Bytes, 5'000'000'000U);
  EXPECT_EQ(FScan.TotalSize(), 0U) << "only a walk writes it";
}

TEST_F(DriveRoute, PhasesFollowTheNumberOfRecords) {
  struct TCase {
    int Records;
    int Posts;  // before the last one
  };
  for (const auto [records, posts] : {TCase{0, 0}, {1, 1}, {50, 50}, {150, 100}, {199, 100}, {1000, 10}}) {
    FakeVolindex().Files = Records(records);
    FRecorder.Clear();
    Scan({u"/v/"_qs});
    std::vector<int> expected;
    for (int n = 1; n <= posts; ++n)
      expected.push_back(100 + n);
    if (records > 0) expected.push_back(200);
    EXPECT_EQ(FRecorder.Phases(), expected) << records;
    EXPECT_EQ(FScan.Files().Count(), std::min(records, 100)) << records;
  }
}

TEST_F(DriveRoute, ARecordThatFailsTakesNothingFromTheLimit) {
  FakeVolindex().Files = Records(150);
  FakeVolindex().Files[0].Fails = FakeVolindex().Files[7].Fails = true;
  Scan({u"/v/"_qs});
  ASSERT_EQ(FScan.Files().Count(), 100);
  EXPECT_EQ(FScan.Files()[0].Name, u"r1"_qs);
  EXPECT_EQ(FScan.Files()[99].Name, u"r101"_qs);
}

TEST_F(DriveRoute, SizesKeepBothHalves) {
  FakeVolindex().Folders = {{u"/v/"_qs, u"big"_qs, 0x1234567890ABCDEF}};
  Scan({u"/v/"_qs});
  EXPECT_EQ(FScan.Folders()[0].Size, 0x1234567890ABCDEFU);
}

TEST_F(DriveRoute, TheListsOfSeveralVolumesAreSortedTogether) {
  FakeVolindex().Files = Records(100);
  Scan({u"/v/"_qs, u"/w/"_qs});
  ASSERT_EQ(FScan.Files().Count(), 200);
  EXPECT_EQ(FScan.Files()[1].Size, 100U);
  EXPECT_EQ(FScan.PathTotals().Count(), 2);
}

TEST_F(DriveRoute, ADeclinedVolumeIsWalked) {
  TTempTree tree;
  tree.MakeFile("a/file", 30);
  FakeVolindex().Accepts = false;
  Scan({tree.Path()});
  EXPECT_EQ(FScan.Files().Count(), 1);
  EXPECT_EQ(FScan.TotalSize(), 30U);
  EXPECT_FALSE(FakeVolindex().Calls.contains(u"free"_qs));
}

TEST_F(DriveRoute, AStopDuringTheReadTakesNothingAndReleasesTheScan) {
  FakeVolindex().Files = Records(5);
  FakeVolindex().DuringScan = [this] { FScan.Stop(); };
  Scan({u"/v/"_qs, u"/w/"_qs});
  EXPECT_EQ(FScan.Files().Count(), 0);
  EXPECT_EQ(FRecorder.Phases(), std::vector<int>{200});
  EXPECT_TRUE(FakeVolindex().Calls.endsWith(u"free"_qs));
  EXPECT_FALSE(FakeVolindex().Calls.contains(u"check /w/"_qs));
  EXPECT_EQ(FRecorder.Log().last(), u"stopped"_qs);
}

TEST_F(DriveRoute, TheTickerShowsPathsWhileTheVolumeIsRead) {
  TTempTree tree;
  tree.MakeFile("file", 1);
  tree.MakeFile("folder/inside", 1);
  TTallyscopeScan scan(FRecorder.Window());
  scan.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS);
  FakeVolindex().DuringScan = [] { std::this_thread::sleep_for(std::chrono::milliseconds(300)); };
  scan.Start({tree.Path()}, false);
  ASSERT_TRUE(FRecorder.WaitForEnd());
  EXPECT_EQ(FRecorder.PathTexts(), 2) << "the file and the one inside the folder";
  EXPECT_EQ(FRecorder.LastPath(), tree.Path("folder/inside"));
}

TEST_F(DriveRoute, ASecondVolumeStartsTheTickerAgain) {
  TTempTree tree;
  for (int i = 0; i < 200; ++i)
    tree.MakeFile("f" + QByteArray::number(i), 1);
  TTallyscopeScan scan(FRecorder.Window());
  FakeVolindex().DuringScan = [] { std::this_thread::sleep_for(std::chrono::milliseconds(100)); };
  scan.Start({tree.Path(), tree.Path()}, false);
  ASSERT_TRUE(FRecorder.WaitForEnd());
  EXPECT_GE(FRecorder.PathTexts(), 4);
  EXPECT_LE(FRecorder.PathTexts(), 24) << "at most one text per pause of 20 ms";
}

TEST_F(DriveRoute, TheLongestPathOfTheSystemFits) {
  const QString longest(kLongestPath - 1, u'p');
  FakeVolindex().Files = {{longest, u"a"_qs, 2}, {longest + u'p', u"b"_qs, 1}};
  Scan({u"/v/"_qs});
  ASSERT_EQ(FScan.Files().Count(), 1);
  EXPECT_EQ(FScan.Files()[0].Path, longest);
}
