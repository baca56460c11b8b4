#include "platform/Process.h"

#include "platform/windows/Handle.h"

#include <QByteArray>
#include <QCoreApplication>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <objbase.h>
#include <psapi.h>
#include <shellapi.h>
#include <cstdio>
#include <cstdlib>

namespace {

PROCESS_MEMORY_COUNTERS MemoryCounters() {
  PROCESS_MEMORY_COUNTERS counters{};
  if (K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) == 0) return {};
  return counters;
}

void (*gInterruptHandler)() = nullptr;

// The system calls it on a thread of its own. It ends the process by itself after the console has closed.
BOOL WINAPI HandleControl(DWORD event) {
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT && event != CTRL_CLOSE_EVENT) return FALSE;
  gInterruptHandler();
  return TRUE;
}

bool ReadConsole(CONSOLE_SCREEN_BUFFER_INFO& info) {
  return GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) != 0;
}

QStringList CommandLineArguments() {
  int count = 0;
  const std::unique_ptr<LPWSTR[], TFreeLocal> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
  QStringList texts;
  for (int i = 0; arguments && i < count; ++i)
    texts << QString::fromWCharArray(arguments[static_cast<size_t>(i)]);
  return texts;
}

}  // namespace

// It gives back what it can: a failure changes nothing.
void TrimWorkingSet() {
  constexpr auto kAsLittleAsPossible = static_cast<SIZE_T>(-1);
  SetProcessWorkingSetSize(GetCurrentProcess(), kAsLittleAsPossible, kAsLittleAsPossible);
}

qint64 ResidentBytes() {
  return static_cast<qint64>(MemoryCounters().WorkingSetSize);
}

qint64 PeakResidentBytes() {
  return static_cast<qint64>(MemoryCounters().PeakWorkingSetSize);
}

// ExitProcess would run the libraries' own ends, which may wait for a lock that a dead thread holds.
void EndProcess(int exitCode) {
  std::fflush(nullptr);
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
  std::abort();
}

void OnInterrupt(void (*handler)()) {
  gInterruptHandler = handler;
  if (SetConsoleCtrlHandler(HandleControl, TRUE) == 0) gInterruptHandler = nullptr;
}

void MakeOutputPlain() {
  for (std::FILE* const stream : {stdout, stderr})
    _setmode(_fileno(stream), _O_BINARY);
  static const UINT codePage = GetConsoleOutputCP();
  if (SetConsoleOutputCP(CP_UTF8) != 0) std::atexit([] { SetConsoleOutputCP(codePage); });
}

bool StdErrIsTerminal() {
  CONSOLE_SCREEN_BUFFER_INFO info;
  return ReadConsole(info);
}

int TerminalColumns() {
  CONSOLE_SCREEN_BUFFER_INFO info;
  return ReadConsole(info) ? info.srWindow.Right - info.srWindow.Left + 1 : 80;
}

void DebugOutput(const char* text) {
  OutputDebugStringA(text);
}

void MakeProcessDpiAware() {
  const HMODULE user = GetModuleHandleW(L"user32.dll");
  const FARPROC found = user == nullptr ? nullptr : GetProcAddress(user, "SetProcessDPIAware");
  if (found == nullptr) return;
  reinterpret_cast<BOOL(WINAPI*)()>(reinterpret_cast<void*>(found))();
  DebugOutput(("ErrorCode:" + QByteArray::number(static_cast<uint>(GetLastError()))).constData());
}

// Qt's application object matches the system's command line with what it has left in argv.
QStringList ProgramParameters(int, char**) {
  const bool hasApplication = QCoreApplication::instance() != nullptr;
  return (hasApplication ? QCoreApplication::arguments() : CommandLineArguments()).mid(1);
}

// A thread that lives in another kind of apartment may use components all the same.
TComThread::TComThread() : FJoined(SUCCEEDED(CoInitialize(nullptr))) {}

TComThread::~TComThread() {
  if (FJoined) CoUninitialize();
}
