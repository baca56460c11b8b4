// The scan thread: its messages in their order, what it takes over by each route, its stop and its end.
#include "FakeVolindex.h"
#include "ScanRecorder.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"
#include "scan/ScanMessages.h"
#include "scan/UnitScan.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QSemaphore>

#include <algorithm>
#include <atomic>
#include <functional>

namespace {

class TScanThreadTest : public testing::Test {
 protected:
  TScanThreadTest() {
    FakeVolindex() = {};
    CountDownloads = true;
    Make();
  }
  ~TScanThreadTest() override {
    FScan.reset();
    FakeVolindex() = {};
  }

  void Make(TPathDisplay paths = TPathDisplay::Shown) {
    FScan.reset(new TTallyscopeScan(
        FRecorder.Window(),
        [this](const QStringList&) {
          if (FWhileFinding) FWhileFinding();
          return FLocations;
        },
        paths));
    FakeVolindex().Calls.clear();
    FScan->SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS);
  }

  // The volume is read by the library, which has these files.
  void MakeVolume(int files) {
    Make(TPathDisplay::None);
    FakeVolindex().Accepts = true;
    FakeVolindex().Files.clear();
    for (int i = 0; i < files; ++i)
      FakeVolindex().Files.push_back({u"r%1"_qs.arg(i), static_cast<quint64>(files - i)});
  }

  void Scan(const QStringList& paths, bool folderMode) {
    FRecorder.Clear();
    FScan->Start(paths, folderMode);
    ASSERT_TRUE(FRecorder.WaitForEnd());
    ASSERT_TRUE(FRecorder.WaitUntil([this] { return FScan->Suspended(); }));
  }
  [[nodiscard]] QString Log() const { return FRecorder.Log.join(u", "_qs); }

  void MakeFiles(const QByteArray& folder, int count) {
    for (int i = count - 1; i >= 0; --i)
      FTree.MakeHole(folder + QByteArray::number(i), i);
  }

  TTempTree FTree;
  QStringList FLocations;
  std::function<void()> FWhileFinding;
  TScanRecorder FRecorder;
  TOwnedThread<TTallyscopeScan> FScan;
};

}  // namespace

TEST_F(TScanThreadTest, EachRoutePostsItsMessagesInThisOrder) {
  FTree.MakeFile("sub/three", 1);
  MakeFiles("", 2);
  FTree.MakeFile("dl/file", 9);
  FLocations = {FTree.Path("dl/")};
  const QString walk =
      u"phase 1, path, phase 3, phase 49, phase 101, phase 102, phase 103, phase 104, "
      u"phase 201, phase 202, phase 300, "_qs;
  CountDownloads = false;
  AutoScan = true;
  Scan({FTree.Path()}, true);
  EXPECT_EQ(Log(), u"row 0, step 0 of 1, "_qs + walk +
                       u"row 1, step 1 of 1, phase 1, path, phase 3, phase 101, phase 300, done"_qs);
  EXPECT_FALSE(AutoScan);
  EXPECT_TRUE(CountDownloads) << "from the second scan on";
  const QString drive = u"phase 1, path, phase 3, phase 101, phase 300, "_qs;
  Scan({FTree.Path("dl"), FTree.Path("dl")}, false);
  EXPECT_EQ(Log(), u"row 0, step 0 of 3, row 0, step 0 of 3, "_qs + drive + u"row 1, step 1 of 3, "_qs +
                       drive + u"row 2, step 2 of 3, "_qs + drive + u"done"_qs);
  FLocations.clear();
  Scan({}, false);
  EXPECT_EQ(Log(), u"row 0, phase 0, row 0, done"_qs) << "a word of no steps reads as a phase";
  EXPECT_EQ(FScan->Files().Count() + FScan->Folders().Count() + FScan->DownloadFiles().Count(), 0);
  EXPECT_EQ(FScan->PathTotals().Count(), 0);
}

TEST_F(TScanThreadTest, TakesTheFirstHundredOfAKindAndPathAndSortsThemTogether) {
  MakeFiles("a/x/", 150);
  for (int i = 0; i < 150; ++i)
    FTree.MakeHole("b/" + QByteArray::number(i) + "/file", 1000 + i);
  Scan({FTree.Path("a"), FTree.Path("b")}, false);
  ASSERT_EQ(FScan->Files().Count(), 200);
  ASSERT_EQ(FScan->Folders().Count(), 101);
  EXPECT_TRUE(std::ranges::is_sorted(FScan->Files(), std::greater(), &TFileInfoEx::Size));
  EXPECT_EQ(FScan->Folders()[0].Path + FScan->Folders()[0].Name, FTree.Path("a/x"));
  for (int i = 1; i < 101; ++i)
    EXPECT_EQ(FScan->Folders()[i].Size, 1000 + FScan->Folders()[i].Name.toULongLong());
  ASSERT_EQ(FScan->PathTotals().Count(), 2);
  const auto& [files, folders, bytes, usage] = FScan->PathTotals()[0];
  EXPECT_EQ(std::tuple(files, folders, bytes), std::tuple(150U, 1U, 149U * 75));
  EXPECT_FALSE(usage) << "of what is walked";
  EXPECT_EQ(std::tuple(FScan->FileCount(), FScan->FolderCount(), FScan->TotalSize()),
            std::tuple(150U, 150U, 150U * 1000 + 149 * 75));
}

