// What one walk finds, counts and posts, on real trees.
#include "ScanRecorder.h"

#include "fixtures/NativePath.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "scan/ScanMessages.h"
#include "scan/Volindex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <system_error>
#include <thread>

using testing::ElementsAre;

namespace {

class TWalkerTest : public testing::Test {
 protected:
  TWalkerTest() { FWalker.SetProgressTarget(FRecorder.Window(), WM_SCANPROGRESS); }

  void Walk(const QString& path) {
    FWalker.Scan(path);
    PumpMessages();
  }
  void Walk() { Walk(FTree.Path()); }

  void MakeFiles(const QByteArray& folder, int count) {
    for (int i = 0; i < count; ++i)
      FTree.MakeHole(folder + QByteArray::number(i), 1);
  }

  // Size by name below the tree's root, as TTempTree names it; all names of a file list are different paths.
  [[nodiscard]] std::map<QByteArray, quint64> Found() const {
    std::map<QByteArray, quint64> found;
    const qsizetype root = FTree.Path().size() + 1;
    for (const TFileInfo& file : FWalker.Files())
      found[NameToBytes((file.Path + file.Name).mid(root).replace(PathDelim, u'/'))] = file.Size;
    return found;
  }

  [[nodiscard]] std::map<QByteArray, quint64> FoundFolders() const {
    std::map<QByteArray, quint64> found;
    for (const TFolderInfo& folder : FWalker.Folders()) {
      EXPECT_EQ(folder.Path, FTree.Path() + PathDelim);
      found[NameToBytes(folder.Name)] = folder.Size;
    }
    return found;
  }

  TTempTree FTree;
  TScanRecorder FRecorder;
  TTallyscope FWalker{FRecorder.Window()};
};

}  // namespace

TEST_F(TWalkerTest, AnEmptyRootPostsItselfAndTwoPercentages) {
  Walk();
  EXPECT_EQ(FRecorder.Log(), QStringList({u"phase 1"_qs, u"path"_qs, u"phase 3"_qs}));
  EXPECT_EQ(FRecorder.LastPath(), FTree.Path() + PathDelim);
  EXPECT_EQ(FWalker.Files().Count() + FWalker.Folders().Count(), 0);
}

TEST_F(TWalkerTest, KeepsEachFileAndTheTotalOfEachDirectSubfolder) {
  FTree.MakeFile("own", 1);
  FTree.MakeFile("a/one", 10);
  FTree.MakeFile("a/deep/er/two", 100);
  FTree.MakeFolder("empty");
  Walk();
  EXPECT_EQ(Found(), (std::map<QByteArray, quint64>{{"own", 1}, {"a/one", 10}, {"a/deep/er/two", 100}}));
  EXPECT_EQ(FoundFolders(), (std::map<QByteArray, quint64>{{"a", 110}, {"empty", 0}}));
  EXPECT_EQ(FWalker.FileCount(), 3);
  EXPECT_EQ(FWalker.FolderCount(), 4);
  EXPECT_EQ(FWalker.TotalSize(), 111U);
}

TEST_F(TWalkerTest, TheRootsFilesComeFirstAndASubfoldersLevelByLevel) {
  for (const QByteArray branch : {"sub/a", "sub/b"}) {
    FTree.MakeFile(branch + "/x/third", 3);
    FTree.MakeFile(branch + "/second", 2);
  }
  FTree.MakeFile("sub/first", 1);
  FTree.MakeFile("own", 0);
  Walk();
  std::vector<quint64> sizes;
  for (const TFileInfo& file : FWalker.Files())
    sizes.push_back(file.Size);
  EXPECT_THAT(sizes, ElementsAre(0, 1, 2, 2, 3, 3));
}

TEST_F(TWalkerTest, TheRecordsOfAFolderShareTheirPath) {
  MakeFiles("sub/", 2);
  Walk();
  ASSERT_EQ(FWalker.Files().Count(), 2);
  EXPECT_EQ(FWalker.Files()[0].Path.constData(), FWalker.Files()[1].Path.constData());
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
    FRecorder.Clear();
    Walk();
    EXPECT_EQ(FRecorder.Phases(), phases) << subfolders << " subfolders";
  }
}

TEST_F(TWalkerTest, LeavesSystemEntriesOutInTheRootOnly) {
  for (const QByteArray folder : {"", "sub/"}) {
    FTree.MakeSystemEntry(folder + "system");
    FTree.MakeFile(folder + "file", 7);
  }
  Walk();
  EXPECT_EQ(Found(), (std::map<QByteArray, quint64>{{"file", 7}, {"sub/file", 7}, {"sub/system", 0}}));
  EXPECT_EQ(FWalker.FileCount(), 3);
}

