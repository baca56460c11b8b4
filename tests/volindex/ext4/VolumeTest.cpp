// Volumes of many feature sets read from images, beside a walk of the tree that they were made of.
#include <gtest/gtest.h>

#include <algorithm>

#include "Images.h"
#include "volindex/IndexAnswer.h"
#include "volindex/TestSystem.h"

namespace volindex::ext4 {
namespace {

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
  std::vector<int> seen;
  for (int stopAt : {100, 1, 50, 51}) {
    std::atomic<bool> stop{false};
    TIndexBuilder builder;
    const TScanControl control{stop, [&](int percent) {
                                 if (stopAt == 100) seen.push_back(percent);
                                 if (percent >= stopAt) stop = true;
                               }};
    EXPECT_EQ(ReadVolume(*source, TVolumeState::AtRest, builder, control, 1),
              stopAt == 100 ? TReadResult::Done : TReadResult::Stopped);
  }
  EXPECT_TRUE(std::ranges::is_sorted(seen));
  EXPECT_GE(seen.front(), 1);
  EXPECT_LE(seen.back(), 99);
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
