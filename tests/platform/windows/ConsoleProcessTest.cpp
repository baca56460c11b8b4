#include "platform/Process.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <chrono>
#include <semaphore>
#include <string>

namespace {

std::string gHeard;

// What a debugger would see.
LONG CALLBACK Hear(EXCEPTION_POINTERS* pointers) {
  const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
  if (record.ExceptionCode != DBG_PRINTEXCEPTION_C) return EXCEPTION_CONTINUE_SEARCH;
  gHeard += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
  return EXCEPTION_CONTINUE_EXECUTION;
}

class TDebugListener {
 public:
  TDebugListener() : FHandler(AddVectoredExceptionHandler(1, Hear)) { gHeard.clear(); }
  ~TDebugListener() { RemoveVectoredExceptionHandler(FHandler); }
  TDebugListener(const TDebugListener&) = delete;
  TDebugListener& operator=(const TDebugListener&) = delete;

 private:
  void* const FHandler;
};

TEST(ConsoleProcess, DebugOutputGoesToTheDebugger) {
  const TDebugListener listener;
  DebugOutput("heard");
  EXPECT_EQ(gHeard, "heard");
}

TEST(ConsoleProcess, DpiAwarenessIsSetAndTold) {
  const TDebugListener listener;
  SetLastError(7);
  MakeProcessDpiAware();
  EXPECT_TRUE(gHeard.starts_with("ErrorCode:")) << gHeard;
  EXPECT_GT(gHeard.size(), std::string("ErrorCode:").size());
  EXPECT_NE(IsProcessDPIAware(), 0);
}

std::counting_semaphore<> gInterrupts{0};

TEST(ConsoleProcess, EachInterruptCallsTheHandlerAndTheProcessGoesOn) {
  OnInterrupt([] { gInterrupts.release(); });
  if (GetConsoleWindow() == nullptr) {
    FreeConsole();
    ASSERT_NE(AllocConsole(), 0);
  }
  for (int i = 0; i < 2; ++i) {
    ASSERT_NE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0), 0);
    EXPECT_TRUE(gInterrupts.try_acquire_for(std::chrono::seconds(10)));
  }
}

}  // namespace
