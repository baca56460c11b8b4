#include "platform/Process.h"

#include "fixtures/SystemTest.h"

#include <thread>

TEST(Process, MemoryIsCountedInBytes) {
  const qint64 before = ResidentBytes();
  EXPECT_GT(before, 1 << 20);
  const auto blocks = TouchMemory(1024);
  EXPECT_GE(ResidentBytes() - before, static_cast<qint64>(kBlock * 512));
  EXPECT_GE(PeakResidentBytes(), ResidentBytes() - (1 << 20));
}

// What runs at an orderly end would change the exit code.
TEST(Process, EndsAtOnceWithWhateverThreadsItHas) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(
      {
        std::atexit([] { std::_Exit(3); });
        std::thread([] { std::this_thread::sleep_for(std::chrono::hours(1)); }).detach();
        EndProcess(7);
      },
      testing::ExitedWithCode(7), "");
}
