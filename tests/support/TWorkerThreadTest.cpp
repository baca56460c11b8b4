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
  ~TCountingThread() override {
    Open();
    Finish();
  }

  using TWorkerThread::Finish;

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

  [[nodiscard]] int Begun() {
    const std::lock_guard lock(FGuard);
    return FBegun;
  }

  [[nodiscard]] bool BodyRan() {
    const std::lock_guard lock(FGuard);
    return FBodyRan;
  }

 protected:
  void Execute() override {
    Set(FBodyRan, true);
    while (!Terminated()) {
      RunRound();
      Suspend();
    }
  }

 private:
  void RunRound() {
    std::unique_lock lock(FGuard);
    ++FBegun;
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
  int FBegun = 0;
  int FRounds = 0;
  bool FBodyRan = false;
  bool FClosed = false;
  bool FHeld = false;
};

[[nodiscard]] bool WaitUntilSuspended(const TWorkerThread& thread) {
  const auto bound = std::chrono::steady_clock::now() + 10s;
  while (!thread.Suspended() && std::chrono::steady_clock::now() < bound)
    std::this_thread::yield();
  return thread.Suspended();
}

}  // namespace

TEST(TWorkerThread, IsMadeSuspendedAndRunsOneRoundPerResume) {
  TCountingThread thread;
  EXPECT_TRUE(thread.Suspended());
  for (int round = 1; round <= 50; ++round) {
    thread.Resume();
    ASSERT_TRUE(thread.WaitForRounds(round));
    ASSERT_TRUE(WaitUntilSuspended(thread));
    ASSERT_EQ(thread.Begun(), round) << "a round nobody asked for";
  }
}

TEST(TWorkerThread, IsNotSuspendedFromResumeToTheEndOfTheRound) {
  TCountingThread thread;
  thread.Close();
  thread.Resume();
  EXPECT_FALSE(thread.Suspended());
  ASSERT_TRUE(thread.WaitUntilHeld());
  EXPECT_FALSE(thread.Suspended());
  thread.Open();
  EXPECT_TRUE(WaitUntilSuspended(thread));
}

TEST(TWorkerThread, AResumeDuringARoundHoldsForOneMore) {
  TCountingThread thread;
  thread.Close();
  thread.Resume();
  ASSERT_TRUE(thread.WaitUntilHeld());
  thread.Resume();
  thread.Resume();
  thread.Open();
  ASSERT_TRUE(thread.WaitForRounds(2));
  ASSERT_TRUE(WaitUntilSuspended(thread));
  EXPECT_EQ(thread.Begun(), 2);
}

TEST(TWorkerThread, FinishBeforeTheFirstResumeNeverRunsTheBody) {
  for (int i = 0; i < 50; ++i) {
    TCountingThread thread;
    thread.Finish();
    EXPECT_FALSE(thread.BodyRan());
  }
}

TEST(TWorkerThread, FinishEndsASuspendedThreadWithoutAnotherRound) {
  for (int i = 0; i < 50; ++i) {
    TCountingThread thread;
    thread.Resume();
    ASSERT_TRUE(thread.WaitForRounds(1));
    thread.Finish();
    thread.Finish();
    EXPECT_EQ(thread.Begun(), 1);
  }
}

TEST(TWorkerThread, FinishWaitsForTheRoundThatRuns) {
  TCountingThread thread;
  thread.Close();
  thread.Resume();
  ASSERT_TRUE(thread.WaitUntilHeld());
  thread.Resume();
  std::thread opener([&] {
    while (!thread.Terminated())
      std::this_thread::yield();
    thread.Open();
  });
  thread.Finish();
  opener.join();
  EXPECT_TRUE(thread.WaitForRounds(1));
  EXPECT_EQ(thread.Begun(), 1) << "a round was begun after Terminate";
}

TEST(TWorkerThread, WhatTheOwnerWroteBeforeResumeIsSeenInTheRound) {
  class TDoubler : public TWorkerThread {
   public:
    ~TDoubler() override { Finish(); }
    int Value = 0;  // no lock: handed over by Resume and Suspended

   protected:
    void Execute() override {
      while (!Terminated()) {
        Value *= 2;
        Suspend();
      }
    }
  };
  TDoubler thread;
  for (int i = 1; i <= 200; ++i) {
    thread.Value = i;
    thread.Resume();
    ASSERT_TRUE(WaitUntilSuspended(thread));
    ASSERT_EQ(thread.Value, 2 * i);
  }
}
