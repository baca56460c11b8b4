#include "volindex/posix/Ext4Source.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace volindex {
namespace {

constexpr ino_t kRootInodeNumber = 2;

[[nodiscard]] bool IsExt(const std::string& fileSystem) {
  return fileSystem == "ext4" || fileSystem == "ext3" || fileSystem == "ext2";
}

[[nodiscard]] bool ShowsRootOf(dev_t device, const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && status.st_dev == device && status.st_ino == kRootInodeNumber;
}

[[nodiscard]] bool IsDevice(dev_t device, const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && S_ISBLK(status.st_mode) && status.st_rdev == device;
}

}  // namespace

std::unique_ptr<TByteSource> OpenExt4Device(const TScanRoot& root) {
  const dev_t device = makedev(root.DeviceMajor, root.DeviceMinor);
  if (!root.IsVolumeRoot || !IsExt(root.FileSystem) || !ShowsRootOf(device, root.Path) ||
      !IsDevice(device, root.Device))
    return nullptr;
  return OpenByteSource(root.Device);
}

}  // namespace volindex
