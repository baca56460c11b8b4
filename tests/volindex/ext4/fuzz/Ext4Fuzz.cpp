// libFuzzer target: a whole volume as the input. Seeds are small images made by mke2fs (see CMakeLists.txt).
// The superblock's checksum flag is as in the input; images without checksums let changes through to the
// deeper parts.
#include <cstdlib>
#include <cstring>

#include "volindex/readers/ext4/VolumeScan.h"

namespace {

class TInput : public volindex::TByteSource {
 public:
  explicit TInput(std::span<const std::byte> bytes) : FBytes(bytes) {}
  [[nodiscard]] bool ReadAt(uint64_t offset, std::span<std::byte> target) const override {
    if (!volindex::ext4::Fits(offset, target.size(), FBytes.size())) return false;
    if (!target.empty()) std::memcpy(target.data(), FBytes.data() + offset, target.size());
    return true;
  }
  [[nodiscard]] uint64_t Size() const override { return FBytes.size(); }

 private:
  std::span<const std::byte> FBytes;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace volindex;
  const TInput input(std::as_bytes(std::span(data, size)));
  const std::atomic<bool> stop{false};
  TIndexBuilder builder;
  const TReadResult result = ext4::ReadVolume(input, ext4::TVolumeState::Mounted, builder, {stop, {}}, 1);
  if (result == TReadResult::Stopped) std::abort();
  if (result == TReadResult::Done && builder.TakeIndex().FileCount() > size) std::abort();
  return 0;
}
