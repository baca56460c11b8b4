#include "volindex/windows/System.h"

#include "volindex/system/Elevation.h"
#include "volindex/system/Utf16.h"

#include <windows.h>

namespace volindex {

// The whole program runs as the administrator.
void SetElevation(int32_t) {}

TSystemHandle::TSystemHandle(void* handle) : FHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}

TSystemHandle::~TSystemHandle() {
  if (FHandle != nullptr) ::CloseHandle(FHandle);
}

std::wstring SystemPath(const std::string& path) {
  const std::u16string text = ToUtf16(path);
  const std::wstring wide(text.begin(), text.end());
  if (wide.starts_with(L"\\\\.\\") || wide.starts_with(L"\\\\?\\")) return wide;
  return wide.starts_with(L"\\\\") ? L"\\\\?\\UNC" + wide.substr(1) : L"\\\\?\\" + wide;
}

TSystemHandle OpenPath(const std::string& path, unsigned long access, unsigned long flags) {
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return TSystemHandle(
      ::CreateFileW(SystemPath(path).c_str(), access, kShare, nullptr, OPEN_EXISTING, flags, nullptr));
}

}  // namespace volindex
