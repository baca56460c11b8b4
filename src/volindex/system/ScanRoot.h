// What the system knows of a folder that is to be scanned.
#pragma once

#include "volindex/readers/Reader.h"

#include <atomic>
#include <optional>
#include <string>

namespace volindex {

// Describes the folder at `path` (bytes, symbolic links allowed). None when it is no folder, may not be read,
// or lies on a file system that stores nothing (proc and its like).
[[nodiscard]] std::optional<TScanRoot> DescribeScanRoot(const std::string& path);

// Has the system write to the device what it holds back of the volume at `path`. Blocks for as long as that
// takes, until it is done or `stop` is set; a flush that was given up goes on by itself. False when it failed
// or was given up.
[[nodiscard]] bool FlushVolume(const std::string& path, const std::atomic<bool>& stop);

// What the volume whose root this is says is used of it, in bytes, for itself and for all that it keeps. None
// when it does not tell, and where files of one volume are shown over those of another.
[[nodiscard]] std::optional<uint64_t> UsedOnVolume(const TScanRoot& root);

// How many threads read the root at best: one per processor, at most two where the disk rotates.
[[nodiscard]] unsigned ThreadsFor(const TScanRoot& root);

}  // namespace volindex
