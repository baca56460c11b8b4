// What one walk finds, counts and posts, on real trees, and how it is stopped.
#include "ScanRecorder.h"
#include "fixtures/NativePath.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "scan/ScanMessages.h"
#include "scan/Volindex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <system_error>
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

  // Size by name below the tree's root, as TTempTree names it; all names of a file list are different paths.
  [[nodiscard]] TSizes Found() const {
    TSizes found;
    const qsizetype root = FTree.Path().size() + 1;
    for (const TFileInfo& file : FWalker.Files())
      found[NameToBytes((file.Path + file.Name).mid(root).replace(PathDelim, u'/'))] = file.Size;
    return found;
  }

  [[nodiscard]] TSizes FoundFolders() const {
    TSizes found;
    for (const TFolderInfo& folder : FWalker.Folders()) {
      EXPECT_EQ(folder.Path, FTree.Path() + PathDelim);
      found[NameToBytes(folder.Name)] = folder.Size;
    }
    return found;
  }

  // Walks on a thread and stops it as soon as its first entries were shown, until a walk was cut short: on a
  // busy computer one may be over before the request comes.
  [[nodiscard]] bool StopCutsShort(int entries) {
    for (int round = 0; round < 100; ++round) {
      PumpMessages();
      FRecorder.Clear();
      std::thread walk([&] { FWalker.Scan(FTree.Path()); });
      EXPECT_TRUE(FRecorder.WaitUntil([&] { return FRecorder.Paths.size() >= 2; }));
      FWalker.Stop();
      walk.join();
      if (FWalker.FileCount() + FWalker.FolderCount() < entries) return true;
    }
    return false;
  }

  TTempTree FTree;
  TScanRecorder FRecorder;
  TTallyscope FWalker{FRecorder.Window()};
};

}  // namespace

TEST_F(TWalkerTest, KeepsEachFileAndTheTotalOfEachDirectSubfolder) {
  Walk();
  EXPECT_EQ(FRecorder.Log, QStringList({u"phase 1"_qs, u"path"_qs, u"phase 3"_qs}));
  EXPECT_EQ(FRecorder.Paths.last(), FTree.Path() + PathDelim);
  EXPECT_EQ(FWalker.Files().Count() + FWalker.Folders().Count(), 0);
  for (const QByteArray branch : {"a/p", "a/q"}) {
    FTree.MakeFile(branch + "/x/third", 3);
    FTree.MakeFile(branch + "/second", 2);
  }
  FTree.MakeFile("a/first", 1);
  FTree.MakeFile("own", 0);
  FTree.MakeFolder("empty");
  FWalker.Stop();  // a request before a walk has no effect on it
  Walk();
  QString sizes;
  for (const TFileInfo& file : FWalker.Files())
    sizes += QString::number(file.Size);
  EXPECT_EQ(sizes, u"012233"_qs) << "the root's files come first and a subfolder's level by level";
  EXPECT_EQ(FoundFolders(), (TSizes{{"a", 11}, {"empty", 0}}));
  EXPECT_EQ(std::tuple(FWalker.FileCount(), FWalker.FolderCount(), FWalker.TotalSize()),
            std::tuple(6, 6, 11U));
}

TEST_F(TWalkerTest, PostsEachIncreaseOfThePercentageOnce) {
  std::vector<int> allTo98 = {1};
  for (int percent = 3; percent <= 98; ++percent)
    allTo98.push_back(percent);
  const std::map<int, std::vector<int>> expected = {
      {0, {1, 3}}, {1, {1, 3}}, {5, {1, 3, 19, 39, 59, 79}}, {200, allTo98}};
  int made = 0;
  for (const auto& [subfolders, phases] : expected) {
    for (; made < subfolders; ++made)
      FTree.MakeFolder(QByteArray::number(made));
    Walk();
    EXPECT_EQ(FRecorder.Phases, phases) << subfolders << " subfolders";
  }
}

TEST_F(TWalkerTest, LeavesSystemEntriesOutInTheRootOnly) {
  for (const QByteArray folder : {"", "sub/"}) {
    FTree.MakeSystemEntry(folder + "system");
    FTree.MakeFile(folder + "file", 7);
  }
  MakeFiles("z", 17);
  Walk();
  EXPECT_EQ(FRecorder.Paths.size(), 1) << "nor do they reach the tick: nineteen entries";
  EXPECT_EQ(FWalker.FileCount(), 20);
  EXPECT_TRUE(Found().contains("sub/system"));
  EXPECT_FALSE(Found().contains("system"));
  EXPECT_EQ(FWalker.TotalSize(), 7U + 7 + 17);
}

