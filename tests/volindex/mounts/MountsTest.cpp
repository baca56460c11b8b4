// Every reader over a mounted volume of each kind, from the outside: what the nine functions answer is what
// find sees.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "fixtures/MountNamespace.h"
#include "volindex/TestSystem.h"
#include "volindex/include/volindex.h"

namespace {

namespace fs = std::filesystem;
using volindex::AnswerOfDisk, volindex::MakeFile, volindex::TAnswer, volindex::TListed;

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

// The bytes that the library's texts stand for.
std::string BytesOf(std::u16string_view text) {
  std::string bytes;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] >= 0xDC80 && text[i] <= 0xDCFF) {
      bytes += static_cast<char>(text[i] & 0xFF);
      continue;
    }
    const bool pair = text[i] >= 0xD800 && text[i] < 0xDC00;
    bytes += QString::fromUtf16(text.data() + i, pair ? 2 : 1).toStdString();
    i += pair ? 1 : 0;
  }
  return bytes;
}

std::vector<TListed> ListOf(int32_t kind, const std::string& root) {
  std::vector<TListed> list;
  Tallyscope_OpenRecord(kind);
  const auto count = static_cast<int32_t>(Tallyscope_GetRecordCount(nullptr, nullptr));
  for (int32_t i = 0; i < count; ++i) {
    char16_t name[260], path[260];
    uint32_t high = 0, low = 0;
    EXPECT_TRUE(Tallyscope_GetRecordByIndex(i, name, 260, path, 260, &high, &low, 0)) << i;
    const std::string full = BytesOf(path) + BytesOf(name);
    list.push_back({uint64_t{high} << 32 | low, full.substr(root.size() + 1)});
  }
  return list;
}

// Nothing if the library declines the volume.
std::optional<TAnswer> AnswerOfLibrary(const std::string& root) {
  const std::u16string path = QString::fromStdString(root).toStdU16String();
  if (Tallyscope_CheckFileSystem(path.c_str()) == 0) return std::nullopt;
  int posts = 0;
  const TTallyscopeNotify notify = {
      &posts, [](void* self, unsigned, uintptr_t, intptr_t) { ++*static_cast<int*>(self); }};
  Tallyscope_SetNotifyHwnd(&notify, 1);
  Tallyscope_ScanLocalDrive(path.c_str());
  Tallyscope_SetNotifyHwnd(nullptr, 0);
  EXPECT_GT(posts, 0);
  uint32_t files = 0, folders = 0, high = 0, low = 0;
  Tallyscope_GetRecordCount(&files, &folders);
  Tallyscope_GetFolderSize(path.c_str(), &high, &low);
  const TAnswer answer{ListOf(TALLYSCOPE_FILES, root), ListOf(TALLYSCOPE_FOLDERS, root), files, folders,
                       uint64_t{high} << 32 | low};
  Tallyscope_Stop();  // of no effect: nothing runs
  Tallyscope_Free();
  return answer;
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
    volindex::SetVariable("TALLYSCOPE_READER", readers[i]);
    const auto answer = AnswerOfLibrary(root);
    EXPECT_EQ(answer.has_value(), kind.Served[i]) << readers[i];
    if (answer) {
      EXPECT_EQ(*answer, truth) << readers[i];
    }
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
