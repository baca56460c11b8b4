#include "volindex/readers/folders/FoldersReader.h"

#include "volindex/IndexAnswer.h"
#include "volindex/TestTree.h"
#include "volindex/posix/ScanRoot.h"

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <random>
#include <thread>

namespace volindex {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kThreads = 4;
constexpr unsigned kPlenty = 64;

struct TReading {
  TReadResult Result;
  TVolumeIndex Index;
};

TReading Read(const fs::path& root, unsigned threads = kThreads, unsigned openLimit = kPlenty) {
  const std::atomic<bool> stop{false};
  TFoldersReader reader(threads, openLimit);
  TIndexBuilder builder;
  const TReadResult result =
      reader.Read(DescribeScanRoot(root.string()).value(), builder, {stop, [](int) {}});
  return {result, builder.TakeIndex()};
}

TAnswer AnswerFor(const fs::path& root, unsigned threads = kThreads, unsigned openLimit = kPlenty) {
  const TReading reading = Read(root, threads, openLimit);
  EXPECT_EQ(reading.Result, TReadResult::Done);
  return AnswerOf(reading.Index);
}

// Names that sort around the delimiter and that are no UTF-8, few sizes, links of both kinds, pipes.
void Populate(TTestTree& tree, unsigned entries) {
  std::mt19937 random(7);
  std::vector<std::string> folders{""};
  std::vector<std::string> files{"first"};
  tree.AddFile("first", 5);
  for (unsigned i = 0; i < entries; ++i) {
    static const std::vector<std::string> kBeginnings{"a", "a-",           "a.",     "\xff\xfe",
                                                      "b", "\xe2\x82\xac", ".hidden"};
    const std::string path =
        folders[random() % folders.size()] + kBeginnings[random() % kBeginnings.size()] + std::to_string(i);
    const fs::path full = tree.Root() / path;
    switch (random() % 8) {
      case 0:
        tree.AddFolder(path);
        folders.push_back(path + '/');
        break;
      case 1:
        fs::create_hard_link(tree.Root() / files[random() % files.size()], full);
        break;
      case 2:
        fs::create_symlink("/", full);
        break;
      case 3:
        ASSERT_EQ(::mkfifo(full.c_str(), 0600), 0);
        break;
      default:
        tree.AddFile(path, random() % 4 == 0 ? random() % 100 : uint64_t{1} << (random() % 40));
        files.push_back(path);
    }
  }
}

TEST(FoldersReader, SeesWhatFindSeesWhateverTheThreadsDo) {
  TTestTree tree;
  Populate(tree, 6000);
  const TAnswer expected = AnswerOfFind(tree.Root().string());
  ASSERT_GT(expected.FolderCount, 100U);
  for (const unsigned threads : {1U, 2U, 4U, 16U})
    EXPECT_EQ(AnswerFor(tree.Root(), threads), expected) << threads;
  EXPECT_EQ(AnswerFor(tree.Root(), 2, 1), expected);  // nearly every folder opened from the root
}

// The first name by whole path is neither the first by folder nor by name: '-' and '.' come before '/'.
TEST(FoldersReader, LinkedFileStandsUnderFirstFullPath) {
  TTestTree tree;
  tree.AddFile("z/a", 7);
  for (const char* name : {"a/x", "a-b/y", "a.b/0", "a0/0"}) {
    fs::create_directories((tree.Root() / name).parent_path());
    fs::create_hard_link(tree.Root() / "z/a", tree.Root() / name);
  }
  const TAnswer answer = AnswerFor(tree.Root());
  EXPECT_EQ(answer.Files, (std::vector<TListed>{{7, "a-b/y"}}));
  EXPECT_EQ(answer.Folders.front(), (TListed{7, "a-b"}));
  EXPECT_EQ(answer.Total, 7U);
}

// A chain that no path text can name, with a folder to come back to at each level.
TEST(FoldersReader, DeepTreeIsReadByDescriptor) {
  constexpr unsigned kDepth = 600;
  TTestTree tree;
  const fs::path before = fs::current_path();
  fs::current_path(tree.Root());
  for (unsigned level = 0; level < kDepth; ++level) {
    std::ofstream("file") << "1234567";
    fs::create_directory("side");
    std::ofstream("side/file") << "123";
    fs::create_directory("a folder with a long name");
    fs::current_path("a folder with a long name");
  }
  fs::current_path(before);
  for (const unsigned openLimit : {1U, 20U, 100'000U}) {
    const TAnswer answer = AnswerFor(tree.Root(), 2, openLimit);
    EXPECT_EQ(answer.Total, kDepth * 10U);
    EXPECT_EQ(answer.FolderCount, kDepth * 2U);
  }
}

TEST(FoldersReader, UnreadableFoldersCountForNothingAndAreCounted) {
  TTestTree tree;
  tree.AddFile("open/file", 3);
  tree.AddFile("shut/file", 5);
  tree.AddFile("names only/file", 7);
  fs::permissions(tree.Root(), fs::perms::all);
  fs::permissions(tree.Root() / "shut", fs::perms::none);
  fs::permissions(tree.Root() / "names only", fs::perms::owner_read | fs::perms::others_read);
  const uid_t user = ::geteuid();
  ASSERT_EQ(user == 0 ? ::seteuid(65534) : 0, 0);
  const TReading reading = Read(tree.Root(), 1);
  ASSERT_EQ(::seteuid(user), 0);
  for (const char* folder : {"shut", "names only"})
    fs::permissions(tree.Root() / folder, fs::perms::all);
  EXPECT_EQ(reading.Index.Statistics().Unreadable, 2U);
  const TAnswer answer = AnswerOf(reading.Index);
  EXPECT_EQ(answer.Folders, (std::vector<TListed>{{3, "open"}, {0, "names only"}, {0, "shut"}}));
  EXPECT_EQ(answer.Total, 3U);
}

// Another file system, and a part of the same one under a second path.
TEST(FoldersReader, DoesNotEnterWhatIsMountedBelow) {
  TTestTree tree;
  tree.AddFile("origin/file", 9);
  tree.AddFile("bind/below", 100);
  tree.AddFile("memory/below", 100);
  const std::string bind = (tree.Root() / "bind").string();
  const std::string memory = (tree.Root() / "memory").string();
  if (::mount((tree.Root() / "origin").c_str(), bind.c_str(), nullptr, MS_BIND, nullptr) != 0)
    GTEST_SKIP() << "mounting is not permitted";
  const bool mounted = ::mount("none", memory.c_str(), "tmpfs", 0, nullptr) == 0;
  if (mounted) std::ofstream(memory + "/inside") << "12345";
  const auto root = DescribeScanRoot(bind);
  const TAnswer answer = AnswerFor(tree.Root());
  ::umount(bind.c_str());
  if (mounted) ::umount(memory.c_str());
  ASSERT_TRUE(mounted && root.has_value());
  EXPECT_FALSE(root->IsVolumeRoot);  // a part of its volume only
  EXPECT_EQ(answer.Folders, (std::vector<TListed>{{9, "origin"}, {0, "bind"}, {0, "memory"}}));
  EXPECT_EQ(answer.FileCount, 1U);
}

TEST(FoldersReader, TreeThatVanishesMeanwhileDoesNoHarm) {
  for (unsigned round = 0; round < 3; ++round) {
    TTestTree tree;
    Populate(tree, 1000);
    std::thread remover([&tree] {
      for (const auto& entry : fs::directory_iterator(tree.Root()))
        fs::remove_all(entry.path());
    });
    const TReading reading = Read(tree.Root());
    remover.join();
    EXPECT_EQ(reading.Result, TReadResult::Done);
    EXPECT_EQ(reading.Index.Statistics().Unreadable, 0U);
  }
}

TEST(FoldersReader, VanishedRootIsHandedOver) {
  TScanRoot root;
  root.Path = "/no such folder";
  const std::atomic<bool> stop{false};
  TIndexBuilder builder;
  EXPECT_EQ(TFoldersReader().Read(root, builder, {stop, [](int) {}}), TReadResult::HandedOver);
}

// The flag is set from within, so that reading is surely going on.
TEST(FoldersReader, StopsWithinATenthOfASecond) {
  using TClock = std::chrono::steady_clock;
  TTestTree tree;
  Populate(tree, 2500);
  for (const int stopAt : {1, 30, 90}) {
    std::atomic<bool> stop{false};
    TClock::time_point stopped = TClock::now();
    const auto progress = [&](int percent) {
      if (percent < stopAt || stop.exchange(true)) return;
      stopped = TClock::now();
    };
    TIndexBuilder builder;
    TFoldersReader reader(2, kPlenty);
    EXPECT_EQ(reader.Read(DescribeScanRoot(tree.Root().string()).value(), builder, {stop, progress}),
              TReadResult::Stopped);
    EXPECT_LT(TClock::now() - stopped, std::chrono::milliseconds(100));
  }
}

}  // namespace
}  // namespace volindex
