// Makes small NTFS images in memory, record by record, so that a test can write what no tool would, and reads
// them.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "volindex/IndexAnswer.h"
#include "volindex/MemorySource.h"
#include "volindex/readers/ntfs/FileRecord.h"
#include "volindex/readers/ntfs/NtfsReader.h"

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

// Behind what is there; the second up to a multiple of eight.
inline void Add(TImage& bytes, const TImage& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}
inline void AddAligned(TImage& bytes, const TImage& more) {
  Add(bytes, more);
  bytes.resize((bytes.size() + 7) / 8 * 8);
}

[[nodiscard]] inline TImage BytesOf(std::u16string_view text) {
  const TBytes bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

inline constexpr std::uint64_t kRoot = 5 | std::uint64_t{5} << 48;
inline constexpr std::size_t kAttributesBegin = 0x98;  // leaves room for the fixups of a 32 KiB record

enum class TNameSpace : std::uint8_t { Posix, Windows, Dos, WindowsAndDos };

// The packed list of runs given as {length, cluster} pairs; cluster -1 is a hole.
[[nodiscard]] inline TImage PackRuns(const std::vector<std::pair<std::int64_t, std::int64_t>>& runs) {
  TImage packed;
  std::int64_t last = 0;
  for (const auto& [length, cluster] : runs) {
    const bool hole = cluster < 0;
    packed.push_back(hole ? std::byte{0x08} : std::byte{0x88});
    Store(packed, packed.size(), length);
    if (hole) continue;
    Store(packed, packed.size(), cluster - last);
    last = cluster;
  }
  packed.push_back(std::byte{0});
  return packed;
}

// One file record. A record in use by default, folder or file.
class TRecordMaker {
 public:
  explicit TRecordMaker(bool folder = false, std::uint16_t sequence = 1) : FHeader(kAttributesBegin) {
    std::memcpy(FHeader.data(), "FILE", 4);
    Store<std::uint16_t>(FHeader, 0x04, 0x30);
    Store<std::uint16_t>(FHeader, 0x10, sequence);
    Store<std::uint16_t>(FHeader, 0x14, kAttributesBegin);
    Store<std::uint16_t>(FHeader, 0x16, folder ? 3 : 1);
  }
  // Of another mark than that of a file.
  explicit TRecordMaker(const char* mark) : TRecordMaker() { std::memcpy(FHeader.data(), mark, 4); }

  TRecordMaker& Base(std::uint64_t reference) {
    Store(FHeader, 0x20, reference);
    return *this;
  }
  TRecordMaker& Deleted() {
    Store<std::uint16_t>(FHeader, 0x16, static_cast<std::uint16_t>(Load<std::uint16_t>(FHeader, 0x16) & 2));
    return *this;
  }
  TRecordMaker& Resident(TAttributeType type, const TImage& value, std::u16string_view name = {}) {
    TImage attribute(0x18);
    Store(attribute, 0x10, static_cast<std::uint32_t>(value.size()));
    Store<std::uint16_t>(attribute, 0x14, 0x18);
    AddAligned(attribute, value);
    return Append(type, attribute, name);
  }
  TRecordMaker& NonResident(TAttributeType type, const TImage& runs, std::uint64_t dataSize,
                            std::uint64_t lowestVcn = 0, std::uint64_t initialized = ~std::uint64_t{0}) {
    TImage attribute(0x40);
    Store<std::uint8_t>(attribute, 0x08, 1);
    Store(attribute, 0x10, lowestVcn);
    Store<std::uint16_t>(attribute, 0x20, 0x40);
    Store(attribute, 0x30, dataSize);
    Store(attribute, 0x38, std::min(initialized, dataSize));
    Add(attribute, runs);
    return Append(type, attribute, {});
  }
  TRecordMaker& Name(std::uint64_t parent, std::u16string_view name, TNameSpace space = TNameSpace::Windows) {
    TImage value(0x42);
    Store(value, 0x00, parent);
    Store(value, 0x40, static_cast<std::uint8_t>(name.size()));
    Store(value, 0x41, space);
    Add(value, BytesOf(name));
    return Resident(TAttributeType::FileName, value);
  }
  TRecordMaker& Data(std::size_t length, std::u16string_view name = {}) {
    return Resident(TAttributeType::Data, TImage(length, std::byte{0x5A}), name);
  }
  TRecordMaker& Information(std::uint32_t fileAttributes) {
    TImage value(0x30);
    Store(value, 0x20, fileAttributes);
    return Resident(TAttributeType::StandardInformation, value);
  }

  // The record in that many bytes with its fixups in place.
  [[nodiscard]] TImage Make(std::size_t recordSize) const {
    TImage record = FHeader;
    Add(record, FAttributes);
    Store<std::uint64_t>(record, record.size(), 0xFFFF'FFFF);
    Store(record, 0x18, static_cast<std::uint32_t>(record.size()));
    record.resize(recordSize);
    const std::size_t strides = recordSize / 512;
    Store(record, 0x06, static_cast<std::uint16_t>(strides + 1));
    Store<std::uint16_t>(record, 0x30, 0x4711);
    for (std::size_t stride = 1; stride <= strides; ++stride) {
      Store(record, 0x30 + 2 * stride, Load<std::uint16_t>(record, stride * 512 - 2));
      Store<std::uint16_t>(record, stride * 512 - 2, 0x4711);
    }
    return record;
  }

 private:
  TRecordMaker& Append(TAttributeType type, TImage attribute, std::u16string_view name) {
    Store(attribute, 0x00, type);
    Store(attribute, 0x09, static_cast<std::uint8_t>(name.size()));
    Store(attribute, 0x0A, static_cast<std::uint16_t>(attribute.size()));
    AddAligned(attribute, BytesOf(name));
    Store(attribute, 0x04, static_cast<std::uint32_t>(attribute.size()));
    Add(FAttributes, attribute);
    return *this;
  }

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
[[nodiscard]] inline TImage MakeList(const std::vector<TListLine>& lines) {
  TImage list;
  for (const TListLine& line : lines) {
    TImage entry(0x20);
    Store(entry, 0x00, line.Type);
    Store<std::uint16_t>(entry, 0x04, 0x20);
    Store<std::uint8_t>(entry, 0x06, line.Named ? 1 : 0);
    Store(entry, 0x08, line.LowestVcn);
    Store(entry, 0x10, line.Holder);
    Add(list, entry);
  }
  return list;
}

// A volume: boot sector, table of file records, and whatever is put into its clusters.
class TVolumeMaker {
 public:
  // Record 0 and the root (record 5, sequence 5) are there from the start.
  explicit TVolumeMaker(std::uint32_t clusterSize = 4096, std::uint32_t recordSize = 1024,
                        std::uint64_t clusters = 64)
      : FClusterSize(clusterSize), FRecordSize(recordSize), FClusters(clusters), FTable{{32, 4}} {
    Put(kRoot & 0xFFFF, TRecordMaker(true, 5).Name(kRoot, u"."));
  }

  TVolumeMaker& Put(std::uint64_t record, const TRecordMaker& maker) {
    FRecords.insert_or_assign(record, maker);
    return *this;
  }
  // The clusters of the table, as {length, cluster}; unset: the 32 from cluster 4 on.
  TVolumeMaker& TableRuns(std::vector<std::pair<std::int64_t, std::int64_t>> runs) {
    FTable = std::move(runs);
    return *this;
  }
  TVolumeMaker& PutBytes(std::uint64_t cluster, const TImage& bytes) {
    FBytes[cluster] = bytes;
    return *this;
  }
  // Keeps record 0 as it was put.
  TVolumeMaker& OwnTableRecord(const TRecordMaker& maker) {
    FOwnTableRecord = true;
    return Put(0, maker);
  }

  // Where a record lies in the image.
  [[nodiscard]] std::size_t OffsetOf(std::uint64_t record) const { return Locate(record * FRecordSize); }
  [[nodiscard]] TImage Make() const {
    TImage image(static_cast<std::size_t>(FClusters * FClusterSize));
    const auto put = [&image](std::size_t offset, const TImage& bytes) {
      std::copy(bytes.begin(), bytes.end(), image.begin() + static_cast<std::ptrdiff_t>(offset));
    };
    put(0, BootSector());
    std::int64_t clusters = 0;
    for (const auto& [length, cluster] : FTable)
      clusters += length;
    if (!FOwnTableRecord)
      put(OffsetOf(0), TRecordMaker()
                           .NonResident(TAttributeType::Data, PackRuns(FTable),
                                        static_cast<std::uint64_t>(clusters) * FClusterSize)
                           .Make(FRecordSize));
    for (const auto& [cluster, bytes] : FBytes)
      put(static_cast<std::size_t>(cluster * FClusterSize), bytes);
    for (const auto& [record, maker] : FRecords) {
      const TImage bytes = maker.Make(FRecordSize);
      for (std::size_t part = 0; part < FRecordSize; part += 512)
        put(Locate(record * FRecordSize + part), {bytes.begin() + static_cast<std::ptrdiff_t>(part),
                                                  bytes.begin() + static_cast<std::ptrdiff_t>(part) + 512});
    }
    return image;
  }

 private:
  [[nodiscard]] TImage BootSector() const {
    TImage sector(512);
    std::memcpy(sector.data() + 3, "NTFS    ", 8);
    Store<std::uint16_t>(sector, 0x0B, 512);
    Store(sector, 0x0D, static_cast<std::uint8_t>(FClusterSize / 512));
    Store(sector, 0x28, FClusters * FClusterSize / 512);
    Store(sector, 0x30, static_cast<std::uint64_t>(FTable.front().second));
    Store(sector, 0x40, static_cast<std::int8_t>(-std::countr_zero(FRecordSize)));
    return sector;
  }
  [[nodiscard]] std::size_t Locate(std::uint64_t offset) const {
    for (const auto& [length, cluster] : FTable) {
      const std::uint64_t bytes = static_cast<std::uint64_t>(length) * FClusterSize;
      if (offset < bytes) return static_cast<std::uint64_t>(cluster) * FClusterSize + offset;
      offset -= bytes;
    }
    return 0;
  }

  std::uint32_t FClusterSize;
  std::uint32_t FRecordSize;
  std::uint64_t FClusters;
  std::vector<std::pair<std::int64_t, std::int64_t>> FTable;
  std::map<std::uint64_t, TRecordMaker> FRecords;
  std::map<std::uint64_t, TImage> FBytes;
  bool FOwnTableRecord = false;
};

// A small volume with something of everything: five files, one folder.
[[nodiscard]] inline TVolumeMaker MixedVolume() {
  using enum TAttributeType;
  const std::uint64_t base = Reference(30, 1);
  const TImage list = MakeList({{FileName, 0, Reference(31, 1)}, {Data, 0, Reference(31, 1)}});
  TImage link(30);
  Store(link, 0, 0xA000000Cu);
  Store<std::uint16_t>(link, 10, 8);
  TVolumeMaker maker(512, 1024, 256);
  maker.TableRuns({{40, 8}, {40, 100}});
  maker.OwnTableRecord(
      TRecordMaker()
          .Resident(AttributeList, MakeList({{Data, 0, Reference(0, 1)}, {Data, 40, Reference(15, 1)}}))
          .NonResident(Data, PackRuns({{40, 8}}), 40 * 1024));
  maker.Put(15, TRecordMaker().Base(Reference(0, 1)).NonResident(Data, PackRuns({{40, 100}}), 0, 40));
  maker.Put(24, TRecordMaker(true).Name(kRoot, u"folder"));
  maker.Put(25, TRecordMaker().Information(4).Name(Reference(24, 1), u"file").Data(50));
  maker.Put(26, TRecordMaker().Name(kRoot, u"one").Name(Reference(24, 1), u"two").Data(60, u"stream"));
  maker.Put(27, TRecordMaker().Name(kRoot, u"link").Resident(ReparsePoint, link));
  maker.Put(28,
            TRecordMaker().Name(kRoot, u"link outside").NonResident(ReparsePoint, PackRuns({{1, 200}}), 30));
  maker.Put(30, TRecordMaker().NonResident(AttributeList, PackRuns({{1, 201}}), list.size()));
  maker.Put(31,
            TRecordMaker().Base(base).Name(kRoot, u"spread").NonResident(Data, PackRuns({{3, 202}}), 1500));
  return maker.PutBytes(200, link).PutBytes(201, list);
}

// What the reader makes of a volume; nothing if it hands over.
[[nodiscard]] inline std::optional<TAnswer> ReadTree(const TByteSource& source, unsigned threads = 2,
                                                     TDriver driver = TDriver::Ntfs3g) {
  static const std::atomic<bool> kNoStop{false};
  TIndexBuilder builder;
  if (ReadNtfs(source, driver, builder, {kNoStop, {}}, threads) != TReadResult::Done) return std::nullopt;
  return AnswerOf(builder.TakeIndex());
}

[[nodiscard]] inline std::optional<TAnswer> ReadTree(std::span<const std::byte> image, unsigned threads = 2) {
  return ReadTree(TMemorySource(image), threads);
}

}  // namespace volindex::ntfs
