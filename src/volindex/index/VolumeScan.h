// One scan: finds the reader that can serve a path, runs it and says so on standard error if asked to.
#pragma once

#include "volindex/index/VolumeIndex.h"
#include "volindex/readers/Reader.h"

#include <memory>
#include <string>
#include <vector>

namespace volindex {

using TReaders = std::vector<std::unique_ptr<TReader>>;

// The readers to be tried: all, or where the environment variable TALLYSCOPE_READER is set, the one of that
// name, none if there is no such.
[[nodiscard]] TReaders ReadersInUse();

// Whether a reader accepts the path (bytes).
[[nodiscard]] bool CanScan(const std::string& path);

// Blocks. An empty index after a stop or when no reader could read the path; what a reader throws is its
// refusal. With TALLYSCOPE_TRACE=1 writes one line on the scan to standard error.
[[nodiscard]] TVolumeIndex ScanVolume(const std::string& path, const TScanControl& control,
                                      const TReaders& readers = ReadersInUse());

}  // namespace volindex
