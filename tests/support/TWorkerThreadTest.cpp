// What a background thread promises its owner. The waits have a bound; nothing sleeps to be right.
#include "support/TWorkerThread.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace std::chrono_literals;

[[nodiscard]] bool WaitUntil(const std::function<bool()>& holds) {
  const auto bound = std::chrono::steady_clock::now() + 10s;
  while (!holds() && std::chrono::steady_clock::now() < bound)
    std::this_thread::yield();
  return holds();
}

// Counts its rounds; a round waits in its middle while Closed.
class TCountingThread : public TWorkerThread {
 public:
  // Lets another thread's flag tell of its end.
  explicit TCountingThread(std::atomic<bool>* gone = nullptr) : FGone(gone) {}
  ~TCountingThread() override {
    Open();
    Finish();
    if (FGone != nullptr) FGone->store(true);
  }
  using TWorkerThread::Finish;

  void Terminate() override {
    TWorkerThread::Terminate();
    if (++Asked >= OpensWhenAsked) Open();
  }
  void Open() {
    const std::lock_guard lock(FGuard);
    Closed = false;
    FOpened.notify_all();
  }
  void ResumeAndHold() {
    Closed = true;
    Resume();
    ASSERT_TRUE(WaitUntil([&] { return Begun == 1; }));
  }

  std::atomic<bool> Closed{false};
  std::atomic<int> Begun{0}, Ended{0}, Asked{0};
  int OpensWhenAsked = 1'000'000;
  int Value = 0;  // no lock: handed over by Resume and Suspended

 protected:
  void Execute() override {
    while (!Terminated()) {
      Value *= 2;
      ++Begun;
      WaitUntilOpen();
      ++Ended;
      Suspend();
    }
  }

 private:
  void WaitUntilOpen() {
    std::unique_lock lock(FGuard);
    FOpened.wait(lock, [this] { return !Closed; });
  }

  std::mutex FGuard;
  std::condition_variable FOpened;
  std::atomic<bool>* const FGone;
};

}  // namespace

TEST(TWorkerThread, IsMadeSuspendedAndRunsOneRoundPerResume) {
  TCountingThread thread;
  EXPECT_TRUE(thread.Suspended());
  for (int round = 1; round <= 50; ++round) {
    thread.Value = round;
    thread.Resume();
    ASSERT_TRUE(WaitUntil([&] { return thread.Ended >= round && thread.Suspended(); }));
    ASSERT_EQ(thread.Begun, round) << "a round nobody asked for";
    ASSERT_EQ(thread.Value, 2 * round) << "what the owner wrote is seen in the round";
  }
}

TEST(TWorkerThread, AResumeDuringARoundHoldsForOneMore) {
  TCountingThread thread;
  thread.ResumeAndHold();
  EXPECT_FALSE(thread.Suspended());
  thread.Resume();
  thread.Resume();
  thread.Open();
  ASSERT_TRUE(WaitUntil([&] { return thread.Ended == 2 && thread.Suspended(); }));
  EXPECT_EQ(thread.Begun, 2);
}

TEST(TWorkerThread, FinishBeginsNoRoundAndWaitsForTheOneThatRuns) {
  for (const bool runs : {false, true}) {
    TCountingThread thread;
    if (runs) thread.ResumeAndHold();
    if (runs) thread.Resume();
    thread.OpensWhenAsked = 1;
    thread.Finish();
    thread.Finish();
    EXPECT_EQ(thread.Begun, runs) << "a round was begun after Terminate";
    EXPECT_EQ(thread.Ended, runs);
  }
}

TEST(TOwnedThread, AsksUntilTheRoundEndsAndLeavesOneThatHangsBehindToDeleteItself) {
  for (const bool hangs : {false, true}) {
    std::atomic<bool> gone{false};
    auto* const object = new TCountingThread(&gone);
    TOwnedThread<TCountingThread> thread(object);
    if (!hangs) thread->OpensWhenAsked = 3;
    thread->ResumeAndHold();
    thread.reset();
    EXPECT_NE(gone, hangs);
    if (hangs) object->Open();
    EXPECT_TRUE(WaitUntil([&] { return gone.load(); }));
  }
}
