// Mounted volumes, read as a scan does it, beside a walk of the mounted tree.
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <thread>

#include "volindex/posix/Volumes.h"

namespace volindex {
namespace {

namespace fs = std::filesystem;

struct TKind {
  std::string Reader;
  std::string Make;
};

struct TMounted : TMountedVolume {
  explicit TMounted(const TKind& kind) : TMountedVolume("400M", kind.Make + " $image") {}
};

const TKind kExt4{"ext4", "mke2fs -q -F -t ext4"}, kXfs{"xfs", "mkfs.xfs -q -f"},
    kBtrfs{"btrfs", "mkfs.btrfs -q -f"};

// Also what is deleted but open, shared blocks, and what no listing tells the kind of.
TEST(MountTest, ChangesOfEveryKindAreSeen) {
  const TKind kKinds[] = {kXfs,
                          kBtrfs,
                          {"ext4", "mke2fs -q -F -t ext2"},
                          {"ext4", "mke2fs -q -F -t ext3"},
                          {"ext4", "mke2fs -q -F -t ext4 -b 1024"},
                          {"ext4", "mke2fs -q -F -t ext4 -O inline_data -I 512"},
                          {"ext4", "mke2fs -q -F -t ext4 -b 1024 -O bigalloc"},
                          {"ext4", "mke2fs -q -F -t ext4 -O ^metadata_csum,uninit_bg"},
                          {"xfs", "mkfs.xfs -q -f -m crc=0,reflink=0 -n ftype=0"},
                          {"xfs", "mkfs.xfs -q -f -i size=512 -b size=1024"}};
  for (const TKind& kind : kKinds) {
    SCOPED_TRACE(kind.Make);
    const TMounted volume(kind);
    if (volume.Refusal().find("wrong fs type") != std::string::npos) continue;  // too old for this kernel
    SKIP_IF_REFUSED(volume);
    const std::string& root = volume.Root();
    MakeVariedTree(root + "/varied", "ext4");
    volume.ExpectSame(kind.Reader);
    fs::rename(root + "/varied/d0/d1/d2", root + "/moved");
    fs::remove_all(root + "/varied/wide 40");
    fs::resize_file(root + "/varied/wide 50/file number 3", 123456789);
    WriteFile(root + "/new", std::string(100000, 'n'));
    Shell("cp --reflink=auto " + root + "/new " + root + "/shared");
    const int file = open((root + "/varied/aaa").c_str(), O_RDONLY);
    const int folder = open((root + "/varied/odd/empty").c_str(), O_RDONLY);
    for (const char* gone : {"/varied/aaa", "/varied/odd/empty", "/varied/sparse"})
      fs::remove(root + gone);
    volume.ExpectSame(kind.Reader);
    close(file);
    close(folder);
  }
}

class EachMountTest : public testing::TestWithParam<TKind> {};

TEST_P(EachMountTest, OtherMountsHideAndOthersRightsAreNotEnough) {
  const TMounted volume(GetParam());
  SKIP_IF_REFUSED(volume);
  const std::string& root = volume.Root();
  const std::string cover = root + "/a b/covered";
  const auto answer = [](const std::string& path) { return AnswerOfReader(GetParam().Reader.c_str(), path); };
  fs::create_directories(cover + "/inner");
  WriteFile(cover + "/inner/hidden", std::string(5000, 'h'));
  fs::create_hard_link(cover + "/inner/hidden", root + "/z name outside");
  ASSERT_EQ(mount("none", cover.c_str(), "tmpfs", 0, nullptr), 0);
  WriteFile(cover + "/of the other volume", "other");
  volume.ExpectSame(GetParam().Reader);
  ASSERT_EQ(mount((root + "/a b").c_str(), cover.c_str(), nullptr, MS_BIND, nullptr), 0);
  EXPECT_EQ(answer(root + "/a b"), TAnswer()) << "no mount";
  EXPECT_EQ(answer(cover), TAnswer()) << "a part of the volume";
  umount(cover.c_str());
  umount(cover.c_str());
  fs::permissions(fs::path(root).parent_path(), fs::perms::all);
  const uid_t user = ::geteuid();
  ASSERT_EQ(::seteuid(65534), 0);
  EXPECT_EQ(answer(root), TAnswer()) << "no rights";
  const TAnswer folders = AnswerOfReader("folders", root);
  ASSERT_EQ(::seteuid(user), 0);
  EXPECT_EQ(folders.FileCount, 1U);
  auto described = DescribeScanRoot(root).value();
  const auto reader = MakeReaders();
  const auto accepted = [&] {
    return std::ranges::count_if(reader, [&](const auto& each) { return each->Accepts(described); });
  };
  EXPECT_EQ(accepted(), 2) << "its own and that of folders";
  described.Device = "/dev/null";
  described.DeviceMinor ^= GetParam().Reader == "ext4" ? 1U : 0U;
  EXPECT_EQ(accepted(), GetParam().Reader == "ext4" ? 1 : 2) << "which alone reads from the device";
}

// Each total lies between what stays and what there is at most; moves within the volume change nothing.
TEST_P(EachMountTest, AnotherProcessMayWriteMeanwhile) {
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
    EXPECT_LE(total, uint64_t{10} * (kFiles + 200)) << round;
    EXPECT_GE(total, uint64_t{10} * (kFiles - 200)) << round;
  }
  end = true;
  writer.join();
  volume.ExpectSame(GetParam().Reader);
}

INSTANTIATE_TEST_SUITE_P(Kinds, EachMountTest, testing::Values(kExt4, kXfs, kBtrfs),
                         [](const auto& row) { return row.param.Reader; });

// A snapshot keeps nothing of the subvolumes in it but empty folders.
TEST(MountTest, SubvolumesAreVolumesOfTheirOwn) {
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

void SetAttribute(const fs::path& path, const char* name, std::span<const std::byte> value) {
  EXPECT_EQ(::setxattr(path.c_str(), name, value.data(), value.size(), 0), 0);
}

// Streams, a long run list (every second piece of the file is a hole), a name for DOS, compressed data.
void MakeAttributes(const fs::path& root, bool compressed) {
  fs::create_directories(root / "compressed");
  WriteFile(root / "streams", "with streams");
  for (unsigned i = 0; i < 60; ++i)
    SetAttribute(root / "streams", ("user.stream" + std::to_string(i)).c_str(),
                 std::vector<std::byte>(100 + i * 90));
  const int file = ::open((root / "fragmented").c_str(), O_CREAT | O_WRONLY, 0600);
  for (off_t i = 0; i < 600; ++i)
    EXPECT_EQ(::pwrite(file, "piece", 5, i << 18), 5);
  ::close(file);
  fs::create_hard_link(root / "fragmented", root / std::string(200, 'f'));
  const std::string_view dos = "SHORT~1";
  WriteFile(root / "a longer name.text", "321");
  SetAttribute(root / "a longer name.text", "system.ntfs_dos_name", std::as_bytes(std::span(dos)));
  const std::uint32_t flag = 0x800;
  if (compressed) SetAttribute(root / "compressed", "system.ntfs_attrib", std::as_bytes(std::span(&flag, 1)));
  WriteFile(root / "compressed" / "text", std::string(400000, 'c'));
}

TEST(MountTest, NtfsReadersSeeWhatAWalkSees) {
  for (const unsigned cluster : {512U, 4096U, 65536U}) {
    const std::string size = std::to_string(cluster), sector = cluster == 4096 ? " -s 4096" : " -s 512";
    SCOPED_TRACE(size);
    const TMountedVolume volume(cluster > 4096 ? "256M" : "64M",
                                "mkntfs -F -Q -q -p 0 -H 0 -S 0 -c " + size + sector + " $image",
                                "ntfs-3g -o compression $device $root");
    SKIP_IF_REFUSED(volume);
    MakeVariedTree(volume.Root(), "ntfs");
    MakeAttributes(volume.Root(), cluster <= 4096);
    volume.ExpectSame("ntfs");
    const auto readers = MakeReaders();
    const auto reader = std::ranges::find(readers, std::string("ntfs"), &TReader::Name);
    const TScanRoot good = DescribeScanRoot(volume.Root()).value();
    TScanRoot otherFileSystem = good, part = good, nothing = good;
    otherFileSystem.FileSystem = "vfat";
    part.IsVolumeRoot = false;
    nothing.Device = "/dev/null";
    EXPECT_TRUE((*reader)->Accepts(good));
    for (const TScanRoot& other : {otherFileSystem, part, nothing})
      EXPECT_FALSE((*reader)->Accepts(other));
  }
}

}  // namespace
}  // namespace volindex
