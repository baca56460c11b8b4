// libFuzzer target: the answers of an XFS volume. The input is a byte for what the header lies, one for the
// number of chunks, these, and the inodes.
#include <cstdlib>

#include "volindex/bulk/Answers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace volindex;
  if (size < 2) return 0;
  const auto input = std::as_bytes(std::span(data + 2, size - 2));
  const auto chunks = input.first(std::min<std::size_t>(data[1] * xfs::kChunkSize, input.size()));
  const auto inodes = input.subspan(chunks.size());
  xfs::TMemoryInodes source;
  source.Lie = data[0] < 200 ? 0 : data[0];
  source.Chunks.assign(chunks.begin(), chunks.end());
  source.Inodes.assign(inodes.begin(), inodes.end());
  xfs::TInodeTable table(source, source.Stop);
  if (!table.Read(1, [](int) {})) return 0;
  for (std::uint64_t i = 0; i < 512; ++i) {
    TEntryFacts facts;
    facts.Number = i < 256 ? i : std::uint64_t{data[i % size]} << (i % 57);
    facts.IsFolder = i % 3 == 0;
    const auto access = table.Find(facts);
    if (access && facts.Links == 0) std::abort();
  }
  return 0;
}
