// The kernel's own speed, to measure a walk against: getdents64 and one fstatat per entry, and nothing kept
// but three sums.
#pragma once

#include <cstdint>
#include <string>

struct TBareTotals {
  int64_t Files = 0;    // all names that are no folder's
  int64_t Folders = 0;  // below the root
  uint64_t Bytes = 0;   // of files and links
};

// Stays on the root's file system. A folder that can't be opened counts and is passed over. Several threads
// take their folders from one stack.
TBareTotals BareLoop(const std::string& root, unsigned threads = 1);