TEST_F(TWalkerTest, PostsAPathTextEachTwentyEntries) {
  struct {
    const char* What;
    QByteArray Folder;
    int Files;
    int Texts;
  } const cases[] = {
      {"19 in the root", "", 19, 1},
      {"20 in the root", "", 20, 2},
      {"40 in the root", "", 40, 3},
      {"20 in the root, of which the subfolder is one", "sub/", 19, 1},
      {"20 below a subfolder", "sub/", 20, 2},
      {"20 below a subfolder, of which its own subfolder is one", "sub/x/", 19, 2},
  };
  for (const auto& [what, folder, files, texts] : cases) {
    FTree.Remove("");
    FTree.MakeFolder("");
    FRecorder.Clear();
    MakeFiles(folder, files);
    Walk();
    EXPECT_EQ(FRecorder.PathTexts(), texts) << what;
  }
}

TEST_F(TWalkerTest, ThePathTextIsTheEntryInTheRootAndTheFolderBelow) {
  MakeFiles("", 20);
  Walk();
  const TFileInfo& last = FWalker.Files()[19];
  EXPECT_EQ(FRecorder.LastPath(), last.Path + last.Name);
  MakeFiles("sub/x/", 19);
  Walk();
  EXPECT_EQ(FRecorder.LastPath(), FTree.Path("sub/x/"));
}

TEST_F(TWalkerTest, SystemEntriesOfTheRootDoNotReachTheTick) {
  MakeFiles("", 19);
  FTree.MakeSystemEntry("system");
  Walk();
  EXPECT_EQ(FRecorder.PathTexts(), 1);
}

// A link has its own length where it is an entry like any other; on Windows it is none at all, or a folder.
TEST_F(TWalkerTest, CountsEveryNameAndEntersNothingTwice) {
  std::map<QByteArray, quint64> expected = {
      {"sub/file", 5}, {"sub/again", 5}, {"hole", 5'000'000'000}, {"caf\xc3\xa9", 3}};
  FTree.MakeFile("sub/file", 5);
  FTree.MakeHardLink("sub/again", "sub/file");
  FTree.MakeLink("sub/up", "..");
  FTree.MakeHole("hole", 5'000'000'000);
  FTree.MakeFile("caf\xc3\xa9", 3);
  if (!HasDrives()) {
    FTree.MakeFile("bad\xff\xfe", 4);
    FTree.MakeLink("dangling", "nowhere");
    expected.merge(std::map<QByteArray, quint64>{{"bad\xff\xfe", 4}, {"dangling", 7}, {"sub/up", 2}});
  }
  Walk();
  EXPECT_EQ(Found(), expected);
  EXPECT_EQ(FWalker.FolderCount(), HasDrives() ? 2 : 1);
}

TEST_F(TWalkerTest, AnUnreadableFolderIsCountedAndPassedOver) {
  FTree.MakeFile("shut/inside", 100);
  FTree.MakeFile("sub/shut/inside", 100);
  FTree.MakeFile("sub/file", 1);
  FTree.MakeUnreadable("shut");
  FTree.MakeUnreadable("sub/shut");
  {
    const TOrdinaryUser user;
    Walk();
  }
  EXPECT_EQ(FoundFolders(), (std::map<QByteArray, quint64>{{"shut", 0}, {"sub", 1}}));
  EXPECT_EQ(FWalker.FolderCount(), 3);
  EXPECT_EQ(FWalker.FileCount(), 1);
}

TEST_F(TWalkerTest, ARootThatCantBeReadGivesEmptyLists) {
  FTree.MakeFile("file", 1);
  for (const QByteArray root : {"missing", "file"}) {
    Walk();
    ASSERT_EQ(FWalker.FileCount(), 1);
    FRecorder.Clear();
    Walk(FTree.Path(root));
    EXPECT_EQ(FRecorder.Phases(), (std::vector{1, 3})) << root.constData();
    EXPECT_EQ(FWalker.Files().Count() + FWalker.FileCount(), 0) << root.constData();
    EXPECT_EQ(FWalker.TotalSize(), 0U) << root.constData();
  }
}

TEST_F(TWalkerTest, NoDepthAndNoPathIsTooLong) {
  // Wine takes long over long paths, and the system below it has a limit of 4096 bytes.
  const auto deep = std::pair(QByteArray("d"), HasDrives() ? 250 : 3000);
  const auto broad = std::pair(QByteArray(150, 'n'), HasDrives() ? 22 : 40);
  for (const auto& [component, depth] : {deep, broad}) {
    FTree.Remove("");
    const QByteArray bottom = FTree.MakeChain(component, depth);
    FTree.MakeFile(bottom + "/file", 11);
    Walk();
    EXPECT_EQ(FWalker.FolderCount(), depth);
    EXPECT_EQ(Found(), (std::map<QByteArray, quint64>{{bottom + "/file", 11}}));
    EXPECT_EQ(FRecorder.LastPath().size(), 259) << "a path text is cut";
  }
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
