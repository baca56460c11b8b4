// What one walk finds, counts and posts, on real trees, and how it is stopped.
#include "ScanRecorder.h"
#include "Truth.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "scan/FolderSizeThread.h"
#include "scan/ScanMessages.h"
#include "scan/Volindex.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <random>
#include <thread>

namespace {

using TSizes = std::map<QByteArray, quint64>;

class TWalkerTest : public testing::Test {
 protected:
  TWalkerTest() { FWalker.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS); }

  void Walk(const QByteArray& root = {}) {
    FRecorder.Clear();
    FWalker.Scan(root.isEmpty() ? FTree.Path() : FTree.Path(root));
    PumpMessages();
  }

  void MakeFiles(const QByteArray& folder, int count) {
    for (int i = 0; i < count; ++i)
      FTree.MakeHole(folder + QByteArray::number(i), 1);
  }

  [[nodiscard]] TSizes FoundFolders() const {
    TSizes found;
    for (const TFolderInfo& folder : FWalker.Folders()) {
      EXPECT_EQ(folder.Path, FTree.Path() + PathDelim);
      found[NameToBytes(folder.Name)] = folder.Size;
    }
    return found;
  }

  TTempTree FTree;
  TScanRecorder FRecorder;
  TTallyscope FWalker{FRecorder.Window(), {.EntriesPerPart = 50}};
};

using TDraw = std::function<unsigned(unsigned below)>;

// Folders of every width and depth, names of every kind, and kinds of files that are not counted alike.
void MakeHostileTree(TTempTree& tree, const TDraw& draw) {
  std::vector<QByteArray> folders{""};
  QByteArray last;
  const unsigned kinds = draw(2) == 0 ? 4 : 12;  // every second tree has mostly folders
  for (unsigned i = 0, count = draw(60); i < count; ++i) {
    const QByteArray name =
        folders[draw(static_cast<unsigned>(folders.size()))] + QByteArray::number(i) + "\xe6\x97\xa5";
    const unsigned kind = draw(kinds);
    if (kind < 3)
      tree.MakeFolder(name), folders.push_back(name + '/');
    else if (kind == 4 && !last.isEmpty())
      tree.MakeHardLink(name, last);
    else if (kind == 5 && !HasDrives())
      tree.MakeLink(name + '\xff', "..");
    else if (kind == 6 && !HasDrives())
      tree.MakeSystemEntry(name);
    else if (kind == 7)
      tree.MakeHole(name, 5'000'000'000);
    else
      tree.MakeFile(last = name, draw(3000));
    if (kind == 8) last = tree.Hide(name);
    if (kind == 9) tree.MakeReadOnly(name);
  }
}

}  // namespace

// Whatever the threads and however little they may read ahead. Wine takes its time to make a tree.
TEST(Walk, OfManyThreadsSeesWhatAWalkOfOneSees) {
  std::mt19937 random(20260101);
  const TDraw draw = [&](unsigned below) { return static_cast<unsigned>(random() % below); };
  for (int round = 0; round < (HasDrives() ? 15 : 200); ++round) {
    TTempTree tree;
    MakeHostileTree(tree, draw);
    const TTruth truth(tree.Path());
    TTallyscope walker(nullptr, {1 + draw(4), draw(3000), 1 + static_cast<int>(draw(5))});
    walker.Scan(tree.Path());
    std::vector<std::pair<QByteArray, quint64>> files;
    for (const TFileInfo& file : walker.Files())
      files.emplace_back(NameToBytes(file.Path + file.Name), file.Size);
    ASSERT_EQ(files, truth.Files) << "round " << round;
    ASSERT_EQ(walker.FolderCount(), truth.Folders);
    ASSERT_EQ(walker.FileCount(), walker.Files().Count());
    ASSERT_EQ(walker.TotalSize(), truth.Bytes);
    TFolderCrew crew(1 + draw(4));
    ASSERT_EQ(GetFolderSize(tree.Path() + PathDelim, crew), truth.Bytes);
  }
}

