// What the program asks of the system about itself. Any thread.
#pragma once

#include <QStringList>

// Gives memory that is free inside the process back to the system.
void TrimWorkingSet();

// Bytes of memory resident now, and the most so far; 0 if not known.
[[nodiscard]] qint64 ResidentBytes();
[[nodiscard]] qint64 PeakResidentBytes();

// Ends the process at once. Its other threads die with it, wherever they are: none is waited for, and no
// object is destroyed that one of them might still use. Open streams of the standard library are flushed.
[[noreturn]] void EndProcess(int exitCode);

// Calls the handler on a thread of its own at each Ctrl-C (SIGINT) or SIGTERM, on Windows also at a
// Ctrl-Break or when the console closes, instead of ending the process. Call once, before other threads
// start.
void OnInterrupt(void (*handler)());

// What the process writes to its standard output and standard error arrives byte by byte, and a console takes
// it for UTF-8. Windows: for the rest of the process; Linux: it is so anyway. Call once, before the first
// output.
void MakeOutputPlain();

// True if standard error is a terminal, and its width in columns (80 if not known).
[[nodiscard]] bool StdErrIsTerminal();
[[nodiscard]] int TerminalColumns();

// Text for the system's debug output: the debugger on Windows, nowhere unless TALLYSCOPE_DEBUG is set on
// Linux, then standard error.
void DebugOutput(const char* text);

// Windows: tells the system that the program draws for the screen's real resolution, and the debug output how
// that went. Linux: nothing. Main thread, before the first window.
void MakeProcessDpiAware();

// The arguments of main() without the program's name and without what Qt's application object took out of
// them. File names in them are whole: bytes that are not UTF-8 come through as in NameFromBytes; on Windows,
// where main() gets no whole names, the system's own command line is read.
[[nodiscard]] QStringList ProgramParameters(int argc, char** argv);

// The component model of Windows, which serves one thread at a time. Linux has none: nothing happens there.
//
// While one of these lives, its thread may use components. They nest. Made and destroyed on the same thread.
class TComThread {
 public:
  TComThread();
  ~TComThread();
  TComThread(const TComThread&) = delete;
  TComThread& operator=(const TComThread&) = delete;

 private:
  [[maybe_unused]] bool FJoined = false;  // Windows only
};
