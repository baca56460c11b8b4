#include "fixtures/MountNamespace.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"
#include "scan/FolderCrew.h"
#include "scan/FolderSizeThread.h"

#include <gtest/gtest.h>

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
