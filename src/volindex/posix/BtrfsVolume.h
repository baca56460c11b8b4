// A mounted Btrfs subvolume whose tree is searched.
#pragma once

#include "volindex/readers/Reader.h"
#include "volindex/readers/btrfs/SubvolumeScan.h"

#include <memory>

namespace volindex::btrfs {

// The subvolume that root is the root of; null when it is no such, or may not be searched, which takes the
// rights of root.
[[nodiscard]] std::unique_ptr<TTreeSource> OpenBtrfs(const TScanRoot& root);

}  // namespace volindex::btrfs
