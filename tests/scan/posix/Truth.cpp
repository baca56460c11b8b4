#include "scan/Truth.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <algorithm>

// Devices, sockets and pipes are what has kAttributeSystem.
TTruth AskSystem(const QString& root) {
  QProcess find;
  find.start(u"find"_qs, {root, u"-xdev"_qs, u"-mindepth"_qs, u"1"_qs, u"-printf"_qs, u"%y %d %s %p\\0"_qs});
  EXPECT_TRUE(find.waitForFinished(120'000));
  TTruth truth;
  for (const QByteArray& line : find.readAllStandardOutput().split('\0')) {
    if (line.isEmpty()) continue;
    const char type = line[0];
    const QList<QByteArray> parts = line.split(' ');
    const QByteArray path = line.mid(parts[0].size() + parts[1].size() + parts[2].size() + 3);
    const bool plain = type == 'f' || type == 'l';
    if (type == 'd')
      ++truth.Folders;
    else if (plain || parts[1] != "1")
      truth.Files.emplace_back(path, plain ? parts[2].toULongLong() : 0);
  }
  std::sort(truth.Files.begin(), truth.Files.end());
  return truth;
}
