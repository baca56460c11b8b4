// libFuzzer target: a whole volume as the input. Seeds are small images made by mke2fs (make_seeds.sh).
// The superblock's checksum flag is as in the input; images without checksums let changes through to the
// deeper parts.
#include <cstdlib>

#include "volindex/MemorySource.h"
#include "volindex/readers/ext4/VolumeScan.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace volindex;
  const TMemorySource input(std::as_bytes(std::span(data, size)));
  const std::atomic<bool> stop{false};
  TIndexBuilder builder;
  const TReadResult result = ext4::ReadVolume(input, ext4::TVolumeState::Mounted, builder, {stop, {}}, 1);
  if (result == TReadResult::Stopped) std::abort();
  if (result == TReadResult::Done && builder.TakeIndex().FileCount() > size) std::abort();
  return 0;
}
