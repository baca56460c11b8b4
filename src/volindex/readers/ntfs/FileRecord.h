// One file record of the master file table: its fixups, its header and the walk over its attributes. Every
// length and offset is checked; a record that does not hold together is refused as a whole.
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

// Reads the header of a record whose fixups were applied; nothing if its offsets leave the record.
[[nodiscard]] std::optional<TRecordHeader> ParseRecordHeader(TBytes record);

enum class TAttributeType : std::uint32_t {
  StandardInformation = 0x10,
  AttributeList = 0x20,
  FileName = 0x30,
  Data = 0x80,
  ReparsePoint = 0xC0,
  End = 0xFFFFFFFF,
};

struct TAttribute {
  TAttributeType Type = TAttributeType::End;
  bool Named = false;
  bool Resident = true;
  TBytes Value;                 // resident: the value
  TBytes PackedRuns;            // not resident: the run list of this extent
  std::uint64_t LowestVcn = 0;  // not resident: the first cluster of this extent
  std::uint64_t DataSize = 0;   // the logical length in bytes; true in the first extent only
  std::uint64_t InitializedSize = 0;
  std::uint64_t AllocatedSize = 0;  // the bytes of its clusters, holes excluded; 0 if resident

  [[nodiscard]] bool IsFirstExtent() const { return Resident || LowestVcn == 0; }
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

}  // namespace volindex::ntfs
