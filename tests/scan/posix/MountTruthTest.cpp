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
