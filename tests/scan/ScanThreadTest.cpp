// The scan thread: its messages in their order, what it takes over, its stop and its next round.
#include "ScanRecorder.h"

#include "fixtures/TempTree.h"
#include "scan/ScanMessages.h"
#include "scan/UnitScan.h"

#include <gtest/gtest.h>

namespace {

class TScanThreadTest : public testing::Test {
 protected:
  TScanThreadTest() { FScan.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS); }

  void Scan(const QStringList& paths, bool folderMode) {
    FRecorder.Clear();
    FScan.Start(paths, folderMode);
    ASSERT_TRUE(FRecorder.WaitForEnd());
  }

  TTempTree FTree;
  TScanRecorder FRecorder;
  TTallyscopeScan FScan{FRecorder.Window()};
};

void MakeFiles(TTempTree& tree, const QByteArray& folder, int count) {
  for (int i = 0; i < count; ++i)
    tree.MakeHole(folder + QByteArray::number(i), i);
}

}  // namespace

TEST(ScanMessages, AStepWordCarriesTheTotalAboveTheStep) {
  EXPECT_EQ(ScanStepWord(5, 1), quintptr{0x50001});
  EXPECT_EQ(ScanStepWord(0xFFFF, 0xFFFF), quintptr{0xFFFFFFFF});
  EXPECT_EQ(ScanStepTotal(ScanStepWord(5, 4)), 5);
  EXPECT_EQ(ScanStepCurrent(ScanStepWord(5, 4)), 4);
}

TEST_F(TScanThreadTest, AFolderScanPostsItsMessagesInThisOrder) {
  FTree.MakeFile("one", 1);
  FTree.MakeFile("two", 1);
  FTree.MakeFile("sub/three", 1);
  Scan({FTree.Path()}, true);
  EXPECT_EQ(FRecorder.Log().join(u", "_qs),
            u"row 0, step 0 of 1, phase 1, path, phase 3, phase 101, phase 102, phase 103, phase 201, "
            u"phase 300, row 1, done"_qs);
}

TEST_F(TScanThreadTest, ADriveScanPostsARowAndAStepForEachPath) {
  Scan({FTree.Path(), FTree.Path()}, false);
  EXPECT_EQ(FRecorder.Log().join(u", "_qs),
            u"row 0, step 0 of 2, row 0, step 0 of 2, phase 1, path, phase 3, phase 300, "
            u"row 1, step 1 of 2, phase 1, path, phase 3, phase 300, row 2, done"_qs);
}

// Without any path the step's word is 0 and so reads as a phase.
TEST_F(TScanThreadTest, ADriveScanOfNothingEndsAtOnce) {
  Scan({}, false);
  EXPECT_EQ(FRecorder.Log().join(u", "_qs), u"row 0, phase 0, row 0, done"_qs);
}

TEST_F(TScanThreadTest, TakesTheFirstHundredRecordsOfAKindAndCountsAll) {
  for (int i = 0; i < 150; ++i)
    FTree.MakeHole("sub" + QByteArray::number(i) + "/file", 1000 + i);
  MakeFiles(FTree, "", 50);
  Scan({FTree.Path()}, true);
  EXPECT_EQ(FScan.Folders().Count(), 100);
  EXPECT_EQ(FScan.Files().Count(), 100);
  EXPECT_EQ(FScan.FileCount(), 200U);
  EXPECT_EQ(FScan.FolderCount(), 150U);
  EXPECT_EQ(FScan.TotalSize(), 150U * 1000 + 149 * 150 / 2 + 49 * 50 / 2);
  for (const TFileInfoEx& folder : FScan.Folders())
    EXPECT_EQ(folder.Size, 1000 + folder.Name.mid(3).toULongLong()) << qPrintable(folder.Name);
}

TEST_F(TScanThreadTest, SortsTheRowsOfAllPathsTogether) {
  MakeFiles(FTree, "a/", 30);
  MakeFiles(FTree, "b/x/", 40);
  MakeFiles(FTree, "b/y/", 3);
  Scan({FTree.Path("a"), FTree.Path("b")}, false);
  ASSERT_EQ(FScan.Files().Count(), 73);
  for (int i = 1; i < 73; ++i)
    EXPECT_GE(FScan.Files()[i - 1].Size, FScan.Files()[i].Size);
  ASSERT_EQ(FScan.Folders().Count(), 2);
  EXPECT_EQ(FScan.Folders()[0].Path + FScan.Folders()[0].Name, FTree.Path("b/x"));
}

TEST_F(TScanThreadTest, KeepsTheTotalsOfEachPathAndTheCountersOfTheLast) {
  MakeFiles(FTree, "a/x/", 4);
  FTree.MakeFile("b/file", 9);
  Scan({FTree.Path("a"), FTree.Path("b")}, false);
  ASSERT_EQ(FScan.PathTotals().Count(), 2);
  const TPathTotals& a = FScan.PathTotals()[0];
  const TPathTotals& b = FScan.PathTotals()[1];
  EXPECT_EQ(std::tie(a.Files, a.Folders, a.Bytes), std::tuple(4U, 1U, 6U));
  EXPECT_EQ(std::tie(b.Files, b.Folders, b.Bytes), std::tuple(1U, 0U, 9U));
  EXPECT_EQ(FScan.FileCount(), 1U);
  EXPECT_EQ(FScan.TotalSize(), 9U);
}

