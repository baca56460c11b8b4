// The shared library from the outside: the order of calls and what a caller may get wrong.
#include "volindex/include/volindex.h"
#include "volindex/include/volindex_folders.h"

#include "volindex/TestSystem.h"
#include "volindex/TestTree.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <tuple>

// Of c_face.c: the numbers of files and folders below the path.
extern "C" uint32_t CountInC(const char16_t* path, uint32_t* folders);

namespace volindex {
namespace {

constexpr uint32_t kMessage = 8048;
constexpr uint32_t kUsual = 260;

// With '/' between, in UTF-8.
std::string Plain(const std::u16string& text) {
  const std::u8string plain = std::filesystem::path(text).generic_u8string();
  return {plain.begin(), plain.end()};
}

std::u16string Text(const std::string& plain) {
  return std::filesystem::path(plain).make_preferred().u16string();
}

using TRecord = std::tuple<std::string, std::u16string, uint64_t>;  // path, name, size

uint64_t Joined(uint32_t high, uint32_t low) {
  return uint64_t{high} << 32 | low;
}

class VolindexLibrary : public testing::Test {
 protected:
  struct TReceiver {
    int Posts = 0;
    intptr_t Last = 0;
    bool Wrong = false;
    bool Stops = false;
  };

  ~VolindexLibrary() override {
    Tallyscope_SetNotifyHwnd(nullptr, 0);
    Tallyscope_Free();
  }

  void Scan() {
    Tallyscope_SetNotifyHwnd(&FNotify, kMessage);
    Tallyscope_ScanLocalDrive(Text(FTree.Root().generic_string()).c_str());
  }

  static void Receive(void* self, unsigned message, uintptr_t wparam, intptr_t lparam) {
    auto& receiver = *static_cast<TReceiver*>(self);
    receiver.Wrong |= message != kMessage || wparam != 0 || lparam <= receiver.Last || lparam > 99;
    receiver.Last = lparam;
    ++receiver.Posts;
    if (receiver.Stops) Tallyscope_Stop();
  }

  // The path without the root's.
  std::optional<TRecord> At(int32_t index, uint32_t nameCapacity = kUsual, uint32_t pathCapacity = kUsual) {
    const std::unique_ptr<char16_t[]> name(new char16_t[nameCapacity + 1]());
    const std::unique_ptr<char16_t[]> path(new char16_t[pathCapacity + 1]());
    uint32_t high = 0, low = 0;
    if (Tallyscope_GetRecordByIndex(index, name.get(), nameCapacity, path.get(), pathCapacity, &high, &low,
                                    4) == 0) {
      EXPECT_TRUE(name[0] == 0 && path[0] == 0 && high == 0 && low == 0) << "nothing is written";
      return std::nullopt;
    }
    EXPECT_TRUE(name[nameCapacity] == 0 && path[pathCapacity] == 0);
    return TRecord{Plain(path.get()).substr(FTree.Root().string().size()), name.get(), Joined(high, low)};
  }

  uint64_t FolderSize(const std::string& path) {
    uint32_t high = 1, low = 1;
    Tallyscope_GetFolderSize(Text(path).c_str(), &high, &low);
    return Joined(high, low);
  }

