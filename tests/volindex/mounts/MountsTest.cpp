// Every reader over a mounted volume of each kind: what it answers is what find sees.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "fixtures/MountNamespace.h"
#include "volindex/IndexAnswer.h"

namespace {

namespace fs = std::filesystem;
using volindex::AnswerOfDisk, volindex::MakeFile, volindex::TAnswer;

bool Run(const std::string& command) {
  return std::system(("PATH=$PATH:/usr/sbin:/sbin; " + command + " >/dev/null 2>&1").c_str()) == 0;
}

// More files and folders than a list takes, many of one size, names of all sorts, holes and links.
void MakeTree(const fs::path& root, bool anyBytes) {
  for (int i = 0; i < 1100; ++i) {
    const fs::path folder = root / std::to_string(i % 7) / ("folder " + std::to_string(i));
    fs::create_directories(folder);
    MakeFile(folder / "file", static_cast<uint64_t>(i % 9) * 1000);
  }
  fs::create_directories(root / "odd" / "b");
  for (const char* name :
       {" lead", "dots...", "new\nline", "a:b*c?", "back\\slash", "\xC3\xA4\xF0\x9F\x98\x80"})
    std::ofstream(root / "odd" / name) << "some text";
  if (anyBytes) std::ofstream(root / "odd" / "bad\xFF\xFE") << "not UTF-8";
  MakeFile(root / "odd" / std::string(180, 'n'), uint64_t{5} << 30);
  std::ofstream(root / "odd" / "b" / "zz") << std::string(70000, 'x');
  for (const char* name : {"odd/b/another", "odd/a", "top"})
    fs::create_hard_link(root / "odd" / "b" / "zz", root / name);
  fs::create_symlink("b/zz", root / "odd" / "link");
  ::mkfifo((root / "odd" / "pipe").c_str(), 0600);
}

struct TVolumeKind {
  const char* Name;
  bool Served[3];  // by the readers ext4, ntfs, folders
  bool (*Mount)(
      const fs::path& folder);  // makes `folder`/image and mounts it on `folder`/m with the tree in it
};

bool MountExt4(const fs::path& folder) {
  MakeTree(folder / "tree", true);
  return Run("mke2fs -q -F -t ext4 -d " + (folder / "tree").string() + ' ' + (folder / "image").string()) &&
         Run("mount -o loop,ro " + (folder / "image").string() + ' ' + (folder / "m").string());
}

bool MountNtfs(const fs::path& folder) {
  if (!Run("mkntfs -F -Q " + (folder / "image").string())) return false;
  if (!Run("device=$(losetup --find --show " + (folder / "image").string() + ") && ntfs-3g $device " +
           (folder / "m").string() + "; status=$?; losetup --detach $device; exit $status"))
    return false;
  MakeTree(folder / "m", false);
  return true;
}

class VolindexMounts : public testing::TestWithParam<TVolumeKind> {};

// In a child with its own mounts; nothing if it may not mount.
std::optional<bool> EveryReaderAgrees(const TVolumeKind& kind, const fs::path& folder) {
  if (!kind.Mount(folder)) return std::nullopt;
  const std::string root = (folder / "m").string();
  const TAnswer truth = AnswerOfDisk(root);
  EXPECT_GT(truth.FileCount, 1100u);
  EXPECT_GT(truth.FolderCount, 1100u);
  const char* const readers[] = {"ext4", "ntfs", "folders"};
  for (size_t i = 0; i < std::size(readers); ++i) {
    EXPECT_EQ(volindex::AnswerOfReader(readers[i], root), kind.Served[i] ? truth : TAnswer()) << readers[i];
  }
  return Run("umount " + root) && !testing::Test::HasFailure();
}

TEST_P(VolindexMounts, EveryReaderAnswersWhatFindSees) {
  const fs::path folder = volindex::MakeTemporaryFolder();
  fs::create_directory(folder / "m");
  MakeFile(folder / "image", uint64_t{64} << 20);
  const auto agrees = RunWithOwnMounts([&folder] { return EveryReaderAgrees(GetParam(), folder); });
  fs::remove_all(folder);
  if (!agrees) GTEST_SKIP() << "needs root, loop devices, mke2fs, and for NTFS mkntfs, ntfs-3g and FUSE";
  EXPECT_TRUE(*agrees) << "see the messages of the child above";
}

INSTANTIATE_TEST_SUITE_P(Kinds, VolindexMounts,
                         testing::Values(TVolumeKind{"Ext4", {true, false, true}, MountExt4},
                                         TVolumeKind{"Ntfs", {false, true, true}, MountNtfs}),
                         [](const auto& kind) { return kind.param.Name; });

}  // namespace