TEST_F(TScanThreadTest, DownloadLocationsFollowThePathsAndCountAsSteps) {
  FTree.MakeFile("dl/file", 1);
  QStringList asked;
  TTallyscopeScan scan(FRecorder.Window(), [&](const QStringList& paths) {
    asked = paths;
    return QStringList{FTree.Path("dl/")};
  });
  scan.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS);
  for (const bool folderMode : {true, false}) {
    FRecorder.Clear();
    scan.Start({FTree.Path()}, folderMode);
    ASSERT_TRUE(FRecorder.WaitForEnd());
    EXPECT_EQ(asked, QStringList(FTree.Path()));
    EXPECT_EQ(FRecorder.Log().filter(u"step"_qs).last(), u"step 1 of 2"_qs);
    EXPECT_EQ(FRecorder.Log().mid(FRecorder.Log().indexOf(u"row 1"_qs)).join(u", "_qs),
              u"row 1, step 1 of 2, phase 1, path, phase 3, phase 101, phase 300, done"_qs);
    ASSERT_EQ(scan.DownloadFiles().Count(), 1);
    EXPECT_EQ(scan.DownloadFiles()[0].Path, FTree.Path("dl/"));
    ASSERT_TRUE(FRecorder.WaitUntil([&] { return scan.Suspended(); }));
  }
}

TEST_F(TScanThreadTest, UncountedDownloadLocationsAreWalkedAllTheSame) {
  FTree.MakeFile("dl/file", 1);
  CountDownloads = false;
  TTallyscopeScan scan(FRecorder.Window(),
                       [&](const QStringList&) { return QStringList{FTree.Path("dl/")}; });
  scan.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS);
  scan.Start({FTree.Path()}, true);
  ASSERT_TRUE(FRecorder.WaitForEnd());
  EXPECT_EQ(FRecorder.Log().filter(u"step"_qs), QStringList({u"step 0 of 1"_qs, u"step 1 of 1"_qs}));
  EXPECT_EQ(scan.DownloadFiles().Count(), 1);
}

TEST_F(TScanThreadTest, ASecondScanStartsFromNothing) {
  FTree.MakeFile("a/sub/file", 5);
  FTree.MakeFolder("b");
  AutoScan = true;
  CountDownloads = false;
  Scan({FTree.Path("a")}, true);
  ASSERT_TRUE(FRecorder.WaitUntil([this] { return FScan.Suspended(); }));
  EXPECT_FALSE(AutoScan);
  EXPECT_TRUE(CountDownloads);
  Scan({FTree.Path("b")}, false);
  EXPECT_EQ(FScan.Files().Count() + FScan.Folders().Count(), 0);
  EXPECT_EQ(FScan.PathTotals().Count(), 1);
  EXPECT_EQ(FRecorder.Log().last(), u"done");
}

// A start that comes right out of the handler of the final message may find the thread still running.
TEST_F(TScanThreadTest, ManyScansInARowAllEnd) {
  FTree.MakeFile("sub/file", 5);
  for (int round = 0; round < 200; ++round) {
    Scan({FTree.Path()}, round % 2 == 0);
    ASSERT_EQ(FScan.Files().Count(), 1) << round;
  }
}

TEST_F(TScanThreadTest, AStopIsAnsweredToTheProgressWindowAndTheNextScanIsWhole) {
  MakeFiles(FTree, "sub/", 100);
  TScanRecorder progress;
  FScan.SetProgressTarget(progress.Window(), WM_SCANPROGRESS);
  FScan.Start(QStringList(500, FTree.Path()), false);
  ASSERT_TRUE(FRecorder.WaitUntil([this] { return FRecorder.PathTexts() >= 2; }));
  FScan.Stop();
  ASSERT_TRUE(progress.WaitForEnd());
  PumpMessages();
  EXPECT_EQ(progress.Log().last(), u"stopped");
  EXPECT_FALSE(FRecorder.Log().contains(u"done"_qs));
  EXPECT_FALSE(FRecorder.Log().contains(u"row 499"_qs)) << "the paths went on after the stop";
  EXPECT_EQ(FRecorder.Log().last(), u"row 500") << "the download pass posts its row";

  FScan.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS);
  Scan({FTree.Path()}, true);
  EXPECT_EQ(FScan.FileCount(), 100U);
}

TEST_F(TScanThreadTest, ItsEndStopsAScan) {
  MakeFiles(FTree, "sub/", 100);
  {
    TTallyscopeScan scan(nullptr);
    scan.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS);
    scan.Start(QStringList(5000, FTree.Path()), false);
    ASSERT_TRUE(FRecorder.WaitUntil([this] { return FRecorder.Phases().size() >= 2; }));
  }
  PumpMessages();
  EXPECT_FALSE(FRecorder.Log().contains(u"step 4999 of 5000"_qs));
}
