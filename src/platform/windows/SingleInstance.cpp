// The mutex decides who is the first copy; a registered message, broadcast to all windows, is the call. It
// carries no token: here the right to come to the front is asked for by other means (Shell.cpp).
#include "platform/SingleInstance.h"

#include "platform/windows/Handle.h"

#include <QCoreApplication>

#include <string>
#include <utility>

// Serves the hidden window that receives the call: a broadcast reaches top-level windows only.
struct TSingleInstance::TGuard {
  UINT Message = 0;
  TFileHandle Mutex;  // to the end of the process; the system frees it however that comes
  HWND Window = nullptr;
  WNDPROC Before = nullptr;
  std::function<void(const QByteArray& token)> Called;
  bool Waiting = false;  // a call has come that nobody was told of yet

  ~TGuard() {
    if (Window != nullptr) DestroyWindow(Window);
  }

  // True for the first copy; the error tells of another one that was started in the same moment.
  [[nodiscard]] bool TakeMutex(const wchar_t* identity) {
    if (const TFileHandle other(OpenMutexW(READ_CONTROL, FALSE, identity)); other) return false;
    Mutex.reset(CreateMutexW(nullptr, FALSE, identity));
    const DWORD error = GetLastError();
    return Mutex && error != ERROR_ALREADY_EXISTS;
  }

  void MakeWindow() {
    Window = CreateWindowExW(0, L"STATIC", L"Tallyscope", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                             GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(Window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    Before = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(Window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&UniqueInstanceWndProc)));
  }

  // In the event loop, since nothing may be thrown through the system's call.
  void Tell() {
    Waiting = Called == nullptr;
    if (!Waiting)
      QMetaObject::invokeMethod(
          qApp, [called = Called] { called({}); }, Qt::QueuedConnection);
  }

  static LRESULT CALLBACK UniqueInstanceWndProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto& guard = *reinterpret_cast<TGuard*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message != guard.Message) return CallWindowProcW(guard.Before, window, message, wparam, lparam);
    guard.Tell();
    return 0;
  }
};

TSingleInstance::TSingleInstance(const QString& identity) : FGuard(std::make_unique<TGuard>()) {
  const std::wstring text = identity.toStdWString();
  FGuard->Message = RegisterWindowMessageW(text.c_str());
  FIsFirst = FGuard->TakeMutex(text.c_str());
  if (FIsFirst) {
    FGuard->MakeWindow();
    return;
  }
  DWORD recipients = BSM_APPLICATIONS;
  BroadcastSystemMessageW(BSF_POSTMESSAGE | BSF_IGNORECURRENTTASK, &recipients, FGuard->Message, 0, 0);
}

TSingleInstance::~TSingleInstance() = default;

void TSingleInstance::OnCall(std::function<void(const QByteArray& token)> called) {
  FGuard->Called = std::move(called);
  if (FGuard->Waiting) FGuard->Tell();
}
