// Mounted volumes, read through the reader as a scan does it, beside a walk of the mounted tree. Needs the
// right to mount; skipped without.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "Volumes.h"
#include "volindex/IndexAnswer.h"
#include "volindex/TestSystem.h"
#include "volindex/readers/ext4/Ext4Reader.h"
#include "volindex/system/ScanRoot.h"

namespace volindex::ext4 {
namespace {

namespace fs = std::filesystem;

class MountTest : public testing::Test {
 protected:
  void TearDown() override {
    umount2(FRoot.c_str(), MNT_DETACH);
    if (!FLoop.empty()) Shell("losetup -d " + FLoop);
  }

  void Mount(const std::string& options, const std::string& size = "512M") {
    if (geteuid() != 0 || access("/dev/loop-control", W_OK) != 0) GTEST_SKIP() << "no right to mount";
    fs::create_directory(FRoot);
    fs::create_directory(FScratch.Path("empty"));
    ASSERT_TRUE(MakeImage(FImage, size, options, FScratch.Path("empty")));
    const std::string device = FScratch.Path("device");
    ASSERT_TRUE(Shell("losetup --find --show " + FImage + " > " + device));
    std::getline(std::ifstream(device) >> std::ws, FLoop);
    ASSERT_TRUE(Shell("mount " + FLoop + " " + FRoot));
  }

  [[nodiscard]] static TOutcome Read(const std::string& path) {
    const auto root = DescribeScanRoot(path);
    TExt4Reader reader;
    TOutcome outcome;
    if (!root || !reader.Accepts(*root)) return outcome;
    TIndexBuilder builder;
    for (const std::string& mount : root->MountsBelow)
      builder.CoverPath(mount);
    const std::atomic<bool> stop{false};
    outcome.Result = reader.Read(*root, builder, {stop, {}});
    if (outcome.Result == TReadResult::Done) outcome.Index = builder.TakeIndex();
    return outcome;
  }

  void ExpectRead() {
    const TOutcome outcome = Read(FRoot);
    ASSERT_EQ(outcome.Result, TReadResult::Done);
    EXPECT_EQ(AnswerOf(outcome.Index), AnswerOfDisk(FRoot));
  }

