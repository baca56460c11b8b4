#include "volindex/readers/ntfs/FileRecord.h"

namespace volindex::ntfs {

namespace {

constexpr std::size_t kStride = 512;
constexpr std::size_t kHeaderSize = 0x2A;
constexpr std::size_t kResidentHeaderSize = 0x18;
constexpr std::size_t kNonResidentHeaderSize = 0x40;
constexpr std::size_t kHoledHeaderSize = 0x48;
constexpr std::uint16_t kCompressedOrSparse = 0x80FF;
constexpr std::size_t kListEntrySize = 0x1A;
constexpr std::uint16_t kInUse = 0x01;
constexpr std::uint16_t kFolder = 0x02;

bool IsOfInterest(TAttributeType type) {
  switch (type) {
    case TAttributeType::StandardInformation:
    case TAttributeType::AttributeList:
    case TAttributeType::FileName:
    case TAttributeType::Data:
    case TAttributeType::ReparsePoint:
      return true;
    default:
      return false;
  }
}

bool ParseResident(TBytes bytes, TAttribute& attribute) {
  const auto length = Load<std::uint32_t>(bytes, 0x10);
  const auto offset = Load<std::uint16_t>(bytes, 0x14);
  if (offset < kResidentHeaderSize || !Fits(offset, length, bytes.size())) return false;
  attribute.Value = bytes.subspan(offset, length);
  attribute.DataSize = attribute.InitializedSize = length;
  return true;
}

bool ParseNonResident(TBytes bytes, TAttribute& attribute) {
  if (bytes.size() < kNonResidentHeaderSize) return false;
  const auto offset = Load<std::uint16_t>(bytes, 0x20);
  if (offset < kNonResidentHeaderSize || offset >= bytes.size()) return false;
  attribute.PackedRuns = bytes.subspan(offset);
  attribute.LowestVcn = Load<std::uint64_t>(bytes, 0x10);
  attribute.DataSize = Load<std::uint64_t>(bytes, 0x30);
  attribute.InitializedSize = Load<std::uint64_t>(bytes, 0x38);
  // What has holes tells its clusters apart from those that it would have without any.
  const bool holed =
      (Load<std::uint16_t>(bytes, 0x0C) & kCompressedOrSparse) != 0 && offset >= kHoledHeaderSize;
  attribute.AllocatedSize = Load<std::uint64_t>(bytes, holed ? 0x40 : 0x28);
  return static_cast<std::int64_t>(attribute.DataSize) >= 0;
}

bool ParseAttribute(TBytes bytes, TAttribute& attribute) {
  const auto nameLength = Load<std::uint8_t>(bytes, 0x09);
  const auto nameOffset = Load<std::uint16_t>(bytes, 0x0A);
  if (nameLength > 0 && !Fits(nameOffset, 2u * nameLength, bytes.size())) return false;
  attribute = TAttribute{};
  attribute.Type = Load<TAttributeType>(bytes, 0);
  attribute.Named = nameLength > 0;
  attribute.Resident = Load<std::uint8_t>(bytes, 0x08) == 0;
  return attribute.Resident ? ParseResident(bytes, attribute) : ParseNonResident(bytes, attribute);
}

}  // namespace

bool ApplyFixups(std::span<std::byte> record) {
  if (record.size() < kStride || std::memcmp(record.data(), "FILE", 4) != 0) return false;
  const std::size_t offset = Load<std::uint16_t>(record, 0x04);
  const std::size_t strides = record.size() / kStride;
  if (Load<std::uint16_t>(record, 0x06) != strides + 1) return false;
  if (offset < kHeaderSize - 2 || offset % 2 != 0 || !Fits(offset, 2 * (strides + 1), kStride - 2))
    return false;
  const std::byte* const number = record.data() + offset;
  for (std::size_t stride = 1; stride <= strides; ++stride)
    if (std::memcmp(record.data() + stride * kStride - 2, number, 2) != 0) return false;
  for (std::size_t stride = 1; stride <= strides; ++stride)
    std::memcpy(record.data() + stride * kStride - 2, number + 2 * stride, 2);
  return true;
}

std::optional<TRecordHeader> ParseRecordHeader(TBytes record) {
  if (record.size() < kStride) return std::nullopt;
  const auto flags = Load<std::uint16_t>(record, 0x16);
  TRecordHeader header;
  header.Sequence = Load<std::uint16_t>(record, 0x10);
  header.InUse = (flags & kInUse) != 0;
  header.Folder = (flags & kFolder) != 0;
  header.Base = TFileReference(Load<std::uint64_t>(record, 0x20));
  header.AttributesBegin = Load<std::uint16_t>(record, 0x14);
  header.BytesInUse = Load<std::uint32_t>(record, 0x18);
  if (header.AttributesBegin < kHeaderSize || header.AttributesBegin % 8 != 0) return std::nullopt;
  if (header.BytesInUse > record.size() || header.AttributesBegin > header.BytesInUse) return std::nullopt;
  return header;
}

bool TAttributeWalk::Fail() {
  FBroken = true;
  return false;
}

bool TAttributeWalk::Next(TAttribute& attribute) {
  for (;;) {
    const TBytes rest = FRecord.subspan(FPosition);
    if (rest.size() < 4) return Fail();
    const auto type = Load<TAttributeType>(rest, 0);
    if (type == TAttributeType::End) return false;
    if (rest.size() < kResidentHeaderSize) return Fail();
    const auto length = Load<std::uint32_t>(rest, 0x04);
    if (length < kResidentHeaderSize || length % 8 != 0 || length > rest.size()) return Fail();
    FPosition += length;
    if (IsOfInterest(type)) return ParseAttribute(rest.first(length), attribute) || Fail();
  }
}

std::optional<TListEntry> TakeListEntry(TBytes& list, bool& broken) {
  if (list.empty()) return std::nullopt;
  const std::size_t length = list.size() < kListEntrySize ? 0 : Load<std::uint16_t>(list, 0x04);
  broken = length < kListEntrySize || length > list.size();
  if (broken) return std::nullopt;
  TListEntry entry{Load<TAttributeType>(list, 0), Load<std::uint8_t>(list, 0x06) > 0,
                   Load<std::uint64_t>(list, 0x08), TFileReference(Load<std::uint64_t>(list, 0x10))};
  list = list.subspan(length);
  return entry;
}

}  // namespace volindex::ntfs
