// A stop request ends a walk at its next entry.
#include "ScanRecorder.h"

#include "fixtures/TempTree.h"
#include "scan/ScanMessages.h"
#include "scan/Volindex.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <algorithm>
#include <limits>
#include <thread>

namespace {

constexpr int kFiles = 4'000;

// Walks on a thread, stops the walk as soon as its first entries were shown, and returns the milliseconds
// from the request to the end of the walk.
qint64 StopEarly(TTallyscope& walker, TScanRecorder& recorder, const QString& path) {
  recorder.Clear();
  std::thread walk([&] { walker.Scan(path); });
  EXPECT_TRUE(recorder.WaitUntil([&] { return recorder.PathTexts() >= 2; }));
  QElapsedTimer clock;
  clock.start();
  walker.Stop();
  walk.join();
  return clock.elapsed();
}

}  // namespace

TEST(WalkerStop, EndsAWalkInABigFolderWithinATenthOfASecond) {
  for (const QByteArray folder : {"", "sub/"}) {
    TTempTree tree;
    for (int i = 0; i < kFiles; ++i)
      tree.MakeHole(folder + QByteArray::number(i), 1);
    TScanRecorder recorder;
    TTallyscope walker(recorder.Window());
    qint64 best = std::numeric_limits<qint64>::max();
    int fewest = kFiles;
    for (int round = 0; round < 5; ++round) {
      best = std::min(best, StopEarly(walker, recorder, tree.Path()));
      fewest = std::min(fewest, walker.FileCount());
      EXPECT_EQ(walker.Files().Count(), walker.FileCount());
    }
    EXPECT_LT(best, 100);
    EXPECT_LT(fewest, kFiles) << "no walk was cut short";
  }
}

TEST(WalkerStop, EndsAWalkOfManyFoldersWithOneEntryEach) {
  constexpr int kDepth = 3000;
  TTempTree tree;
  tree.MakeChain("d", kDepth);
  TScanRecorder recorder;
  TTallyscope walker(recorder.Window());
  StopEarly(walker, recorder, tree.Path());
  EXPECT_LT(walker.FolderCount(), kDepth);
}

TEST(WalkerStop, WhileTheRootIsListedNoSubfolderIsBegun) {
  constexpr int kFolders = 3000;
  TTempTree tree;
  for (int i = 0; i < kFolders; ++i)
    tree.MakeFolder(QByteArray::number(i));
  TScanRecorder recorder;
  TTallyscope walker(recorder.Window());
  for (int round = 0; round < 20 && (round == 0 || walker.FolderCount() == kFolders); ++round)
    StopEarly(walker, recorder, tree.Path());
  ASSERT_LT(walker.FolderCount(), kFolders) << "the stop always came too late";
  EXPECT_EQ(walker.Folders().Count(), 0);
}

TEST(WalkerStop, ARequestBeforeAWalkHasNoEffectOnIt) {
  TTempTree tree;
  tree.MakeFile("sub/file", 1);
  TTallyscope walker(nullptr);
  walker.Stop();
  walker.Scan(tree.Path());
  EXPECT_EQ(walker.FileCount(), 1);
}
