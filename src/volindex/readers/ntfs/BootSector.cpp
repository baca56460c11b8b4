#include "volindex/readers/ntfs/BootSector.h"

namespace volindex::ntfs {

namespace {

constexpr std::size_t kSystemName = 0x03;
constexpr std::size_t kBytesPerSector = 0x0B;
constexpr std::size_t kSectorsPerCluster = 0x0D;
constexpr std::size_t kTotalSectors = 0x28;
constexpr std::size_t kMftCluster = 0x30;
constexpr std::size_t kClustersPerRecord = 0x40;

// The largest units that are taken. What is larger is refused here, so that no buffer of a record or product
// with a cluster has to be doubted later.
constexpr std::uint32_t kMaxClusterSize = 2u << 20;
constexpr std::uint32_t kMaxRecordSize = 64u << 10;

// The byte counts sectors, or from 0x80 up is the negative power of two.
std::uint64_t SectorsPerCluster(std::uint8_t stored) {
  if (stored <= 0x80) return stored;
  const unsigned power = 0x100u - stored;
  return power < 32 ? std::uint64_t{1} << power : 0;
}

// The byte counts clusters, or if negative is the negative power of two of the bytes.
std::uint64_t RecordSize(std::int8_t stored, std::uint64_t clusterSize) {
  if (stored > 0) return static_cast<std::uint64_t>(stored) * clusterSize;
  return stored > -32 ? std::uint64_t{1} << -stored : 0;
}

bool IsPowerWithin(std::uint64_t value, std::uint64_t least, std::uint64_t most) {
  return std::has_single_bit(value) && value >= least && value <= most;
}

}  // namespace

std::optional<TGeometry> ParseBootSector(TBytes sector, std::uint64_t deviceSize) {
  if (sector.size() < kBootSectorSize) return std::nullopt;
  if (std::memcmp(sector.data() + kSystemName, "NTFS    ", 8) != 0) return std::nullopt;
  const std::uint64_t sectorSize = Load<std::uint16_t>(sector, kBytesPerSector);
  if (!IsPowerWithin(sectorSize, 256, 4096)) return std::nullopt;
  const std::uint64_t clusterSize =
      sectorSize * SectorsPerCluster(Load<std::uint8_t>(sector, kSectorsPerCluster));
  if (!IsPowerWithin(clusterSize, 512, kMaxClusterSize)) return std::nullopt;
  const std::uint64_t recordSize = RecordSize(Load<std::int8_t>(sector, kClustersPerRecord), clusterSize);
  if (!IsPowerWithin(recordSize, 1024, kMaxRecordSize)) return std::nullopt;
  // In units of its own sectors, which need not be the device's. The sector behind the last one holds a copy
  // of this one and is not counted.
  const std::uint64_t sectors = Load<std::uint64_t>(sector, kTotalSectors);
  if (sectors == 0 || sectors > deviceSize / sectorSize) return std::nullopt;
  const std::uint64_t clusters = sectors * sectorSize / clusterSize;
  const std::uint64_t mftCluster = Load<std::uint64_t>(sector, kMftCluster);
  if (mftCluster == 0 || mftCluster >= clusters) return std::nullopt;
  return TGeometry{static_cast<std::uint32_t>(clusterSize), static_cast<std::uint32_t>(recordSize), clusters,
                   mftCluster};
}

}  // namespace volindex::ntfs
