#include "fixtures/MountNamespace.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"
#include "scan/FolderCrew.h"
#include "scan/FolderSizeThread.h"
#include "scan/SameAsSystem.h"

#include <gtest/gtest.h>

#include <QTemporaryFile>

// Shared memory below /dev is a file system of its own: a folder that counts and is not entered.
TEST(GroundTruth, WhatIsMountedBelowTheRootIsLeftAlone) {
  QTemporaryFile inside(u"/dev/shm/tallyscope-XXXXXX"_qs);
  // The file has no name on the disk before it is asked for it.
  if (!inside.open() || inside.fileName().isEmpty()) GTEST_SKIP() << "no shared memory here";
  ExpectSameAsSystem(u"/dev"_qs);
}

TEST(FolderSizeTruth, WhatIsMountedBelowAFolderAddsNothing) {
  const auto answer = RunWithOwnMounts([]() -> std::optional<bool> {
    TTempTree tree;
    tree.MakeFile("file", 10);
    tree.MakeFolder("inside");
    if (!TmpfsMount(NameToBytes(tree.Path("inside")))) return std::nullopt;
    tree.MakeFile("inside/deep/file", 100);
    TFolderCrew crew(2);
    return GetFolderSize(tree.Path(), crew) == 10 && GetFolderSize(tree.Path("inside"), crew) == 100;
  });
  if (!answer) GTEST_SKIP() << "this user can't mount";
  EXPECT_TRUE(*answer);
}
