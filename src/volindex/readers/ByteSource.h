// A run of bytes that a disk reader reads from: a device, an image file, or memory in tests.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace volindex {

class TByteSource {
 public:
  virtual ~TByteSource() = default;

  // Fills all of `target` from `offset` (bytes). False when a part lies beyond the end or cannot be read;
  // the contents of `target` are then undefined. Any thread, also several at once. Blocks.
  [[nodiscard]] virtual bool ReadAt(uint64_t offset, std::span<std::byte> target) const = 0;

  // Bytes in all. Constant.
  [[nodiscard]] virtual uint64_t Size() const = 0;
};

// Opens a block device or an image file for reading; null when that is not permitted or there is none.
[[nodiscard]] std::unique_ptr<TByteSource> OpenByteSource(const std::string& path);

}  // namespace volindex
