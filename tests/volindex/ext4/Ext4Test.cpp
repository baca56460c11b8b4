// The single structures, made by hand where the file system's tools make none of their kind, and volumes of
// many feature sets read from images, beside a walk of the tree that they were made of.
#include <gtest/gtest.h>

#include <random>

#include "volindex/MemorySource.h"
#include "volindex/posix/Volumes.h"
#include "volindex/readers/ext4/FolderEntries.h"
#include "volindex/readers/ext4/InodeTable.h"
#include "volindex/readers/ext4/ReadPlan.h"
#include "volindex/readers/ext4/VolumeScan.h"

namespace volindex::ext4 {
namespace {

// Makes an image of size (as truncate takes it) of the tree.
bool MakeImage(const std::string& image, const std::string& size, const std::string& options,
               const std::string& tree) {
  return Shell("truncate -s " + size + " " + image + " && mke2fs -q -F " + options + " -d " + tree + " " +
               image);
}

[[nodiscard]] std::vector<std::byte> LoadFile(const std::string& path) {
  std::vector<std::byte> bytes(std::filesystem::file_size(path));
  const auto source = OpenByteSource(path);
  return source && source->ReadAt(0, bytes) ? bytes : std::vector<std::byte>();
}

// The index of a volume, or why there is none.
struct TOutcome {
  TReadResult Result = TReadResult::HandedOver;
  TVolumeIndex Index;
};

[[nodiscard]] TOutcome Scan(const TByteSource& source) {
  const std::atomic<bool> stop{false};
  TIndexBuilder builder;
  TOutcome outcome;
  outcome.Result = ReadVolume(source, TVolumeState::AtRest, builder, {stop, {}}, 2);
  if (outcome.Result == TReadResult::Done) outcome.Index = builder.TakeIndex();
  return outcome;
}

[[nodiscard]] TOutcome ScanImage(const std::string& image) {
  return Scan(*OpenByteSource(image));
}

constexpr std::uint32_t kBlock = 1024;

template <class T>
void Put(std::span<std::byte> bytes, std::size_t at, T value) {
  std::memcpy(bytes.data() + at, &value, sizeof value);
}

// A volume of 64 blocks and the map of one folder in it.
class FolderBlocksTest : public testing::Test {
 protected:
  FolderBlocksTest() {
    FSuper.BlockSize = kBlock;
    FSuper.BlockCount = FImage.size() / kBlock;
    FSuper.FirstDataBlock = 1;
  }

  [[nodiscard]] std::span<std::byte> Block(std::uint32_t block) {
    return std::span(FImage).subspan(std::size_t{block} * kBlock, kBlock);
  }

  static void PutNode(std::span<std::byte> node, int entries, int depth) {
    Put<std::uint16_t>(node, 0, 0xF30A);
    Put<std::uint16_t>(node, 2, static_cast<std::uint16_t>(entries));
    Put<std::uint16_t>(node, 4, static_cast<std::uint16_t>(node.size() / 12 - 1));
    Put<std::uint16_t>(node, 6, static_cast<std::uint16_t>(depth));
  }

  static void PutExtent(std::span<std::byte> node, std::size_t index, std::uint32_t logical,
                        std::uint16_t count, std::uint32_t first) {
    Put(node, 12 * (index + 1), logical);
    Put(node, 12 * (index + 1) + 4, count);
    Put(node, 12 * (index + 1) + 8, first);
  }

  // One child per node from the root down to a leaf in the block `depth + 1`.
  void PutChain(int depth) {
    FImage.assign(FImage.size(), {});
    PutNode(FMap, 1, depth);
    Put(FMap, 16, 2u);
    for (int level = 1; level < depth; ++level) {
      const auto node = Block(static_cast<std::uint32_t>(level) + 1);
      PutNode(node, 1, depth - level);
      Put(node, 16, static_cast<std::uint32_t>(level) + 2);
    }
    PutNode(Block(static_cast<std::uint32_t>(depth) + 1), 1, 0);
    PutExtent(Block(static_cast<std::uint32_t>(depth) + 1), 0, 0, 3, 40);
  }

