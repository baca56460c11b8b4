// What one file record says about its file: names, length, where the rest is told. A file's facts may be
// spread over a base record and its extension records.
#pragma once

#include "volindex/readers/ntfs/NtfsVolume.h"

namespace volindex::ntfs {

// Who shows the volume's files: drivers differ in what they make of reparse points and of links that other
// systems have stored as data.
enum class TDriver {
  Kernel,   // Linux's own: links with their targets, what only another system could read as the file's data
  Ntfs3g,   // the same, but the latter as links to the text "unsupported reparse tag 0x........"
  Windows,  // every file by its data
};

struct TFileName {
  TFileReference Parent;
  TBytes Utf16;  // within the record
};

// A record that says something of interest.
struct THolder {
  TAttributeType Type = TAttributeType::End;
  bool Named = false;  // a stream beside the data
  TFileReference Record;

  auto operator<=>(const THolder&) const = default;
};

struct TRecordFacts {
  std::vector<TFileName> Names;              // real names only: a name for DOS alone is none
  std::optional<std::uint64_t> DataLength;   // of the unnamed data, if this record tells it
  std::uint64_t DataAllocated = 0;           // bytes of clusters
  std::uint64_t StreamsAllocated = 0;        // the same of named streams, as far as this record tells of them
  std::optional<std::uint64_t> LinkLength;   // of the text that a reparse point shows as its target
  std::optional<std::uint64_t> SpecialSize;  // if the data describe a link (its length), device or socket (0)
  bool Reparse = false;
  bool ReparseHoldsFiles = false;  // a folder with the reparse point's tag may have content of its own
  bool System = false;             // the attribute that makes such data special
  std::optional<TAttribute> List;  // names the other records of the file

  void Clear() {
    Names.clear();
    List.reset();
    DataLength = LinkLength = SpecialSize = std::nullopt;
    DataAllocated = StreamsAllocated = 0;
    Reparse = ReparseHoldsFiles = System = false;
  }

  // Adds what an extension record tells of its data, streams or reparse point, for which it was named. False
  // if it tells nothing of it.
  [[nodiscard]] bool Take(const TRecordFacts& extension, const THolder& holder);

  // Whether the driver shows a folder with these facts as something that is not entered.
  [[nodiscard]] bool IsLink(TDriver driver) const {
    return Reparse && !(driver == TDriver::Windows && ReparseHoldsFiles);
  }

  // The length that the file shows.
  [[nodiscard]] std::uint64_t Length() const {
    if (Reparse) return LinkLength.value_or(DataLength.value_or(0));
    if (System && SpecialSize) return *SpecialSize;
    return DataLength.value_or(0);
  }

  [[nodiscard]] std::uint64_t Allocated() const { return DataAllocated + StreamsAllocated; }
};

// Gathers the facts of a record in use; false if the record does not hold together, tells a thing twice or
// has a link that can't be read. Any thread.
[[nodiscard]] bool GatherFacts(const TNtfsVolume& volume, TBytes record, const TRecordHeader& header,
                               TDriver driver, TRecordFacts& facts);

// Adds the records that an attribute list names, each once per type of attribute, in rising order. False if
// the list can't be read or is broken.
[[nodiscard]] bool ReadHolders(const TNtfsVolume& volume, const TAttribute& list,
                               std::vector<THolder>& holders);

}  // namespace volindex::ntfs
