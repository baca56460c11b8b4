// Room for what is read in one go. It begins at a page: to an odd address the system copies at half the
// speed.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <span>

namespace volindex {

class TAlignedBytes {
 public:
  TAlignedBytes() = default;
  // The bytes are not set to anything.
  explicit TAlignedBytes(std::size_t size) : FBytes(new (kPage) std::byte[size]), FSize(size) {}

  [[nodiscard]] std::span<std::byte> All() const { return {FBytes.get(), FSize}; }

 private:
  // Also a multiple of every sector in use, as reads past the system's cache want it.
  static constexpr std::align_val_t kPage{4096};
  struct TDelete {
    void operator()(std::byte* bytes) const { ::operator delete[](bytes, kPage); }
  };

  std::unique_ptr<std::byte[], TDelete> FBytes;
  std::size_t FSize = 0;
};

}  // namespace volindex
