// The reader against what find sees on the mount of a real volume.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <fstream>
#include <random>

#include "volindex/posix/Volumes.h"
#include "volindex/readers/ntfs/NtfsReader.h"
#include "volindex/system/ScanRoot.h"

namespace volindex::ntfs {
namespace {

namespace fs = std::filesystem;

struct TShape {
  unsigned ClusterSize = 4096;
  unsigned SectorSize = 512;
  const char* Size = "64M";
};

struct TMounted : TMountedVolume {
  explicit TMounted(const TShape& shape)
      : TMountedVolume(shape.Size,
                       "mkntfs -F -Q -q -p 0 -H 0 -S 0 -c " + std::to_string(shape.ClusterSize) + " -s " +
                           std::to_string(shape.SectorSize) + " $image",
                       "ntfs-3g -o compression $device $root") {}
};

void MakeSpecialNames(const std::string& root) {
  std::string longest;
  for (int i = 0; i < 255; ++i)
    longest += "\xE6\x97\xA5";
  for (const std::string& name : {longest, std::string("trail "), std::string("$Ordinary"),
                                  std::string("CON"), std::string("case"), std::string("CASE")})
    WriteFile(root + "/odd/" + name, name);
  ::mknod((root + "/odd/device").c_str(), S_IFCHR | 0600, 0x103);
}

// More names than a record holds, in one folder and in several.
void MakeManyNames(const std::string& root) {
  WriteFile(root + "/links/many", "123");
  for (unsigned i = 0; i < 40; ++i)
    fs::create_hard_link(root + "/links/many", root + (i % 3 == 0 ? "/links/z/" : "/odd/") +
                                                   std::string(200, 'l') + std::to_string(i));
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

// Folders and files made and removed, so that records are used again under new sequence numbers.
void MakeAndRemove(const fs::path& root) {
  std::mt19937 random(3);
  for (unsigned i = 0; i < 240; ++i) {
    const fs::path path = root / "churn" / std::to_string(random() % 80);
    if (fs::remove_all(path) > 0) continue;
    fs::create_directories(random() % 2 == 0 ? path : root / "churn");
    WriteFile(fs::is_directory(path) ? path / "inner" : path, std::string(random() % 9000, 'x'));
  }
}

class NtfsMount : public testing::TestWithParam<TShape> {};

TEST_P(NtfsMount, TheReaderSeesWhatAWalkSees) {
  const TMounted volume(GetParam());
  SKIP_IF_REFUSED(volume);
  TNtfsReader reader;
  volume.ExpectSame(reader);
  MakeVariedTree(volume.Root(), false);
  MakeSpecialNames(volume.Root());
  MakeManyNames(volume.Root());
  MakeAttributes(volume.Root(), GetParam().ClusterSize <= 4096);
  MakeAndRemove(volume.Root());
  volume.ExpectSame(reader);
}

INSTANTIATE_TEST_SUITE_P(Shapes, NtfsMount,
                         testing::Values(TShape{512}, TShape{4096}, TShape{65536, 512, "256M"},
                                         TShape{4096, 4096}),
                         [](const auto& shape) {
                           return "Cluster" + std::to_string(shape.param.ClusterSize) + "Sector" +
                                  std::to_string(shape.param.SectorSize);
                         });

// Only single clusters between files are left free, so that the table grows piece by piece.
TEST(NtfsFragmentedMount, TheTableIsFoundInAllItsPieces) {
  const TMounted volume({512, 512, "12M"});
  SKIP_IF_REFUSED(volume);
  fs::create_directory(volume.Root() + "/fill");
  fs::create_directory(volume.Root() + "/grown");
  unsigned files = 0;
  for (; files < 40000; ++files)
    if (!(std::ofstream(volume.Root() + "/fill/" + std::to_string(files)) << std::string(1024, 'c')).flush())
      break;
  for (unsigned i = 0; i < files; ++i)
    if (i % 2 == 0 || i % 6 == 1) fs::remove(volume.Root() + "/fill/" + std::to_string(i));
  for (unsigned i = 0; i < files; ++i)
    if (!std::ofstream(volume.Root() + "/grown/" + std::to_string(i))) break;
  ::sync();
  EXPECT_TRUE(Shell("ntfsinfo -f -i 0 " + volume.Device() + " | grep 'Dumping attribute .ATTRIBUTE_LIST'"));
  TNtfsReader reader;
  volume.ExpectSame(reader);
}

TEST(NtfsMountRoot, OnlyAReadableNtfsVolumeIsAccepted) {
  const TMounted volume({});
  SKIP_IF_REFUSED(volume);
  const TNtfsReader reader;
  const TScanRoot good = DescribeScanRoot(volume.Root()).value_or(TScanRoot());
  EXPECT_TRUE(reader.Accepts(good));
  TScanRoot root = good;
  root.FileSystem = "vfat";
  EXPECT_FALSE(reader.Accepts(root));
  root = good;
  root.IsVolumeRoot = false;
  EXPECT_FALSE(reader.Accepts(root));
  root = good;
  root.Device = "/dev/null";
  EXPECT_FALSE(reader.Accepts(root)) << "another file system behind the same driver, or nothing at all";
}

}  // namespace
}  // namespace volindex::ntfs
