// Reads an NTFS volume from its device by its master file table.
//
// What counts is what a walk over a mount of the volume sees. Lengths are logical: sparse, compressed and
// preallocated files count their data length, named streams nothing. The metadata files and what lies in them
// are left out. A name for DOS alone is no second link. A reparse point is never entered, unless its tag says
// that folders with it hold what lies in them, and counts as a file: as the volume's driver shows it, a link
// by the length of its target (LinkLength.h) or any by its data. A folder
// that is gone takes its left-over files with it. A record in use that does not hold together, and a file of
// which a part can't be had, is handed over with the whole volume: the driver may still show it.
#pragma once

#include "volindex/readers/Reader.h"
#include "volindex/readers/ntfs/RecordFacts.h"

namespace volindex::ntfs {

// Accepts the root of a mounted volume whose device may be read.
class TNtfsReader : public TReader {
 public:
  [[nodiscard]] const char* Name() const override { return "ntfs"; }
  [[nodiscard]] bool Accepts(const TScanRoot& root) const override;
  [[nodiscard]] TReadResult Read(const TScanRoot& root, TIndexBuilder& builder,
                                 const TScanControl& control) override;
};

// The same for bytes from anywhere, with that many threads.
[[nodiscard]] TReadResult ReadNtfs(const TByteSource& source, TDriver driver, TIndexBuilder& builder,
                                   const TScanControl& control, unsigned threads);

}  // namespace volindex::ntfs
