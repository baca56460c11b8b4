// The reader against what find sees on the mount of a real volume.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <fstream>
#include <random>

#include "MountedVolume.h"
#include "volindex/IndexAnswer.h"
#include "volindex/TestSystem.h"
#include "volindex/readers/ntfs/FileRecord.h"

namespace volindex::ntfs {
namespace {

namespace fs = std::filesystem;

#define REQUIRE_VOLUME(volume) \
  if (!(volume)) GTEST_SKIP() << "needs root, mkntfs, ntfs-3g and loop devices"

void ExpectSame(const TMountedVolume& volume) {
  const auto index = volume.Read();
  ASSERT_TRUE(index);
  EXPECT_EQ(AnswerOf(*index), AnswerOfDisk(volume.Root().string()));
  EXPECT_EQ(index->Statistics().Unreadable, 0u);
}

std::string Repeated(std::string_view text, unsigned times) {
  std::string all;
  while (times-- > 0)
    all += text;
  return all;
}

void MakeOddNames(const fs::path& root) {
  const std::string names[] = {"a",
                               " lead",
                               "trail ",
                               "dots...",
                               "new\nline",
                               "tab\there",
                               "a:b*c?\"<>|",
                               "back\\slash",
                               "\xC3\xA4\xC3\xB6\xC3\xBC \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80",
                               "$Ordinary",
                               Repeated("n", 255),
                               Repeated("\xE6\x97\xA5", 255),
                               "CON",
                               "case",
                               "CASE",
                               "Case"};
  fs::create_directory(root / "odd");
  std::uint64_t size = 1;
  for (const std::string& name : names)
    MakeFile(root / "odd" / name, size++);
}

void MakeSizes(const fs::path& root) {
  fs::create_directories(root / "sizes" / "deep" / "deeper");
  for (const std::uint64_t size : {0u, 1u, 500u, 700u, 1000u, 4096u, 70000u, 5u << 20, 3u << 30})
    MakeFile(root / "sizes" / "deep" / ("of " + std::to_string(size)), size);
  MakeFile(root / "sizes" / "deep" / "deeper" / "x", 77);
}

void MakeLinks(const fs::path& root) {
  fs::create_directories(root / "links" / "b");
  fs::create_directory(root / "links" / "a");
  MakeFile(root / "links" / "b" / "original", 5000);
  fs::create_hard_link(root / "links" / "b" / "original", root / "links" / "a" / "zz");
  fs::create_hard_link(root / "links" / "b" / "original", root / "links" / "b" / "another");
  MakeFile(root / "links" / "many", 123);
  for (unsigned i = 0; i < 40; ++i)
    fs::create_hard_link(root / "links" / "many",
                         root / "links" / "a" / (Repeated("long", 50) + std::to_string(i)));
  fs::create_symlink("b/original", root / "links" / "short link");
  fs::create_symlink(Repeated("folder/", 200) + "\xC3\xA4", root / "links" / "long link");
  fs::create_symlink("b", root / "links" / "folder link");
  ::mkfifo((root / "links" / "pipe").c_str(), 0600);
  ::mknod((root / "links" / "device").c_str(), S_IFCHR | 0600, 0x103);
}

bool SetAttribute(const fs::path& path, const char* name, std::span<const std::byte> value) {
  return ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

// A long run list: every second piece of the file is a hole.
void MakeFragmented(const fs::path& path, unsigned pieces) {
  const int file = ::open(path.c_str(), O_CREAT | O_WRONLY, 0600);
  const std::string piece(100, 'p');
  for (unsigned i = 0; i < pieces; ++i)
    EXPECT_EQ(::pwrite(file, piece.data(), piece.size(), static_cast<off_t>(i) << 18), 100);
  ::close(file);
}

void MakeStreams(const fs::path& root) {
  fs::create_directory(root / "streams");
  for (unsigned i = 0; i < 60; ++i) {
    MakeFile(root / "streams" / "with streams", 44);
    const std::vector<std::byte> value(100 + i * 90);
    EXPECT_TRUE(
        SetAttribute(root / "streams" / "with streams", ("user.stream" + std::to_string(i)).c_str(), value));
  }
  MakeFragmented(root / "streams" / "fragmented", 600);
  fs::create_hard_link(root / "streams" / "fragmented", root / "streams" / (Repeated("f", 200)));
}

void MakeCompressed(const fs::path& root) {
  fs::create_directory(root / "compressed");
  const std::uint32_t flag = 0x800;
  EXPECT_TRUE(SetAttribute(root / "compressed", "system.ntfs_attrib", std::as_bytes(std::span(&flag, 1))));
  std::ofstream(root / "compressed" / "text") << Repeated("all the same ", 30000);
}

void MakeDosNames(const fs::path& root) {
  fs::create_directory(root / "dos names");
  for (const char* name : {"a longer name.text", "another longer name"}) {
    MakeFile(root / "dos names" / name, 321);
    const std::string dos = std::string(1, *(name + 2)) + "SHORT~1";
    EXPECT_TRUE(
        SetAttribute(root / "dos names" / name, "system.ntfs_dos_name", std::as_bytes(std::span(dos))));
  }
}

// Folders and files made and removed, so that records are used again under new sequence numbers.
void MakeAndRemove(const fs::path& root) {
  std::mt19937 random(3);
  fs::create_directory(root / "churn");
  for (unsigned round = 0; round < 4; ++round)
    for (unsigned i = 0; i < 60; ++i) {
      const fs::path path = root / "churn" / std::to_string(random() % 80);
      if (fs::symlink_status(path).type() != fs::file_type::not_found) {
        fs::remove_all(path);
      } else if (random() % 2 == 0) {
        MakeFile(path, random() % 9000);
      } else {
        fs::create_directory(path);
        MakeFile(path / "inner", random() % 9000);
      }
    }
}

class NtfsMount : public testing::TestWithParam<TMountedVolume::TShape> {};

TEST_P(NtfsMount, TheReaderSeesWhatAWalkSees) {
  TMountedVolume volume(GetParam());
  REQUIRE_VOLUME(volume);
  ExpectSame(volume);
  MakeOddNames(volume.Root());
  MakeSizes(volume.Root());
  MakeLinks(volume.Root());
  MakeStreams(volume.Root());
  if (GetParam().ClusterSize <= 4096) MakeCompressed(volume.Root());
  MakeDosNames(volume.Root());
  MakeAndRemove(volume.Root());
  ExpectSame(volume);
}

INSTANTIATE_TEST_SUITE_P(Shapes, NtfsMount,
                         testing::Values(TMountedVolume::TShape{512, 512}, TMountedVolume::TShape{1024, 512},
                                         TMountedVolume::TShape{4096, 512},
                                         TMountedVolume::TShape{65536, 512, 256},
                                         TMountedVolume::TShape{4096, 4096},
                                         TMountedVolume::TShape{65536, 4096, 256}),
                         [](const auto& shape) {
                           return "Cluster" + std::to_string(shape.param.ClusterSize) + "Sector" +
                                  std::to_string(shape.param.SectorSize);
                         });

// Whether the master file table needs records beside record 0 to be described.
bool TableHasAttributeList(const fs::path& image) {
  std::ifstream file(image, std::ios::binary);
  std::vector<std::byte> bytes(1024);
  const auto read = [&](std::uint64_t offset, std::size_t size) {
    file.seekg(static_cast<std::streamoff>(offset))
        .read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
  };
  read(0, 512);
  const auto geometry = ParseBootSector(bytes, fs::file_size(image));
  read(geometry->MftCluster * geometry->ClusterSize, 1024);
  if (!ApplyFixups(bytes)) return false;
  TAttributeWalk walk(bytes, *ParseRecordHeader(bytes));
  for (TAttribute attribute; walk.Next(attribute);)
    if (attribute.Type == TAttributeType::AttributeList) return true;
  return false;
}

// Leaves free only single clusters between files, so that the table grows piece by piece.
void FragmentTable(const fs::path& root) {
  fs::create_directory(root / "fill");
  const std::string content(1024, 'c');
  unsigned files = 0;
  for (; files < 40000; ++files) {
    std::ofstream file(root / "fill" / std::to_string(files));
    if (!(file << content).flush()) break;
  }
  for (unsigned i = 0; i < files; i += 2)
    fs::remove(root / "fill" / std::to_string(i));
  for (unsigned i = 1; i < files; i += 6)
    fs::remove(root / "fill" / std::to_string(i));
  fs::create_directory(root / "grown");
  for (unsigned i = 0; i < files; ++i)
    if (!std::ofstream(root / "grown" / std::to_string(i))) break;
}

TEST(NtfsFragmentedMount, TheTableIsFoundInAllItsPieces) {
  TMountedVolume volume({512, 512, 12});
  REQUIRE_VOLUME(volume);
  FragmentTable(volume.Root());
  ::sync();
  EXPECT_TRUE(TableHasAttributeList(volume.Image()));
  ExpectSame(volume);
}

TEST(NtfsMountRoot, OnlyAReadableNtfsVolumeIsAccepted) {
  TMountedVolume volume({});
  REQUIRE_VOLUME(volume);
  const TNtfsReader reader;
  EXPECT_TRUE(reader.Accepts(volume.ScanRoot()));
  TScanRoot root = volume.ScanRoot();
  root.FileSystem = "vfat";
  EXPECT_FALSE(reader.Accepts(root));
  root = volume.ScanRoot();
  root.IsVolumeRoot = false;
  EXPECT_FALSE(reader.Accepts(root));
  root = volume.ScanRoot();
  root.Device = "/dev/null";
  EXPECT_FALSE(reader.Accepts(root)) << "another file system behind the same driver, or nothing at all";
}

}  // namespace
}  // namespace volindex::ntfs