// The listings of 20 folders take some 20 bytes a file; a part is ten files.
TEST(Walk, ReadsOnlySoMuchAhead) {
  TTempTree tree;
  for (int file = 0; file < 800; ++file)
    tree.MakeHole(QByteArray::number(file % 20) + '/' + QByteArray::number(file), 1);
  const std::atomic<bool> stop{false};
  TReadAhead ahead(tree.Path() + PathDelim, stop, {3, 4000, 10});
  std::deque<TListedFolderPtr> work{ahead.Root()};
  int files = 0;
  for (; !work.empty(); work.pop_front()) {
    std::vector<TListingPart> parts;
    for (bool more = true; more;) {
      more = ahead.Take(work.front(), parts);
      for (const TListingPart& part : parts) {
        files += part.Files.Count();
        for (const auto& subfolder : part.Subfolders)
          work.push_back(subfolder.Folder);
      }
    }
  }
  EXPECT_EQ(files, 800);
  EXPECT_GT(ahead.MostAhead(), 2000U) << "it does read ahead";
  EXPECT_LT(ahead.MostAhead(), 4000U + 3 * 2000) << "and a part of each thread beyond";
}

TEST_F(TWalkerTest, KeepsEachFileAndTheTotalOfEachDirectSubfolder) {
  Walk();
  EXPECT_EQ(FRecorder.Log, QStringList({u"phase 1"_qs, u"path"_qs, u"phase 3"_qs}));
  EXPECT_EQ(FRecorder.Paths.last(), FTree.Path() + PathDelim);
  EXPECT_EQ(FWalker.Files().Count() + FWalker.Folders().Count(), 0);
  for (const char* const file : {"a/q/x/third", "a/q/second", "own"})
    FTree.MakeFile(file, 1 + QByteArray(file).count('/'));
  FTree.MakeFolder("empty");
  FWalker.Stop();  // a request before a walk has no effect on it
  for (int round = 0; round < 2; ++round) {
    Walk();
    EXPECT_EQ(FWalker.Files()[1].Path + FWalker.Files()[1].Name, FTree.Path("a/q/second"));
    EXPECT_EQ(FWalker.Files()[0].Size, 1U);
    EXPECT_EQ(FoundFolders(), (TSizes{{"a", 7}, {"empty", 0}}));
    EXPECT_EQ(std::tuple(FWalker.FileCount(), FWalker.FolderCount(), FWalker.TotalSize()),
              std::tuple(3, 4, 8U));
  }
  for (const int outside : {-1, 3})
    EXPECT_THROW((void)FWalker.Files()[outside], std::out_of_range);
}

TEST_F(TWalkerTest, PostsEachIncreaseOfThePercentageOnce) {
  std::vector<int> allTo98 = {1};
  for (int percent = 3; percent <= 98; ++percent)
    allTo98.push_back(percent);
  const std::map<int, std::vector<int>> expected = {{1, {1, 3}}, {5, {1, 3, 19, 39, 59, 79}}, {200, allTo98}};
  int made = 0;
  for (const auto& [subfolders, phases] : expected) {
    for (; made < subfolders; ++made)
      FTree.MakeFolder(QByteArray::number(made));
    Walk();
    EXPECT_EQ(FRecorder.Phases, phases) << subfolders << " subfolders";
  }
}

// The root's text is the entry, that of a subfolder the folder; a folder is an entry of the one that holds
// it, and a system entry of the root is none.
TEST_F(TWalkerTest, PostsAPathTextEachTwentyEntries) {
  const std::tuple<QByteArray, int, int> cases[] = {{"", 19, 1},     {"", 20, 2},     {"", 40, 3},
                                                    {"sub/", 18, 1}, {"sub/", 19, 2}, {"sub/x/", 18, 2}};
  for (const auto& [folder, files, texts] : cases) {
    FTree.Remove("");
    FTree.MakeSystemEntry(folder + "system");
    MakeFiles(folder, files);
    Walk();
    EXPECT_EQ(FRecorder.Paths.size(), texts) << folder.constData() << files;
    EXPECT_EQ(FWalker.FileCount(), files + (folder.isEmpty() ? 0 : 1));
    const TFileInfo file = FWalker.Files()[FWalker.FileCount() - 1];
    const QString shown = folder.isEmpty() ? file.Path + file.Name : FTree.Path(folder);
    EXPECT_TRUE(texts == 1 || FRecorder.Paths.last() == shown) << qPrintable(shown);
  }
  EXPECT_EQ(FWalker.Files()[0].Path.constData(), FWalker.Files()[1].Path.constData())
      << "one text per folder";
  FTree.Remove("");
  for (int i = 0; i < 39; ++i)
    i % 2 == 0 ? FTree.MakeFolder(QByteArray::number(i)) : FTree.MakeFile(QByteArray::number(i), 1);
  Walk();
  std::filesystem::directory_iterator twentieth(FTree.Path().toStdU16String());
  std::advance(twentieth, 19);
  EXPECT_EQ(FRecorder.Paths.last(), QString::fromStdU16String(twentieth->path().u16string()))
      << "files and folders in the order of the system";
}

