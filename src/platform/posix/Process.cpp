#include "platform/Process.h"

#include "platform/FileTests.h"
#include "platform/Paths.h"

#include <QList>

#include <fcntl.h>
#include <malloc.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <thread>

namespace {

// "VmRSS:     1234 kB"
qint64 BytesOfStatusLine(const QByteArray& name) {
  const QByteArray status = ReadWholeFile(QStringLiteral("/proc/self/status")).value_or(QByteArray());
  for (const QByteArray& line : status.split('\n')) {
    if (line.startsWith(name))
      return line.mid(name.size()).simplified().split(' ').front().toLongLong() * 1024;
  }
  return 0;
}

// From the signal handler, which may do next to nothing, to the thread that calls the program's handler.
int gInterruptPipe[2] = {-1, -1};

// Does nothing but what a signal handler may: writes a byte and keeps errno.
void TellOfSignal(int) {
  const int before = errno;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = write(gInterruptPipe[1], &byte, 1);
  errno = before;
}

// A signal that the parent had this process ignore stays ignored.
void Catch(int signal) {
  struct sigaction action {};
  if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) return;
  action = {};
  action.sa_handler = TellOfSignal;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(signal, &action, nullptr);
}

void AwaitSignals(void (*handler)()) {
  char byte;
  for (;;) {
    const ssize_t count = read(gInterruptPipe[0], &byte, 1);
    if (count == 1) handler();
    if (count == 0 || (count < 0 && errno != EINTR)) return;
  }
}

}  // namespace

void TrimWorkingSet() {
  malloc_trim(0);
}

qint64 ResidentBytes() {
  return BytesOfStatusLine("VmRSS:");
}

qint64 PeakResidentBytes() {
  return BytesOfStatusLine("VmHWM:");
}

void EndProcess(int exitCode) {
  std::fflush(nullptr);
  _exit(exitCode);
}

void OnInterrupt(void (*handler)()) {
  if (pipe2(gInterruptPipe, O_CLOEXEC) != 0) return;
  // A handler that is busy must never make a signal wait for room in the pipe.
  fcntl(gInterruptPipe[1], F_SETFL, O_NONBLOCK);
  std::thread(AwaitSignals, handler).detach();
  Catch(SIGINT);
  Catch(SIGTERM);
}

bool StdErrIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

int TerminalColumns() {
  winsize size{};
  return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

void DebugOutput(const char* text) {
  if (qEnvironmentVariableIsSet("TALLYSCOPE_DEBUG")) std::fputs(text, stderr);
}

void MakeOutputPlain() {}

void MakeProcessDpiAware() {}

QStringList ProgramParameters(int argc, char** argv) {
  QStringList parameters;
  for (int i = 1; i < argc; ++i)
    parameters.append(NameFromBytes(argv[i]));
  return parameters;
}

TComThread::TComThread() = default;

TComThread::~TComThread() = default;
