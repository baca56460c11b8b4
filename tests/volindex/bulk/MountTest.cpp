// Mounted XFS and Btrfs volumes, read as a scan does it, beside a walk of the mounted tree.
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <thread>

#include "volindex/IndexAnswer.h"
#include "volindex/posix/Volumes.h"
#include "volindex/readers/btrfs/BtrfsReader.h"
#include "volindex/readers/xfs/XfsReader.h"

namespace volindex {
namespace {

namespace fs = std::filesystem;

struct TKind {
  const char* Reader;
  const char* Make;
};

struct TMounted : TMountedVolume {
  explicit TMounted(const TKind& kind)
      : TMountedVolume("400M", std::string(kind.Make) + " -q -f $image", "mount $device $root") {}
};

class BulkMountTest : public testing::TestWithParam<TKind> {};

constexpr TKind kXfs{"xfs", "mkfs.xfs"};
constexpr TKind kBtrfs{"btrfs", "mkfs.btrfs"};

// Also what is deleted but open, shared blocks, and what no listing tells the kind of.
TEST_P(BulkMountTest, ChangesOfEveryKindAreSeen) {
  const TMounted volume(GetParam());
  SKIP_IF_REFUSED(volume);
  const std::string& root = volume.Root();
  MakeVariedTree(root + "/varied", "ext4");
  volume.ExpectSame(GetParam().Reader);
  fs::rename(root + "/varied/d0/d1/d2", root + "/moved");
  fs::remove_all(root + "/varied/wide 40");
  fs::resize_file(root + "/varied/wide 50/file number 3", 123456789);
  WriteFile(root + "/new", std::string(100000, 'n'));
  Shell("cp --reflink=always " + root + "/new " + root + "/shared");
  const int file = open((root + "/varied/aaa").c_str(), O_RDONLY);
  const int folder = open((root + "/varied/odd/empty").c_str(), O_RDONLY);
  for (const char* gone : {"/varied/aaa", "/varied/odd/empty", "/varied/sparse"})
    fs::remove(root + gone);
  volume.ExpectSame(GetParam().Reader);
  close(file);
  close(folder);
}

TEST_P(BulkMountTest, OtherMountsHideAndOthersRightsAreNotEnough) {
  const TMounted volume(GetParam());
  SKIP_IF_REFUSED(volume);
  const std::string& root = volume.Root();
  const std::string cover = root + "/a b/covered";
  fs::create_directories(cover + "/inner");
  WriteFile(cover + "/inner/hidden", std::string(5000, 'h'));
  fs::create_hard_link(cover + "/inner/hidden", root + "/z name outside");
  ASSERT_EQ(mount("none", cover.c_str(), "tmpfs", 0, nullptr), 0);
  WriteFile(cover + "/of the other volume", "other");
  volume.ExpectSame(GetParam().Reader);
  ASSERT_EQ(mount((root + "/a b").c_str(), cover.c_str(), nullptr, MS_BIND, nullptr), 0);
  EXPECT_EQ(AnswerOfReader(GetParam().Reader, root + "/a b"), TAnswer()) << "no mount";
  EXPECT_EQ(AnswerOfReader(GetParam().Reader, cover), TAnswer()) << "a part of the volume";
  umount(cover.c_str());
  umount(cover.c_str());
  fs::permissions(fs::path(root).parent_path(), fs::perms::all);
  const uid_t user = ::geteuid();
  ASSERT_EQ(::seteuid(65534), 0);
  EXPECT_EQ(AnswerOfReader(GetParam().Reader, root), TAnswer()) << "no rights";
  const TAnswer folders = AnswerOfReader("folders", root);
  ASSERT_EQ(::seteuid(user), 0);
  EXPECT_EQ(folders.FileCount, 1U);
}

// Each total lies between what stays and what there is at most; moves within the volume change nothing.
TEST_P(BulkMountTest, AnotherProcessMayWriteMeanwhile) {
  const TMounted volume(GetParam());
  SKIP_IF_REFUSED(volume);
  const std::string& root = volume.Root();
  for (const char* folder : {"/from", "/to", "/come and go"})
    fs::create_directory(root + folder);
  constexpr int kFiles = 2000;
  for (int i = 0; i < kFiles; ++i)
    WriteFile(root + "/from/" + std::to_string(i), std::string(10, 'x'));
  std::atomic<bool> end{false};
  std::thread writer([&] {
    for (int i = 0; !end; ++i) {
      const std::string name = "/" + std::to_string(i % kFiles);
      const bool there = i / kFiles % 2 == 0;
      fs::rename(root + (there ? "/from" : "/to") + name, root + (there ? "/to" : "/from") + name);
      WriteFile(root + "/come and go" + name, "0123456789");
      fs::remove(root + "/come and go" + name);
    }
  });
  for (int round = 0; round < 20; ++round) {
    const std::atomic<bool> goOn{false};
    const uint64_t total = ScanVolume(root, {goOn, [](int) {}}).FolderTotal(kRootFolder);
    EXPECT_LE(total, uint64_t{10} * (kFiles + 40)) << round;
    EXPECT_GE(total, uint64_t{10} * (kFiles - 200)) << round;
  }
  end = true;
  writer.join();
  volume.ExpectSame(GetParam().Reader);
}

INSTANTIATE_TEST_SUITE_P(Kinds, BulkMountTest, testing::Values(kXfs, kBtrfs),
                         [](const auto& row) { return row.param.Reader; });

// A snapshot keeps nothing of the subvolumes in it but empty folders.
TEST(BtrfsMountTest, SubvolumesAreVolumesOfTheirOwn) {
  const TMounted volume(kBtrfs);
  SKIP_IF_REFUSED(volume);
  const std::string& root = volume.Root();
  ASSERT_TRUE(
      Shell("cd " + root + R"( && btrfs subvolume create main && mkdir main/in && echo text >main/in/file &&
    btrfs subvolume create main/in/nested && echo more >main/in/nested/file && for i in $(seq 60); do
    btrfs subvolume create main/many$i; done && btrfs subvolume delete main/many7 &&
    btrfs subvolume snapshot -r main frozen && echo late >main/late && echo top >top && mkdir mounted)"));
  volume.ExpectSame("btrfs");
  for (const char* below : {"/main", "/main/in/nested", "/frozen"})
    EXPECT_EQ(AnswerOfReader("btrfs", root + below), AnswerOfDisk(root + below)) << below;
  ASSERT_EQ(mount((root + "/main").c_str(), (root + "/mounted").c_str(), nullptr, MS_BIND, nullptr), 0);
  EXPECT_EQ(AnswerOfReader("btrfs", root + "/mounted"), AnswerOfDisk(root + "/main"));
  EXPECT_TRUE(DescribeScanRoot(root + "/mounted")->IsVolumeRoot);
  EXPECT_EQ(AnswerOfReader("btrfs", root + "/main/in"), TAnswer()) << "no root of a subvolume";
  umount((root + "/mounted").c_str());
}

TEST(XfsMountTest, OldLayoutsAndManyGroupsAreRead) {
  for (const char* options : {"-m crc=0,reflink=0 -n ftype=0", "-i size=512 -b size=1024"}) {
    const std::string make = std::string("mkfs.xfs ") + options;
    const TMounted volume({"xfs", make.c_str()});
    if (volume.Refusal().find("wrong fs type") != std::string::npos) continue;  // too old for this kernel
    SKIP_IF_REFUSED(volume);
    MakeVariedTree(volume.Root() + "/varied", "ext4");
    volume.ExpectSame("xfs");
  }
}

}  // namespace
}  // namespace volindex
