#include "volindex/system/NtfsSource.h"

#include <algorithm>
#include <string_view>

namespace volindex::ntfs {

namespace {

// The kernel's driver under its two names, and the one for programs that drive a block device.
constexpr std::string_view kDrivers[] = {"ntfs3", "ntfs", "fuseblk"};

}  // namespace

std::unique_ptr<TByteSource> OpenNtfsSource(const TScanRoot& root) {
  const bool known =
      std::find(std::begin(kDrivers), std::end(kDrivers), root.FileSystem) != std::end(kDrivers);
  if (!root.IsVolumeRoot || root.Device.empty() || !known) return nullptr;
  return OpenByteSource(root.Device);
}

TDriver DriverOf(const TScanRoot& root) {
  return root.FileSystem == "fuseblk" ? TDriver::Ntfs3g : TDriver::Kernel;
}

}  // namespace volindex::ntfs
