#include "platform/Shell.h"

#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/windows/FileEntry.h"
#include "platform/windows/Handle.h"

#include <QDir>
#include <QRegularExpression>
#include <QWindow>

#include <windows.h>

#include <shellapi.h>

namespace {

bool Execute(const QString& file, const QString& parameters) {
  const wchar_t* const given = parameters.isEmpty() ? nullptr : WideText(parameters);
  const HINSTANCE result = ShellExecuteW(nullptr, L"open", WideText(file), given, nullptr, SW_SHOWNORMAL);
  constexpr INT_PTR kLastErrorNumber = 32;
  return reinterpret_cast<INT_PTR>(result) > kLastErrorNumber;
}

bool InFront(HWND window) {
  return GetForegroundWindow() == window;
}

void Raise(HWND window) {
  BringWindowToTop(window);
  SetForegroundWindow(window);
}

// The input of the window's thread is joined to that of the thread that has the keyboard now.
bool RaiseWithItsInput(HWND window) {
  const DWORD front = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
  const DWORD own = GetWindowThreadProcessId(window, nullptr);
  if (AttachThreadInput(own, front, TRUE) == 0) return false;
  Raise(window);
  AttachThreadInput(own, front, FALSE);
  return InFront(window);
}

// Programs may not take the keyboard for a time after the user's last input elsewhere: that time is 0
// meanwhile.
void RaiseWithoutLock(HWND window) {
  DWORD before = 0;
  SystemParametersInfoW(SPI_GETFOREGROUNDLOCKTIMEOUT, 0, &before, 0);
  const auto set = [](DWORD milliseconds) {
    SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0,
                          reinterpret_cast<void*>(static_cast<quintptr>(milliseconds)), SPIF_SENDCHANGE);
  };
  set(0);
  Raise(window);
  set(before);
}

}  // namespace

// A scheme has at least two letters, a drive has one.
QUrl TargetUrl(const QString& target) {
  static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]+:"));
  return scheme.match(target).hasMatch() ? QUrl(target) : QUrl::fromLocalFile(QDir(target).absolutePath());
}

bool OpenTarget(const QString& target) {
  return !target.isEmpty() && Execute(target, QString());
}

bool StartProgram(const QString& program, const QString& parameters) {
  return Execute(program, parameters);
}

bool OpenFile(const QString& path, QWindow* owner, TShowWindow show) {
  const auto window = owner == nullptr ? nullptr : reinterpret_cast<HWND>(owner->winId());
  const HINSTANCE result =
      ShellExecuteW(window, L"open", WideText(path), nullptr, nullptr, static_cast<int>(show));
  constexpr INT_PTR kLastErrorNumber = 32;
  return reinterpret_cast<INT_PTR>(result) > kLastErrorNumber;
}

// The file manager takes what follows the comma as it stands, quotes and all. It is named by its full path,
// so that no other program of that name is started.
void ShowInFileManager(const QString& path) {
  const QString program = IncludeTrailingPathDelimiter(GetWindowsFolder()) + QStringLiteral("explorer.exe");
  WinExec(TextToAnsi(u'"' + program + QStringLiteral("\" /select,") + path).constData(), SW_SHOWNORMAL);
}

void ShowPropertiesDialog(const QString& path, const std::function<void()>&) {
  SHELLEXECUTEINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_INVOKEIDLIST | SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI;
  info.lpVerb = L"properties";
  info.lpFile = WideText(path);
  ShellExecuteExW(&info);
  const TFileHandle process(info.hProcess);
}

bool ForceForeground(QWindow& form, const QByteArray&) {
  const auto window = reinterpret_cast<HWND>(form.winId());
  if (IsIconic(window) != 0) ShowWindow(window, SW_RESTORE);
  if (InFront(window)) return true;
  if (!RaiseWithItsInput(window)) RaiseWithoutLock(window);
  return InFront(window);
}
