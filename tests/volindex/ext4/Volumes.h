// Trees and the ext volumes made of them with the file system's own tools, in a temporary folder.
#pragma once

#include <atomic>
#include <optional>
#include <string>
#include <vector>

#include "volindex/MemorySource.h"
#include "volindex/TestTree.h"
#include "volindex/readers/ext4/VolumeScan.h"

namespace volindex::ext4 {

// Runs a shell command; true if it succeeds. Its messages are shown only if it fails.
bool Shell(const std::string& command);

void WriteFile(const std::string& path, const std::string& content);
void MakeSparse(const std::string& path, std::uint64_t size);

// Folders deep and wide, files from empty to huge, links of both kinds, pipes, names of all sorts.
void MakeVariedTree(const std::string& root);

// Makes an image of size (as truncate takes it) of the tree.
bool MakeImage(const std::string& image, const std::string& size, const std::string& options,
               const std::string& tree);

[[nodiscard]] std::vector<std::byte> LoadFile(const std::string& path);

// The index of a volume, or why there is none.
struct TOutcome {
  TReadResult Result = TReadResult::HandedOver;
  TVolumeIndex Index;
};
[[nodiscard]] TOutcome Scan(const TByteSource& source, TVolumeState state = TVolumeState::AtRest);
[[nodiscard]] TOutcome ScanImage(const std::string& image);

}  // namespace volindex::ext4
