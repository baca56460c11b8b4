// The attribute bits of an entry, from its mode and name.
#pragma once

#include "platform/FileEnumeration.h"

#include <sys/stat.h>

// Bits of TFileAttribute. A link has no permissions of its own and is never read-only.
[[nodiscard]] inline unsigned AttributesOf(mode_t mode, bool hidden) {
  unsigned attributes = hidden ? unsigned{kAttributeHidden} : 0U;
  if (S_ISLNK(mode)) return attributes | kAttributeReparse;
  if ((mode & S_IWUSR) == 0) attributes |= kAttributeReadOnly;
  if (S_ISDIR(mode)) return attributes | kAttributeDirectory;
  return S_ISREG(mode) ? attributes : attributes | kAttributeSystem;
}

// The length that counts: files and links have one.
[[nodiscard]] inline quint64 LengthOf(mode_t mode, off_t size) {
  return S_ISREG(mode) || S_ISLNK(mode) ? static_cast<quint64>(size) : 0;
}
