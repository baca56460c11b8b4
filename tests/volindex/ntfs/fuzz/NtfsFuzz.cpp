// The input is a whole volume.
#include "volindex/ntfs/VolumeMaker.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const volindex::TMemorySource source(std::as_bytes(std::span(data, size)));
  (void)volindex::ntfs::ReadTree(source, 1);
  return 0;
}
