#include "volindex/posix/ScanRoot.h"

#include "volindex/TestTree.h"
#include "volindex/index/VolumeScan.h"
#include "volindex/readers/ByteSource.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fstream>

namespace volindex {
namespace {

TEST(ScanRoot, DeclinesWhatIsNoFolderOfADisk) {
  TTestTree tree;
  tree.AddFile("file", 1);
  for (const std::string& path : {(tree.Root() / "file").string(), (tree.Root() / "none").string(),
                                  std::string("/proc"), std::string("/sys/kernel"), std::string()})
    EXPECT_FALSE(DescribeScanRoot(path).has_value()) << path;
}

TEST(ScanRoot, OrdinaryFolderIsNoVolume) {
  TTestTree tree;
  std::filesystem::create_directory_symlink(tree.Root(), tree.Root() / "link");
  const auto root = DescribeScanRoot((tree.Root() / "link").string() + "/");
  ASSERT_TRUE(root.has_value());
  EXPECT_EQ(root->Path, std::filesystem::canonical(tree.Root()).string());
  EXPECT_FALSE(root->IsVolumeRoot);
  EXPECT_TRUE(root->Device.empty());
}

TEST(ScanRoot, ForcedReaderIsTheOnlyOne) {
  ::setenv("TALLYSCOPE_READER", "folders", 1);
  ASSERT_EQ(ReadersInUse().size(), 1U);
  EXPECT_STREQ(ReadersInUse().front()->Name(), "folders");
  ::setenv("TALLYSCOPE_READER", "no such reader", 1);
  EXPECT_TRUE(ReadersInUse().empty());
  EXPECT_FALSE(CanScan("/"));
  ::unsetenv("TALLYSCOPE_READER");
  EXPECT_TRUE(CanScan("/"));
}

TEST(ScanRoot, TraceIsOneLinePerVolume) {
  TTestTree tree;
  tree.AddFile("a/b", 1);
  const std::atomic<bool> stop{false};
  ::setenv("TALLYSCOPE_TRACE", "1", 1);
  testing::internal::CaptureStderr();
  EXPECT_EQ(ScanVolume(tree.Root().string(), {stop, [](int) {}}).FileCount(), 1U);
  const std::string trace = testing::internal::GetCapturedStderr();
  ::unsetenv("TALLYSCOPE_TRACE");
  EXPECT_TRUE(trace.starts_with("volindex: " + tree.Root().string() + ": folders, 2 entries, 0 unreadable"));
  EXPECT_EQ(trace.find('\n'), trace.size() - 1);
}

TEST(ByteSource, ReadsWithinTheSourceOnly) {
  TTestTree tree;
  std::ofstream(tree.Root() / "image") << "0123456789";
  const auto source = OpenByteSource((tree.Root() / "image").string());
  ASSERT_NE(source, nullptr);
  EXPECT_EQ(source->Size(), 10U);
  std::array<std::byte, 4> bytes{};
  EXPECT_TRUE(source->ReadAt(6, bytes));
  EXPECT_EQ(bytes.back(), std::byte{'9'});
  EXPECT_FALSE(source->ReadAt(7, bytes));
  EXPECT_FALSE(source->ReadAt(UINT64_MAX, bytes));
  EXPECT_EQ(OpenByteSource(tree.Root().string()), nullptr);
  EXPECT_EQ(OpenByteSource("/dev/null"), nullptr);
}

}  // namespace
}  // namespace volindex
