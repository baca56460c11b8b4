// What the Windows side of the library shares.
#pragma once

#include <string>
#include <utility>

namespace volindex {

// Owns an open handle of the system; closes it at the end.
class TSystemHandle {
 public:
  TSystemHandle() = default;
  // Takes what an open call returned, the invalid handle as none.
  explicit TSystemHandle(void* handle);
  ~TSystemHandle();
  TSystemHandle(TSystemHandle&& other) noexcept : FHandle(std::exchange(other.FHandle, nullptr)) {}
  TSystemHandle& operator=(TSystemHandle&& other) noexcept {
    std::swap(FHandle, other.FHandle);
    return *this;
  }

  [[nodiscard]] explicit operator bool() const { return FHandle != nullptr; }
  [[nodiscard]] void* Get() const { return FHandle; }
  [[nodiscard]] void* Release() { return std::exchange(FHandle, nullptr); }

 private:
  void* FHandle = nullptr;
};

// The text for the system's wide calls of a path (bytes inside), beyond their limit of 260 units: "C:/a" is
// "\\?\C:\a". A path of a device, "//./C:", stays as it is.
[[nodiscard]] std::wstring SystemPath(const std::string& path);

// Opens a file, device or, with the flag for it, a folder; shares it with everybody.
[[nodiscard]] TSystemHandle OpenPath(const std::string& path, unsigned long access, unsigned long flags);

}  // namespace volindex
