// A stop request ends a walk at its next entry.
#include "ScanRecorder.h"

#include "fixtures/NativePath.h"
#include "fixtures/TempTree.h"
#include "scan/ScanMessages.h"
#include "scan/Volindex.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <functional>
#include <thread>

namespace {

// Enough to be still at it when the request comes. Wine looks through a whole folder for each new name.
const int kFiles = HasDrives() ? 1'500 : 4'000;
const int kFolders = HasDrives() ? 1'500 : 3'000;

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

constexpr qint64 kAtOnce = 100;  // milliseconds

// The same until a walk was cut short at once: on a busy computer one may be over before the request comes.
qint64 StopUntil(TTallyscope& walker, TScanRecorder& recorder, const QString& path,
                 const std::function<bool()>& isCut) {
  qint64 elapsed = StopEarly(walker, recorder, path);
  for (int round = 1; round < 300 && !(isCut() && elapsed < kAtOnce); ++round)
    elapsed = StopEarly(walker, recorder, path);
  return elapsed;
}

}  // namespace

TEST(WalkerStop, EndsAWalkInABigFolderWithinATenthOfASecond) {
  for (const QByteArray folder : {"", "sub/"}) {
    TTempTree tree;
    for (int i = 0; i < kFiles; ++i)
      tree.MakeHole(folder + QByteArray::number(i), 1);
    TScanRecorder recorder;
    TTallyscope walker(recorder.Window());
    const auto isCut = [&walker] { return walker.FileCount() < kFiles; };
    EXPECT_LT(StopUntil(walker, recorder, tree.Path(), isCut), kAtOnce);
    EXPECT_TRUE(isCut()) << "no walk was cut short";
    EXPECT_EQ(walker.Files().Count(), walker.FileCount());
  }
}

TEST(WalkerStop, EndsAWalkOfManyFoldersWithOneEntryEach) {
  const int depth = HasDrives() ? 250 : 3000;  // Wine takes long over long paths
  TTempTree tree;
  tree.MakeChain("d", depth);
  TScanRecorder recorder;
  TTallyscope walker(recorder.Window());
  const auto isCut = [&] { return walker.FolderCount() < depth; };
  StopUntil(walker, recorder, tree.Path(), isCut);
  EXPECT_TRUE(isCut());
}

TEST(WalkerStop, WhileTheRootIsListedNoSubfolderIsBegun) {
  TTempTree tree;
  for (int i = 0; i < kFolders; ++i)
    tree.MakeFolder(QByteArray::number(i));
  TScanRecorder recorder;
  TTallyscope walker(recorder.Window());
  const auto isCut = [&walker] { return walker.FolderCount() < kFolders; };
  StopUntil(walker, recorder, tree.Path(), isCut);
  ASSERT_TRUE(isCut()) << "the stop always came too late";
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
