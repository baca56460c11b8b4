// What only Linux has: permission bits, mounts, names of any bytes.
#include "volindex/IndexAnswer.h"
#include "volindex/TestTree.h"
#include "volindex/system/FolderAccess.h"
#include "volindex/system/Utf16.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <random>

namespace volindex {
namespace {

namespace fs = std::filesystem;

TEST(FoldersReader, UnreadableFoldersCountForNothingAndAreCounted) {
  TTestTree tree;
  tree.AddFile("open/file", 3);
  tree.AddFile("shut/file", 5);
  tree.AddFile("names only/file", 7);
  fs::permissions(tree.Root(), fs::perms::all);
  fs::permissions(tree.Root() / "shut", fs::perms::none);
  fs::permissions(tree.Root() / "names only", fs::perms(0444));
  const uid_t user = ::geteuid();
  ASSERT_EQ(user == 0 ? ::seteuid(65534) : 0, 0);
  const TReading reading = Read(tree.Root(), 1);
  ASSERT_EQ(::seteuid(user), 0);
  for (const char* folder : {"shut", "names only"})
    fs::permissions(tree.Root() / folder, fs::perms::all);
  EXPECT_EQ(reading.Index.Unreadable().size(), 2U);
  EXPECT_EQ(AnswerOf(reading.Index).Folders,
            (std::vector<TListed>{{3, "open"}, {0, "names only"}, {0, "shut"}}));
}

TEST(FolderHandle, NoPartOfAWayBelowAFolderMayBeALink) {
  TTestTree tree;
  tree.AddFile("real/inner/file", 1);
  fs::create_directory_symlink("real", tree.Root() / "link");
  const struct {
    const char* Way;
    TAccess Access;
  } ways[] = {{"real/inner", TAccess::Ok}, {"link", TAccess::Gone}, {"link/inner", TAccess::Gone}};
  TFolderHandle root;
  ASSERT_EQ(root.OpenRoot((tree.Root() / "link/inner/..").string()), TAccess::Ok) << "the user's own way";
  ASSERT_EQ(root.OpenRoot(tree.Root().string()), TAccess::Ok);
  for (const auto& [way, access] : ways) {
    TFolderHandle folder;
    EXPECT_EQ(folder.OpenBelow(root, way), access) << way;
  }
}

std::atomic<bool> flushBlocks{false};

// A disk that is slow to write, as long as the flag is set.
}  // namespace
}  // namespace volindex

extern "C" int syncfs(int descriptor) noexcept {
  volindex::flushBlocks.wait(true);
  return static_cast<int>(::syscall(SYS_syncfs, descriptor));
}

namespace volindex {
namespace {

TEST(FlushVolume, IsGivenUpAtOnceWhenStopped) {
  TTestTree tree;
  std::atomic<bool> stop{false};
  EXPECT_TRUE(FlushVolume(tree.Root().string(), stop));
  EXPECT_FALSE(FlushVolume(tree.Path("none"), stop));
  flushBlocks = true;
  stop = true;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(FlushVolume(tree.Root().string(), stop));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
  flushBlocks = false;
  flushBlocks.notify_all();
}

// Names of a twentieth as many files, told before their folders: what the heap holds then. Where paths are
// known as the names come, what adds nothing is forgotten.
TEST(Builder, LinkedNamesTakeFewBytes) {
  constexpr unsigned kNames = 400'000, kFiles = 20'000;
  for (const bool pathsKnown : {false, true}) {
    TIndexBuilder builder;
    builder.Begin(2, pathsKnown ? TFolderOrder::ParentsFirst : TFolderOrder::Any);
    const TFolderId up = builder.ReserveFolder(), below = builder.ReserveFolder();
    const auto setFolders = [&] {
      EXPECT_TRUE(builder.Shard(0).SetFolder(up, kRootFolder, "up") &&
                  builder.Shard(0).SetFolder(below, up, "below"));
    };
    if (pathsKnown) setFolders();
    const auto tell = [&] {
      for (unsigned i = 0; i < kNames; ++i)
        builder.Shard(0).AddLinkedFile(1 + i / (kNames / 2), "name " + std::to_string(i), i % kFiles,
                                       {i % kFiles});
    };
    const size_t before = ::mallinfo2().uordblks;
    tell();
    EXPECT_LT(::mallinfo2().uordblks - before, size_t{pathsKnown ? 10U : 24U} * kNames);
    if (pathsKnown) continue;
    setFolders();
    ASSERT_EQ(builder.Finish(std::atomic<bool>(false)), TFinish::TopListAgain);
    EXPECT_LT(::mallinfo2().uordblks - before, size_t{24} * kNames);
    tell();
    ASSERT_EQ(builder.Finish(std::atomic<bool>(false)), TFinish::Done);
    EXPECT_EQ(builder.TakeIndex().FileCount(), kFiles);
  }
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

TEST(ScanRoot, LinkIsScannedAsItsTarget) {
  TTestTree tree;
  fs::create_directory_symlink(tree.Root(), tree.Root() / "link");
  const auto root = DescribeScanRoot(tree.Path("link/"));
  ASSERT_TRUE(root.has_value());
  EXPECT_EQ(root->Path, fs::canonical(tree.Root()).string());
}

TEST(Utf16, AnyBytesComeBack) {
  std::mt19937 random(1);
  for (unsigned round = 0; round < 20'000; ++round) {
    std::string bytes(round % 12, '\0');
    for (char& byte : bytes)
      byte = static_cast<char>(random() % 3 == 0 ? random() : 0x80 | (random() & 0x7F));
    ASSERT_EQ(ToBytes(ToUtf16(bytes)), bytes);
  }
  EXPECT_EQ(ToBytes(std::u16string{0xD800, u'a', 0xDC01}), "?a?");
}

}  // namespace
}  // namespace volindex
