// Reads a mounted XFS volume: what its inodes are and how long in bulk, then the names by one listing per
// folder. The folders are read by the folders reader, which asks the system for the rest: files that have
// come since, and what a listing does not tell the kind of.
#pragma once

#include "volindex/readers/Reader.h"

namespace volindex::xfs {

// Accepts the root of a mounted volume of which this user may ask for all inodes.
class TXfsReader : public TReader {
 public:
  [[nodiscard]] const char* Name() const override { return "xfs"; }
  [[nodiscard]] bool Accepts(const TScanRoot& root) const override;
  [[nodiscard]] TReadResult Read(const TScanRoot& root, TIndexBuilder& builder,
                                 const TScanControl& control) override;
};

}  // namespace volindex::xfs
