// One file record of the master file table: its fixups, its header and the walk over its attributes. Every
// length and offset is checked; a record that does not hold together is refused as a whole.
//
// A record, and what is used of its header:
//
//   0x00 4    "FILE"                             0x14 u16  where the first attribute begins
//   0x04 u16  where the fixups lie               0x16 u16  flags: 1 in use, 2 a folder
//   0x06 u16  how many: strides + 1              0x18 u32  bytes in use, the end mark among them
//   0x10 u16  sequence number                    0x20 u64  base record, 0 if this is one
//
// An attribute, whose length is a multiple of 8; behind the last one stands the type 0xFFFFFFFF:
//
//   0x00 u32  type                               0x09 u8   units of its name, 0 if it has none
//   0x04 u32  length                             0x0A u16  where the name lies
//   0x08 u8   0 if the value is resident         0x0C u16  flags: 0x00FF compressed, 0x8000 sparse
//   resident: 0x10 u32 length of the value, 0x14 u16 where it lies
//   else:     0x10 u64 first cluster of this extent   0x30 u64 length of the value
//             0x20 u16 where the run list lies        0x38 u64 how much of it was written
//             0x28 u64 allocated                      0x40 u64 the same without holes, if it can have any
//
// An entry of an attribute list:
//
//   0x00 u32 type, 0x04 u16 length, 0x06 u8 units of the name, 0x08 u64 first cluster, 0x10 u64 record
//
// The order of checks is what keeps the loads safe: ApplyFixups, then ParseRecordHeader, then the walk, which
// hands out an attribute only when all offsets in it hold (HoldsTogether). Only what a value tells of itself
// is left to be checked by who parses it.
#pragma once

#include <optional>

#include "volindex/readers/DiskBytes.h"

namespace volindex::ntfs {

// A record's number (low 48 bits) with the sequence number that it had when the reference was made.
class TFileReference {
 public:
  constexpr TFileReference() = default;
  constexpr explicit TFileReference(std::uint64_t stored) : FStored(stored) {}
  constexpr TFileReference(std::uint64_t record, std::uint16_t sequence)
      : FStored(record | std::uint64_t{sequence} << 48) {}

  [[nodiscard]] constexpr std::uint64_t Record() const { return FStored & 0xFFFF'FFFF'FFFF; }
  [[nodiscard]] constexpr std::uint16_t Sequence() const { return static_cast<std::uint16_t>(FStored >> 48); }
  constexpr auto operator<=>(const TFileReference&) const = default;

 private:
  std::uint64_t FStored = 0;
};

// Puts the true bytes back at the end of each 512-byte stride, whatever the sector size. False if the record
// has no file mark, or a stride does not carry the record's update number: a torn or damaged record.
[[nodiscard]] bool ApplyFixups(std::span<std::byte> record);

struct TRecordHeader {
  std::uint16_t Sequence = 0;
  bool InUse = false;
  bool Folder = false;
  TFileReference Base;  // record 0, sequence 0 in a base record
  std::uint32_t AttributesBegin = 0;
  std::uint32_t BytesInUse = 0;

  [[nodiscard]] bool IsBase() const { return Base == TFileReference{}; }
};

// Reads the header of a record whose fixups were applied; false if its offsets leave the record.
[[nodiscard]] bool ParseRecordHeader(TBytes record, TRecordHeader& header);

enum class TAttributeType : std::uint32_t {
  StandardInformation = 0x10,
  AttributeList = 0x20,
  FileName = 0x30,
  Data = 0x80,
  ReparsePoint = 0xC0,
  End = 0xFFFFFFFF,
};

// Lies in its record, which must outlive it; what it tells is loaded from there when asked for. Made by the
// walk below, which has checked all offsets in it.
class TAttribute {
 public:
  TAttribute() = default;
  explicit TAttribute(TBytes bytes) : FBytes(bytes) {}

