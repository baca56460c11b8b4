// Makes small NTFS images in memory, record by record, so that a test can write what no tool would.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "volindex/readers/ntfs/FileRecord.h"

namespace volindex::ntfs {

using TImage = std::vector<std::byte>;

template <class T>
void Store(TImage& bytes, std::size_t offset, T value) {
  if (bytes.size() < offset + sizeof value) bytes.resize(offset + sizeof value);
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

[[nodiscard]] inline std::uint64_t Reference(std::uint64_t record, std::uint16_t sequence) {
  return record | std::uint64_t{sequence} << 48;
}

[[nodiscard]] TImage BytesOf(std::u16string_view text);

enum class TNameSpace : std::uint8_t { Posix, Windows, Dos, WindowsAndDos };

// The packed list of runs given as {length, cluster} pairs; cluster -1 is a hole.
[[nodiscard]] TImage PackRuns(const std::vector<std::pair<std::int64_t, std::int64_t>>& runs);

// One file record. A record in use by default, folder or file.
class TRecordMaker {
 public:
  explicit TRecordMaker(bool folder = false, std::uint16_t sequence = 1);
  // Of another mark than that of a file.
  explicit TRecordMaker(const char* mark) : TRecordMaker() { std::memcpy(FHeader.data(), mark, 4); }

  TRecordMaker& Base(std::uint64_t reference);
  TRecordMaker& Deleted();
  TRecordMaker& Resident(TAttributeType type, const TImage& value, std::u16string_view name = {});
  TRecordMaker& NonResident(TAttributeType type, const TImage& runs, std::uint64_t dataSize,
                            std::uint64_t lowestVcn = 0, std::uint64_t initialized = ~std::uint64_t{0});
  TRecordMaker& Name(std::uint64_t parent, std::u16string_view name, TNameSpace space = TNameSpace::Windows);
  TRecordMaker& Data(std::size_t length, std::u16string_view name = {});
  TRecordMaker& Information(std::uint32_t fileAttributes);

  // The record in that many bytes with its fixups in place.
  [[nodiscard]] TImage Make(std::size_t recordSize) const;

 private:
  void Append(TAttributeType type, TImage attribute, std::u16string_view name);

  TImage FHeader;
  TImage FAttributes;
};

// The lines of an attribute list.
struct TListLine {
  TAttributeType Type;
  std::uint64_t LowestVcn;
  std::uint64_t Holder;
  bool Named = false;
};
[[nodiscard]] TImage MakeList(const std::vector<TListLine>& lines);

// A volume: boot sector, table of file records, and whatever is put into its clusters.
class TVolumeMaker {
 public:
  // Record 0 and the root (record 5, sequence 5) are there from the start.
  explicit TVolumeMaker(std::uint32_t clusterSize = 4096, std::uint32_t recordSize = 1024,
                        std::uint64_t clusters = 64);

  TVolumeMaker& Put(std::uint64_t record, const TRecordMaker& maker);
  // The clusters of the table, as {length, cluster}; unset: the 32 from cluster 4 on.
  TVolumeMaker& TableRuns(std::vector<std::pair<std::int64_t, std::int64_t>> runs);
  TVolumeMaker& PutBytes(std::uint64_t cluster, const TImage& bytes);
  // Keeps record 0 as it was put.
  TVolumeMaker& OwnTableRecord(const TRecordMaker& maker);

  // Where a record lies in the image.
  [[nodiscard]] std::size_t OffsetOf(std::uint64_t record) const { return Locate(record * FRecordSize); }
  [[nodiscard]] TImage Make() const;

 private:
  [[nodiscard]] TImage BootSector() const;
  [[nodiscard]] std::size_t Locate(std::uint64_t offset) const;
  [[nodiscard]] std::uint64_t TableBytes() const;

  std::uint32_t FClusterSize;
  std::uint32_t FRecordSize;
  std::uint64_t FClusters;
  std::vector<std::pair<std::int64_t, std::int64_t>> FTable;
  std::map<std::uint64_t, TRecordMaker> FRecords;
  std::map<std::uint64_t, TImage> FBytes;
  bool FOwnTableRecord = false;
};

// A small volume with something of everything: five files, one folder.
[[nodiscard]] TVolumeMaker MixedVolume();

inline constexpr std::uint64_t kRoot = 5 | std::uint64_t{5} << 48;

}  // namespace volindex::ntfs
