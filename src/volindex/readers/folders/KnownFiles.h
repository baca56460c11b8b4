// Files of which all but their names is known before the folders are read.
#pragma once

#include "volindex/system/FolderAccess.h"

#include <optional>

namespace volindex {

// Any thread.
class TKnownFiles {
 public:
  virtual ~TKnownFiles() = default;

  // Given the Number of a file or folder of the volume and whether it IsFolder, fills in Size, Allocated and
  // Links. Ok; Gone for a file with one name that was met before under another, and has been moved since;
  // none when it is not known.
  [[nodiscard]] virtual std::optional<TAccess> Find(TEntryFacts& facts) = 0;
};

}  // namespace volindex
