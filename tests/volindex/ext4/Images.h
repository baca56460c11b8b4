// Images of ext volumes made with the file system's own tools, and what the reader makes of them.
#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "volindex/MemorySource.h"
#include "volindex/posix/Volumes.h"
#include "volindex/readers/ext4/VolumeScan.h"

namespace volindex::ext4 {

// Makes an image of size (as truncate takes it) of the tree.
inline bool MakeImage(const std::string& image, const std::string& size, const std::string& options,
                      const std::string& tree) {
  return Shell("truncate -s " + size + " " + image + " && mke2fs -q -F " + options + " -d " + tree + " " +
               image);
}

[[nodiscard]] inline std::vector<std::byte> LoadFile(const std::string& path) {
  std::vector<std::byte> bytes(std::filesystem::file_size(path));
  const auto source = OpenByteSource(path);
  return source && source->ReadAt(0, bytes) ? bytes : std::vector<std::byte>();
}

// The index of a volume, or why there is none.
struct TOutcome {
  TReadResult Result = TReadResult::HandedOver;
  TVolumeIndex Index;
};

[[nodiscard]] inline TOutcome Scan(const TByteSource& source) {
  const std::atomic<bool> stop{false};
  TIndexBuilder builder;
  TOutcome outcome;
  outcome.Result = ReadVolume(source, TVolumeState::AtRest, builder, {stop, {}}, 2);
  if (outcome.Result == TReadResult::Done) outcome.Index = builder.TakeIndex();
  return outcome;
}

[[nodiscard]] inline TOutcome ScanImage(const std::string& image) {
  return Scan(*OpenByteSource(image));
}

}  // namespace volindex::ext4
