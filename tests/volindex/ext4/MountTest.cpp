// Mounted volumes, read as a scan does it, beside a walk of the mounted tree.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include "Images.h"
#include "volindex/IndexAnswer.h"
#include "volindex/readers/ext4/Ext4Reader.h"
#include "volindex/system/ScanRoot.h"

namespace volindex::ext4 {
namespace {

namespace fs = std::filesystem;

struct TMounted : TMountedVolume {
  explicit TMounted(const std::string& options)
      : TMountedVolume("192M", "mke2fs -q -F " + options + " $image", "mount $device $root") {}
};

class MountedKindTest : public testing::TestWithParam<const char*> {};

// Also what is deleted but open; the last remains as it was.
TEST_P(MountedKindTest, ChangesOfEveryKindAreSeen) {
  const TMounted volume(GetParam());
  SKIP_IF_REFUSED(volume);
  const std::string& root = volume.Root();
  MakeVariedTree(root + "/varied", "ext4");
  volume.ExpectSame("ext4");
  fs::rename(root + "/varied/d0/d1/d2", root + "/moved");
  fs::remove_all(root + "/varied/wide 40");
  fs::resize_file(root + "/varied/wide 50/file number 3", 123456789);
  WriteFile(root + "/new", std::string(100000, 'n'));
  const int file = open((root + "/varied/aaa").c_str(), O_RDONLY);
  const int folder = open((root + "/varied/odd/empty").c_str(), O_RDONLY);
  for (const char* gone : {"/varied/aaa", "/varied/odd/empty", "/varied/sparse"})
    fs::remove(root + gone);
  volume.ExpectSame("ext4");
  close(file);
  close(folder);
}

INSTANTIATE_TEST_SUITE_P(Kinds, MountedKindTest,
                         testing::Values("-t ext2", "-t ext3", "-t ext4 -b 1024",
                                         "-t ext4 -O inline_data -I 512", "-t ext4 -b 1024 -O bigalloc",
                                         "-t ext4 -O ^metadata_csum,uninit_bg"));

TEST(MountTest, OtherMountsHideAndOnlyTheRootOfAVolumeIsAccepted) {
  const TMounted volume("-t ext4");
  SKIP_IF_REFUSED(volume);
  const std::string& root = volume.Root();
  const std::string cover = root + "/a b/covered";
  fs::create_directories(cover + "/inner");
  WriteFile(cover + "/inner/hidden", std::string(5000, 'h'));
  fs::create_hard_link(cover + "/inner/hidden", root + "/z name outside");
  ASSERT_EQ(mount("none", cover.c_str(), "tmpfs", 0, nullptr), 0);
  WriteFile(cover + "/of the other volume", "other");
  volume.ExpectSame("ext4");
  ASSERT_EQ(mount((root + "/a b").c_str(), cover.c_str(), nullptr, MS_BIND, nullptr), 0);
  EXPECT_EQ(AnswerOfReader("ext4", root + "/a b"), TAnswer()) << "no mount";
  EXPECT_EQ(AnswerOfReader("ext4", cover), TAnswer()) << "a part of the volume";
  umount(cover.c_str());
  umount(cover.c_str());
  auto described = DescribeScanRoot(root);
  ASSERT_TRUE(described && TExt4Reader().Accepts(*described));
  described->DeviceMinor ^= 1;
  EXPECT_FALSE(TExt4Reader().Accepts(*described));
}

}  // namespace
}  // namespace volindex::ext4