// Where links to folders are entered, the first one in the walk's order is, and no other; elsewhere each is
// as long as its text.
TEST_F(TWalkerTest, EntersNothingTwice) {
  FTree.MakeFile("outside/deep/file", 100);
  FTree.MakeLink("outside/deep/up", "..");
  FTree.MakeLink("top/a/up", "..");
  for (const QByteArray folder : {"a", "b", "c"}) {
    FTree.MakeLink("top/" + folder + "/out", folder == "b" ? "../../outside" : "../../outside/deep");
    FTree.MakeFile("top/" + folder + "/file", 1);
  }
  TFolderCrew crew(3);
  for (int round = 0; round < 20; ++round) {
    Walk("top");
    EXPECT_EQ(FWalker.FileCount(), HasDrives() ? 4 : 7);
    EXPECT_EQ(FWalker.TotalSize(), HasDrives() ? 103U : 3 + 2 + 13 + 2 * 18);
    EXPECT_TRUE(!HasDrives() || FWalker.Folders()[0].Size == 101);
    EXPECT_EQ(GetFolderSize(FTree.Path("top"), crew), FWalker.TotalSize());
  }
  for (const QString& nothing : {FTree.Path("missing"), QString()})
    EXPECT_EQ(GetFolderSize(nothing, crew), 0U) << "not the root of all";
}

TEST_F(TWalkerTest, WhatCantBeReadIsCountedAndPassedOver) {
  FTree.MakeFile("sub/file", 1);
  for (const QByteArray shut : {"shut", "sub/shut"}) {
    FTree.MakeFile(shut + "/inside", 100);
    FTree.MakeUnreadable(shut);
  }
  {
    const TOrdinaryUser user;
    Walk();
    TFolderCrew crew;
    EXPECT_EQ(GetFolderSize(FTree.Path(), crew), 1U);
  }
  EXPECT_EQ(FoundFolders(), (TSizes{{"shut", 0}, {"sub", 1}}));
  EXPECT_EQ(FWalker.FolderCount(), 3);
  for (const char* const root : {"missing", "sub/file"}) {
    Walk(root);
    EXPECT_EQ(FRecorder.Phases, (std::vector{1, 3})) << root;
    EXPECT_EQ(FWalker.Files().Count() + FWalker.FileCount() + FWalker.FolderCount(), 0) << root;
    EXPECT_EQ(FWalker.TotalSize(), 0U) << root;
  }
}

// Wine takes long over long paths, and the system below it has a limit of 4096 bytes.
TEST_F(TWalkerTest, NoDepthAndNoPathIsTooLong) {
  const int depth = HasDrives() ? 22 : 600;
  const QByteArray bottom = FTree.MakeChain(QByteArray(HasDrives() ? 150 : 30, 'n'), depth);
  FTree.MakeFile(bottom + "/file", 11);
  Walk();
  ASSERT_EQ(FWalker.FileCount(), 1);
  EXPECT_EQ(FWalker.Files()[0].Path + FWalker.Files()[0].Name, FTree.Path(bottom + "/file"));
  EXPECT_EQ(FRecorder.Paths.last().size(), 259) << "a path text is cut";
}

TEST_F(TWalkerTest, AStopEndsTheListingOfAFolderAndKeepsWhatCameBefore) {
  MakeFiles("sub/", 3000);
  for (int round = 0, cuts = 0; cuts < 5; ++round) {
    ASSERT_LT(round, 200);
    PumpMessages();
    FRecorder.Clear();
    std::thread walk([&] { FWalker.Scan(FTree.Path()); });
    EXPECT_TRUE(FRecorder.WaitUntil([&] { return FRecorder.Paths.size() >= 2; }));
    FWalker.Stop();
    walk.join();
    EXPECT_EQ(FWalker.Files().Count(), FWalker.FileCount());
    if (FWalker.FileCount() < 3000) ++cuts;
  }
}
