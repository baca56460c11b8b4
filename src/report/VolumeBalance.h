// How what a volume has in use adds up: what the files that were counted occupy, and what is left.
#pragma once

#include "scan/UnitScan.h"

#include <QString>

#include <optional>

// A value; bytes.
struct TVolumeBalance {
  quint64 Used = 0;        // as the volume itself says
  quint64 Files = 0;       // occupied by the files that were counted
  quint32 Unreadable = 0;  // folders that could not be read, what is in them counts as left

  // Always Used - Files: the file system's own tables and folders, snapshots, what is deleted but open, and
  // what was not read. Less than 0 where files share blocks, each of which counts for every one of them.
  [[nodiscard]] qint64 Left() const { return static_cast<qint64>(Used - Files); }

  // All of it as one sentence without a line break or a full stop.
  [[nodiscard]] QString Text() const;
};

// None for a path that is no whole volume, or of which that is not known.
[[nodiscard]] std::optional<TVolumeBalance> BalanceOf(const TPathTotals& totals);
