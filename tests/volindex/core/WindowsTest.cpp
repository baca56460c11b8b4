// What only Windows has: drives, junctions, folders that are shut while they are in use, names of any units.
#include "volindex/IndexAnswer.h"
#include "volindex/TestTree.h"
#include "volindex/system/Utf16.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <winioctl.h>

#include <cstring>
#include <random>

namespace volindex {
namespace {

HANDLE OpenFolder(const std::filesystem::path& path, DWORD access, DWORD share) {
  return ::CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
}

TEST(FoldersReader, FolderThatIsShutCountsForNothingAndIsCounted) {
  TTestTree tree;
  tree.AddFile("open/file", 3);
  tree.AddFile("shut/file", 5);
  const HANDLE shut = OpenFolder(tree.Root() / "shut", FILE_LIST_DIRECTORY, 0);
  ASSERT_NE(shut, INVALID_HANDLE_VALUE);
  const TReading reading = Read(tree.Root());
  ::CloseHandle(shut);
  EXPECT_EQ(reading.Index.Unreadable().size(), 1U);
  EXPECT_EQ(AnswerOf(reading.Index).Folders, (std::vector<TListed>{{3, "open"}, {0, "shut"}}));
}

// The reparse value of a junction: tag, lengths, and the target for the system and for people.
std::vector<std::byte> JunctionTo(const std::filesystem::path& target) {
  const std::wstring name = L"\\??\\" + target.wstring();
  const auto length = static_cast<uint16_t>(name.size() * sizeof(wchar_t));
  const uint16_t head[] = {0x0003, 0xA000, static_cast<uint16_t>(length + 12), 0,
                           0,      length, static_cast<uint16_t>(length + 2),  0};
  std::vector<std::byte> value(sizeof head + length + 4);
  std::memcpy(value.data(), head, sizeof head);
  std::memcpy(value.data() + sizeof head, name.data(), length);
  return value;
}

TEST(FoldersReader, JunctionIsAFileWithoutLength) {
  TTestTree tree;
  tree.AddFile("origin/file", 9);
  tree.AddFolder("junction");
  std::vector<std::byte> value = JunctionTo(tree.Root() / "origin");
  const HANDLE folder = OpenFolder(tree.Root() / "junction", GENERIC_WRITE, 0);
  DWORD ignored = 0;
  const bool made =
      ::DeviceIoControl(folder, FSCTL_SET_REPARSE_POINT, value.data(), static_cast<DWORD>(value.size()),
                        nullptr, 0, &ignored, nullptr) != FALSE;
  ::CloseHandle(folder);
  if (!made) GTEST_SKIP() << "junctions can't be made here";
  const TAnswer answer = AnswerFor(tree.Root());
  EXPECT_EQ(answer.Files, (std::vector<TListed>{{9, "origin/file"}, {0, "junction"}}));
  EXPECT_EQ(answer.Folders, (std::vector<TListed>{{9, "origin"}}));
}

TEST(ScanRoot, DriveRootIsAVolume) {
  for (const char* path : {"C:\\", "c:/", "C:\\windows\\.."}) {
    const auto root = DescribeScanRoot(path);
    ASSERT_TRUE(root.has_value()) << path;
    EXPECT_STRCASEEQ(root->Path.c_str(), "C:/");
    EXPECT_TRUE(root->IsVolumeRoot);
    EXPECT_STRCASEEQ(root->Device.c_str(), "//./C:");
    EXPECT_FALSE(root->FileSystem.empty());
  }
}

TEST(Utf16, AnyTextComesBack) {
  std::mt19937 random(1);
  for (unsigned round = 0; round < 20'000; ++round) {
    std::u16string text(round % 12, u'\0');
    for (char16_t& unit : text) {
      const auto any = static_cast<char16_t>(random());
      unit = random() % 3 == 0 ? static_cast<char16_t>(0xD800 | (any & 0x7FF)) : any;
      if (unit == u'/') unit = u'\\';
    }
    ASSERT_EQ(ToUtf16(ToBytes(text)), text);
  }
}

}  // namespace
}  // namespace volindex
