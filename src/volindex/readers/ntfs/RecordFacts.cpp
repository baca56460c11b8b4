#include "volindex/readers/ntfs/RecordFacts.h"

#include <algorithm>

#include "volindex/readers/ntfs/LinkLength.h"

namespace volindex::ntfs {

namespace {

constexpr std::size_t kFileAttributes = 0x20;  // within the standard information
constexpr std::uint32_t kSystemFile = 0x04;
// A name's value: 0 u64 parent, 0x40 u8 units, 0x41 u8 kind of name, 0x42 the name. The lengths that it
// repeats in between are not used: they are of the time when the name was last changed.
constexpr std::size_t kNameHeader = 0x42;
constexpr std::uint8_t kNameForDosOnly = 2;
constexpr std::uint64_t kUnsupportedTagText = 34;  // "unsupported reparse tag 0x80000017"

constexpr std::uint64_t InEachUnit(std::uint16_t unit) {
  return std::uint64_t{0x0001'0001'0001'0001} * unit;
}

// Other than 0 if one of the four units is 0.
std::uint64_t ZeroUnits(std::uint64_t units) {
  return (units - InEachUnit(1)) & ~units & InEachUnit(0x8000);
}

// Other than 0 if a path can't hold one of that many times four units. There is no branch in it.
template <std::size_t fours>
std::uint64_t Separators(const std::byte* utf16) {
  std::uint64_t found = 0;
  for (std::size_t i = 0; i < fours; ++i) {
    std::uint64_t units;
    std::memcpy(&units, utf16 + i * sizeof units, sizeof units);
    found |= ZeroUnits(units) | ZeroUnits(units ^ InEachUnit(u'/'));
  }
  return found;
}

// Whether a path can hold the name, of so many units or up to twice as many: looks at those from the front
// and those from behind.
template <std::size_t fours>
bool IsPlain(TBytes utf16) {
  const std::byte* const behind = utf16.data() + utf16.size() - fours * sizeof(std::uint64_t);
  return (Separators<fours>(utf16.data()) | Separators<fours>(behind)) == 0;
}

// Every name of the volume comes by here.
bool IsPlainName(TBytes utf16) {
  // For 8 to 32 units two looks, from both ends and perhaps overlapping, spare the loop over them.
  if (utf16.size() >= 16 && utf16.size() <= 32) return IsPlain<2>(utf16);
  if (utf16.size() > 32 && utf16.size() <= 64) return IsPlain<4>(utf16);
  const TBytes dots = std::as_bytes(std::span(u"..", utf16.size() <= 4 ? utf16.size() / 2 : 0));
  if (!dots.empty() && std::equal(utf16.begin(), utf16.end(), dots.begin())) return false;
  for (; utf16.size() >= 8; utf16 = utf16.subspan(8))
    if (Separators<1>(utf16.data()) != 0) return false;
  for (; !utf16.empty(); utf16 = utf16.subspan(2)) {
    const auto unit = Load<char16_t>(utf16, 0);
    if (unit == u'/' || unit == u'\0') return false;
  }
  return true;
}

bool TakeName(TBytes value, TRecordFacts& facts) {
  if (value.size() < kNameHeader) return false;
  const std::size_t length = 2u * Load<std::uint8_t>(value, 0x40);
  if (length == 0 || !Fits(kNameHeader, length, value.size())) return false;
  if (Load<std::uint8_t>(value, 0x41) == kNameForDosOnly) return true;
  const TBytes utf16 = value.subspan(kNameHeader, length);
  if (IsPlainName(utf16)) facts.Names.push_back({TFileReference(Load<std::uint64_t>(value, 0)), utf16});
  return true;
}

// Standard information lies in the base record, and of data the first extent alone tells lengths.
bool IsOfInterest(const TListEntry& entry) {
  if (entry.Named) return entry.Type == TAttributeType::Data && entry.LowestVcn == 0;
  return entry.Type == TAttributeType::FileName || entry.Type == TAttributeType::ReparsePoint ||
         (entry.Type == TAttributeType::Data && entry.LowestVcn == 0);
}

// Walks one record and sorts what it finds into the facts.
class TGathering {
 public:
  TGathering(const TNtfsVolume& volume, bool extension, TDriver driver, TRecordFacts& facts)
      : FVolume(volume), FExtension(extension), FDriver(driver), FFacts(facts) {}

  [[nodiscard]] bool Take(const TAttribute& attribute) {
    if (attribute.Named()) {
      if (attribute.Type() == TAttributeType::Data && attribute.IsFirstExtent())
        FFacts.StreamsAllocated += attribute.AllocatedSize();
      return true;
    }
    switch (attribute.Type()) {
      case TAttributeType::StandardInformation:
        return TakeInformation(attribute);
      case TAttributeType::FileName:
        return attribute.Resident() && TakeName(attribute.Value(), FFacts);
      case TAttributeType::Data:
        return TakeData(attribute);
      case TAttributeType::ReparsePoint:
        return TakeReparse(attribute);
      case TAttributeType::AttributeList:
        return TakeList(attribute);
      default:
        return true;
    }
  }

 private:
  bool TakeInformation(const TAttribute& attribute) {
    const TBytes value = attribute.Value();
    if (value.size() < kFileAttributes + 4) return false;
    FFacts.System = (Load<std::uint32_t>(value, kFileAttributes) & kSystemFile) != 0;
    return true;
  }

  bool TakeData(const TAttribute& attribute) {
    if (!attribute.IsFirstExtent()) return true;
    if (FFacts.DataLength) return false;
    FFacts.DataLength = attribute.DataSize();
    FFacts.DataAllocated = attribute.AllocatedSize();
    // An extension record does not know the system attribute; so it looks at any short data, and the base
    // decides.
    if (FDriver == TDriver::Windows || attribute.DataSize() > kMaxSpecialData ||
        !(attribute.Resident() || FFacts.System || FExtension))
      return true;
    if (attribute.Resident())
      FFacts.SpecialSize = SpecialDataSize(attribute.Value());
    else if (const auto data = FVolume.ReadValue(attribute, kMaxSpecialData))
      FFacts.SpecialSize = SpecialDataSize(*data);
    return true;
  }

  bool TakeReparse(const TAttribute& attribute) {
    if (FFacts.Reparse) return false;
    FFacts.Reparse = true;
    const auto value = FVolume.ReadValue(attribute, kMaxReparseValue);
    if (!value) return false;
    TakeReparseValue(*value);
    if (!FFacts.LinkLength && FDriver == TDriver::Ntfs3g) FFacts.LinkLength = kUnsupportedTagText;
    return true;
  }

  void TakeReparseValue(TBytes value) {
    FFacts.ReparseHoldsFiles = ReparseHoldsFiles(value);
    if (FDriver != TDriver::Windows) FFacts.LinkLength = ReparseTargetLength(value);
  }

  bool TakeList(const TAttribute& attribute) {
    if (FFacts.List) return false;
    FFacts.List = attribute;
    return true;
  }

  const TNtfsVolume& FVolume;
  bool FExtension;  // then the system attribute, told by the base, is not known here
  TDriver FDriver;
  TRecordFacts& FFacts;
};

}  // namespace

bool TRecordFacts::Take(const TRecordFacts& extension, const THolder& holder) {
  if (holder.Named) {
    StreamsAllocated += extension.StreamsAllocated;
    return true;
  }
  if (holder.Type == TAttributeType::Data) {
    DataLength = extension.DataLength;
    DataAllocated = extension.DataAllocated;
    SpecialSize = extension.SpecialSize;
    return DataLength.has_value();
  }
  Reparse = extension.Reparse;
  ReparseHoldsFiles = extension.ReparseHoldsFiles;
  LinkLength = extension.LinkLength;
  return Reparse;
}

bool GatherFacts(const TNtfsVolume& volume, TBytes record, const TRecordHeader& header, TDriver driver,
                 TRecordFacts& facts) {
  TGathering gathering(volume, !header.IsBase(), driver, facts);
  TAttributeWalk walk(record, header);
  for (TAttribute attribute; walk.Next(attribute);)
    if (!gathering.Take(attribute)) return false;
  return !walk.Broken();
}

bool ReadHolders(const TNtfsVolume& volume, const TAttribute& list, std::vector<THolder>& holders) {
  const auto value = volume.ReadValue(list, kMaxAttributeList);
  if (!value) return false;
  TBytes rest = *value;
  bool broken = false;
  while (const auto entry = TakeListEntry(rest, broken))
    if (IsOfInterest(*entry)) holders.push_back({entry->Type, entry->Named, entry->Holder});
  std::sort(holders.begin(), holders.end());
  holders.erase(std::unique(holders.begin(), holders.end()), holders.end());
  return !broken;
}

}  // namespace volindex::ntfs
