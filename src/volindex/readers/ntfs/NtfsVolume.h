// An NTFS volume opened for reading: the bytes of attributes, and the master file table read by its own runs.
//
// Opening goes from what is surely there to what it leads to: the boot sector tells where record 0 lies,
// record 0 how the table's first extent and its attribute list lie, and each further extent is read through
// those before it.
#pragma once

#include <atomic>
#include <optional>
#include <vector>

#include "volindex/readers/ByteSource.h"
#include "volindex/readers/ntfs/BootSector.h"
#include "volindex/readers/ntfs/FileRecord.h"
#include "volindex/readers/ntfs/RunList.h"

namespace volindex::ntfs {

// The longest attribute list that the format allows.
inline constexpr std::size_t kMaxAttributeList = 256u << 10;

// Any number of threads may read at the same time.
class TNtfsVolume {
 public:
  // Whether the boot sector is that of an NTFS volume.
  [[nodiscard]] static bool IsThere(const TByteSource& source);

  // Reads the boot sector and maps the whole master file table, its attribute list in record 0 included.
  // Nothing if any of it does not hold together, the table lies in far too many pieces, or the stop flag was
  // seen. The source must outlive the volume.
  [[nodiscard]] static std::optional<TNtfsVolume> Open(const TByteSource& source,
                                                       const std::atomic<bool>& stop);

  [[nodiscard]] std::uint32_t RecordSize() const { return FGeometry.RecordSize; }

  // Records that were ever written, in use or not.
  [[nodiscard]] std::uint64_t RecordCount() const { return FRecordCount; }

  // Fills the bytes with the records from first on, just as they stand on the volume (fixups not applied).
  // The bytes must be a whole number of records that exist. False if the device can't be read.
  [[nodiscard]] bool ReadRecords(std::uint64_t first, std::span<std::byte> records) const;

  // The whole value of an attribute whose only extent this is; nothing if it is longer than limit bytes, lies
  // in a hole, leaves the volume or can't be read.
  [[nodiscard]] std::optional<std::vector<std::byte>> ReadValue(const TAttribute& attribute,
                                                                std::size_t limit) const;

 private:
  TNtfsVolume(const TByteSource& source, const TGeometry& geometry) : FSource(&source), FGeometry(geometry) {}

  [[nodiscard]] bool ReadMapped(const std::vector<TRun>& runs, std::uint64_t offset,
                                std::span<std::byte> bytes) const;
  [[nodiscard]] bool MapTable(const std::atomic<bool>& stop);
  [[nodiscard]] bool MapFirstExtent(TBytes record, std::vector<std::byte>& list);
  [[nodiscard]] bool MapFurtherExtents(TBytes list, const std::atomic<bool>& stop);
  [[nodiscard]] bool MapExtent(const TListEntry& entry);

  const TByteSource* FSource;
  TGeometry FGeometry;
  std::vector<TRun> FTable;
  std::uint64_t FRecordCount = 0;
};

}  // namespace volindex::ntfs
