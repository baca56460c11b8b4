// Changes of one folder, made for real and told once per burst.
#include "platform/FolderWatch.h"

#include "fixtures/SystemTest.h"

namespace {

class TFolderWatchTest : public testing::Test {
 protected:
  TFolderWatchTest() {
    FTree.MakeAll({"shown/old", "shown/sub/deep", "other/"});
    FWatch.OnChange = [this] { ++FTold; };
  }

  static void RunFor(int milliseconds, const std::function<bool()>& until) {
    QElapsedTimer clock;
    clock.start();
    QTimer wake;
    wake.start(10);
    while (!until() && clock.elapsed() < milliseconds)
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }

  [[nodiscard]] bool Watch(const QByteArray& folder) {
    const auto changes = KeepChanges(FTree.Path(folder));
    FWatch.Watch(changes);
    return changes != nullptr;
  }
  // Whether the change is told, with all that belongs to it having come.
  [[nodiscard]] bool IsTold() {
    RunFor(20'000, [this] { return FTold > 0; });
    const bool told = FTold > 0;
    RunFor(500, [] { return false; });
    FTold = 0;
    return told;
  }
  // A while that is longer than any change takes to be told.
  [[nodiscard]] bool IsSilent() {
    RunFor(700, [this] { return FTold > 0; });
    return FTold == 0;
  }

  TTempTree FTree;
  TFolderWatch FWatch;
  int FTold = 0;
};

}  // namespace

TEST_F(TFolderWatchTest, TellsEachKindOfChange) {
  ASSERT_TRUE(Watch("shown"));
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"a file comes", [this] { FTree.MakeFile("shown/new", 1); }},
      {"a file grows", [this] { FTree.MakeFile("shown/new", 50); }},
      {"a file gets another name", [this] { FTree.Rename("shown/new", "shown/newer"); }},
      {"a file can't be written any more", [this] { FTree.MakeReadOnly("shown/newer"); }},
      {"a file leaves for another folder", [this] { FTree.Rename("shown/old", "other/old"); }},
      {"a file comes from another folder", [this] { FTree.Rename("other/old", "shown/old"); }},
      {"a file goes", [this] { FTree.Remove("shown/old"); }},
      {"a folder comes", [this] { FTree.MakeFolder("shown/folder"); }}};
  for (const auto& [what, change] : changes) {
    change();
    EXPECT_TRUE(IsTold()) << what;
  }
  FTree.MakeFile("shown/sub/deep", 70);
  FTree.MakeFile("other/new", 1);
  EXPECT_TRUE(IsSilent()) << "what lies deeper or beside";
}

// Far more than the system keeps in its queue.
TEST_F(TFolderWatchTest, ABurstIsToldOnceAndAStreamAFewTimesASecond) {
  ASSERT_TRUE(Watch("shown"));
  for (int i = 0; i < (HasDrives() ? 300 : 12'000); ++i) {
    FTree.MakeHole("shown/burst", 1);
    FTree.Rename("shown/burst", "shown/turned");
  }
  RunFor(20'000, [this] { return FTold > 0; });
  EXPECT_EQ(FTold, 1);
  EXPECT_TRUE((FTold = 0, IsSilent()));
  QTimer stream;
  QObject::connect(&stream, &QTimer::timeout, [this] { FTree.MakeHole("shown/stream", 1); });
  stream.start(0);
  RunFor(1000, [] { return false; });
  EXPECT_GE(FTold, 1) << "what comes behind a burst";
  EXPECT_LE(FTold, 5);
}

TEST_F(TFolderWatchTest, TheEndOfTheFolderIsToldOnce) {
  if (HasDrives()) GTEST_SKIP() << "Wine tells nothing of the end of a watched folder";
  for (const bool renamed : {false, true}) {
    FTree.MakeFolder("ending");
    ASSERT_TRUE(Watch("ending"));
    renamed ? FTree.Rename("ending", "ended") : FTree.Remove("ending");
    EXPECT_TRUE(IsTold()) << renamed;
  }
  FTree.MakeFile("ended/new", 1);
  EXPECT_TRUE(IsSilent()) << "the folder under its new name";
}

TEST_F(TFolderWatchTest, WatchesOneFolderAtATime) {
  EXPECT_FALSE(Watch("missing") || Watch("shown/old"));
  ASSERT_TRUE(Watch("shown"));
  FTree.MakeFile("shown/new", 1);
  ASSERT_TRUE(Watch("other"));
  EXPECT_TRUE(IsSilent());
  FTree.MakeFile("other/new", 1);
  EXPECT_TRUE(IsTold());
  FWatch.Watch(nullptr);
  FTree.MakeFile("other/newer", 1);
  EXPECT_TRUE(IsSilent());
}

TEST_F(TFolderWatchTest, AFolderWithAnyNameAtAnyDepthIsWatched) {
  const QByteArray deep = FTree.MakeChain(QByteArray(250, 'd'), HasDrives() ? 3 : 18) +
                          (HasDrives() ? "/caf\xc3\xa9" : "/caf\xe9");
  FTree.MakeFolder(deep);
  ASSERT_TRUE(Watch(deep));
  FTree.MakeFile(deep + "/new", 1);
  EXPECT_TRUE(IsTold());
}
