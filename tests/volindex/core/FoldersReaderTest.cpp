#include "volindex/IndexAnswer.h"
#include "volindex/TestTree.h"
#include "volindex/readers/folders/LinkSearch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>

namespace volindex {
namespace {

// Odd names and such as sort around the delimiter, few sizes, files with several names, files of special
// kinds.
void Populate(TTestTree& tree, unsigned entries) {
  std::mt19937 random(7);
  std::vector<std::string> folders{""};
  std::vector<std::string> files{"first"};
  tree.AddFile("first", 5);
  for (unsigned i = 0; i < entries; ++i) {
    static const std::vector<std::string> kBeginnings{"a", "a-",           "a.",     kOddName.Bytes,
                                                      "b", "\xe2\x82\xac", ".hidden"};
    const std::string path =
        folders[random() % folders.size()] + kBeginnings[random() % kBeginnings.size()] + std::to_string(i);
    switch (random() % 8) {
      case 0:
        tree.AddFolder(path);
        folders.push_back(path + '/');
        break;
      case 1:
        tree.AddLink(files[random() % files.size()], path);
        break;
      case 2:
      case 3:
        MakeSpecialFile(tree.Path(path), i);
        break;
      default:
        tree.AddFile(path, random() % 4 == 0 ? random() % 100 : uint64_t{1} << (random() % 40));
        files.push_back(path);
    }
  }
}

TEST(FoldersReader, SeesWhatFindSeesWhateverTheThreadsDo) {
  TTestTree tree;
  Populate(tree, 4500);  // more than the list takes, some of those with several names too small for it
  const TAnswer expected = AnswerOfDisk(tree.Root().string());
  ASSERT_GT(expected.FolderCount, 100U);
  for (const unsigned threads : {1U, 2U, 4U, 16U})
    EXPECT_EQ(AnswerFor(tree.Root(), threads), expected) << threads;
  EXPECT_EQ(AnswerFor(tree.Root(), 2, 1), expected);  // nearly every folder opened from the root
}

// A chain that no path text can name, with a folder to come back to at each level.
TEST(FoldersReader, DeepTreeIsReadByHandle) {
  TTestTree tree;
  const unsigned depth = MakeChain(tree.Root().string(), "a folder with a long name");
  for (const unsigned openLimit : {1U, 20U, 100'000U}) {
    const TAnswer answer = AnswerFor(tree.Root(), 2, openLimit);
    EXPECT_EQ(answer.Total, depth * 10U);
    EXPECT_EQ(answer.FolderCount, depth * 2U);
  }
}

TEST(FoldersReader, TreeThatVanishesMeanwhileDoesNoHarmAndOneThatIsGoneIsHandedOver) {
  TTestTree tree;
  Populate(tree, 2000);
  std::jthread remover([&tree] { RemoveTree(tree.Root().string()); });
  const TReading reading = Read(tree.Root());
  EXPECT_EQ(reading.Result, TReadResult::Done);
  EXPECT_EQ(reading.Index.Statistics().Unreadable, 0U);
  remover.join();
  TScanRoot root;
  root.Path = tree.Root().generic_string();
  const std::atomic<bool> stop{false};
  TIndexBuilder builder;
  EXPECT_EQ(TFoldersReader().Read(root, builder, {stop, [](int) {}}), TReadResult::HandedOver);
}

// The flag is set from within, so that reading is surely going on.
TEST(FoldersReader, StopsWithinATenthOfASecond) {
  using TClock = std::chrono::steady_clock;
  TTestTree tree;
  Populate(tree, 2500);
  for (const int stopAt : {1, 30, 90}) {
    std::atomic<bool> stop{false};
    TClock::time_point stopped = TClock::now();
    const auto progress = [&](int percent) {
      if (percent < stopAt || stop.exchange(true)) return;
      stopped = TClock::now();
    };
    TIndexBuilder builder;
    TFoldersReader reader(2, kPlenty);
    EXPECT_EQ(reader.Read(DescribeScanRoot(tree.Root().string()).value(), builder, {stop, progress}),
              TReadResult::Stopped);
    EXPECT_LT(TClock::now() - stopped, std::chrono::milliseconds(100));
  }
}

// As on a system whose listings tell no links: each name was counted by itself.
class TCountedTwice {
 public:
  TCountedTwice(TTestTree& tree, const std::vector<std::string>& folders) : FScan(NewScan()) {
    FBuilder.Begin(1, TFolderOrder::ParentsFirst);
    EXPECT_EQ(FRoot.OpenRoot(tree.Root().generic_string()), TAccess::Ok);
    EXPECT_EQ(FRoot.Facts(FScan.RootFacts), TAccess::Ok);
    for (const std::string& folder : folders) {
      const TFolderId id = FBuilder.ReserveFolder();
      EXPECT_TRUE(FBuilder.Shard(0).SetFolder(id, kRootFolder, folder));
      TFolderHandle handle;
      EXPECT_EQ(handle.OpenBelow(FRoot, folder), TAccess::Ok);
      TFolderListing listing;
      listing.Start(handle);
      TEntryFacts facts;
      while (listing.Next() == TAccess::Ok && listing.Facts(facts) == TAccess::Ok) {
        FBuilder.Shard(0).AddFile(id, listing.Name(), facts.Size);
        FScan.Seen[0].AddSingle(facts.Number, id, facts.Size);
      }
    }
  }

  TVolumeIndex Search() {
    TLinkSearch(FScan).Run(1);
    EXPECT_EQ(FBuilder.Finish(FStop), TFinish::Done);
    return FBuilder.TakeIndex();
  }

 private:
  TFolderScan NewScan() {
    return {0,
            FBuilder,
            FControl,
            FRoot,
            {},
            TFolderQueue({}, 1),
            TFolderProgress(FControl),
            1,
            std::vector<TSeenFiles>(1)};
  }

  const std::atomic<bool> FStop{false};
  TScanControl FControl{FStop, [](int) {}};
  TIndexBuilder FBuilder;
  TFolderHandle FRoot;
  TFolderScan FScan;
};

// A file found again stands where its first name is, one whose folders are gone by then in one of them.
TEST(LinkSearch, NothingThatWasCountedGetsLost) {
  for (const bool gone : {false, true}) {
    TTestTree tree;
    tree.AddFile("b/both", 100);
    tree.AddLink("b/both", "a/both");
    tree.AddFile("b/thrice", 10);
    tree.AddLink("b/thrice", "b/thrice again");
    tree.AddLink("b/thrice", "c/thrice");
    tree.AddFile("c/one", 1);
    TCountedTwice twice(tree, {"c", "b", "a"});
    for (const char* folder : {"a", "b"})
      if (gone) RemoveTree(tree.Path(folder));
    const TVolumeIndex index = twice.Search();
    EXPECT_EQ(index.FileCount(), 3U);
    EXPECT_EQ(index.FolderTotal(kRootFolder), 111U);
    EXPECT_EQ(index.FolderTotal(3), 100U) << "a";
    EXPECT_EQ(index.FolderTotal(1), gone ? 11U : 1U) << "c";
  }
}

}  // namespace
}  // namespace volindex
