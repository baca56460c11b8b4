// What lies below a folder by the standard library's listing, in the order of a walk by one thread: the
// root's files, then one direct subfolder after the other, each breadth-first.
#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

struct TTruth {
  std::vector<std::pair<QByteArray, quint64>> Files;  // full path and size
  int Folders = 0;

  [[nodiscard]] quint64 Bytes() const {
    quint64 bytes = 0;
    for (const auto& file : Files)
      bytes += file.second;
    return bytes;
  }
};

// Without the root's own devices, sockets and pipes.
[[nodiscard]] TTruth AskSystem(const QString& root);