TEST_F(TScanThreadTest, TellsWhatAVolumeUsesAndIfAskedWhatCouldNotBeRead) {
  MakeVolume(1);
  FakeVolindex().Unreadable = {u"/v/a/"_qs, u"/v/b/"_qs};
  for (const bool list : {true, false}) {
    ListUnreadable = list;
    Scan({u"/v/"_qs}, false);
    EXPECT_EQ(FScan->UnreadableFolders(), list ? FakeVolindex().Unreadable : QStringList());
    const TPathUsage usage = FScan->PathTotals()[0].Usage.value();
    EXPECT_EQ(std::tuple(usage.Allocated, usage.VolumeUsed, usage.Unreadable),
              std::tuple(7U, std::optional<quint64>(), 2U));
  }
}

TEST_F(TScanThreadTest, TheLibraryIsCalledInItsOrderAndThePostsFollowTheNumberOfRecords) {
  const std::pair<int, int> cases[] = {{0, 0}, {1, 1}, {50, 50}, {150, 100}, {199, 100}, {1000, 10}, {2, 2}};
  for (const auto& [records, posts] : cases) {
    MakeVolume(records);
    if (records > 100) FakeVolindex().Files[0].Fails = FakeVolindex().Files[7].Fails = true;
    Scan({u"/v/"_qs}, false);
    std::vector<int> expected;
    for (int n = 1; n <= posts; ++n)
      expected.push_back(100 + n);
    if (records > 0) expected.push_back(200);
    EXPECT_EQ(FRecorder.Phases, expected) << records;
    ASSERT_EQ(FScan->Files().Count(), std::min(records, 100));
    EXPECT_TRUE(records < 100 || FScan->Files()[99].Name == u"r101") << "a failed record takes no place";
  }
  EXPECT_EQ(FakeVolindex().Calls,
            u"notify 1 8048|check /v/|scan /v/|open 0|count|open 2|count|totals|free"_qs.split(u'|'));
  EXPECT_EQ(FScan->FileCount(), 2U);
  EXPECT_EQ(FScan->PathTotals()[0].Bytes, 0x1'0000'0002U);
  EXPECT_EQ(FScan->TotalSize(), 0U) << "only a walk writes it";
  FScan.reset();
  EXPECT_EQ(FakeVolindex().Calls.last(), u"notify 0 0"_qs);
}

// Both halves of a size count and the highest bit is no sign. The longest path of the system fits.
TEST_F(TScanThreadTest, TheRowsOfSeveralVolumesAreSortedBySizesOf64Bits) {
  constexpr quint64 kTop = quint64{1} << 63;
  const QString longest(kLongestPath - 1, u'p');
  MakeVolume(0);
  FakeVolindex().Files = {{u"a"_qs, kTop + 1, false, longest},
                          {u"b"_qs, 0x1'0000'0000},
                          {u"c"_qs, 3'000'000'000},
                          {u"d"_qs, 1},
                          {u"e"_qs, 9, false, longest + u'p'}};
  FakeVolindex().Folders = FakeVolindex().Files;
  Scan({u"/v/"_qs, u"/w/"_qs}, false);
  for (const TList<TFileInfoEx>* list : {&FScan->Files(), &FScan->Folders()}) {
    QString names;
    for (const TFileInfoEx& row : *list)
      names += row.Name;
    EXPECT_EQ(names, u"aabbccdd"_qs);
    EXPECT_EQ((*list)[0].Size, kTop + 1);
    EXPECT_EQ((*list)[0].Path, longest);
  }
}

TEST_F(TScanThreadTest, EveryFileOfADownloadLocationIsTaken) {
  for (const auto& [files, posts] : {std::pair(50, 50), {199, 199}, {250, 125}}) {
    MakeFiles("dl/sub/", files);
    FLocations = {FTree.Path("dl/")};
    Scan({}, false);
    std::vector<int> phases = {1, 3};
    for (int i = 1; i <= posts; ++i)
      phases.push_back(100 + i);
    phases.push_back(300);
    EXPECT_EQ(FRecorder.Phases, phases) << files;
    ASSERT_EQ(FScan->DownloadFiles().Count(), files);
    EXPECT_EQ(FScan->DownloadFiles()[0].Name.toInt(), files - 1) << "largest first";
    EXPECT_EQ(FScan->DownloadFiles()[0].Path, FTree.Path("dl/sub/"));
    EXPECT_EQ(FScan->FileCount(), 0U) << "the pass has no part in the scan's counters";
  }
}

TEST_F(TScanThreadTest, AStopDuringAReadTakesNothingAndGoesToTheProgressWindow) {
  MakeVolume(5);
  TScanRecorder progress;
  FScan->SetProgressTarget(progress.Window(), WM_SCANPROGRESS);
  FLocations = {FTree.Path()};
  const int before = FakeStops;
  AskForElevation = TALLYSCOPE_ASK_ON_DESKTOP;
  FakeVolindex().DuringScan = [this] { FScan->Stop(); };
  FScan->Start({u"/v/"_qs, u"/w/"_qs}, false);
  ASSERT_TRUE(progress.WaitForEnd());
  EXPECT_EQ(FakeStops, before + 1);
  EXPECT_EQ(FakeElevation, TALLYSCOPE_ASK_ON_DESKTOP);
  EXPECT_EQ(progress.Log.join(u", "_qs), u"step 0 of 3, step 0 of 3, phase 200, stopped"_qs);
  EXPECT_EQ(Log(), u"row 0, row 0, row 2"_qs) << "the download pass posts its row";
  EXPECT_EQ(FScan->Files().Count(), 0);
  EXPECT_EQ(FakeVolindex().Calls.last(), u"free"_qs);
  FakeVolindex().DuringScan = {};
  ASSERT_TRUE(FRecorder.WaitUntil([this] { return FScan->Suspended(); }));
  FScan->SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS);
  Scan({u"/v/"_qs}, false);
  EXPECT_EQ(FScan->Files().Count(), 5) << "the next scan is whole";
}

