// What the program asks of the system about itself. Any thread.
#pragma once

#include <QStringList>

// Gives memory that is free inside the process back to the system.
void TrimWorkingSet();

// Bytes of memory resident now, and the most so far; 0 if not known.
[[nodiscard]] qint64 ResidentBytes();
[[nodiscard]] qint64 PeakResidentBytes();

// Calls the handler on a thread of its own at each Ctrl-C (SIGINT) or SIGTERM, instead of ending the
// process. Call once, before other threads start.
void OnInterrupt(void (*handler)());

// True if standard error is a terminal, and its width in columns (80 if not known).
[[nodiscard]] bool StdErrIsTerminal();
[[nodiscard]] int TerminalColumns();

// Text for the system's debug output: the debugger on Windows, nowhere unless TALLYSCOPE_DEBUG is set on
// Linux, then standard error.
void DebugOutput(const char* text);

// The arguments of main() without the program's name, file names in them whole: bytes that are not UTF-8
// come through as in NameFromBytes.
[[nodiscard]] QStringList ProgramParameters(int argc, char** argv);
