// Images of ext volumes made with the file system's own tools, and what the reader makes of them.
#pragma once

#include <atomic>
#include <optional>
#include <string>
#include <vector>

#include "volindex/MemorySource.h"
#include "volindex/posix/Volumes.h"
#include "volindex/readers/ext4/VolumeScan.h"

namespace volindex::ext4 {

// Makes an image of size (as truncate takes it) of the tree.
bool MakeImage(const std::string& image, const std::string& size, const std::string& options,
               const std::string& tree);

[[nodiscard]] std::vector<std::byte> LoadFile(const std::string& path);

// The index of a volume, or why there is none.
struct TOutcome {
  TReadResult Result = TReadResult::HandedOver;
  TVolumeIndex Index;
};
[[nodiscard]] TOutcome Scan(const TByteSource& source);
[[nodiscard]] TOutcome ScanImage(const std::string& image);

}  // namespace volindex::ext4
