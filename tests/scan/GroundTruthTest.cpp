// A walk finds exactly what the system's own find does, entry by entry and to the byte.
#include "fixtures/TempTree.h"
#include "platform/Paths.h"
#include "scan/Volindex.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryFile>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

struct TTruth {
  std::vector<std::pair<QByteArray, quint64>> Files;  // full path and size, sorted
  int Folders = 0;
};

// Devices, sockets and pipes of the root itself are left out, as a walk does.
TTruth AskFind(const QString& root) {
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

TTruth AskWalker(const QString& root) {
  TTallyscope walker(nullptr);
  walker.Scan(root);
  TTruth truth;
  quint64 total = 0;
  for (const TFileInfo& file : walker.Files()) {
    truth.Files.emplace_back(NameToBytes(file.Path + file.Name), file.Size);
    total += file.Size;
  }
  EXPECT_EQ(walker.TotalSize(), total);
  EXPECT_EQ(walker.FileCount(), walker.Files().Count());
  truth.Folders = walker.FolderCount();
  std::sort(truth.Files.begin(), truth.Files.end());
  return truth;
}

// Somebody may install a package meanwhile: two walks that agree with each other must agree with find.
void ExpectSame(const QString& root) {
  TTruth walked = AskWalker(root);
  TTruth found;
  for (int tries = 0; tries < 5; ++tries) {
    found = AskFind(root);
    TTruth again = AskWalker(root);
    if (again.Files == walked.Files) break;
    walked = std::move(again);
  }
  ASSERT_FALSE(found.Files.empty());
  EXPECT_EQ(walked.Folders, found.Folders);
  ASSERT_EQ(walked.Files.size(), found.Files.size());
  for (size_t i = 0; i < found.Files.size(); ++i)
    ASSERT_EQ(walked.Files[i], found.Files[i]);
}

}  // namespace

TEST(GroundTruth, ATreeOfEveryKindOfEntryIsFoundAsItIs) {
  TTempTree tree;
  std::mt19937 random(20260101);
  QByteArray folder;
  for (int i = 0; i < 1500; ++i) {
    const QByteArray name =
        folder + QByteArray(1 + static_cast<int>(random() % 60), 'n') + QByteArray::number(i);
    switch (random() % 8) {
      case 0:
        tree.MakeFolder(name), folder = random() % 2 == 0 ? name + '/' : QByteArray();
        break;
      case 1:
        tree.MakeLink(name + "\xe2\x82\xac", "../no\xff where");
        break;
      case 2:
        tree.MakeFifo(name);
        break;
      case 3:
        tree.MakeHole(name + "\xfe", static_cast<qint64>(random()) * 4096);
        break;
      default:
        tree.MakeFile(name, static_cast<qint64>(random() % 9000));
        break;
    }
  }
  ExpectSame(tree.Path());
}

TEST(GroundTruth, ARealFolderOfTheSystemIsFoundAsItIs) {
  ExpectSame(u"/usr/share"_qs);
}

// Shared memory below /dev is a file system of its own: a folder that counts and is not entered.
TEST(GroundTruth, WhatIsMountedBelowTheRootIsLeftAlone) {
  QTemporaryFile inside(u"/dev/shm/tallyscope-XXXXXX"_qs);
  // The file has no name on the disk before it is asked for it.
  if (!inside.open() || inside.fileName().isEmpty()) GTEST_SKIP() << "no shared memory here";
  ExpectSame(u"/dev"_qs);
}
