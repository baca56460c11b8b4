// A volume in memory, which notes whether a reader ever asked for bytes that are not there.
#pragma once

#include <algorithm>
#include <atomic>
#include <span>

#include "volindex/readers/ByteSource.h"
#include "volindex/readers/DiskBytes.h"

namespace volindex {

// The bytes must outlive it, and may change between two scans.
class TMemorySource : public TByteSource {
 public:
  explicit TMemorySource(std::span<const std::byte> bytes) : FBytes(bytes) {}
  [[nodiscard]] uint64_t Size() const override { return FBytes.size(); }
  [[nodiscard]] bool ReadAt(uint64_t offset, std::span<std::byte> target) const override {
    if (!Fits(offset, target.size(), FBytes.size())) {
      FStrayed = true;
      return false;
    }
    std::copy_n(FBytes.begin() + static_cast<std::ptrdiff_t>(offset), target.size(), target.begin());
    return true;
  }
  [[nodiscard]] bool Strayed() const { return FStrayed; }

 private:
  std::span<const std::byte> FBytes;
  mutable std::atomic<bool> FStrayed{false};
};

}  // namespace volindex
