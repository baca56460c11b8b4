#include "volindex/index/IndexBuilder.h"

#include "volindex/IndexAnswer.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

namespace volindex {
namespace {

const std::atomic<bool> kGoOn{false};

struct TVolumeKind {
  bool Whole;  // every folder is known before what lies in it, and all lead to the root
  unsigned Files;
  uint64_t Sizes;  // how many there are
};

// A volume as a reader might find it: folders by number in no order, some without a name, some in rings, some
// covered, names that sort around the delimiter, few sizes, and files with names all over the tree.
class TRandomVolume {
 public:
  TRandomVolume(unsigned seed, const TVolumeKind& kind) : FRandom(seed), FWhole(kind.Whole) {
    for (TFolderId id = 1; id < kFolders; ++id)
      AddFolder(id);
    for (unsigned file = 0; file < kind.Files; ++file) {
      const uint64_t link = Below(4) == 0 ? 1 + Below(200) : 0;
      const uint64_t size = link != 0 ? link % kind.Sizes : Below(static_cast<unsigned>(kind.Sizes));
      FFiles.push_back({Below(kFolders), NewName(kFolders + file), size, link});
    }
  }

  TAnswer Expected() const {
    std::vector<std::string> folders;
    for (TFolderId id = 1; id < kFolders; ++id)
      if (const auto path = PathOf(id)) folders.push_back(*path);
    std::vector<TPlainFile> files;
    for (const TFile& file : FFiles) {
      const auto path = FFolders[file.Folder].Covered ? std::nullopt : PathOf(file.Folder);
      if (path) files.push_back({path->empty() ? file.Name : *path + '/' + file.Name, file.Size, file.Link});
    }
    return AnswerOf(files, folders);
  }

  // The answer of a builder that is told all this by that many shards, after however many passes.
  TAnswer Build(unsigned shards, size_t linkTextRoom, unsigned& secondPasses) {
    TIndexBuilder builder(linkTextRoom);
    builder.KeepKinds(true);
    builder.Begin(shards, FWhole ? TFolderOrder::ParentsFirst : TFolderOrder::Any);
    for (TFolderId id = 1; id < kFolders; ++id) {
      EXPECT_EQ(builder.ReserveFolder(), id);
      if (FFolders[id].Covered) builder.ExcludeFolder(id);
    }
    std::vector<unsigned> steps(kFolders + FFiles.size());
    std::iota(steps.begin(), steps.end(), 0U);
    std::shuffle(steps.begin() + (FWhole ? kFolders : 0), steps.end(), FRandom);
    for (const unsigned step : steps)
      Tell(builder.Shard(step % shards), step);
    TFinish result = builder.Finish(kGoOn);
    if (result == TFinish::TopListAgain) {
      ++secondPasses;
      for (unsigned step = 0; step < steps.size(); ++step)
        Tell(builder.Shard(step * 7 % shards), step);
      result = builder.Finish(kGoOn);
    }
    EXPECT_EQ(result, TFinish::Done);
    const TVolumeIndex index = builder.TakeIndex();
    ExpectKindsAddUp(index);
    for (TFolderId id = 0; id < kFolders; ++id)
      EXPECT_EQ(index.FolderAllocated(id), kBlocks * index.FolderTotal(id)) << id;
    return AnswerOf(index);
  }

 private:
  static constexpr TFolderId kFolders = 300;
  static constexpr uint64_t kBlocks = 3;  // what a file occupies for each byte of its size
  struct TFolder {
    std::string Name;
    TFolderId Parent = 0;
    bool Covered = false;
    bool Set = true;
  };
  struct TFile {
    TFolderId Folder;
    std::string Name;
    uint64_t Size;
    uint64_t Link;
  };

  unsigned Below(unsigned limit) { return std::uniform_int_distribution<unsigned>(0, limit - 1)(FRandom); }

  // Neighbours differ by what sorts around the delimiter alone.
  static std::string NewName(unsigned number) {
    static const std::string kEndings[] = {"", "-", ".", "0", "\xff", "\xc3\xa4"};
    return std::to_string(number / 6) + kEndings[number % 6];
  }

  // Neighbours mostly have one parent. Parents have lower numbers but now and then, so that there are rings,
  // some of them of one.
  void AddFolder(TFolderId id) {
    const bool odd = !FWhole && Below(12) == 0;
    const TFolderId parent = odd ? Below(kFolders) : id % 6 != 0 ? FFolders[id - 1].Parent : Below(id);
    FFolders[id] = {NewName(id), parent, !FWhole && Below(25) == 0, FWhole || Below(25) != 0};
  }

  // None for a folder that is left out.
  std::optional<std::string> PathOf(TFolderId id) const {
    std::string path;
    for (unsigned steps = 0; id != kRootFolder; id = FFolders[id].Parent) {
      const bool inCovered = !path.empty() && FFolders[id].Covered;
      if (++steps > kFolders || !FFolders[id].Set || inCovered) return std::nullopt;
      path = path.empty() ? FFolders[id].Name : FFolders[id].Name + '/' + path;
    }
    return path;
  }

