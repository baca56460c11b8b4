// libFuzzer target: the items of a Btrfs subvolume's tree, as searches hand them out. The first byte is how
// many more items than there are is told.
#include <cstdlib>

#include "volindex/bulk/Answers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace volindex;
  if (size == 0) return 0;
  const auto input = std::as_bytes(std::span(data + 1, size - 1));
  btrfs::TMemoryTree source;
  source.Lie = data[0] < 250 ? 0 : data[0];
  source.Tree.assign(input.begin(), input.end());
  TIndexBuilder builder;
  const TScanControl control{source.Stop, [](int percent) {
                               if (percent < 1 || percent > 99) std::abort();
                             }};
  const TReadResult result = btrfs::TSubvolumeScan(source, builder, control, 1, 1).Run();
  if (result == TReadResult::Stopped) std::abort();
  if (result == TReadResult::Done && builder.TakeIndex().FileCount() > size) std::abort();
  return 0;
}