  [[nodiscard]] std::optional<std::uint64_t> Find(TFolderLayout layout, std::uint64_t blocks) {
    std::vector<TBlockRun> runs;
    const TMemorySource source(FImage);
    TFolderBlocks found(source, FSuper, FStop);
    const TInode inode{TInodeKind::Folder, layout, 2, blocks * kBlock};
    if (!found.Find(inode, FMap, runs)) return std::nullopt;
    std::uint64_t count = 0;
    for (const TBlockRun& run : runs)
      count += run.Count;
    return count;
  }

  std::vector<std::byte> FImage = std::vector<std::byte>(64 * kBlock);
  TSuperblock FSuper;
  std::atomic<bool> FStop{false};
  std::array<std::byte, kMapSize> FMap{};
};

TEST_F(FolderBlocksTest, ExtentTreesOfAnyDepth) {
  for (int depth = 1; depth <= 5; ++depth) {
    PutChain(depth);
    EXPECT_EQ(Find(TFolderLayout::Extents, 3), 3u) << depth;
    EXPECT_EQ(Find(TFolderLayout::Extents, 2), 2u) << "what lies behind the end is not read";
  }
  PutChain(6);
  EXPECT_FALSE(Find(TFolderLayout::Extents, 3));
}

TEST_F(FolderBlocksTest, DamagedExtentTreesAreRefused) {
  const std::tuple<std::size_t, std::uint16_t, const char*> kRows[] = {
      {0, 0xF30B, "magic"},
      {2, 0, "an empty leaf"},
      {2, 85, "more entries than room"},
      {4, 85, "more room than block"},
      {6, 1, "wrong depth"},
      {16, 0, "no blocks"},
      {16, 25, "beyond the end of the volume"},
      {16, 0x8003, "set aside, but not written"},
      {18, 1, "far beyond the end"}};
  for (const auto& [at, value, what] : kRows) {
    PutChain(2);
    EXPECT_TRUE(Find(TFolderLayout::Extents, 60));
    Put(Block(3), at, value);
    EXPECT_FALSE(Find(TFolderLayout::Extents, 60)) << what;
  }
}

TEST_F(FolderBlocksTest, ExtentsThatComeBackAreRefused) {
  PutNode(FMap, 2, 0);
  PutExtent(FMap, 0, 0, 4, 40);
  PutExtent(FMap, 1, 3, 4, 50);
  EXPECT_FALSE(Find(TFolderLayout::Extents, 8)) << "overlapping";
  PutExtent(FMap, 1, 4, 4, 40);
  EXPECT_EQ(Find(TFolderLayout::Extents, 8), 8u);
  PutNode(FMap, 4, 1);
  for (std::size_t child = 0; child < 4; ++child)
    Put(FMap, 16 + 12 * child, 2u);
  PutNode(Block(2), 1, 0);
  PutExtent(Block(2), 0, 0, 3, 40);
  EXPECT_FALSE(Find(TFolderLayout::Extents, 12)) << "the same node again";
}

TEST_F(FolderBlocksTest, MapsOfThreeLevelsWithHoles) {
  Put(FMap, 4 * 3, 50u);
  Put(FMap, 4 * 12, 10u);
  Put(Block(10), 4 * 7, 51u);
  Put(FMap, 4 * 14, 11u);
  Put(Block(11), 0, 12u);
  Put(Block(12), 0, 13u);
  Put(Block(13), 0, 52u);
  FImage.resize(std::size_t{70000} * kBlock);
  FSuper.BlockCount = 70000;
  EXPECT_EQ(Find(TFolderLayout::BlockMap, 12 + 256 + 65536 + 1), 3u);
  EXPECT_EQ(Find(TFolderLayout::BlockMap, 12 + 256 + 65536), 2u);
  EXPECT_EQ(Find(TFolderLayout::BlockMap, 19), 1u);
  Put(Block(13), 0, 70000u);
  EXPECT_FALSE(Find(TFolderLayout::BlockMap, 12 + 256 + 65536 + 1));
}

// A small volume can't make the reader follow the same blocks for ever, and a large one not after a Stop.
TEST_F(FolderBlocksTest, FoldersMayNotShareTheirBlocksAtWill) {
  Put(FMap, 4 * 12, 10u);
  for (std::size_t i = 0; i < kBlock / 4; ++i)
    Put(Block(10), 4 * i, 10u);
  std::vector<TBlockRun> runs;
  const TMemorySource source(FImage);
  TFolderBlocks found(source, FSuper, FStop);
  const TInode inode{TInodeKind::Folder, TFolderLayout::BlockMap, 2, 64 * kBlock};
  EXPECT_TRUE(found.Find(inode, FMap, runs));
  EXPECT_FALSE(found.Find(inode, FMap, runs));
  PutChain(3);
  FStop = true;
  EXPECT_FALSE(Find(TFolderLayout::Extents, 3));
  std::vector<std::uint32_t> items(100000);
  std::ranges::generate(items, std::mt19937());
  EXPECT_FALSE(SortUnlessStopped(items, std::identity(), FStop));
  FStop = false;
  EXPECT_TRUE(SortUnlessStopped(items, std::identity(), FStop) && std::ranges::is_sorted(items));
}

TEST_F(FolderBlocksTest, InodeTablesMayNotOverlap) {
  FSuper.InodeSize = 128;
  FSuper.InodesPerGroup = 16;
  const auto pieces = [this](std::uint64_t second) {
    return TInodeTable(FSuper, {{10, 16}, {second, 12}}).Pieces(FStop);
  };
  ASSERT_TRUE(pieces(12));
  EXPECT_EQ(pieces(8)->front().FirstInode, 17u);
  for (const std::uint64_t overlapping : {9, 10, 11})
    EXPECT_FALSE(pieces(overlapping)) << overlapping;
}

TEST(ReadPlanTest, NeighboursAreReadTogetherUpToTheLargestRead) {
  const std::vector<std::uint64_t> offsets = {0, 512 << 10, 1024 << 10, 9000 << 10};
  const auto reads = PlanReads(std::span(offsets), [](std::uint64_t offset) {
    return std::pair<std::uint64_t, std::uint64_t>(offset, 512 << 10);
  });
  ASSERT_EQ(reads.size(), 3u);
  EXPECT_EQ(reads[0].Length, kLargestRead);
  EXPECT_EQ(reads[1].Count, 1u);
}

struct TEntry {
  std::size_t At;
  std::uint32_t Inode;
  std::uint16_t Length;
  std::string_view Name;
};

// The names in a block of 64 bytes with these entries; nothing if it is refused.
std::optional<std::string> NamesOf(std::initializer_list<TEntry> entries) {
  std::array<std::byte, 64> bytes{};
  for (const TEntry& entry : entries) {
    Put(bytes, entry.At, entry.Inode);
    Put(bytes, entry.At + 4, entry.Length);
    Put(bytes, entry.At + 6, static_cast<std::uint8_t>(entry.Name.size()));
    std::ranges::copy(std::as_bytes(std::span(entry.Name)),
                      bytes.begin() + static_cast<std::ptrdiff_t>(entry.At) + 8);
  }
  std::string names;
  const bool sound = ForEachEntry(bytes, [&](std::uint32_t, std::string_view name) {
    names += std::string(name) + ",";
    return true;
  });
  return sound ? std::optional(names) : std::nullopt;
}

TEST(EntriesTest, UnusedAndOwnOnesArePassedOverAndDamagedOnesRefused) {
  EXPECT_EQ(
      NamesOf({{0, 2, 12, "."}, {12, 2, 12, ".."}, {24, 0, 12, "old"}, {36, 12, 16, "new"}, {52, 0, 12, ""}}),
      "new,");
  for (const std::uint16_t length : std::initializer_list<std::uint16_t>{0, 4, 8, 13, 68, 0xFFFC, 60})
    EXPECT_FALSE(NamesOf({{0, 12, length, "name"}})) << length;
  EXPECT_FALSE(NamesOf({{0, 12, 13, "name"}, {13, 12, 51, "crooked"}}));
  EXPECT_EQ(NamesOf({{0, 12, 64, "name"}}), "name,");
  EXPECT_FALSE(NamesOf({{0, 12, 64, ""}}));
}

TEST(InlineTest, AttributesThatPointOutsideAreRefused) {
  std::vector<std::byte> inode(256);
  Put<std::uint16_t>(inode, 128, 32);
  const std::size_t table = 128 + 32 + 4;
  const auto rest = [&](std::uint16_t offset, std::uint32_t size, std::uint8_t nameLength) {
    Put<std::uint32_t>(inode, table - 4, 0xEA020000);
    Put<std::uint8_t>(inode, table, nameLength);
    Put<std::uint8_t>(inode, table + 1, 7);
    Put(inode, table + 2, offset);
    Put(inode, table + 8, size);
    std::memcpy(inode.data() + table + 16, "data", 4);
    return InlineRest(inode);
  };
  ASSERT_TRUE(rest(60, 32, 4));
  EXPECT_EQ(rest(60, 32, 4)->data(), inode.data() + table + 60);
  EXPECT_FALSE(rest(60, 33, 4));
  EXPECT_FALSE(rest(0xFFFF, 1, 4));
  EXPECT_FALSE(rest(60, 0xFFFFFFFF, 4));
  EXPECT_FALSE(rest(60, 32, 255));
  Put<std::uint16_t>(inode, 128, 0xFFF0);
  EXPECT_FALSE(InlineRest(inode));
}

// One number of a good superblock changed at a time; the checksum is off so that nothing but the number
// tells.
TEST(SuperblockTest, NumbersThatCannotBeTrueAreRefused) {
  const TTestTree scratch;
  ASSERT_TRUE(Shell("truncate -s 8M " + scratch.Path("image") +
                    " && mke2fs -q -F -t ext4 -b 1024 -O ^metadata_csum " + scratch.Path("image")));
  const std::vector<std::byte> image = LoadFile(scratch.Path("image"));
  const auto good = std::vector(image.begin() + kSuperblockOffset, image.begin() + 2 * kSuperblockOffset);
  const std::tuple<std::size_t, std::uint32_t, const char*> kRows[] = {
      {0x00, 0, "inodes"},
      {0x04, 8193, "blocks beyond the device"},
      {0x04, 0, "no blocks"},
      {0x14, 2, "first block"},
      {0x18, 7, "block size"},
      {0x20, 128, "groups of too few blocks"},
      {0x20, 9000, "group of more than its bitmap holds"},
      {0x28, 4, "inodes of less than a block per group"},
      {0x28, 9000, "inodes of more than their bitmap holds"},
      {0x38, 0xEF54, "magic"},
      {0x54, 1, "first inode"},
      {0x58, 300, "inode size"},
      {0x58, 2048, "inode above a block"},
      {0x60, 0x2C3, "compression"},
      {0x60, 0x2C2 | 0x80000000u, "unknown"},
      {0xFC, 48u << 16, "descriptor size"}};
  ASSERT_TRUE(ParseSuperblock(good, image.size()));
  for (const auto& [at, value, what] : kRows) {
    auto bytes = good;
    Put(bytes, at, value);
    EXPECT_FALSE(ParseSuperblock(bytes, image.size())) << what;
  }
}

struct TCase {
  const char* Name;
  const char* Options;
  const char* After = nullptr;  // a command on the image %
};

// The tree that all volumes are made of.
class VolumeTest : public testing::Test {
 public:
  static void SetUpTestSuite() {
    FScratch = std::make_unique<TTestTree>();
    MakeVariedTree(FScratch->Path("tree"), "ext4");
    FExpected = AnswerOfDisk(FScratch->Path("tree"));
  }
  static void TearDownTestSuite() { FScratch.reset(); }

