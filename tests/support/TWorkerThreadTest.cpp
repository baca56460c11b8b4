// What a background thread promises its owner. The waits have a bound; nothing sleeps to be right.
#include "support/TWorkerThread.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace {

using namespace std::chrono_literals;

// Counts its rounds; a round can be held up half way.
class TCountingThread : public TWorkerThread {
 public:
  TCountingThread() = default;
  // Lets another thread's flag tell of its end.
  explicit TCountingThread(std::atomic<bool>* gone) : FGone(gone) {}
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

  [[nodiscard]] bool WaitForRounds(int rounds) {
    std::unique_lock lock(FGuard);
    return FChanged.wait_for(lock, 10s, [&] { return FRounds >= rounds; });
  }
  [[nodiscard]] bool WaitUntilHeld() {
    std::unique_lock lock(FGuard);
    return FChanged.wait_for(lock, 10s, [&] { return FHeld; });
  }

  // The next round waits in its middle until Open.
  void Close() { Set(FClosed, true); }
  void Open() { Set(FClosed, false); }

  std::atomic<int> Begun{0};
  std::atomic<int> Asked{0};
  int OpensWhenAsked = 1'000'000;
  int Value = 0;  // no lock: handed over by Resume and Suspended

 protected:
  void Execute() override {
    while (!Terminated()) {
      Value *= 2;
      RunRound();
      Suspend();
    }
  }

 private:
  void RunRound() {
    std::unique_lock lock(FGuard);
    ++Begun;
    FHeld = FClosed;
    FChanged.notify_all();
    FChanged.wait(lock, [&] { return !FClosed; });
    FHeld = false;
    ++FRounds;
    FChanged.notify_all();
  }

  void Set(bool& flag, bool value) {
    const std::lock_guard lock(FGuard);
    flag = value;
    FChanged.notify_all();
  }

  std::mutex FGuard;
  std::condition_variable FChanged;
  int FRounds = 0;
  bool FClosed = false;
  bool FHeld = false;
  std::atomic<bool>* const FGone = nullptr;
};

[[nodiscard]] bool WaitUntil(const std::function<bool()>& holds) {
  const auto bound = std::chrono::steady_clock::now() + 10s;
  while (!holds() && std::chrono::steady_clock::now() < bound)
    std::this_thread::yield();
  return holds();
}

}  // namespace

TEST(TWorkerThread, IsMadeSuspendedAndRunsOneRoundPerResume) {
  TCountingThread thread;
  EXPECT_TRUE(thread.Suspended());
  for (int round = 1; round <= 50; ++round) {
    thread.Value = round;
    thread.Resume();
    ASSERT_TRUE(thread.WaitForRounds(round));
    ASSERT_TRUE(WaitUntil([&] { return thread.Suspended(); }));
    ASSERT_EQ(thread.Begun, round) << "a round nobody asked for";
    ASSERT_EQ(thread.Value, 2 * round) << "what the owner wrote is seen in the round";
  }
}

TEST(TWorkerThread, AResumeDuringARoundHoldsForOneMore) {
  TCountingThread thread;
  thread.Close();
  thread.Resume();
  EXPECT_FALSE(thread.Suspended());
  ASSERT_TRUE(thread.WaitUntilHeld());
  EXPECT_FALSE(thread.Suspended());
  thread.Resume();
  thread.Resume();
  thread.Open();
  ASSERT_TRUE(thread.WaitForRounds(2));
  ASSERT_TRUE(WaitUntil([&] { return thread.Suspended(); }));
  EXPECT_EQ(thread.Begun, 2);
}

TEST(TWorkerThread, FinishBeginsNoRound) {
  for (int rounds = 0; rounds < 2; ++rounds) {
    TCountingThread thread;
    if (rounds > 0) thread.Resume();
    ASSERT_TRUE(thread.WaitForRounds(rounds));
    thread.Finish();
    thread.Finish();
    EXPECT_EQ(thread.Begun, rounds);
  }
}

TEST(TWorkerThread, FinishWaitsForTheRoundThatRuns) {
  TCountingThread thread;
  thread.Close();
  thread.Resume();
  ASSERT_TRUE(thread.WaitUntilHeld());
  thread.Resume();
  thread.OpensWhenAsked = 1;
  thread.Finish();
  EXPECT_TRUE(thread.WaitForRounds(1));
  EXPECT_EQ(thread.Begun, 1) << "a round was begun after Terminate";
}

TEST(TOwnedThread, AsksUntilTheRoundEnds) {
  std::atomic<bool> gone{false};
  TOwnedThread<TCountingThread> thread(new TCountingThread(&gone));
  thread->Close();
  thread->OpensWhenAsked = 3;
  thread->Resume();
  ASSERT_TRUE(thread->WaitUntilHeld());
  thread.reset();
  EXPECT_TRUE(gone);
}

TEST(TOwnedThread, AThreadThatHangsIsLeftBehindAndDeletesItself) {
  std::atomic<bool> gone{false};
  auto* const object = new TCountingThread(&gone);
  TOwnedThread<TCountingThread> thread(object);
  thread->Close();
  thread->Resume();
  ASSERT_TRUE(thread->WaitUntilHeld());
  thread.reset();
  EXPECT_FALSE(gone);
  object->Open();
  EXPECT_TRUE(WaitUntil([&] { return gone.load(); }));
}
