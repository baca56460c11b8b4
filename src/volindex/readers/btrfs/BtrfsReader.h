// Reads a mounted Btrfs subvolume, the volume's own or any other, by searching its tree. Other subvolumes
// within it count as folders and are not entered.
#pragma once

#include "volindex/readers/Reader.h"

namespace volindex::btrfs {

// Accepts the root of a subvolume that this user may search.
class TBtrfsReader : public TReader {
 public:
  [[nodiscard]] const char* Name() const override { return "btrfs"; }
  [[nodiscard]] bool Accepts(const TScanRoot& root) const override;
  [[nodiscard]] TReadResult Read(const TScanRoot& root, TIndexBuilder& builder,
                                 const TScanControl& control) override;
};

}  // namespace volindex::btrfs
