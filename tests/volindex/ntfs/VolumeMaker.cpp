#include "VolumeMaker.h"

#include <algorithm>
#include <string>

namespace volindex::ntfs {

TImage BytesOf(std::u16string_view text) {
  const TBytes bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

namespace {

constexpr std::size_t kAttributesBegin = 0x98;  // leaves room for the fixups of a 32 KiB record

void Add(TImage& bytes, const TImage& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

void Align(TImage& bytes) {
  bytes.resize((bytes.size() + 7) / 8 * 8);
}

}  // namespace

TImage PackRuns(const std::vector<std::pair<std::int64_t, std::int64_t>>& runs) {
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

TRecordMaker::TRecordMaker(bool folder, std::uint16_t sequence) : FHeader(kAttributesBegin) {
  std::memcpy(FHeader.data(), "FILE", 4);
  Store<std::uint16_t>(FHeader, 0x04, 0x30);
  Store<std::uint16_t>(FHeader, 0x10, sequence);
  Store<std::uint16_t>(FHeader, 0x14, kAttributesBegin);
  Store<std::uint16_t>(FHeader, 0x16, folder ? 3 : 1);
}

TRecordMaker& TRecordMaker::Base(std::uint64_t reference) {
  Store(FHeader, 0x20, reference);
  return *this;
}

TRecordMaker& TRecordMaker::Deleted() {
  Store<std::uint16_t>(FHeader, 0x16, static_cast<std::uint16_t>(Load<std::uint16_t>(FHeader, 0x16) & 2));
  return *this;
}

void TRecordMaker::Append(TAttributeType type, TImage attribute, std::u16string_view name) {
  Store(attribute, 0x00, type);
  Store(attribute, 0x09, static_cast<std::uint8_t>(name.size()));
  Store(attribute, 0x0A, static_cast<std::uint16_t>(attribute.size()));
  Add(attribute, BytesOf(name));
  Align(attribute);
  Store(attribute, 0x04, static_cast<std::uint32_t>(attribute.size()));
  Add(FAttributes, attribute);
}

TRecordMaker& TRecordMaker::Resident(TAttributeType type, const TImage& value, std::u16string_view name) {
  TImage attribute(0x18);
  Store(attribute, 0x10, static_cast<std::uint32_t>(value.size()));
  Store<std::uint16_t>(attribute, 0x14, 0x18);
  Add(attribute, value);
  Align(attribute);
  Append(type, attribute, name);
  return *this;
}

TRecordMaker& TRecordMaker::NonResident(TAttributeType type, const TImage& runs, std::uint64_t dataSize,
                                        std::uint64_t lowestVcn, std::uint64_t initialized) {
  TImage attribute(0x40);
  Store<std::uint8_t>(attribute, 0x08, 1);
  Store(attribute, 0x10, lowestVcn);
  Store<std::uint16_t>(attribute, 0x20, 0x40);
  Store(attribute, 0x30, dataSize);
  Store(attribute, 0x38, std::min(initialized, dataSize));
  Add(attribute, runs);
  Append(type, attribute, {});
  return *this;
}

TRecordMaker& TRecordMaker::Name(std::uint64_t parent, std::u16string_view name, TNameSpace space) {
  TImage value(0x42);
  Store(value, 0x00, parent);
  Store(value, 0x40, static_cast<std::uint8_t>(name.size()));
  Store(value, 0x41, space);
  Add(value, BytesOf(name));
  return Resident(TAttributeType::FileName, value);
}

TRecordMaker& TRecordMaker::Data(std::size_t length, std::u16string_view name) {
  return Resident(TAttributeType::Data, TImage(length, std::byte{0x5A}), name);
}

TRecordMaker& TRecordMaker::Information(std::uint32_t fileAttributes) {
  TImage value(0x30);
  Store(value, 0x20, fileAttributes);
  return Resident(TAttributeType::StandardInformation, value);
}

TImage TRecordMaker::Make(std::size_t recordSize) const {
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

TImage MakeList(const std::vector<TListLine>& lines) {
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

TVolumeMaker::TVolumeMaker(std::uint32_t clusterSize, std::uint32_t recordSize, std::uint64_t clusters)
    : FClusterSize(clusterSize), FRecordSize(recordSize), FClusters(clusters), FTable{{32, 4}} {
  Put(kRoot & 0xFFFF, TRecordMaker(true, 5).Name(kRoot, u"."));
}

TVolumeMaker& TVolumeMaker::Put(std::uint64_t record, const TRecordMaker& maker) {
  FRecords.insert_or_assign(record, maker);
  return *this;
}

TVolumeMaker& TVolumeMaker::TableRuns(std::vector<std::pair<std::int64_t, std::int64_t>> runs) {
  FTable = std::move(runs);
  return *this;
}

TVolumeMaker& TVolumeMaker::PutBytes(std::uint64_t cluster, const TImage& bytes) {
  FBytes[cluster] = bytes;
  return *this;
}

TVolumeMaker& TVolumeMaker::OwnTableRecord(const TRecordMaker& maker) {
  FOwnTableRecord = true;
  return Put(0, maker);
}

std::uint64_t TVolumeMaker::TableBytes() const {
  std::uint64_t clusters = 0;
  for (const auto& [length, cluster] : FTable)
    clusters += static_cast<std::uint64_t>(length);
  return clusters * FClusterSize;
}

std::size_t TVolumeMaker::Locate(std::uint64_t offset) const {
  for (const auto& [length, cluster] : FTable) {
    const std::uint64_t bytes = static_cast<std::uint64_t>(length) * FClusterSize;
    if (offset < bytes)
      return static_cast<std::size_t>(static_cast<std::uint64_t>(cluster) * FClusterSize + offset);
    offset -= bytes;
  }
  return 0;
}

TImage TVolumeMaker::BootSector() const {
  TImage sector(512);
  std::memcpy(sector.data() + 3, "NTFS    ", 8);
  Store<std::uint16_t>(sector, 0x0B, 512);
  Store(sector, 0x0D, static_cast<std::uint8_t>(FClusterSize / 512));
  Store(sector, 0x28, FClusters * FClusterSize / 512);
  Store(sector, 0x30, static_cast<std::uint64_t>(FTable.front().second));
  Store(sector, 0x40, static_cast<std::int8_t>(-std::countr_zero(FRecordSize)));
  return sector;
}

TImage TVolumeMaker::Make() const {
  TImage image(static_cast<std::size_t>(FClusters * FClusterSize));
  const auto put = [&image](std::size_t offset, const TImage& bytes) {
    std::copy(bytes.begin(), bytes.end(), image.begin() + static_cast<std::ptrdiff_t>(offset));
  };
  put(0, BootSector());
  if (!FOwnTableRecord)
    put(OffsetOf(0),
        TRecordMaker().NonResident(TAttributeType::Data, PackRuns(FTable), TableBytes()).Make(FRecordSize));
  for (const auto& [cluster, bytes] : FBytes)
    put(static_cast<std::size_t>(cluster * FClusterSize), bytes);
  for (const auto& [record, maker] : FRecords) {
    const TImage bytes = maker.Make(FRecordSize);
    for (std::size_t part = 0; part < FRecordSize; part += 512) {
      const std::size_t to = Locate(record * FRecordSize + part);
      std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(part), 512,
                  image.begin() + static_cast<std::ptrdiff_t>(to));
    }
  }
  return image;
}

TVolumeMaker MixedVolume() {
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

}  // namespace volindex::ntfs
