#include "fixtures/TempTree.h"
#include "platform/FileEnumeration.h"
#include "platform/Paths.h"
#include "platform/Volumes.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace {

using ::testing::UnorderedElementsAre;

// The files of a confined walk by their paths from the root on.
std::vector<QByteArray> Walk(const QString& root) {
  TFileEnumeration files;
  files.ConfineTo(root);
  QStringList folders{IncludeTrailingPathDelimiter(root)};
  std::vector<QByteArray> paths;
  for (qsizetype i = 0; i < folders.size() && i < 1000; ++i) {
    TFoundFile found;
    for (bool more = files.First(folders[i], found); more; more = files.Next(found)) {
      const QString path = folders[i] + found.Name;
      if (found.IsDirectory()) {
        folders << path + PathDelim;
      } else {
        paths.push_back(NameToBytes(path.mid(root.size() + 1)).replace('\\', '/'));
      }
    }
  }
  return paths;
}

TEST(LinkEnumeration, AWalkNeverComesBackToWhatItReachesAnyhow) {
  TTempTree tree;
  tree.MakeFile("top/sub/file", 1);
  tree.MakeFile("top/other/file", 1);
  tree.MakeLink("top/self", ".");
  tree.MakeLink("top/sub/up", "..");
  tree.MakeLink("top/sub/above", "../..");
  tree.MakeLink("top/sub/beside", "../other");
  EXPECT_THAT(Walk(tree.Path("top")), UnorderedElementsAre("sub/file", "other/file"));
}

TEST(LinkEnumeration, ALinkToOtherFoldersOfTheVolumeIsEnteredOnce) {
  TTempTree tree;
  tree.MakeFile("top/file", 1);
  tree.MakeFile("outside/deep/file", 1);
  tree.MakeFile("outside too/file", 1);
  tree.MakeLink("outside/back", "../top");
  tree.MakeLink("outside/deep/up", "..");
  tree.MakeLink("outside/too", "../outside too");
  tree.MakeLink("top/1", "../outside");
  tree.MakeLink("top/2", "../outside");
  tree.MakeLink("top/3", "../outside/deep");
  EXPECT_THAT(Walk(tree.Path("top")), UnorderedElementsAre("file", "1/deep/file", "1/too/file"));
}

TEST(LinkEnumeration, ALinkAsTheRootIsFollowed) {
  TTempTree tree;
  tree.MakeFile("real/file", 1);
  tree.MakeLink("real/again", ".");
  tree.MakeLink("link", "real");
  EXPECT_THAT(Walk(tree.Path("link")), UnorderedElementsAre("file"));
}

// A folder for temporary files on another volume than this path; null if there is none.
std::unique_ptr<QTemporaryDir> MakeFolderOffTheVolumeOf(const QString& path) {
  for (const TVolume& volume : ListFixedVolumes()) {
    if (SameVolume(volume.Root, path)) continue;
    auto folder = std::make_unique<QTemporaryDir>(volume.Root + u"tmp/tallyscope-XXXXXX"_qs);
    if (folder->isValid()) return folder;
  }
  return nullptr;
}

TEST(LinkEnumeration, ALinkOffTheVolumeIsAnEmptyFolder) {
  TTempTree tree;
  const auto away = MakeFolderOffTheVolumeOf(tree.Path());
  if (!away) GTEST_SKIP() << "no second volume here";
  ASSERT_TRUE(QDir(away->path()).mkdir(u"folder there"_qs));
  tree.MakeFile("file", 1);
  tree.MakeLink("away", QDir::toNativeSeparators(away->path()).toUtf8());
  EXPECT_THAT(Walk(tree.Path()), UnorderedElementsAre("file"));
  TFileEnumeration files;
  TFoundFile found;
  ASSERT_TRUE(files.First(tree.Path("away"), found)) << "entered where nothing confines";
  EXPECT_EQ(found.Name, u"folder there"_qs);
  files.ConfineTo(tree.Path());
  ASSERT_TRUE(files.First(tree.Path(), found));
  EXPECT_TRUE(files.Next(found));
  EXPECT_FALSE(files.First(tree.Path("away"), found));
}

TEST(LinkEnumeration, AnotherConfinementForgetsTheOneBefore) {
  TTempTree tree;
  tree.MakeFile("outside/file", 1);
  tree.MakeLink("top/link", "../outside");
  TFileEnumeration files;
  TFoundFile found;
  for (int i = 0; i < 2; ++i) {
    files.ConfineTo(tree.Path("top"));
    ASSERT_TRUE(files.First(tree.Path("top"), found));
    EXPECT_TRUE(files.First(tree.Path("top/link"), found)) << i;
    EXPECT_FALSE(files.First(tree.Path("top/link"), found)) << "entered already";
  }
}

}  // namespace