  [[nodiscard]] TAttributeType Type() const { return Load<TAttributeType>(FBytes, 0); }
  [[nodiscard]] bool Named() const { return Load<std::uint8_t>(FBytes, 0x09) > 0; }
  [[nodiscard]] bool Resident() const { return Load<std::uint8_t>(FBytes, 0x08) == 0; }

  // The value if it is resident, else nothing.
  [[nodiscard]] TBytes Value() const {
    return Resident() ? FBytes.subspan(Load<std::uint16_t>(FBytes, 0x14), Load<std::uint32_t>(FBytes, 0x10))
                      : TBytes{};
  }
  // Not resident: the run list of this extent and the first cluster that it maps.
  [[nodiscard]] TBytes PackedRuns() const { return FBytes.subspan(Load<std::uint16_t>(FBytes, 0x20)); }
  [[nodiscard]] std::uint64_t LowestVcn() const { return Load<std::uint64_t>(FBytes, 0x10); }
  [[nodiscard]] bool IsFirstExtent() const { return Resident() || LowestVcn() == 0; }

  // The logical length in bytes, how much of it was ever written, and the bytes of its clusters, holes
  // excluded; 0 if resident. True in the first extent only.
  [[nodiscard]] std::uint64_t DataSize() const { return LengthAt(0x30); }
  [[nodiscard]] std::uint64_t InitializedSize() const { return LengthAt(0x38); }
  [[nodiscard]] std::uint64_t AllocatedSize() const {
    return Resident() ? 0 : Load<std::uint64_t>(FBytes, TellsHoles() ? 0x40 : 0x28);
  }

  // Whether its name and its value or run list lie within it; for the walk.
  [[nodiscard]] bool HoldsTogether() const;

 private:
  static constexpr std::size_t kResidentHeaderSize = 0x18;
  static constexpr std::size_t kNonResidentHeaderSize = 0x40;
  static constexpr std::size_t kHoledHeaderSize = 0x48;
  static constexpr std::uint16_t kCompressedOrSparse = 0x80FF;
  friend class TAttributeWalk;

  [[nodiscard]] std::uint64_t LengthAt(std::size_t offset) const {
    return Resident() ? Load<std::uint32_t>(FBytes, 0x10) : Load<std::uint64_t>(FBytes, offset);
  }
  // What has holes tells its clusters apart from those that it would have without any.
  [[nodiscard]] bool TellsHoles() const {
    return (Load<std::uint16_t>(FBytes, 0x0C) & kCompressedOrSparse) != 0 &&
           Load<std::uint16_t>(FBytes, 0x20) >= kHoledHeaderSize;
  }

  TBytes FBytes;
};

// Walks the attributes of one record in their order, stepping over those of types not named above. The record
// must outlive what it hands out.
class TAttributeWalk {
 public:
  TAttributeWalk(TBytes record, const TRecordHeader& header)
      : FRecord(record.first(header.BytesInUse)), FPosition(header.AttributesBegin) {}

  // False at the end mark, and at an attribute that does not hold together: then Broken() is true.
  [[nodiscard]] bool Next(TAttribute& attribute);
  [[nodiscard]] bool Broken() const { return FBroken; }

 private:
  [[nodiscard]] bool Fail();

