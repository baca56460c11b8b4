#include "platform/Foreground.h"

#include <QWindow>

#include <windows.h>

namespace {

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

bool ForceForeground(QWindow& form, const QByteArray&) {
  const auto window = reinterpret_cast<HWND>(form.winId());
  if (IsIconic(window) != 0) ShowWindow(window, SW_RESTORE);
  if (InFront(window)) return true;
  if (!RaiseWithItsInput(window)) RaiseWithoutLock(window);
  return InFront(window);
}
