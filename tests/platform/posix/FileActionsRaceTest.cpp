// Another program swaps a folder above the entry for a link to a precious tree, over and over, while files
// are deleted and moved: what lies in the precious tree stays.
#include "platform/FileActions.h"

#include "SystemCalls.h"
#include "fixtures/TempTree.h"
#include "fixtures/Variables.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "platform/posix/FileDescriptor.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <array>
#include <cstdio>
#include <filesystem>
#include <thread>

namespace {

// "root/above" is a folder now and a link to "precious" then; what is meant is "root/above/parent/...".
class TSwaps {
 public:
  explicit TSwaps(const QByteArray& root) : FFolder(OpenPath(root, O_PATH | O_DIRECTORY)) {
    FThread = std::thread([this] {
      while (!FEnd) {
        EXPECT_EQ(renameat2(FFolder.Get(), "above", FFolder.Get(), "spare", RENAME_EXCHANGE), 0);
        ++FCount;
      }
    });
  }
  ~TSwaps() {
    FEnd = true;
    FThread.join();
  }
  TSwaps(const TSwaps&) = delete;
  TSwaps& operator=(const TSwaps&) = delete;

  [[nodiscard]] int Count() const { return FCount; }

 private:
  const TFileDescriptor FFolder;
  std::atomic<bool> FEnd{false};
  std::atomic<int> FCount{0};
  std::thread FThread;
};

using TAct = bool (*)(const TOpenFolder& parent, const TOpenFolder& other);

constexpr std::array<TAct, 5> kActs{
    [](const TOpenFolder& parent, const TOpenFolder&) { return DeletePlain(parent, u"file"_qs); },
    [](const TOpenFolder& parent, const TOpenFolder&) { return ShellDeleteSilent(parent, u"file"_qs); },
    [](const TOpenFolder& parent, const TOpenFolder& other) {
      TActionProgress progress;
      return MoveEntry(parent, u"file"_qs, other, progress) && DeletePlain(other, u"file"_qs);
    },
    [](const TOpenFolder& parent, const TOpenFolder& other) {
      const TPlannedCalls calls({.OtherVolume = true});
      TActionProgress progress;
      return MoveEntry(parent, u"file"_qs, other, progress) && DeletePlain(other, u"file"_qs);
    },
    [](const TOpenFolder& parent, const TOpenFolder&) {
      return DeleteFolderWithUndo(parent, u"folder"_qs, QString()) == TActionResult::Done;
    }};

TEST(FileActionsRace, SwappedFoldersNeverLeadElsewhere) {
  const int swaps = std::max(qEnvironmentVariableIntValue("TALLYSCOPE_SWAPS"), 4'000);
  const TVariables place{{"TMPDIR", std::filesystem::exists("/dev/shm") ? "/dev/shm" : nullptr}};
  TTempTree tree;
  tree.MakeFolder("home");
  tree.MakeFolder("other");
  tree.MakeFolder("root/above/parent");
  tree.MakeLink("root/spare", "../precious");
  tree.WriteFile("precious/parent/file", "precious");
  tree.WriteFile("precious/parent/folder/inside", "precious");
  const QByteArray home = NameToBytes(tree.Path("home"));
  const TVariables user{{"HOME", home.constData()}, {"XDG_DATA_HOME", nullptr}};
  const TOpenFolder other = TOpenFolder::Open(tree.Path("other"));
  const TFileDescriptor parent = OpenPath(NameToBytes(tree.Path("root/above/parent")), O_PATH | O_DIRECTORY);

  std::array<int, kActs.size()> done{};
  int refused = 0;
  {
    const TSwaps swapping(NameToBytes(tree.Path("root")));
    for (size_t i = 0; swapping.Count() < swaps || refused < 100 || i < 500; ++i) {
      mkdirat(parent.Get(), "folder", 0755);
      const TFileDescriptor file(openat(parent.Get(), "file", O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
      const TOpenFolder opened = OpenBelowRoot(tree.Path("root"), tree.Path("root/above/parent"));
      if (!opened.IsOpen()) ++refused;
      if (kActs[i % kActs.size()](opened, other)) ++done[i % kActs.size()];
    }
  }
  for (const int count : done)
    EXPECT_GT(count, 0);
  EXPECT_EQ(ReadWholeFile(tree.Path("precious/parent/file")), QByteArray("precious"));
  EXPECT_EQ(ReadWholeFile(tree.Path("precious/parent/folder/inside")), QByteArray("precious"));
}

}  // namespace
