// Reads any folder on any file system through the system's own calls, on several threads. Takes every root;
// never hands over but when the root can no longer be opened.
#pragma once

#include "volindex/readers/Reader.h"
#include "volindex/readers/folders/KnownFiles.h"

namespace volindex {

class TFoldersReader : public TReader {
 public:
  TFoldersReader() = default;
  // Asks the system only for those files that are not known; `known` must outlive the reader.
  explicit TFoldersReader(TKnownFiles& known) : FKnown(&known) {}
  // With a fixed number of threads and of folders held open, for tests.
  TFoldersReader(unsigned threads, unsigned openLimit) : FThreads(threads), FOpenLimit(openLimit) {}

  [[nodiscard]] const char* Name() const override { return "folders"; }
  [[nodiscard]] bool Accepts(const TScanRoot&) const override { return true; }
  [[nodiscard]] TReadResult Read(const TScanRoot& root, TIndexBuilder& builder,
                                 const TScanControl& control) override;

 private:
  unsigned FThreads = 0;  // 0: one per processor, and more while these wait for the disk
  unsigned FOpenLimit = 0;
  TKnownFiles* FKnown = nullptr;
};

}  // namespace volindex