  TBytes FRecord;
  std::size_t FPosition;
  bool FBroken = false;
};

// One line of an attribute list: which record holds which attribute of a file.
struct TListEntry {
  TAttributeType Type = TAttributeType::End;
  bool Named = false;
  std::uint64_t LowestVcn = 0;
  TFileReference Holder;
};

// Takes the first entry off the list. Nothing at its end; a broken entry ends it with broken set.
[[nodiscard]] std::optional<TListEntry> TakeListEntry(TBytes& list, bool& broken);

// What is done for each record of the volume stands here, for who calls it to have it without a call.

// Strides are of 512 bytes even where the disk has sectors of 4 KiB.
inline constexpr std::size_t kStride = 512;
inline constexpr std::size_t kRecordHeaderSize = 0x2A;
inline constexpr std::size_t kListEntrySize = 0x1A;
inline constexpr std::uint16_t kRecordInUse = 0x01;
inline constexpr std::uint16_t kRecordOfFolder = 0x02;

[[nodiscard]] inline bool IsOfInterest(TAttributeType type) {
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

inline bool TAttribute::HoldsTogether() const {
  const auto nameLength = Load<std::uint8_t>(FBytes, 0x09);
  if (nameLength > 0 && !Fits(Load<std::uint16_t>(FBytes, 0x0A), 2u * nameLength, FBytes.size()))
    return false;
  if (Resident()) {
    const auto offset = Load<std::uint16_t>(FBytes, 0x14);
    return offset >= kResidentHeaderSize && Fits(offset, Load<std::uint32_t>(FBytes, 0x10), FBytes.size());
  }
  if (FBytes.size() < kNonResidentHeaderSize) return false;
  const auto offset = Load<std::uint16_t>(FBytes, 0x20);
  return offset >= kNonResidentHeaderSize && offset < FBytes.size() &&
         static_cast<std::int64_t>(DataSize()) >= 0;
}

inline bool ApplyFixups(std::span<std::byte> record) {
  if (record.size() < kStride || std::memcmp(record.data(), "FILE", 4) != 0) return false;
  const std::size_t offset = Load<std::uint16_t>(record, 0x04);
  const std::size_t strides = record.size() / kStride;
  if (Load<std::uint16_t>(record, 0x06) != strides + 1) return false;
  // The array ends before the last two bytes of the first stride, so that putting bytes back never changes
  // the array itself.
  if (offset < kRecordHeaderSize - 2 || offset % 2 != 0 || !Fits(offset, 2 * (strides + 1), kStride - 2))
    return false;
  // All strides are compared before any is changed, so a torn record stays as it was read.
  const std::byte* const number = record.data() + offset;
  for (std::size_t stride = 1; stride <= strides; ++stride)
    if (std::memcmp(record.data() + stride * kStride - 2, number, 2) != 0) return false;
  for (std::size_t stride = 1; stride <= strides; ++stride)
    std::memcpy(record.data() + stride * kStride - 2, number + 2 * stride, 2);
  return true;
}

inline bool ParseRecordHeader(TBytes record, TRecordHeader& header) {
  if (record.size() < kStride) return false;
  const auto flags = Load<std::uint16_t>(record, 0x16);
  header.Sequence = Load<std::uint16_t>(record, 0x10);
  header.InUse = (flags & kRecordInUse) != 0;
  header.Folder = (flags & kRecordOfFolder) != 0;
  header.Base = TFileReference(Load<std::uint64_t>(record, 0x20));
  header.AttributesBegin = Load<std::uint16_t>(record, 0x14);
  header.BytesInUse = Load<std::uint32_t>(record, 0x18);
  if (header.AttributesBegin < kRecordHeaderSize || header.AttributesBegin % 8 != 0) return false;
  return header.BytesInUse <= record.size() && header.AttributesBegin <= header.BytesInUse;
}

inline bool TAttributeWalk::Fail() {
  FBroken = true;
  return false;
}

// Comes to an end in any case: each step is at least the size of a resident attribute's header, within the
// record.
inline bool TAttributeWalk::Next(TAttribute& attribute) {
  for (;;) {
    const TBytes rest = FRecord.subspan(FPosition);
    if (rest.size() < 4) return Fail();
    const auto type = Load<TAttributeType>(rest, 0);
    if (type == TAttributeType::End) return false;
    if (rest.size() < TAttribute::kResidentHeaderSize) return Fail();
    const auto length = Load<std::uint32_t>(rest, 0x04);
    if (length < TAttribute::kResidentHeaderSize || length % 8 != 0 || length > rest.size()) return Fail();
    FPosition += length;
    if (!IsOfInterest(type)) continue;
    attribute = TAttribute(rest.first(length));
    return attribute.HoldsTogether() || Fail();
  }
}

inline std::optional<TListEntry> TakeListEntry(TBytes& list, bool& broken) {
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