// The root's text is the entry, that of a subfolder the folder; a folder is an entry of the one that holds
// it.
TEST_F(TWalkerTest, PostsAPathTextEachTwentyEntries) {
  struct {
    QByteArray Folder;
    int Files, Texts;
    QString Last;
  } const cases[] = {{"", 19, 1, {}},
                     {"", 20, 2, {}},
                     {"", 40, 3, {}},
                     {"sub/", 19, 1, {}},
                     {"sub/", 20, 2, u"sub/"_qs},
                     {"sub/x/", 19, 2, u"sub/x/"_qs}};
  for (const auto& [folder, files, texts, last] : cases) {
    FTree.Remove("");
    MakeFiles(folder, files);
    Walk();
    EXPECT_EQ(FRecorder.Paths.size(), texts) << folder.constData() << files;
    const TFileInfo& file = FWalker.Files()[files - 1];
    const QString shown = last.isEmpty() ? file.Path + file.Name : FTree.Path(last.toUtf8());
    EXPECT_TRUE(texts == 1 || FRecorder.Paths.last() == shown) << qPrintable(shown);
  }
  EXPECT_EQ(FWalker.Files()[0].Path.constData(), FWalker.Files()[1].Path.constData())
      << "one text per folder";
}

// A link has its own length where it is an entry like any other; on Windows it is none at all, or a folder.
TEST_F(TWalkerTest, CountsEveryNameAndEntersNothingTwice) {
  TSizes expected = {{"sub/file", 5}, {"sub/again", 5}, {"hole", 5'000'000'000}, {"caf\xc3\xa9", 3}};
  FTree.MakeFile("sub/file", 5);
  FTree.MakeHardLink("sub/again", "sub/file");
  FTree.MakeLink("sub/up", "..");
  FTree.MakeHole("hole", 5'000'000'000);
  FTree.MakeFile("caf\xc3\xa9", 3);
  if (!HasDrives()) {
    FTree.MakeFile("bad\xff\xfe", 4);
    FTree.MakeLink("dangling", "nowhere");
    expected.merge(TSizes{{"bad\xff\xfe", 4}, {"dangling", 7}, {"sub/up", 2}});
  }
  Walk();
  EXPECT_EQ(Found(), expected);
  EXPECT_EQ(FWalker.FolderCount(), HasDrives() ? 2 : 1);
}

TEST_F(TWalkerTest, WhatCantBeReadIsCountedAndPassedOver) {
  FTree.MakeFile("shut/inside", 100);
  FTree.MakeFile("sub/shut/inside", 100);
  FTree.MakeFile("sub/file", 1);
  FTree.MakeUnreadable("shut");
  FTree.MakeUnreadable("sub/shut");
  {
    const TOrdinaryUser user;
    Walk();
  }
  EXPECT_EQ(FoundFolders(), (TSizes{{"shut", 0}, {"sub", 1}}));
  EXPECT_EQ(FWalker.FolderCount(), 3);
  EXPECT_EQ(FWalker.FileCount(), 1);
  for (const QByteArray root : {"missing", "sub/file"}) {
    Walk(root);
    EXPECT_EQ(FRecorder.Phases, (std::vector{1, 3})) << root.constData();
    EXPECT_EQ(FWalker.Files().Count() + FWalker.FileCount() + FWalker.FolderCount(), 0) << root.constData();
    EXPECT_EQ(FWalker.TotalSize(), 0U) << root.constData();
  }
}

// Wine takes long over long paths, and the system below it has a limit of 4096 bytes.
TEST_F(TWalkerTest, NoDepthAndNoPathIsTooLong) {
  const int depth = HasDrives() ? 22 : 600;
  const QByteArray bottom = FTree.MakeChain(QByteArray(HasDrives() ? 150 : 30, 'n'), depth);
  FTree.MakeFile(bottom + "/file", 11);
  Walk();
  EXPECT_EQ(Found(), (TSizes{{bottom + "/file", 11}}));
  EXPECT_EQ(FRecorder.Paths.last().size(), 259) << "a path text is cut";
  EXPECT_TRUE(StopCutsShort(depth + 1)) << "of folders with one entry each";
}

TEST_F(TWalkerTest, AStopEndsTheListingOfAFolder) {
  MakeFiles("sub/", 2000);
  EXPECT_TRUE(StopCutsShort(2001));
  EXPECT_EQ(FWalker.Files().Count(), FWalker.FileCount());
  FTree.Remove("sub");
  for (int i = 0; i < 1000; ++i)
    FTree.MakeFolder(QByteArray::number(i));
  EXPECT_TRUE(StopCutsShort(1000));
  EXPECT_EQ(FWalker.Folders().Count(), 0) << "while the root is listed no subfolder is begun";
}

TEST_F(TWalkerTest, FoldersThatComeAndGoLeaveTheCountersTrue) {
  for (int i = 0; i < 20; ++i)
    MakeFiles("sub" + QByteArray::number(i) + "/x/", 3);
  std::atomic<bool> ended{false};
  std::thread mover([&] {
    while (!ended) {
      for (const auto& [from, to] : {std::pair("sub7", "gone"), {"gone", "sub7"}}) {
        try {
          FTree.Rename(from, to);
        } catch (const std::system_error&) {
          // Windows moves no folder that is just being listed.
        }
      }
    }
  });
  for (int round = 0; round < 50; ++round) {
    FWalker.Scan(FTree.Path());
    quint64 total = 0;
    for (const TFolderInfo& folder : FWalker.Folders())
      total += folder.Size;
    EXPECT_EQ(FWalker.TotalSize(), total);
    EXPECT_EQ(FWalker.Files().Count(), FWalker.FileCount());
    EXPECT_GE(FWalker.FileCount(), 57);
  }
  ended = true;
  mover.join();
}
