// Finds the block device below a mounted ext2, ext3 or ext4 volume.
#pragma once

#include <memory>

#include "volindex/readers/ByteSource.h"
#include "volindex/readers/Reader.h"

namespace volindex {

// The device that root is the whole of; null if root is no such volume, is covered by another one or if its
// device may not be read. Reads go through the system's cache of the device, which is also where the mounted
// file system keeps its metadata.
[[nodiscard]] std::unique_ptr<TByteSource> OpenExt4Device(const TScanRoot& root);

}  // namespace volindex
