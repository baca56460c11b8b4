#include "volindex/readers/folders/FolderQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace volindex {
namespace {

TFolderTask Root() {
  return {kRootFolder, nullptr, 1.0};
}

TEST(FolderQueue, UninvitedThreadsEndWithTheOthers) {
  TFolderQueue queue(Root(), 1);
  std::atomic<int> joined{0};
  std::vector<std::jthread> others;
  for (unsigned thread = 1; thread < 4; ++thread)
    others.emplace_back([&queue, &joined, thread] { joined += queue.Join(thread) ? 1 : 0; });
  ASSERT_TRUE(queue.Join(0));
  std::vector<TFolderTask> own;
  TFolderTask task;
  EXPECT_TRUE(queue.Next(own, task));
  EXPECT_FALSE(queue.Next(own, task));  // it does not wait for those who never came
  others.clear();
  EXPECT_EQ(joined, 0);
}

TEST(FolderQueue, InvitedThreadTakesItsPart) {
  TFolderQueue queue(Root(), 1);
  ASSERT_TRUE(queue.Join(0));
  std::vector<TFolderTask> own{{1, nullptr, 0.1}, {2, nullptr, 0.1}, {3, nullptr, 0.1}};
  std::atomic<int> taken{0};
  const auto takeAll = [&](std::vector<TFolderTask>& stack) {
    for (TFolderTask task; queue.Next(stack, task);)
      ++taken;
  };
  std::jthread other([&] {
    std::vector<TFolderTask> none;
    if (queue.Join(1)) takeAll(none);
  });
  queue.Invite();
  takeAll(own);
  other.join();
  EXPECT_EQ(taken, 4);
}

}  // namespace
}  // namespace volindex
