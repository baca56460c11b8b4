// What files occupy and what a volume says is used, on fresh volumes with trees whose use is known, beside
// what the file systems' own tools say.
#include "volindex/include/volindex_usage.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstring>
#include <thread>

#include "volindex/TestSystem.h"
#include "volindex/posix/Volumes.h"
#include "volindex/readers/btrfs/TreeItems.h"
#include "volindex/system/Utf16.h"

namespace volindex {
namespace {

namespace fs = std::filesystem;

struct TKind {
  const char* Reader;
  const char* Make;
  const char* Mount;
  const char* Odd;  // makes a file that readers tell differently
  uint64_t OddInBulk;
  uint64_t OddByFolders;
  const char* Tool;  // says how many bytes are used, for which the volume may be unmounted
};

constexpr uint64_t kKept = uint64_t{200} << 20;

// XFS counts what it keeps in reserve as used: so much for each group, and a pool.
const TKind kKinds[] = {
    {"ext4", "mke2fs -q -F -t ext4 -b 4096 $image", "mount $device $root",
     "touch odd; fallocate -n -l 200M odd", kKept, kKept,
     "umount $root; dumpe2fs -h $device 2>/dev/null | awk -F: '/^Block count/{b=$2} /^Free blocks/{f=$2} "
     "/^Overhead clusters/{o=$2} /^Block size/{s=$2} END{printf \"%.0f\", (b-o-f)*s}'"},
    {"xfs", "mkfs.xfs -q -f $image", "mount $device $root", "touch odd; fallocate -n -l 200M odd", kKept,
     kKept,
     "pool=$(xfs_io -x -c resblks $root | awk '/^reserved/{print $4}'); umount $root; "
     "{ xfs_db -r -c 'sb 0' -c 'p dblocks logblocks fdblocks' $device; for group in 0 1 2 3; do "
     "xfs_db -r -c \"agresv $group\" $device; done; } | awk -v used=$pool '/^dblocks/{used+=$3} "
     "/^(log|fd)blocks/{used-=$3} /^AG/{used+=$8-$10} END{printf \"%.0f\", used*4096}'"},
    {"btrfs", "mkfs.btrfs -q -f $image", "mount $device $root",
     "touch odd; btrfs property set odd compression zstd; head -c 1000000 /dev/zero | tr '\\0' z >odd; sync "
     "-f .",
     8 * 4096, 1'003'520,
     "btrfs filesystem usage -b $root | awk '/Used:/&&!u{u=$2} /Global reserve/{u+=$3} END{printf \"%.0f\", "
     "u}'"},
    {"ntfs", "mkntfs -F -Q -q -p 0 -H 0 -S 0 $image", "ntfs-3g -o streams_interface=windows $device $root",
     "head -c 60000 /dev/zero >odd:stream", 15 * 4096, 0,
     "umount $root; for try in $(seq 50); do said=$(ntfsinfo -m $device) && break; sleep 0.1; done; "
     "echo \"$said\" | awk -F: '/Cluster Size/{s=$2} /Volume Size in/{v=$2} /Free Clusters/{f=$2+0} "
     "END{printf \"%.0f\", (v-f)*s}'"}};

TTallyscopeUsage UsageBy(const char* reader, const std::string& path) {
  TTallyscopeUsage usage{};
  SetVariable("TALLYSCOPE_READER", reader);
  Tallyscope_ScanLocalDrive(ToUtf16(path).c_str());
  SetVariable("TALLYSCOPE_READER", nullptr);
  EXPECT_EQ(Tallyscope_GetUsage(&usage), 1) << reader;
  return usage;
}

uint64_t Left(const TTallyscopeUsage& usage) {
  return usage.VolumeUsed - usage.Allocated;
}

// What was deleted is freed a little later, behind the scenes.
TTallyscopeUsage UsageOnceFreed(const std::string& reader, const std::string& root, uint64_t mostLeft) {
  TTallyscopeUsage usage = UsageBy(reader.c_str(), root);
  for (int i = 0; i < 300 && Left(usage) > mostLeft; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    usage = UsageBy(reader.c_str(), root);
  }
  return usage;
}

// Holes, several names, what a mount hides and what is deleted but open.
class VolumeUsage : public testing::TestWithParam<TKind> {};

TEST_P(VolumeUsage, AddsUpAndAgreesWithTheTool) {
  const TKind& kind = GetParam();
  const TMountedVolume volume("400M", kind.Make, kind.Mount);
  SKIP_IF_REFUSED(volume);
  const std::string& root = volume.Root();
  ASSERT_TRUE(Shell("cd " + root + R"( && mkdir -p a/b hides/in && head -c 10000000 /dev/urandom >a/b/whole &&
    head -c 1000000 /dev/urandom >a/one && ln a/one a/b/two && ln a/one three && head -c 4096 /dev/urandom >hole &&
    truncate -s 300M hole && head -c 100000 /dev/urandom >hides/in/hidden && head -c 500000 /dev/urandom >gone &&
    mkfifo pipe && )" +
                    kind.Odd));
  ASSERT_EQ(mount("none", (root + "/hides").c_str(), "tmpfs", 0, nullptr), 0);
  constexpr uint64_t kKnown = 10'002'432 + 1'003'520 + 4096;
  constexpr uint64_t kGone = 123 * 4096;
  const TTallyscopeUsage bulk = UsageBy(kind.Reader, root);
  const TTallyscopeUsage folders = UsageBy("folders", root);
  EXPECT_EQ(bulk.Allocated, kKnown + kGone + kind.OddInBulk);
  EXPECT_EQ(folders.Allocated, kKnown + kGone + kind.OddByFolders);
  EXPECT_EQ(bulk.IsVolume + folders.IsVolume, 2U);
  EXPECT_EQ(UsageBy("folders", root + "/a").IsVolume, 0U);
  if (kind.Reader != std::string("ntfs")) {  // whose driver gives it another name
    const int open = ::open((root + "/gone").c_str(), O_RDONLY);
    fs::remove(root + "/gone");
    const TTallyscopeUsage after = UsageBy(kind.Reader, root);
    EXPECT_EQ(after.Allocated, bulk.Allocated - kGone);
    EXPECT_GE(Left(after), Left(bulk) + kGone);
    ::close(open);
  } else {
    fs::remove(root + "/gone");
  }
  umount((root + "/hides").c_str());
  const TTallyscopeUsage last = UsageOnceFreed(kind.Reader, root, Left(bulk));
  EXPECT_EQ(last.Allocated, kKnown + 25 * 4096 + kind.OddInBulk) << "with what was hidden";
  std::string said;
  ASSERT_TRUE(Try("root=" + root + "; device=$(findmnt -no SOURCE $root); " + kind.Tool, said)) << said;
  const double byTool = std::stod(said) - static_cast<double>(last.Allocated);
  EXPECT_NEAR(static_cast<double>(Left(last)), byTool, byTool / 100) << said;
}

INSTANTIATE_TEST_SUITE_P(Kinds, VolumeUsage, testing::ValuesIn(kKinds),
                         [](const auto& row) { return row.param.Reader; });

// Of what only older volumes have, or none that is new.
TEST(VolumeUsage, PiecesOfBtrfsFilesOccupyWhatTheySay) {
  const struct {
    uint8_t Compression, Kind;
    uint64_t Held, Place, Stored, Piece;
    size_t Length;
    std::optional<uint64_t> Bytes;
  } rows[] = {{0, 1, 8192, 4096, 8192, 4096, 53, 4096},
              {0, 1, 8192, 0, 0, 8192, 53, 0},
              {0, 0, 100, 1, 1, 1, 121, 0},
              {0, 2, 8192, 4096, 8192, 8192, 53, 8192},
              {3, 1, 8192, 4096, 4096, 4096, 53, 2048},
              {3, 1, 0, 4096, 4096, 4096, 53, 4096},
              {0, 1, 8192, 4096, 8192, 4096, 52, {}},
              {0, 0, 0, 0, 0, 0, 20, {}}};
  for (const auto& row : rows) {
    std::array<std::byte, 121> item{};
    item[16] = std::byte{row.Compression};
    item[20] = std::byte{row.Kind};
    for (const auto& [at, value] :
         {std::pair(8, row.Held), {21, row.Place}, {29, row.Stored}, {45, row.Piece}})
      std::memcpy(item.data() + at, &value, sizeof value);
    EXPECT_EQ(btrfs::ParseExtent(std::span(item).first(row.Length)), row.Bytes) << &row - rows;
  }
}

TEST(VolumeUsage, UnreadableFoldersAreNamedInTheirOrder) {
  TTestTree tree;
  for (const char* folder : {"shut", "open/shut", "a"})
    tree.AddFolder(folder);
  fs::permissions(tree.Root(), fs::perms::all);
  fs::permissions(tree.Root() / "shut", fs::perms::none);
  fs::permissions(tree.Root() / "open/shut", fs::perms::none);
  const uid_t user = ::geteuid();
  ASSERT_EQ(user == 0 ? ::seteuid(65534) : 0, 0);
  const TTallyscopeUsage usage = UsageBy("folders", tree.Root().string());
  ASSERT_EQ(::seteuid(user), 0);
  for (const char* folder : {"shut", "open/shut"})
    fs::permissions(tree.Root() / folder, fs::perms::all);
  ASSERT_EQ(usage.Unreadable, 2U);
  std::array<char16_t, 1000> path;
  const std::u16string first = ToUtf16(tree.Path("open/shut/"));
  const auto length = static_cast<uint32_t>(first.size());
  EXPECT_EQ(Tallyscope_GetUnreadable(0, path.data(), length), 0);
  ASSERT_EQ(Tallyscope_GetUnreadable(0, path.data(), length + 1), 1);
  EXPECT_EQ(path.data(), first);
  ASSERT_EQ(Tallyscope_GetUnreadable(1, path.data(), path.size()), 1);
  EXPECT_EQ(path.data(), ToUtf16(tree.Path("shut/")));
  EXPECT_EQ(Tallyscope_GetUnreadable(2, path.data(), path.size()), 0);
  Tallyscope_Free();
  TTallyscopeUsage none{};
  EXPECT_EQ(Tallyscope_GetUsage(&none) + Tallyscope_GetUnreadable(0, path.data(), path.size()), 0);
}

}  // namespace
}  // namespace volindex
