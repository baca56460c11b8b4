// Widths of the columns that share what the others leave.
#pragma once

#include <vector>

struct TAutoColumn {
  bool AutoSize = false;
  int Width = 0;
  int MinWidth = 0;  // 0 is no bound
  int MaxWidth = 0;
};

// The new widths of all columns. room: the client width without a vertical bar. The auto columns get equal
// shares, the first of them also the remainder; one whose bounds refuse its share keeps the bound, and the
// others share the rest anew. Without auto columns nothing changes.
[[nodiscard]] std::vector<int> ShareColumnWidths(std::vector<TAutoColumn> columns, int room);
