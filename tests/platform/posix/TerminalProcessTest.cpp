#include "platform/Process.h"

#include "fixtures/SystemTest.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <csignal>

namespace {

// Puts another file in the place of standard error.
class TStdErrTo {
 public:
  explicit TStdErrTo(int descriptor) : FBefore(dup(STDERR_FILENO)) { dup2(descriptor, STDERR_FILENO); }
  ~TStdErrTo() { dup2(FBefore, STDERR_FILENO), close(FBefore); }
  TStdErrTo(const TStdErrTo&) = delete;
  TStdErrTo& operator=(const TStdErrTo&) = delete;

 private:
  const int FBefore;
};

QSemaphore gInterrupts;

TEST(TerminalProcess, EachInterruptCallsTheHandlerAndTheProcessGoesOn) {
  OnInterrupt([] { gInterrupts.release(); });
  for (const int signal : {SIGINT, SIGTERM, SIGINT}) {
    ASSERT_EQ(kill(getpid(), signal), 0);
    EXPECT_TRUE(gInterrupts.tryAcquire(1, 10'000)) << signal;
  }
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGTERM, SIG_DFL);
}

TEST(TerminalProcess, TrimmingGivesFreeMemoryBack) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "the sanitizer's own allocator keeps freed memory";
#endif
  auto blocks = TouchMemory(1024);
  const auto last = std::make_unique<char[]>(kBlock);  // keeps the heap's end where it is
  blocks.clear();
  const qint64 before = ResidentBytes();
  TrimWorkingSet();
  EXPECT_GE(before - ResidentBytes(), static_cast<qint64>(kBlock * 512));
}

TEST(TerminalProcess, TheTerminalIsAskedForItsWidth) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  if (terminal < 0) GTEST_SKIP() << "no terminals here";
  ASSERT_EQ(unlockpt(terminal), 0);
  const int screen = open(ptsname(terminal), O_RDWR | O_NOCTTY);
  ASSERT_GE(screen, 0);
  winsize size{};
  size.ws_col = 123;
  ASSERT_EQ(ioctl(screen, TIOCSWINSZ, &size), 0);
  {
    const TStdErrTo redirected(screen);
    EXPECT_TRUE(StdErrIsTerminal());
    EXPECT_EQ(TerminalColumns(), 123);
  }
  close(screen);
  close(terminal);
}

TEST(TerminalProcess, DebugOutputIsSilentUnlessAskedFor) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const TVariables silent{{"TALLYSCOPE_DEBUG", nullptr}};
  {
    const TStdErrTo redirected(ends[1]);
    EXPECT_FALSE(StdErrIsTerminal());
    EXPECT_EQ(TerminalColumns(), 80);
    DebugOutput("silent");
    const TVariables asked{{"TALLYSCOPE_DEBUG", "1"}};
    DebugOutput("heard");
  }
  char text[64] = {};
  EXPECT_EQ(read(ends[0], text, sizeof text - 1), 5);
  EXPECT_STREQ(text, "heard");
  close(ends[0]);
  close(ends[1]);
}

}  // namespace
