// The reader against what find sees on the mount of a real volume.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <fstream>

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

class NtfsMount : public testing::TestWithParam<TShape> {};

TEST_P(NtfsMount, ReadersSeeWhatAWalkSees) {
  const TMounted volume(GetParam());
  SKIP_IF_REFUSED(volume);
  MakeVariedTree(volume.Root(), "ntfs");
  MakeAttributes(volume.Root(), GetParam().ClusterSize <= 4096);
  volume.ExpectSame("ntfs");
  const TNtfsReader reader;
  const TScanRoot good = DescribeScanRoot(volume.Root()).value();
  TScanRoot otherFileSystem = good, part = good, nothing = good;
  otherFileSystem.FileSystem = "vfat";
  part.IsVolumeRoot = false;
  nothing.Device = "/dev/null";
  EXPECT_TRUE(reader.Accepts(good));
  EXPECT_FALSE(reader.Accepts(otherFileSystem) || reader.Accepts(part) || reader.Accepts(nothing));
}

INSTANTIATE_TEST_SUITE_P(Shapes, NtfsMount,
                         testing::Values(TShape{512}, TShape{4096}, TShape{65536, 512, "256M"},
                                         TShape{4096, 4096}),
                         [](const auto& shape) {
                           return "Cluster" + std::to_string(shape.param.ClusterSize) + "Sector" +
                                  std::to_string(shape.param.SectorSize);
                         });

}  // namespace
}  // namespace volindex::ntfs
