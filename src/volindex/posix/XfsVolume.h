// A mounted XFS volume that answers questions for its inodes.
#pragma once

#include "volindex/readers/Reader.h"
#include "volindex/readers/xfs/InodeTable.h"

#include <memory>

namespace volindex::xfs {

// The volume that root is the whole of; null when it is no XFS volume, only a part is mounted there, or its
// inodes may not be asked for, which takes the rights of root.
[[nodiscard]] std::unique_ptr<TInodeSource> OpenXfs(const TScanRoot& root);

}  // namespace volindex::xfs