 protected:
  static inline std::unique_ptr<TTestTree> FScratch;
  static inline TAnswer FExpected;
};

constexpr TCase kCases[] = {
    {"ext2", "-t ext2 -b 4096"},
    {"ext2_no_file_type", "-t ext2 -b 4096 -O ^filetype"},
    {"ext3", "-t ext3 -b 4096"},
    {"ext4", "-t ext4"},
    {"ext4_hashed", "-t ext4", "e2fsck -fyD %"},
    {"old_group_checksums", "-t ext4 -O ^metadata_csum,uninit_bg"},
    {"pipe_with_a_length", "-t ext4", "debugfs -w -R 'set_inode_field odd/pipe size 5000' %"},
    {"no_checksums", "-t ext4 -O ^metadata_csum,^uninit_bg"},
    {"meta_bg", "-t ext4 -O meta_bg,^resize_inode"},
    {"meta_bg_small_blocks", "-t ext4 -b 1024 -g 512 -O meta_bg,^resize_inode,^flex_bg"},
    {"meta_bg_clusters_small_blocks", "-t ext4 -b 1024 -C 4096 -O bigalloc,meta_bg,^resize_inode"},
    {"no_flex_bg", "-t ext4 -O ^flex_bg -g 512"},
    {"sparse_super2", "-t ext4 -O sparse_super2,^resize_inode"},
    {"bigalloc", "-t ext4 -O bigalloc -C 65536"},
    {"inline_data", "-t ext4 -O inline_data"},
    {"inline_data_small_blocks", "-t ext4 -b 1024 -O inline_data -I 512"},
    {"inodes_128", "-t ext4 -I 128 -b 4096"},
    {"inodes_1024", "-t ext4 -I 1024"},
    {"few_inodes_per_group", "-t ext4 -N 4000 -g 1024"},
    {"blocks_1024", "-t ext4 -b 1024"},
    {"blocks_1024_hashed", "-t ext4 -b 1024", "e2fsck -fyD %"},
    {"blocks_65536", "-t ext4 -b 65536"},
    {"all_at_once",
     "-t ext4 -E encoding=utf8 -O casefold,encrypt,verity,quota,project,large_dir,orphan_file,mmp,ea_inode"},
    {"checksum_seed", "-t ext4 -O metadata_csum_seed", "tune2fs -U 01234567-89ab-cdef-0123-456789abcdef %"}};

class FeatureTest : public VolumeTest, public testing::WithParamInterface<TCase> {};

TEST_P(FeatureTest, IndexHoldsWhatTheTreeHolds) {
  const std::string image = FScratch->Path("image");
  ASSERT_TRUE(MakeImage(image, "192M", GetParam().Options, FScratch->Path("tree")));
  if (GetParam().After) {
    std::string command = GetParam().After;
    command.replace(command.find('%'), 1, image);
    // The checker's status 1 says that it has changed something.
    ASSERT_TRUE(Shell(command + " || test $? -eq 1"));
  }
  const TOutcome outcome = ScanImage(image);
  ASSERT_EQ(outcome.Result, TReadResult::Done);
  EXPECT_EQ(AnswerOf(outcome.Index), FExpected);
  std::filesystem::remove(image);
}

INSTANTIATE_TEST_SUITE_P(Features, FeatureTest, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.Name; });

TEST_F(VolumeTest, ProgressRisesAndAStopIsObeyedAtEachOfItsSteps) {
  ASSERT_TRUE(MakeImage(FScratch->Path("image"), "192M", "-t ext4", FScratch->Path("tree")));
  const auto source = OpenByteSource(FScratch->Path("image"));
  for (const int stopAt : {100, 1, 50, 51}) {
    std::atomic<bool> stop{false};
    std::vector<int> seen = {1};
    TIndexBuilder builder;
    const TScanControl control{stop, [&](int percent) {
                                 seen.push_back(percent);
                                 stop = percent >= stopAt;
                               }};
    EXPECT_EQ(ReadVolume(*source, TVolumeState::AtRest, builder, control, 1),
              stopAt == 100 ? TReadResult::Done : TReadResult::Stopped);
    seen.push_back(99);
    EXPECT_TRUE(std::ranges::is_sorted(seen));
  }
}

// The rows about groups have no checksums but where said; a table that all groups share holds their inodes
// twice.
TEST_F(VolumeTest, WhatIsNotUnderstoodIsHandedOver) {
  const std::string image = FScratch->Path("image");
  const char* const kPlain = "-t ext4 -O ^metadata_csum,^uninit_bg,^flex_bg -b 1024 -g 8192";
  const struct {
    const char* Options;
    const char* Changes;
    TReadResult Result = TReadResult::HandedOver;
  } kRows[] = {
      {"-t ext4", "set_inode_field links flags 0x80800"},     // encrypted
      {"-t ext4", "set_inode_field links mode 0xF1ED"},       // of no known kind
      {"-t ext4", "set_inode_field aaa size_hi 0x10000000"},  // longer than any file
      {"-t ext4", "link links another"},                      // a folder in two places
      {"-t ext4", "unlink links"},                            // a folder in no place
      {"-t ext4", "feature needs_recovery"},                  // a journal in use by nobody
      {"-t ext4", "set_inode_field <2> links_count 0"},       // no root
      {"-t ext4", "mknod nothing p\nclri nothing",
       TReadResult::Done},  // which the system does not show either
      {"-t ext4",
       "set_bg 0 itable_unused $((inodes - 12))\nset_bg 0 checksum calc"},  // files lie there all the same
      {"-t ext4 -O ^metadata_csum,uninit_bg",
       "set_bg 0 itable_unused $((inodes - 12))\nset_bg 0 checksum calc"},
      {"-t ext4", "set_bg 0 checksum 1"},
      {kPlain, "set_bg 0 itable_unused $((inodes - 12))", TReadResult::Done},  // of no meaning there
      {kPlain, "set_bg 1 inode_table 0"},
      {kPlain, "set_bg 1 inode_table 2000000000"}};
  for (const auto& row : kRows) {
    ASSERT_TRUE(MakeImage(image, "192M", row.Options, FScratch->Path("tree")));
    EXPECT_EQ(ScanImage(image).Result, TReadResult::Done);
    ASSERT_TRUE(Shell("inodes=$(dumpe2fs -h " + image +
                      " | awk '/Inodes per group/ { print $4 }') && printf \"" + row.Changes +
                      "\\n\" | debugfs -w -f - " + image));
    EXPECT_EQ(ScanImage(image).Result, row.Result) << row.Options << ' ' << row.Changes;
  }
}

class DamageTest : public testing::TestWithParam<const char*> {};

TEST_P(DamageTest, FlippedAndMissingBytesAreSurvived) {
  const TTestTree scratch;
  const std::string image = scratch.Path("image");
  ASSERT_TRUE(
      Shell("cd " + scratch.Root().string() + R"( && n=$(printf 'n%.0s' $(seq 200)) && for i in $(seq 90); do
    mkdir -p tree/$((i % 8))/inner && echo data >tree/$((i % 8))/inner/$n$i; done)"));
  ASSERT_TRUE(MakeImage(image, "2M", GetParam(), scratch.Path("tree")));
  const std::vector<std::byte> good = LoadFile(image);
  ASSERT_EQ(Scan(TMemorySource(good)).Result, TReadResult::Done);
  for (const std::size_t size : {0u, 1000u, 2047u, 2048u, 1u << 20})
    EXPECT_EQ(Scan(TMemorySource(std::span(good).first(size))).Result, TReadResult::HandedOver) << size;
  const unsigned done = CountDoneOfDamaged(
      good, kSuperblockOffset, 4096, 1500,
      [](const auto& source, unsigned) { return Scan(source).Result == TReadResult::Done; });
  EXPECT_TRUE(done > 0 && done < 1500) << done;
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, DamageTest,
    testing::Values("-t ext2 -b 1024", "-t ext4 -b 1024 -O ^metadata_csum,^has_journal",
                    "-t ext4 -b 1024 -O ^has_journal",
                    "-t ext4 -b 1024 -O ^metadata_csum,^has_journal,inline_data -I 512"));

}  // namespace
}  // namespace volindex::ext4
