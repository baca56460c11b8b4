#include "volindex/readers/ByteSource.h"

#include "volindex/readers/AlignedBytes.h"
#include "volindex/readers/DiskBytes.h"
#include "volindex/windows/System.h"

#include <windows.h>
#include <winioctl.h>

#include <algorithm>
#include <bit>

namespace volindex {

namespace {

// Reads go past the system's cache, which would only copy what is read once, and so come in whole sectors to
// places aligned like them. Both sizes are multiples of every sector.
constexpr size_t kMostAtOnce = size_t{256} << 20;
constexpr size_t kBounce = size_t{64} << 10;
constexpr uint32_t kUsualSector = 4096;  // a multiple of every sector in use

// One request to a handle that several threads use at once: each waits for an event of its own.
class TRequest {
 public:
  explicit TRequest(uint64_t offset) : FEvent(::CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    FPlace.Offset = static_cast<DWORD>(offset);
    FPlace.OffsetHigh = static_cast<DWORD>(offset >> 32);
    FPlace.hEvent = FEvent.Get();
  }

  // `begin` is called with the place and answers as the system's calls do. The bytes that came; 0 on failure.
  template <class TBegin>
  [[nodiscard]] size_t Wait(const TSystemHandle& handle, TBegin begin) {
    DWORD got = 0;
    const bool begun = FEvent && (begin(&FPlace) != FALSE || ::GetLastError() == ERROR_IO_PENDING);
    return begun && ::GetOverlappedResult(handle.Get(), &FPlace, &got, TRUE) != FALSE ? got : 0;
  }

 private:
  TSystemHandle FEvent;
  OVERLAPPED FPlace{};
};

// The bytes read, less than wanted at the end of a file only.
[[nodiscard]] size_t ReadSome(const TSystemHandle& handle, uint64_t offset, std::span<std::byte> target) {
  return TRequest(offset).Wait(handle, [&](OVERLAPPED* place) {
    return ::ReadFile(handle.Get(), target.data(), static_cast<DWORD>(target.size()), nullptr, place);
  });
}

class TDiskSource : public TByteSource {
 public:
  // Offsets, lengths and addresses of reads are multiples of `sector`.
  TDiskSource(TSystemHandle handle, uint64_t size, uint32_t sector)
      : FHandle(std::move(handle)), FSize(size), FSector(sector) {}

  bool ReadAt(uint64_t offset, std::span<std::byte> target) const override {
    if (!Fits(offset, target.size(), FSize)) return false;
    const bool aligned = offset % FSector == 0 && target.size() % FSector == 0 &&
                         reinterpret_cast<uintptr_t>(target.data()) % FSector == 0;
    return aligned ? ReadDirectly(offset, target) : ReadByWay(offset, target);
  }

  uint64_t Size() const override { return FSize; }

 private:
  [[nodiscard]] bool ReadDirectly(uint64_t offset, std::span<std::byte> target) const {
    while (!target.empty()) {
      const size_t got = ReadSome(FHandle, offset, target.first(std::min(target.size(), kMostAtOnce)));
      if (got == 0) return false;
      target = target.subspan(got);
      offset += got;
    }
    return true;
  }

  // Reads whole sectors to another place and copies what is wanted of them.
  [[nodiscard]] bool ReadByWay(uint64_t offset, std::span<std::byte> target) const {
    const TAlignedBytes room(kBounce);
    while (!target.empty()) {
      const size_t skipped = offset % FSector;
      const size_t wanted = std::min(target.size(), kBounce - skipped);
      const size_t whole = (skipped + wanted + FSector - 1) / FSector * FSector;
      if (ReadSome(FHandle, offset - skipped, room.All().first(whole)) < skipped + wanted) return false;
      const auto from = room.All().subspan(skipped, wanted);
      std::copy(from.begin(), from.end(), target.begin());
      target = target.subspan(wanted);
      offset += wanted;
    }
    return true;
  }

  TSystemHandle FHandle;
  uint64_t FSize;
  uint32_t FSector;
};

template <class T>
[[nodiscard]] bool Ask(const TSystemHandle& handle, DWORD what, T& answer) {
  return TRequest(0).Wait(handle, [&](OVERLAPPED* place) {
    return ::DeviceIoControl(handle.Get(), what, nullptr, 0, &answer, sizeof answer, nullptr, place);
  }) == sizeof answer;
}

[[nodiscard]] uint32_t SectorOf(const TSystemHandle& handle) {
  DISK_GEOMETRY geometry{};
  const bool known =
      Ask(handle, IOCTL_DISK_GET_DRIVE_GEOMETRY, geometry) && std::has_single_bit(geometry.BytesPerSector);
  return known ? std::min<uint32_t>(geometry.BytesPerSector, kBounce) : kUsualSector;
}

// The end of what can be read, in whole sectors.
[[nodiscard]] uint64_t SizeByReading(const TSystemHandle& handle, uint32_t sector) {
  const TAlignedBytes room(sector);
  const auto readable = [&](uint64_t place) {
    return ReadSome(handle, place * sector, room.All()) == sector;
  };
  uint64_t end = 1;
  while (end < uint64_t{1} << 50 && readable(end - 1))
    end *= 2;
  uint64_t below = end / 2;  // sectors that can surely be read
  while (below + 1 < end) {
    const uint64_t middle = below + (end - below) / 2;
    (readable(middle - 1) ? below : end) = middle;
  }
  return below * sector;
}

// What does not tell its length as a device may be a file that stands for one, or a device that tells
// nothing.
[[nodiscard]] uint64_t SizeOf(const TSystemHandle& handle, uint32_t sector) {
  GET_LENGTH_INFORMATION length{};
  if (Ask(handle, IOCTL_DISK_GET_LENGTH_INFO, length)) return static_cast<uint64_t>(length.Length.QuadPart);
  LARGE_INTEGER size{};
  const bool isFile = ::GetFileSizeEx(handle.Get(), &size) != FALSE && size.QuadPart > 0;
  return isFile ? static_cast<uint64_t>(size.QuadPart) : SizeByReading(handle, sector);
}

}  // namespace

std::unique_ptr<TByteSource> OpenByteSource(const std::string& path) {
  constexpr DWORD kFlags = FILE_FLAG_OVERLAPPED | FILE_FLAG_NO_BUFFERING;
  TSystemHandle handle = OpenPath(path, GENERIC_READ, kFlags);
  if (!handle) return nullptr;
  const uint32_t sector = SectorOf(handle);
  const uint64_t size = SizeOf(handle, sector);
  return size == 0 ? nullptr : std::make_unique<TDiskSource>(std::move(handle), size, sector);
}

}  // namespace volindex