TEST_F(TScanThreadTest, AStopBeforeTheFirstFolderBeginsNoWalk) {
  FTree.MakeFile("file", 1);
  FWhileFinding = [this] { FScan->Stop(); };
  Scan({FTree.Path()}, true);
  EXPECT_TRUE(Log().endsWith(u"stopped"));
  EXPECT_EQ(FScan->FileCount(), 0U);
}

// Of many folders beside and inside each other. On a busy computer a walk may be over before the request
// comes.
TEST_F(TScanThreadTest, AStopCutsTheWalkShort) {
  const int depth = HasDrives() ? 22 : 300;
  for (const int entries : {1500, depth}) {
    FTree.Remove("");
    for (int i = 0; entries != depth && i < entries; ++i)
      FTree.MakeFolder(QByteArray::number(i));
    if (entries == depth) FTree.MakeChain(QByteArray(HasDrives() ? 150 : 30, 'n'), depth);
    bool cut = false;
    for (int round = 0; round < 200 && !cut; ++round) {
      FRecorder.Clear();
      FScan->Start({FTree.Path()}, true);
      ASSERT_TRUE(FRecorder.WaitUntil([&] { return FRecorder.Paths.size() >= 1; }));
      FScan->Stop();
      ASSERT_TRUE(FRecorder.WaitForEnd());
      cut = FScan->FolderCount() < static_cast<quint32>(entries);
      ASSERT_TRUE(FRecorder.WaitUntil([this] { return FScan->Suspended(); }));
    }
    EXPECT_TRUE(cut) << entries;
  }
}

// The whole wander would take 20 seconds; the second volume ends the first one's.
TEST_F(TScanThreadTest, TheTickerShowsPathsWhileEachVolumeIsRead) {
  FTree.MakeFile("veiled/inside", 1);
  const QByteArray hidden = FTree.Hide("veiled");
  FTree.MakeFile("folder/inside", 1);
  MakeFiles("folder/deep/", 1000);
  MakeVolume(1);
  Make();
  QSemaphore shown;
  QElapsedTimer clock;
  std::atomic<qint64> begun = 0;
  FakeVolindex().DuringScan = [&] {
    begun = clock.elapsed();
    (void)shown.tryAcquire(1, 20'000);
  };
  clock.start();
  FScan->Start({FTree.Path(), FTree.Path()}, false);
  const auto showed = [this](const QByteArray& name) { return FRecorder.Paths.contains(FTree.Path(name)); };
  ASSERT_TRUE(FRecorder.WaitUntil([&] { return showed("folder/inside"); }));
  EXPECT_TRUE(begun >= 500 && clock.elapsed() >= 500 + 2 * 20) << "pauses at the beginning and at each entry";
  EXPECT_TRUE(showed(hidden) && !showed(hidden + "/inside")) << "shown and not entered";
  EXPECT_FALSE(showed("folder")) << "entered and not shown";
  shown.release();
  ASSERT_TRUE(FRecorder.WaitUntil([&] { return FRecorder.Log.contains(u"row 1"_qs); }));
  const qsizetype before = FRecorder.Paths.size();
  ASSERT_TRUE(FRecorder.WaitUntil([&] { return FRecorder.Paths.size() >= before + 2; }));
  shown.release();
  ASSERT_TRUE(FRecorder.WaitForEnd());
  EXPECT_LT(clock.elapsed(), 15'000);
}