  TTestTree FTree;
  TReceiver FReceiver;
  TTallyscopeNotify FNotify{&FReceiver, Receive};
};

TEST_F(VolindexLibrary, ServesListsCountsAndSizesUntilItIsFreed) {
  constexpr uint64_t kLarge = uint64_t{5} << 30;
  FTree.AddFile("sub/large", kLarge);
  FTree.AddFile("sub/deep/b", 10);
  FTree.AddFile("sub/deep/a", 10);
  FTree.AddFile(kOddName.Bytes, 20);
  const std::string root = FTree.Root().generic_string();
  EXPECT_NE(Tallyscope_CheckFileSystem(Text(root).c_str()), 0);
  Tallyscope_Stop();  // from before the scan: no effect
  Scan();
  EXPECT_GT(FReceiver.Posts, 0);
  EXPECT_FALSE(FReceiver.Wrong);

  EXPECT_EQ(Tallyscope_GetRecordCount(nullptr, nullptr), 4U) << "files are the set after a scan";
  EXPECT_EQ(At(0), TRecord("/sub/", u"large", kLarge));
  EXPECT_EQ(At(1), TRecord("/", kOddName.Text, 20));
  EXPECT_EQ(At(2), TRecord("/sub/deep/", u"a", 10));
  EXPECT_FALSE(At(4) || At(-1));
  Tallyscope_OpenRecord(TALLYSCOPE_FOLDERS);
  uint32_t files = 0, folders = 0;
  EXPECT_EQ(Tallyscope_GetRecordCount(&files, &folders), 2U);
  EXPECT_TRUE(files == 4 && folders == 2);
  EXPECT_EQ(At(0), TRecord("/", u"sub", kLarge + 20));
  EXPECT_EQ(At(1), TRecord("/sub/", u"deep", 20));
  Tallyscope_OpenRecord(1);
  EXPECT_EQ(Tallyscope_GetRecordCount(nullptr, nullptr), 0U);
  EXPECT_FALSE(At(0));

  EXPECT_EQ(FolderSize(root), kLarge + 40);
  EXPECT_EQ(FolderSize(root + "/sub/deep/"), 20U);
  EXPECT_EQ(FolderSize(root + "/sub/none") + FolderSize("/"), 0U);
  Tallyscope_Free();
  EXPECT_EQ(Tallyscope_GetRecordCount(&files, &folders) + files + folders, 0U);
  EXPECT_EQ(FolderSize(root), 0U);
  EXPECT_EQ(CountInC(Text(root).c_str(), &folders), 4U);
  EXPECT_EQ(folders, 2U);
}

// Each buffer holds what fits with its NUL and not a unit more, be it as long as it may.
TEST_F(VolindexLibrary, CapacitiesAreTheCallersOwn) {
  std::string deep;  // a unit of three bytes, that many times in two folders
  for (unsigned i = 0; i < 160; ++i)
    deep += i % 80 == 79 ? "\xe6\x97\xa5/" : "\xe6\x97\xa5";
  FTree.AddFile(deep + "huge", 6);
  FTree.AddFile("small", 5);
  Scan();
  EXPECT_FALSE(At(0, kUsual, 160)) << "too few units for that path";
  EXPECT_EQ(At(1), TRecord("/", u"small", 5));
  const auto needed = static_cast<uint32_t>(FTree.Root().string().size() + 1 + 162 + 1);
  EXPECT_FALSE(At(0, 5, needed - 1) || At(0, 4, needed));
  EXPECT_EQ(At(0, 5, needed), TRecord("/" + deep, u"huge", 6));
}

TEST_F(VolindexLibrary, NothingIsLeftAfterAStopOrOfWhatIsDeclined) {
  FTree.AddFile("a/b", 1);
  FReceiver.Stops = true;
  Scan();
  uint32_t files = 1, folders = 1;
  EXPECT_EQ(Tallyscope_GetRecordCount(&files, &folders) + files + folders, 0U);
  EXPECT_EQ(FReceiver.Posts, 1);
  for (const std::string& path : {kNoFoldersOfADisk.front(), std::string("/no such folder/"), std::string()})
    EXPECT_EQ(Tallyscope_CheckFileSystem(Text(path).c_str()), 0) << path;
  EXPECT_EQ(Tallyscope_CheckFileSystem(nullptr), 0);
  Tallyscope_ScanLocalDrive(u"/no such folder/");
  Tallyscope_ScanLocalDrive(nullptr);
  EXPECT_EQ(Tallyscope_GetRecordCount(nullptr, nullptr), 0U);
}

TEST_F(VolindexLibrary, TellsWhatLiesInEachFolderByKindOnlyWhenAsked) {
  FTree.AddFile("a/one.png", 100);
  FTree.AddLink("a/one.png", "b/again");
  FTree.AddFile("a/two.mp3", 10);
  FTree.AddFile("a/long name \u00E4/x", 1);
  TTallyscopeFolder folder{};
  Scan();
  EXPECT_EQ(Tallyscope_GetFolderEnd(), 0U);
  EXPECT_EQ(Tallyscope_GetFolder(0, &folder), 0);
  Tallyscope_KeepFolderKinds(1);
  Scan();
  Tallyscope_KeepFolderKinds(0);
  std::map<std::u16string, std::tuple<uint64_t, uint64_t, uint64_t, uint64_t>> told;
  for (uint32_t number = 0; number < Tallyscope_GetFolderEnd(); ++number) {
    char16_t name[20];
    ASSERT_TRUE(Tallyscope_GetFolder(number, &folder) != 0 &&
                Tallyscope_GetFolderName(number, name, 20) != 0);
    told[name] = {folder.Total, folder.Own[TALLYSCOPE_PICTURES], folder.Own[TALLYSCOPE_AUDIO],
                  folder.Own[TALLYSCOPE_OTHER]};
    EXPECT_EQ(folder.Parent == 0, std::u16string(name) != u"long name \u00E4") << number;
    EXPECT_EQ(Tallyscope_GetFolderName(number, name, static_cast<uint32_t>(std::u16string(name).size())), 0);
  }
  EXPECT_EQ(told, (decltype(told){{u"", {111, 0, 0, 0}},
                                  {u"a", {111, 100, 10, 0}},
                                  {u"b", {0, 0, 0, 0}},
                                  {u"long name \u00E4", {1, 0, 0, 1}}}));
  EXPECT_EQ(Tallyscope_GetFolder(Tallyscope_GetFolderEnd(), &folder), 0);
}

}  // namespace
}  // namespace volindex