  TTestTree FScratch;
  std::string FRoot = FScratch.Path("root");
  std::string FImage = FScratch.Path("image");
  std::string FLoop;
};

class MountedKindTest : public MountTest, public testing::WithParamInterface<const char*> {};

TEST_P(MountedKindTest, ChangesOfEveryKindAreSeen) {
  ASSERT_NO_FATAL_FAILURE(Mount(GetParam()));
  if (IsSkipped()) return;
  MakeVariedTree(FRoot + "/varied");
  ExpectRead();
  fs::rename(FRoot + "/varied/d0/d1/d2", FRoot + "/moved");
  fs::remove_all(FRoot + "/varied/wide 40");
  fs::remove(FRoot + "/varied/links/m");
  fs::resize_file(FRoot + "/varied/wide 50/file number 3", 123456789);
  WriteFile(FRoot + "/new", std::string(100000, 'n'));
  ExpectRead();
}

INSTANTIATE_TEST_SUITE_P(Kinds, MountedKindTest,
                         testing::Values("-t ext2", "-t ext3", "-t ext4", "-t ext4 -O inline_data -I 512",
                                         "-t ext4 -b 1024 -O bigalloc",
                                         "-t ext4 -O ^metadata_csum,uninit_bg"));

TEST_F(MountTest, FiftyThousandFilesInOneHashedFolder) {
  ASSERT_NO_FATAL_FAILURE(Mount("-t ext4 -b 1024 -N 60000"));
  if (IsSkipped()) return;
  fs::create_directory(FRoot + "/hashed");
  for (int i = 0; i < 50000; ++i) {
    const std::string path = FRoot + "/hashed/file " + std::to_string(i);
    close(open(path.c_str(), O_CREAT | O_WRONLY, 0600));
    if (i % 7 == 0) fs::resize_file(path, static_cast<std::uintmax_t>(i));
  }
  ExpectRead();
}

TEST_F(MountTest, DeletedButOpenFilesAndFoldersDoNotCount) {
  ASSERT_NO_FATAL_FAILURE(Mount("-t ext4"));
  if (IsSkipped()) return;
  WriteFile(FRoot + "/gone", std::string(1 << 20, 'g'));
  WriteFile(FRoot + "/stays", "s");
  fs::create_directory(FRoot + "/gone folder");
  const int file = open((FRoot + "/gone").c_str(), O_RDONLY);
  const int folder = open((FRoot + "/gone folder").c_str(), O_RDONLY);
  fs::remove(FRoot + "/gone");
  fs::remove(FRoot + "/gone folder");
  ExpectRead();
  close(file);
  close(folder);
}

TEST_F(MountTest, FolderCoveredByAnotherMountIsEmpty) {
  ASSERT_NO_FATAL_FAILURE(Mount("-t ext4"));
  if (IsSkipped()) return;
  fs::create_directories(FRoot + "/a b/covered/inner");
  WriteFile(FRoot + "/a b/covered/inner/hidden", std::string(5000, 'h'));
  fs::create_hard_link(FRoot + "/a b/covered/inner/hidden", FRoot + "/z name outside");
  const std::string cover = FRoot + "/a b/covered";
  ASSERT_EQ(mount("none", cover.c_str(), "tmpfs", 0, nullptr), 0);
  WriteFile(cover + "/of the other volume", "other");
  const TOutcome outcome = Read(FRoot);
  ASSERT_EQ(outcome.Result, TReadResult::Done);
  EXPECT_EQ(outcome.Index.FileCount(), 1u);
  EXPECT_EQ(outcome.Index.FolderTotal(kRootFolder), 5000u);
  EXPECT_TRUE(outcome.Index.FindFolder("a b/covered"));
  EXPECT_FALSE(outcome.Index.FindFolder("a b/covered/inner"));
  umount(cover.c_str());
}

TEST_F(MountTest, OnlyTheRootOfAVolumeIsAccepted) {
  ASSERT_NO_FATAL_FAILURE(Mount("-t ext4"));
  if (IsSkipped()) return;
  fs::create_directories(FRoot + "/part");
  const std::string bind = FScratch.Path("bind");
  fs::create_directory(bind);
  ASSERT_EQ(mount((FRoot + "/part").c_str(), bind.c_str(), nullptr, MS_BIND, nullptr), 0);
  EXPECT_EQ(Read(FRoot + "/part").Result, TReadResult::HandedOver);
  EXPECT_EQ(Read(bind).Result, TReadResult::HandedOver);
  umount(bind.c_str());
  auto root = DescribeScanRoot(FRoot);
  ASSERT_TRUE(root);
  EXPECT_TRUE(TExt4Reader().Accepts(*root));
  root->DeviceMinor ^= 1;
  EXPECT_FALSE(TExt4Reader().Accepts(*root));
}

TEST_F(MountTest, JournalInUseIsTrustedOnlyWhileMounted) {
  ASSERT_NO_FATAL_FAILURE(Mount("-t ext4", "64M"));
  if (IsSkipped()) return;
  WriteFile(FRoot + "/file", "f");
  ExpectRead();
  const std::string copy = FScratch.Path("copy");
  ASSERT_TRUE(Shell("cp " + FLoop + " " + copy));
  EXPECT_EQ(ScanImage(copy).Result, TReadResult::HandedOver);
  ASSERT_TRUE(Shell("e2fsck -fy " + copy + " || test $? -eq 1"));
  EXPECT_EQ(ScanImage(copy).Result, TReadResult::Done);
}

}  // namespace
}  // namespace volindex::ext4
