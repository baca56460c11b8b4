#include "volindex/readers/ntfs/RunList.h"

#include <optional>

namespace volindex::ntfs {

namespace {

// A number of 1 to 8 bytes, the highest of them giving the sign.
std::int64_t LoadSigned(TBytes bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = bytes.size(); i-- > 0;)
    value = value << 8 | static_cast<std::uint64_t>(bytes[i]);
  const auto unused = static_cast<unsigned>(64 - 8 * bytes.size());
  return static_cast<std::int64_t>(value << unused) >> unused;
}

struct TPackedRun {
  std::int64_t Length = 0;
  std::optional<std::int64_t> Delta;  // nothing for a hole
};

// Takes one run off the front of the bytes; nothing if it is cut off or has impossible widths.
std::optional<TPackedRun> TakeRun(TBytes& packed) {
  const auto header = static_cast<unsigned>(packed[0]);
  const std::size_t lengthWidth = header & 0x0F;
  const std::size_t deltaWidth = header >> 4;
  if (lengthWidth < 1 || lengthWidth > 8 || deltaWidth > 8) return std::nullopt;
  if (packed.size() < 1 + lengthWidth + deltaWidth) return std::nullopt;
  TPackedRun run{LoadSigned(packed.subspan(1, lengthWidth)), std::nullopt};
  if (deltaWidth > 0) run.Delta = LoadSigned(packed.subspan(1 + lengthWidth, deltaWidth));
  packed = packed.subspan(1 + lengthWidth + deltaWidth);
  return run;
}

void AppendRun(const TRun& run, std::vector<TRun>& runs) {
  if (!runs.empty() && run.Cluster != TRun::kHole && runs.back().Cluster != TRun::kHole &&
      runs.back().Cluster + runs.back().Length == run.Cluster)
    runs.back().Length += run.Length;
  else
    runs.push_back(run);
}

bool AppendChecked(TBytes packed, std::uint64_t vcn, std::uint64_t clusterCount, std::vector<TRun>& runs) {
  std::uint64_t cluster = 0;
  while (!packed.empty() && packed[0] != std::byte{0}) {
    const auto run = TakeRun(packed);
    if (!run || run->Length <= 0) return false;
    const auto length = static_cast<std::uint64_t>(run->Length);
    // Holes cost nothing on the disk but are bounded like runs: else a list of a few bytes could map any
    // length.
    if (!Fits(vcn, length, clusterCount)) return false;
    // Wraps around for a delta that leads before the volume's beginning, and is then beyond its end.
    cluster += static_cast<std::uint64_t>(run->Delta.value_or(0));
    if (run->Delta && !Fits(cluster, length, clusterCount)) return false;
    AppendRun({vcn, run->Delta ? cluster : TRun::kHole, length}, runs);
    vcn += length;
  }
  return !packed.empty();
}

}  // namespace

bool AppendRuns(TBytes packed, std::uint64_t firstVcn, std::uint64_t clusterCount, std::vector<TRun>& runs) {
  if (firstVcn != MappedClusters(runs)) return false;
  const std::size_t oldCount = runs.size();
  const TRun oldLast = runs.empty() ? TRun{} : runs.back();
  if (AppendChecked(packed, firstVcn, clusterCount, runs)) return true;
  runs.resize(oldCount);
  if (oldCount > 0) runs.back() = oldLast;
  return false;
}

}  // namespace volindex::ntfs
