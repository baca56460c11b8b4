// The reader of mounted ext2, ext3 and ext4 volumes, straight from their block device.
#pragma once

#include "volindex/readers/Reader.h"

namespace volindex {

class TExt4Reader : public TReader {
 public:
  [[nodiscard]] const char* Name() const override { return "ext4"; }
  [[nodiscard]] bool Accepts(const TScanRoot& root) const override;
  [[nodiscard]] TReadResult Read(const TScanRoot& root, TIndexBuilder& builder,
                                 const TScanControl& control) override;
};

}  // namespace volindex
