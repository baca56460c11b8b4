// What lies below a folder by another way than a walk of ours: on Linux the system's find, on Windows Qt's
// own listing.
#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

struct TTruth {
  std::vector<std::pair<QByteArray, quint64>> Files;  // full path and size, sorted
  int Folders = 0;

  [[nodiscard]] quint64 Bytes() const {
    quint64 bytes = 0;
    for (const auto& file : Files)
      bytes += file.second;
    return bytes;
  }
};

// Without the root's own entries that have kAttributeSystem.
[[nodiscard]] TTruth AskSystem(const QString& root);
