// The boot sector of an NTFS volume: where its master file table begins and how large its units are.
#pragma once

#include <optional>

#include "volindex/readers/DiskBytes.h"

namespace volindex::ntfs {

inline constexpr std::size_t kBootSectorSize = 512;

struct TGeometry {
  std::uint32_t ClusterSize = 0;   // bytes, a power of two, 512 to 2 MiB
  std::uint32_t RecordSize = 0;    // bytes of a file record, a power of two, 1 to 64 KiB
  std::uint64_t ClusterCount = 0;  // clusters of the volume that lie on the device
  std::uint64_t MftCluster = 0;    // the first cluster of the master file table
};

// Nothing if the sector is not that of an NTFS volume or a number in it can't be true on a device of
// deviceSize bytes.
[[nodiscard]] std::optional<TGeometry> ParseBootSector(TBytes sector, std::uint64_t deviceSize);

}  // namespace volindex::ntfs
