// A walk finds exactly what the system itself finds, entry by entry and to the byte.
#include "fixtures/NativePath.h"
#include "fixtures/TempTree.h"
#include "scan/Truth.h"
#include "scan/Volindex.h"

#include <gtest/gtest.h>

#include <QTemporaryFile>

#include <algorithm>
#include <random>

namespace {

TTruth AskWalker(const QString& root) {
  TTallyscope walker(nullptr);
  walker.Scan(root);
  TTruth truth{{}, walker.FolderCount()};
  for (const TFileInfo& file : walker.Files())
    truth.Files.emplace_back(NameToBytes(file.Path + file.Name), file.Size);
  EXPECT_EQ(walker.TotalSize(), truth.Bytes());
  EXPECT_EQ(walker.FileCount(), walker.Files().Count());
  std::sort(truth.Files.begin(), truth.Files.end());
  return truth;
}

// Somebody may install a package meanwhile: two walks that agree with each other must agree with the system.
void ExpectSameAsSystem(const QString& root) {
  TTruth walked = AskWalker(root);
  TTruth found;
  for (int tries = 0; tries < 5; ++tries) {
    found = AskSystem(root);
    TTruth again = AskWalker(root);
    if (again.Files == walked.Files) break;
    walked = std::move(again);
  }
  ASSERT_FALSE(found.Files.empty());
  EXPECT_EQ(walked.Folders, found.Folders);
  EXPECT_TRUE(walked.Files == found.Files);
}

}  // namespace

TEST(GroundTruth, ATreeOfEveryKindOfEntryIsFoundAsItIs) {
  TTempTree tree;
  std::mt19937 random(20260101);
  QByteArray folder;
  for (int i = 0; i < 1500; ++i) {
    const QByteArray name =
        folder + QByteArray(1 + static_cast<int>(random() % 60), 'n') + QByteArray::number(i);
    const unsigned kind = random() % 8;
    if (kind == 0)
      tree.MakeFolder(name), folder = random() % 2 == 0 ? name + '/' : QByteArray();
    else if (kind == 1 && !HasDrives())
      tree.MakeLink(name + "\xe2\x82\xac", "../no\xff where");
    else if (kind == 2 && (!HasDrives() || !folder.isEmpty()))
      tree.MakeSystemEntry(name);
    else if (kind == 3)
      tree.MakeHole(name + (HasDrives() ? "\xe6\x97\xa5" : "\xfe"), static_cast<qint64>(random()) * 4096);
    else
      tree.MakeFile(name, static_cast<qint64>(random() % 9000));
  }
  ExpectSameAsSystem(tree.Path());
}

TEST(GroundTruth, ARealFolderOfTheSystemIsFoundAsItIs) {
  ExpectSameAsSystem(HasDrives() ? u"C:\\windows"_qs : u"/usr/share"_qs);
}

// Shared memory below /dev is a file system of its own: a folder that counts and is not entered.
TEST(GroundTruth, WhatIsMountedBelowTheRootIsLeftAlone) {
  QTemporaryFile inside(u"/dev/shm/tallyscope-XXXXXX"_qs);
  // The file has no name on the disk before it is asked for it.
  if (HasDrives() || !inside.open() || inside.fileName().isEmpty()) GTEST_SKIP() << "no shared memory here";
  ExpectSameAsSystem(u"/dev"_qs);
}