  // Folders by their number, then the files. Paths are known where there may be several devices.
  void Tell(TIndexShard& shard, unsigned step) const {
    if (step < kFolders) {
      const TFolder& folder = FFolders[step];
      EXPECT_TRUE(step == kRootFolder || !folder.Set || shard.SetFolder(step, folder.Parent, folder.Name));
      return;
    }
    const TFile& file = FFiles[step - kFolders];
    const TLinkKey key = FWhole ? TLinkKey{file.Link / 2, file.Link % 2 != 0 ? 1U : 0U} : TLinkKey{file.Link};
    if (file.Link != 0)
      shard.AddLinkedFile(file.Folder, file.Name, file.Size, key, kBlocks * file.Size);
    else
      shard.AddFile(file.Folder, file.Name, file.Size, kBlocks * file.Size);
  }

  std::mt19937 FRandom;
  bool FWhole;
  std::vector<TFolder> FFolders{kFolders};
  std::vector<TFile> FFiles;
};

TEST(Builder, AgreesWithSlowTwinOnRandomVolumes) {
  constexpr TVolumeKind kKinds[] = {{false, 500, 1000}, {false, 9000, 1'000'000}, {false, 9000, 3},
                                    {true, 9000, 3},    {true, 9000, 1},          {true, 9000, 1'000'000}};
  unsigned secondPasses = 0, seed = 0;
  for (const TVolumeKind& kind : kKinds) {
    TRandomVolume volume(++seed, kind);
    const TAnswer expected = volume.Expected();
    const unsigned before = secondPasses;
    for (const size_t textRoom : {TIndexBuilder::kLinkTextRoom, size_t{9'000}, size_t{0}})
      for (const unsigned shards : {1U, 5U})
        EXPECT_EQ(volume.Build(shards, textRoom, secondPasses), expected) << seed << ' ' << textRoom;
    EXPECT_TRUE(!kind.Whole || secondPasses == before);
  }
  EXPECT_GT(secondPasses, 0U);
}

// A covered path is found wherever its folders come, counts itself, and a path to nowhere does no harm.
TEST(Builder, CoveredPathsLoseTheirContent) {
  TIndexBuilder builder;
  for (const char* path : {"home/disk", "home/none", "home/disk/inner", "file"})
    builder.CoverPath(path);
  builder.Begin(1, TFolderOrder::Any);
  TIndexShard& shard = builder.Shard(0);
  const TFolderId inner = builder.ReserveFolder();
  const TFolderId disk = builder.ReserveFolder();
  const TFolderId home = builder.ReserveFolder();
  ASSERT_TRUE(shard.SetFolder(inner, disk, "inner"));
  ASSERT_TRUE(shard.SetFolder(disk, home, "disk"));
  ASSERT_TRUE(shard.SetFolder(home, kRootFolder, "home"));
  EXPECT_FALSE(shard.SetFolder(disk, kRootFolder, "again") || shard.SetFolder(kRootFolder, home, "root"));
  shard.AddFile(inner, "a", 100);
  shard.AddFile(disk, "b", 10);
  shard.AddFile(home, "c", 1);
  ASSERT_EQ(builder.Finish(kGoOn), TFinish::Done);
  const TVolumeIndex index = builder.TakeIndex();
  EXPECT_EQ(AnswerOf(index).Folders, (std::vector<TListed>{{1, "home"}, {0, "home/disk"}}));
  EXPECT_EQ(index.FileCount(), 1U);
  EXPECT_TRUE(index.FindFolder("/home//disk/") && !index.FindFolder("home/disk/inner"));
}

// 200,000 levels with a file in each, all of one size: neither recursion nor time in the square of the depth.
TEST(Builder, DeepTreeOfEqualSizes) {
  constexpr TFolderId kDepth = 200'000;
  TIndexBuilder builder;
  builder.Begin(1, TFolderOrder::ParentsFirst);
  for (TFolderId level = 0; level < kDepth; ++level) {
    const TFolderId folder = builder.ReserveFolder();
    ASSERT_TRUE(builder.Shard(0).SetFolder(folder, level, "d"));
    builder.Shard(0).AddFile(folder, "z", 0);
  }
  ASSERT_EQ(builder.Finish(kGoOn), TFinish::Done);
  const TVolumeIndex index = builder.TakeIndex();
  EXPECT_EQ(index.FolderCount(), kDepth);
  EXPECT_EQ(index.TopFolders().front(), 1U);           // "d" before "d/d"
  EXPECT_EQ(index.TopFiles().front().Folder, kDepth);  // "d/…/d/z" before "d/z"
}

// With no room for texts the folder is known at once, since both names are in it, and which is the first is
// not.
TEST(Builder, NamesWithoutATextAreAskedForAgain) {
  TIndexBuilder builder(0);
  builder.Begin(1, TFolderOrder::Any);
  for (const TFinish finish : {TFinish::TopListAgain, TFinish::Done}) {
    for (const char* name : {"b", "a"})
      builder.Shard(0).AddLinkedFile(kRootFolder, name, 7, {1});
    ASSERT_EQ(builder.Finish(kGoOn), finish);
  }
  EXPECT_EQ(AnswerOf(builder.TakeIndex()).Files, (std::vector<TListed>{{7, "a"}}));
}

}  // namespace
}  // namespace volindex
