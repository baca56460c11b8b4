#include "platform/Process.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

constexpr size_t kBlock = 64 * 1024;
constexpr size_t kBlocks = 1024;

std::vector<std::unique_ptr<char[]>> TouchMemory() {
  std::vector<std::unique_ptr<char[]>> blocks;
  for (size_t i = 0; i < kBlocks; ++i)
    blocks.push_back(std::make_unique<char[]>(kBlock));
  return blocks;
}

TEST(Process, MemoryIsCountedInBytes) {
  const qint64 before = ResidentBytes();
  EXPECT_GT(before, 1 << 20);
  const auto blocks = TouchMemory();
  EXPECT_GE(ResidentBytes() - before, static_cast<qint64>(kBlock * kBlocks / 2));
  EXPECT_GE(PeakResidentBytes(), ResidentBytes() - (1 << 20));
}

}  // namespace
