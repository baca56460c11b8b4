// Run lists: where on the volume the clusters of an attribute lie.
//
// A packed list is a row of runs, ended by a byte of 0:
//
//   1 byte       its lower four bits: bytes of the length; its upper four: bytes of the delta, 0 for a hole
//   length       of the run, in clusters
//   delta        signed: from the first cluster of the last run that was no hole to that of this one
#pragma once

#include <vector>

#include "volindex/readers/DiskBytes.h"

namespace volindex::ntfs {

struct TRun {
  std::uint64_t Vcn = 0;      // the first cluster within the attribute
  std::uint64_t Cluster = 0;  // the first cluster on the volume; kHole if none is stored
  std::uint64_t Length = 0;   // clusters, never 0

  static constexpr std::uint64_t kHole = ~std::uint64_t{0};
};

// Decodes the packed list of an attribute extent that begins at firstVcn and appends it to the runs, joining
// neighbours. False, with runs left as they were, if the list is cut off, leaves the volume of clusterCount
// clusters, or maps more clusters than the volume has.
[[nodiscard]] bool AppendRuns(TBytes packed, std::uint64_t firstVcn, std::uint64_t clusterCount,
                              std::vector<TRun>& runs);

// The clusters that the runs map; they follow one another from 0 without a gap.
[[nodiscard]] inline std::uint64_t MappedClusters(const std::vector<TRun>& runs) {
  return runs.empty() ? 0 : runs.back().Vcn + runs.back().Length;
}

}  // namespace volindex::ntfs
