// The device behind a mounted NTFS volume, and who has mounted it.
#pragma once

#include <memory>

#include "volindex/readers/ByteSource.h"
#include "volindex/readers/Reader.h"
#include "volindex/readers/ntfs/RecordFacts.h"

namespace volindex::ntfs {

// The device of the volume that the path is the root of; null if the volume's driver is none for NTFS (one
// for several file systems may be), there is no device, or it may not be read.
[[nodiscard]] std::unique_ptr<TByteSource> OpenNtfsSource(const TScanRoot& root);

[[nodiscard]] TDriver DriverOf(const TScanRoot& root);

}  // namespace volindex::ntfs
