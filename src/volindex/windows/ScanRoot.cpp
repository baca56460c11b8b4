#include "volindex/system/ScanRoot.h"

#include "volindex/index/RunThreads.h"
#include "volindex/system/Utf16.h"
#include "volindex/windows/System.h"

#include <windows.h>
#include <winioctl.h>

#include <algorithm>
#include <thread>

namespace volindex {

namespace {

constexpr unsigned kRotatingThreads = 2;
constexpr size_t kLongestPath = 32'768;  // units, as everywhere in the system

std::string Inside(const std::wstring& text) {
  return ToBytes({reinterpret_cast<const char16_t*>(text.data()), text.size()});
}

std::string FullPath(const std::string& path) {
  const std::u16string text = ToUtf16(path);
  std::wstring full(kLongestPath, L'\0');
  const DWORD length =
      ::GetFullPathNameW(reinterpret_cast<const wchar_t*>(text.c_str()), kLongestPath, full.data(), nullptr);
  full.resize(length < kLongestPath ? length : 0);
  return Inside(full);
}

// Where the open folder really lies, links and substituted drives followed: "C:/a", "//server/share/a".
std::string RealPath(const TSystemHandle& folder) {
  std::wstring path(kLongestPath, L'\0');
  const DWORD length =
      ::GetFinalPathNameByHandleW(folder.Get(), path.data(), kLongestPath, FILE_NAME_NORMALIZED);
  path.resize(length < kLongestPath ? length : 0);
  for (const auto& [prefix, plain] :
       {std::pair(std::wstring_view(L"\\\\?\\UNC\\"), L"\\\\"), {L"\\\\?\\", L""}})
    if (path.starts_with(prefix)) return Inside(plain + path.substr(prefix.size()));
  return Inside(path);
}

bool IsDriveRoot(const std::string& path) {
  return path.size() == 3 && path[1] == ':' && path[2] == '/';
}

std::string WithoutDelimiter(std::string path) {
  while (path.ends_with('/') && !IsDriveRoot(path))
    path.pop_back();
  return path;
}

bool IsFolder(const TSystemHandle& handle) {
  FILE_STANDARD_INFO facts{};
  return ::GetFileInformationByHandleEx(handle.Get(), FileStandardInfo, &facts, sizeof facts) != FALSE &&
         facts.Directory != FALSE;
}

std::string DeviceOf(const std::string& path) {
  return IsDriveRoot(path) ? "//./" + path.substr(0, 2) : std::string();
}

}  // namespace

std::optional<TScanRoot> DescribeScanRoot(const std::string& path) {
  const std::string full = FullPath(path);
  if (full.empty()) return std::nullopt;
  const TSystemHandle folder = OpenPath(full, FILE_LIST_DIRECTORY, FILE_FLAG_BACKUP_SEMANTICS);
  if (!folder || !IsFolder(folder)) return std::nullopt;
  TScanRoot root;
  const std::string real = RealPath(folder);
  root.Path = WithoutDelimiter(real.empty() ? full : real);
  root.IsVolumeRoot = IsDriveRoot(root.Path);
  if (!root.IsVolumeRoot) return root;
  wchar_t name[MAX_PATH + 1] = {};
  if (::GetVolumeInformationByHandleW(folder.Get(), nullptr, 0, nullptr, nullptr, nullptr, name, MAX_PATH) !=
      FALSE)
    root.FileSystem = Inside(name);
  root.Device = DeviceOf(root.Path);
  return root;
}

// Who may not write to the volume has to take it as it is.
bool FlushVolume(const std::string& path, const std::atomic<bool>& stop) {
  return RunAbandonable(stop, [path] {
    const TSystemHandle volume = OpenPath(DeviceOf(path), GENERIC_READ | GENERIC_WRITE, 0);
    return !volume || ::FlushFileBuffers(volume.Get()) != FALSE;
  });
}

std::optional<uint64_t> UsedOnVolume(const TScanRoot& root) {
  const std::u16string path = ToUtf16(root.Path);
  ULARGE_INTEGER all{}, free{};
  if (::GetDiskFreeSpaceExW(reinterpret_cast<const wchar_t*>(path.c_str()), nullptr, &all, &free) == FALSE ||
      free.QuadPart > all.QuadPart)
    return std::nullopt;
  return all.QuadPart - free.QuadPart;
}

// Opened without any right, which asking for the seek penalty does not take.
unsigned ThreadsFor(const TScanRoot& root) {
  const unsigned processors = std::max(std::thread::hardware_concurrency(), 1U);
  const TSystemHandle volume = OpenPath(DeviceOf(root.Path.substr(0, 3)), 0, 0);
  STORAGE_PROPERTY_QUERY query{StorageDeviceSeekPenaltyProperty, PropertyStandardQuery, {}};
  DEVICE_SEEK_PENALTY_DESCRIPTOR penalty{};
  DWORD got = 0;
  const bool known =
      volume && ::DeviceIoControl(volume.Get(), IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, &penalty,
                                  sizeof penalty, &got, nullptr) != FALSE;
  return known && penalty.IncursSeekPenalty ? std::min(processors, kRotatingThreads) : processors;
}

}  // namespace volindex
