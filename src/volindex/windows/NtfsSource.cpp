#include "volindex/system/NtfsSource.h"

namespace volindex::ntfs {

std::unique_ptr<TByteSource> OpenNtfsSource(const TScanRoot& root) {
  if (!root.IsVolumeRoot || root.Device.empty() || root.FileSystem != "NTFS") return nullptr;
  return OpenByteSource(root.Device);
}

TDriver DriverOf(const TScanRoot&) {
  return TDriver::Windows;
}

}  // namespace volindex::ntfs
