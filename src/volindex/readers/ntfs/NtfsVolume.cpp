#include "volindex/readers/ntfs/NtfsVolume.h"

#include <algorithm>
#include <limits>

namespace volindex::ntfs {

namespace {

// More pieces than the longest list of extents can name on a volume of today's drivers.
constexpr std::size_t kMaxTableRuns = 1u << 20;

std::optional<TGeometry> ReadBootSector(const TByteSource& source) {
  std::vector<std::byte> sector(kBootSectorSize);
  if (source.Size() < sector.size() || !source.ReadAt(0, sector)) return std::nullopt;
  return ParseBootSector(sector, source.Size());
}

// The run that holds the cluster; the runs follow one another from 0 and hold it.
std::vector<TRun>::const_iterator RunOf(const std::vector<TRun>& runs, std::uint64_t vcn) {
  return std::upper_bound(runs.begin(), runs.end(), vcn,
                          [](std::uint64_t value, const TRun& run) { return value < run.Vcn; }) -
         1;
}

std::vector<TListEntry> DataExtents(TBytes list, bool& broken) {
  std::vector<TListEntry> extents;
  while (const auto entry = TakeListEntry(list, broken))
    if (entry->Type == TAttributeType::Data && !entry->Named) extents.push_back(*entry);
  std::sort(extents.begin(), extents.end(),
            [](const TListEntry& a, const TListEntry& b) { return a.LowestVcn < b.LowestVcn; });
  return extents;
}

}  // namespace

bool TNtfsVolume::IsThere(const TByteSource& source) {
  return ReadBootSector(source).has_value();
}

std::optional<TNtfsVolume> TNtfsVolume::Open(const TByteSource& source, const std::atomic<bool>& stop) {
  const auto geometry = ReadBootSector(source);
  if (!geometry) return std::nullopt;
  TNtfsVolume volume(source, *geometry);
  if (!volume.MapTable(stop)) return std::nullopt;
  return volume;
}

bool TNtfsVolume::ReadRecords(std::uint64_t first, std::span<std::byte> records) const {
  return ReadMapped(FTable, first * FGeometry.RecordSize, records);
}

bool TNtfsVolume::ReadMapped(const std::vector<TRun>& runs, std::uint64_t offset,
                             std::span<std::byte> bytes) const {
  const std::uint64_t clusterSize = FGeometry.ClusterSize;
  if (!Fits(offset, bytes.size(), MappedClusters(runs) * clusterSize)) return false;
  while (!bytes.empty()) {
    const TRun& run = *RunOf(runs, offset / clusterSize);
    if (run.Cluster == TRun::kHole) return false;
    const std::uint64_t within = offset - run.Vcn * clusterSize;
    const auto length =
        static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), run.Length * clusterSize - within));
    if (!FSource->ReadAt(run.Cluster * clusterSize + within, bytes.first(length))) return false;
    bytes = bytes.subspan(length);
    offset += length;
  }
  return true;
}

std::optional<std::vector<std::byte>> TNtfsVolume::ReadValue(const TAttribute& attribute,
                                                             std::size_t limit) const {
  // The limit comes before any allocation: the length is the volume's word alone. What was never written
  // reads as zeros, which no value that is asked for here consists of.
  if (attribute.DataSize() > limit || attribute.InitializedSize() < attribute.DataSize()) return std::nullopt;
  const TBytes resident = attribute.Value();
  std::vector<std::byte> value(resident.begin(), resident.end());
  if (attribute.Resident()) return value;
  value.resize(static_cast<std::size_t>(attribute.DataSize()));
  std::vector<TRun> runs;
  if (attribute.LowestVcn() != 0) return std::nullopt;
  if (!AppendRuns(attribute.PackedRuns(), 0, FGeometry.ClusterCount, runs)) return std::nullopt;
  if (!ReadMapped(runs, 0, value)) return std::nullopt;
  return value;
}

bool TNtfsVolume::MapTable(const std::atomic<bool>& stop) {
  const std::uint64_t begin = FGeometry.MftCluster * FGeometry.ClusterSize;
  std::vector<std::byte> record(FGeometry.RecordSize);
  if (!Fits(begin, record.size(), FSource->Size()) || !FSource->ReadAt(begin, record)) return false;
  std::vector<std::byte> list;
  if (!ApplyFixups(record) || !MapFirstExtent(record, list) || !MapFurtherExtents(list, stop)) return false;
  // The table's first extent must begin where the boot sector has said, or record 0 told of another table. A
  // hole in it would be records that nobody has written.
  if (FTable.front().Cluster != FGeometry.MftCluster) return false;
  if (std::any_of(FTable.begin(), FTable.end(), [](const TRun& run) { return run.Cluster == TRun::kHole; }))
    return false;
  return FRecordCount <= MappedClusters(FTable) * FGeometry.ClusterSize / FGeometry.RecordSize &&
         FRecordCount < std::numeric_limits<std::uint32_t>::max();
}

// Record 0: the beginning of the table, its length, and the list of its further extents if it has one.
bool TNtfsVolume::MapFirstExtent(TBytes record, std::vector<std::byte>& list) {
  TRecordHeader header;
  if (!ParseRecordHeader(record, header) || !header.InUse || !header.IsBase()) return false;
  TAttributeWalk walk(record, header);
  for (TAttribute attribute; walk.Next(attribute);) {
    if (attribute.Type() == TAttributeType::AttributeList) {
      auto value = ReadValue(attribute, kMaxAttributeList);
      if (!value || !list.empty()) return false;
      list = std::move(*value);
    }
    if (attribute.Type() != TAttributeType::Data || attribute.Named() || !attribute.IsFirstExtent()) continue;
    if (attribute.Resident() || !AppendRuns(attribute.PackedRuns(), 0, FGeometry.ClusterCount, FTable))
      return false;
    FRecordCount = std::min(attribute.DataSize(), attribute.InitializedSize()) / FGeometry.RecordSize;
  }
  return !walk.Broken() && !FTable.empty();
}

bool TNtfsVolume::MapFurtherExtents(TBytes list, const std::atomic<bool>& stop) {
  bool broken = false;
  const auto extents = DataExtents(list, broken);
  return !broken && std::all_of(extents.begin(), extents.end(), [&](const TListEntry& entry) {
    return entry.LowestVcn == 0 || (!stop && FTable.size() <= kMaxTableRuns && MapExtent(entry));
  });
}

// The record that holds an extent lies in the part of the table that the extents before it map.
bool TNtfsVolume::MapExtent(const TListEntry& entry) {
  std::vector<std::byte> record(FGeometry.RecordSize);
  const std::uint64_t mapped = MappedClusters(FTable) * FGeometry.ClusterSize / FGeometry.RecordSize;
  if (entry.Holder.Record() >= mapped || !ReadRecords(entry.Holder.Record(), record)) return false;
  if (!ApplyFixups(record)) return false;
  TRecordHeader header;
  if (!ParseRecordHeader(record, header) || !header.InUse || header.Sequence != entry.Holder.Sequence() ||
      header.Base.Record() != 0)
    return false;
  TAttributeWalk walk(record, header);
  for (TAttribute attribute; walk.Next(attribute);)
    if (attribute.Type() == TAttributeType::Data && !attribute.Named() && !attribute.Resident() &&
        attribute.LowestVcn() == entry.LowestVcn)
      return AppendRuns(attribute.PackedRuns(), entry.LowestVcn, FGeometry.ClusterCount, FTable);
  return false;
}

}  // namespace volindex::ntfs
