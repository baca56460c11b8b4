#include "platform/Volumes.h"

#include "platform/FileEnumeration.h"
#include "platform/Paths.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/MountTable.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <algorithm>

namespace {

const QByteArray kLabelFolder = QByteArrayLiteral("/dev/disk/by-label");

std::optional<TVolume> DescribeVolume(const TMount& mount) {
  struct statvfs status;
  if (statvfs(mount.Point, &status) != 0) return std::nullopt;
  TVolume volume;
  volume.Root = IncludeTrailingPathDelimiter(NameFromBytes(mount.Point));
  if (const auto device = FixedDeviceOf(mount)) volume.Label = VolumeLabel(*device, kLabelFolder);
  volume.Size = static_cast<qint64>(status.f_blocks * status.f_frsize);
  volume.Free = static_cast<qint64>(status.f_bavail * status.f_frsize);
  return volume;
}

}  // namespace

QVector<TVolume> ListFixedVolumes() {
  QVector<TVolume> volumes;
  for (const TMount& mount : FixedMounts()) {
    if (const auto volume = DescribeVolume(mount)) volumes.append(*volume);
  }
  return volumes;
}

QVector<TOtherVolume> ListOtherVolumes() {
  QVector<TOtherVolume> volumes;
  for (const TMount& mount : ChooseOtherMounts(ReadMountTable(), IsOnRemovableDevice))
    volumes.append({IncludeTrailingPathDelimiter(NameFromBytes(mount.Point)),
                    IsNetworkMount(mount) ? TVolumeKind::Network : TVolumeKind::Removable});
  return volumes;
}

QString VolumeRootOf(const QString& path) {
  const auto place = IsAbsolutePath(path) ? NearestPlace(NameToBytes(path)) : std::nullopt;
  if (!place) return {};
  for (const TMount& mount : ReadMountTable()) {
    const bool holds = place->MountId != 0 ? static_cast<quint64>(mount.Id) == place->MountId
                                           : mount.Device == place->Device;
    if (holds) return IncludeTrailingPathDelimiter(NameFromBytes(mount.Point));
  }
  return {};
}
