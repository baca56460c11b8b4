// The pass over the download locations that ends every scan.
#include "ScanRecorder.h"

#include "fixtures/TempTree.h"
#include "scan/ScanMessages.h"
#include "scan/UnitScan.h"

#include <gtest/gtest.h>

namespace {

// Runs the pass alone, on the test's own thread; the scan thread stays suspended.
class TPassAlone : public TTallyscopeScan {
 public:
  using TTallyscopeScan::ScanDownloadFolders;
  using TTallyscopeScan::TTallyscopeScan;
};

class TDownloadPassTest : public testing::Test {
 protected:
  TDownloadPassTest() { FPass.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS); }

  QStringList Run(const QStringList& locations) {
    FPass.ScanDownloadFolders(4, 2, locations);
    PumpMessages();
    return FRecorder.Log();
  }

  TTempTree FTree;
  TScanRecorder FRecorder;
  TPassAlone FPass{FRecorder.Window()};
};

}  // namespace

TEST_F(TDownloadPassTest, WithoutLocationsOnlyItsRowIsPosted) {
  EXPECT_EQ(Run({}), QStringList({u"row 2"_qs}));
}

TEST_F(TDownloadPassTest, AfterAStopOnlyItsRowIsPosted) {
  FPass.Stop();
  EXPECT_EQ(Run({FTree.Path()}), QStringList({u"row 2"_qs}));
}

TEST_F(TDownloadPassTest, TakesEveryFileOfEveryLocation) {
  FTree.MakeFile("a/file", 1);
  FTree.MakeFile("b/sub/file", 2);
  const QStringList log = Run({FTree.Path("a"), FTree.Path("b")});
  EXPECT_EQ(log.filter(u"step"_qs), QStringList({u"step 2 of 4"_qs, u"step 3 of 4"_qs}));
  ASSERT_EQ(FPass.DownloadFiles().Count(), 2);
  EXPECT_EQ(FPass.DownloadFiles()[1].Path, FTree.Path("b/sub/"));
  EXPECT_EQ(FPass.FileCount(), 0U) << "the pass has no part in the scan's counters";
}

TEST_F(TDownloadPassTest, PostsAtEachHundredthOfALocationsFiles) {
  struct {
    int Files;
    int Posts;
  } const cases[] = {{50, 50}, {199, 199}, {250, 125}};
  for (const auto& [files, posts] : cases) {
    for (int i = 0; i < files; ++i)
      FTree.MakeHole(QByteArray::number(i), 1);
    FRecorder.Clear();
    Run({FTree.Path()});
    std::vector<int> expected = {1, 3};
    for (int i = 1; i <= posts; ++i)
      expected.push_back(100 + i);
    expected.push_back(300);
    EXPECT_EQ(FRecorder.Phases(), expected) << files << " files";
  }
}
