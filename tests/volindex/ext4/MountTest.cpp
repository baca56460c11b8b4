// Mounted volumes, read through the reader as a scan does it, beside a walk of the mounted tree.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include "Images.h"
#include "volindex/readers/ext4/Ext4Reader.h"
#include "volindex/system/ScanRoot.h"

namespace volindex::ext4 {
namespace {

namespace fs = std::filesystem;

struct TMounted : TMountedVolume {
  explicit TMounted(const std::string& options, const std::string& size = "512M")
      : TMountedVolume(size, "mke2fs -q -F " + options + " $image", "mount $device $root") {}
};

class MountedKindTest : public testing::TestWithParam<const char*> {};

TEST_P(MountedKindTest, ChangesOfEveryKindAreSeen) {
  const TMounted volume(GetParam());
  SKIP_IF_REFUSED(volume);
  TExt4Reader reader;
  const std::string& root = volume.Root();
  MakeVariedTree(root + "/varied");
  volume.ExpectSame(reader);
  fs::rename(root + "/varied/d0/d1/d2", root + "/moved");
  fs::remove_all(root + "/varied/wide 40");
  fs::remove(root + "/varied/links/m");
  fs::resize_file(root + "/varied/wide 50/file number 3", 123456789);
  WriteFile(root + "/new", std::string(100000, 'n'));
  volume.ExpectSame(reader);
}

INSTANTIATE_TEST_SUITE_P(Kinds, MountedKindTest,
                         testing::Values("-t ext2", "-t ext3", "-t ext4", "-t ext4 -O inline_data -I 512",
                                         "-t ext4 -b 1024 -O bigalloc",
                                         "-t ext4 -O ^metadata_csum,uninit_bg"));

TEST(MountTest, AHashedFolderOfThousandsAndWhatIsDeletedButOpen) {
  const TMounted volume("-t ext4 -b 1024 -N 60000");
  SKIP_IF_REFUSED(volume);
  const std::string& root = volume.Root();
  fs::create_directories(root + "/hashed/gone folder");
  for (int i = 0; i < 20000; ++i)
    MakeFile(root + "/hashed/file " + std::to_string(i), static_cast<std::uint64_t>(i % 7));
  const int file = open((root + "/hashed/file 1").c_str(), O_RDONLY);
  const int folder = open((root + "/hashed/gone folder").c_str(), O_RDONLY);
  fs::remove(root + "/hashed/file 1");
  fs::remove(root + "/hashed/gone folder");
  TExt4Reader reader;
  volume.ExpectSame(reader);
  close(file);
  close(folder);
}

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
  TExt4Reader reader;
  const auto index = TMountedVolume::Read(reader, root);
  ASSERT_TRUE(index);
  EXPECT_EQ(index->FileCount(), 1u);
  EXPECT_EQ(index->FolderTotal(kRootFolder), 5000u);
  EXPECT_TRUE(index->FindFolder("a b/covered"));
  EXPECT_FALSE(index->FindFolder("a b/covered/inner"));
  ASSERT_EQ(mount((root + "/a b").c_str(), cover.c_str(), nullptr, MS_BIND, nullptr), 0);
  EXPECT_FALSE(TMountedVolume::Read(reader, root + "/a b")) << "no mount";
  EXPECT_FALSE(TMountedVolume::Read(reader, cover)) << "a part of the volume";
  umount(cover.c_str());
  umount(cover.c_str());
  auto described = DescribeScanRoot(root);
  ASSERT_TRUE(described);
  EXPECT_TRUE(reader.Accepts(*described));
  described->DeviceMinor ^= 1;
  EXPECT_FALSE(reader.Accepts(*described));
}

TEST(MountTest, JournalInUseIsTrustedOnlyWhileMounted) {
  const TMounted volume("-t ext4", "64M");
  SKIP_IF_REFUSED(volume);
  WriteFile(volume.Root() + "/file", "f");
  TExt4Reader reader;
  volume.ExpectSame(reader);
  const std::string copy = volume.Image() + ".copy";
  ASSERT_TRUE(Shell("cp " + volume.Device() + " " + copy));
  EXPECT_EQ(ScanImage(copy).Result, TReadResult::HandedOver);
  ASSERT_TRUE(Shell("e2fsck -fy " + copy + " || test $? -eq 1"));
  EXPECT_EQ(ScanImage(copy).Result, TReadResult::Done);
}

}  // namespace
}  // namespace volindex::ext4
