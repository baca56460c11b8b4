#include "platform/Process.h"

#include "fixtures/TouchedMemory.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

TEST(Process, MemoryIsCountedInBytes) {
  const qint64 before = ResidentBytes();
  EXPECT_GT(before, 1 << 20);
  const auto blocks = TouchMemory();
  EXPECT_GE(ResidentBytes() - before, static_cast<qint64>(kBlock * kBlocks / 2));
  EXPECT_GE(PeakResidentBytes(), ResidentBytes() - (1 << 20));
}

}  // namespace
