// System handles that close themselves.
#pragma once

#include <windows.h>

#include <memory>

struct TCloseHandle {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
struct TCloseSearch {
  void operator()(HANDLE search) const { FindClose(search); }
};
struct TCloseKey {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
struct TFreeLocal {
  void operator()(void* memory) const { LocalFree(memory); }
};
struct TDestroyIcon {
  void operator()(HICON icon) const { DestroyIcon(icon); }
};

// All are null when not open.
using TFileHandle = std::unique_ptr<void, TCloseHandle>;
using TSearchHandle = std::unique_ptr<void, TCloseSearch>;
using TRegistryKey = std::unique_ptr<HKEY__, TCloseKey>;
using TIconHandle = std::unique_ptr<HICON__, TDestroyIcon>;

// Takes what CreateFileW or FindFirstFileExW gave.
template <typename THandle>
[[nodiscard]] THandle TakeHandle(HANDLE handle) {
  return THandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}
