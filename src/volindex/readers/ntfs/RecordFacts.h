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
  TBytes Utf16;  // within the record; after KeepNames within the facts
};

// Where an extension record that says something of interest lies.
struct THolder {
  TAttributeType Type = TAttributeType::End;
  TFileReference Record;

  auto operator<=>(const THolder&) const = default;
};

struct TRecordFacts {
  std::vector<TFileName> Names;              // real names only: a name for DOS alone is none
  std::optional<std::uint64_t> DataLength;   // of the unnamed data, if this record tells it
  std::optional<std::uint64_t> LinkLength;   // of the text that a reparse point shows as its target
  std::optional<std::uint64_t> SpecialSize;  // if the data describe a link (its length), device or socket (0)
  bool Reparse = false;
  bool ReparseHoldsFiles = false;  // a folder with the reparse point's tag may have content of its own
  bool System = false;             // the attribute that makes such data special
  std::vector<THolder> Holders;    // the records that the attribute list names, of interest only

  void Clear();

  // Makes the names outlast the record. Not to be copied from then on.
  void KeepNames();

  // True if nothing in here would change what is known about the file.
  [[nodiscard]] bool Empty() const { return Names.empty() && !DataLength && !Reparse; }

  // Adds what an extension record tells of the kind of attribute for which it was named; names stay where
  // they are.
  void Take(const TRecordFacts& extension, TAttributeType type);

  // Whether the driver shows a folder with these facts as something that is not entered.
  [[nodiscard]] bool IsLink(TDriver driver) const {
    return Reparse && !(driver == TDriver::Windows && ReparseHoldsFiles);
  }

  // The length that the file shows.
  [[nodiscard]] std::uint64_t Length() const;

 private:
  std::vector<std::byte> FKeptNames;
};

// Gathers the facts of a record in use; false if the record does not hold together. Any thread.
[[nodiscard]] bool GatherFacts(const TNtfsVolume& volume, TBytes record, const TRecordHeader& header,
                               TDriver driver, TRecordFacts& facts);

}  // namespace volindex::ntfs
