// The two readers on answers in memory: what they take from them, and that nothing in them does any harm.
#include <gtest/gtest.h>

#include "Answers.h"
#include "volindex/IndexAnswer.h"
#include "volindex/MemorySource.h"

namespace volindex {
namespace {

using enum TReadResult;

bool ReadTable(xfs::TMemoryInodes& source, xfs::TInodeTable& table) {
  return table.Read(2, [](int) {}) && !source.Stop;
}

struct TSomeInodes : xfs::TMemoryInodes {
  TSomeInodes() {
    xfs::AddChunk(Chunks, 128, 0x8000'0000'0000'001F);
    xfs::AddChunk(Chunks, (1 << 20) + 64, 3);  // of another group
    xfs::AddInode(Inodes, 128, 0100644, 5);
    xfs::AddInode(Inodes, 129, 0120777, 6, 2);
    xfs::AddInode(Inodes, 130, 0010644, 7);
    xfs::AddInode(Inodes, 131, 0040755, 8, 3);
    xfs::AddInode(Inodes, 132, 0100644, std::uint64_t{1} << 61, 1, 5);
    xfs::AddInode(Inodes, 191, 0100644, 9, 1, 3);
    xfs::AddInode(Inodes, (1 << 20) + 65, 0100644, (std::uint64_t{1} << 44) - 1, 1, (1ul << 32) + 32767);
  }
};

TEST(XfsTable, KnowsWhatWasToldAndEachFileOnce) {
  TSomeInodes source;
  xfs::TInodeTable table(source, source.Stop);
  ASSERT_TRUE(ReadTable(source, table));
  using enum TAccess;
  const struct {
    std::uint64_t Number;
    TAccess Access;
    std::uint64_t Size;
    std::uint32_t Links = 1;
    bool IsFolder = false;
    std::uint64_t Blocks = 0;
  } kRows[] = {{128, Ok, 5},
               {128, Gone, 5},
               {129, Ok, 6, 2},
               {129, Ok, 6, 2},
               {130, Ok, 0},
               {131, Ok, 0, 1, true},
               {131, Ok, 0, 1, true},
               {191, Ok, 9, 1, false, 3},
               {(1 << 20) + 65, Ok, (std::uint64_t{1} << 44) - 1, 1, false, (1ul << 32) + 32767}};
  const auto find = [&](std::uint64_t number, bool isFolder, TEntryFacts& facts) {
    facts.IsFolder = isFolder;
    facts.Number = number;
    return table.Find(facts);
  };
  TEntryFacts facts;
  for (const auto& row : kRows) {
    EXPECT_EQ(find(row.Number, row.IsFolder, facts), row.Access) << row.Number;
    EXPECT_TRUE(facts.Size == row.Size && facts.Links == row.Links && facts.Allocated == 4096 * row.Blocks)
        << row.Number;
  }
  EXPECT_FALSE(find(191, true, facts)) << "a folder meanwhile";
  // A folder no more, one too large to be kept, one that was gone between the two questions, and no inodes.
  for (const std::uint64_t number : {131, 132, (1 << 20) + 64, 133, 127, 192, 1 << 20})
    EXPECT_FALSE(find(number, false, facts)) << number;
}

TEST(XfsTable, AnswersThatDoNotHoldTogetherAreRefused) {
  const struct {
    const char* What;
    void (*Change)(TSomeInodes&);
  } kRows[] = {
      {"a chunk within another", [](auto& source) { Put(source.Chunks, 24, std::uint64_t{191}); }},
      {"a chunk at the end of all numbers", [](auto& source) { Put(source.Chunks, 24, ~std::uint64_t{60}); }},
      {"more inodes than have room",
       [](auto& source) {
         for (std::uint64_t i = 0; i < 2000; ++i)
           xfs::AddChunk(source.Chunks, (1 << 21) + i * 64, ~std::uint64_t{0});
       }},
      {"more chunks than have room",
       [](auto& source) {
         for (std::uint64_t i = 0; i < 100'000; ++i)
           xfs::AddChunk(source.Chunks, (1 << 21) + i * 64, 0);
       }},
      {"more records than asked for", [](auto& source) { source.Lie = 3000; }},
      {"another layout", [](auto& source) { Put(source.Inodes, 124, std::uint16_t{4}); }},
      {"an inode twice", [](auto& source) { Put(source.Inodes, 192, std::uint64_t{128}); }},
      {"no right to list chunks", [](auto& source) { source.Refuses = 1; }},
      {"no right to list inodes", [](auto& source) { source.Refuses = 3; }},
      {"a stop", [](auto& source) { source.StopAt = 1; }},
  };
  for (const auto& row : kRows) {
    TSomeInodes source;
    row.Change(source);
    xfs::TInodeTable table(source, source.Stop);
    EXPECT_FALSE(ReadTable(source, table)) << row.What;
  }
}

TEST(XfsTable, FlippedBytesAreSurvived) {
  const TSomeInodes good;
  TBuffer answers = good.Chunks;
  answers.insert(answers.end(), good.Inodes.begin(), good.Inodes.end());
  const unsigned done = CountDoneOfDamaged(answers, 0, 16, 3000, [&](const auto& damaged, unsigned) {
    TSomeInodes source;
    (void)damaged.ReadAt(0, source.Chunks);
    (void)damaged.ReadAt(source.Chunks.size(), source.Inodes);
    xfs::TInodeTable table(source, source.Stop);
    const bool read = ReadTable(source, table);
    TEntryFacts facts;
    for (facts.Number = 120; read && facts.Number < 200; ++facts.Number)
      (void)table.Find(facts);
    return read;
  });
  EXPECT_TRUE(done > 0 && done < 3000) << done;
}

struct TOutcome {
  TReadResult Result;
  TAnswer Answer;
};

TOutcome ReadTree(const btrfs::TMemoryTree& source, unsigned threads = 2) {
  TIndexBuilder builder;
  std::atomic<int> progress{0};
  const TScanControl control{source.Stop, [&](int percent) {
                               EXPECT_TRUE(percent >= 1 && percent <= 99);
                               progress = percent;
                             }};
  const TReadResult result = btrfs::TSubvolumeScan(source, builder, control, threads, threads).Run();
  return {result, result == Done ? AnswerOf(builder.TakeIndex()) : TAnswer()};
}

struct TSmallTree : btrfs::TMemoryTree {
  TSmallTree() { Tree = btrfs::SmallTree(); }
};

TEST(BtrfsTree, EveryNameIsToldInItsFolder) {
  for (const std::uint32_t atOnce : {1, 3, 1000}) {
    TSmallTree source;
    source.AtOnce = atOnce;
    const TOutcome outcome = ReadTree(source);
    ASSERT_EQ(outcome.Result, Done) << atOnce;
    EXPECT_EQ(outcome.Answer.Files,
              (std::vector<TListed>{{11, "d/e/link"}, {7, "d/e/b"}, {5, "file"}, {0, "d/pipe"}}));
    EXPECT_EQ(outcome.Answer.Folders,
              (std::vector<TListed>{{18, "d"}, {18, "d/e"}, {0, "d/last"}, {0, "snapshot"}}));
  }
}

// More of one size than are kept before paths are known, so that they are told twice, and by several threads.
// The folders lie far above the files, with numbers that are kept together.
TEST(BtrfsTree, LargestAreFoundAmongManyEqualOnes) {
  using namespace btrfs;
  std::vector<TPlainFile> files;
  std::vector<std::string> folders;
  TSmallTree source;
  TBuffer rest;
  source.Tree.clear();
  AddInode(source.Tree, 256, 0040755, 0);
  for (std::uint64_t number = 257; number < 257 + 6000; ++number) {
    files.push_back({"file " + std::to_string(number * 7919 % 6007), 50});
    AddEntry(source.Tree, 256, number, number, files.back().Path);
    AddInode(rest, number, 0100644, 50, number % 3 == 0 ? 2 : 1);
    AddItem(rest, {number, kNames, 256}, NameOf(files.back().Path));
  }
  for (std::uint64_t number = 64'000; number < 64'000 + 64 * 40; number += 64) {
    folders.push_back("folder " + std::to_string(number));
    AddEntry(source.Tree, 256, number, number, folders.back());
    AddInode(rest, number, 0040755, 0);
    AddItem(rest, {number, kNames, 256}, NameOf(folders.back()));
  }
  source.Tree.insert(source.Tree.end(), rest.begin(), rest.end());
  source.AtOnce = 50;
  const TOutcome outcome = ReadTree(source, 3);
  ASSERT_EQ(outcome.Result, Done);
  EXPECT_EQ(outcome.Answer, AnswerOf(files, folders));
}

// A file of that name in a folder, of whose name the last bytes are missing.
void AddFile(TBuffer& tree, std::uint64_t folder, std::string_view name, std::size_t missing = 0) {
  TBuffer content = btrfs::NameOf(name);
  content.resize(content.size() - missing);
  btrfs::AddInode(tree, 400, 0100644, 1);
  btrfs::AddItem(tree, {400, btrfs::kNames, folder}, content);
}

TEST(BtrfsTree, WhatDoesNotHoldTogetherIsHandedOver) {
  using namespace btrfs;
  const struct {
    const char* What;
    void (*Change)(TSmallTree&);
    TReadResult Result = HandedOver;
  } kRows[] = {
      {"no right to search", [](auto& source) { source.Refuses = 1; }},
      {"a failing disk", [](auto& source) { source.Refuses = 70; }},
      {"a stop while the last number is looked for", [](auto& source) { source.StopAt = 10; }, Stopped},
      {"a stop later", [](auto& source) { source.StopAt = 70; }, Stopped},
      {"more items than bytes", [](auto& source) { source.Lie = 1; }},
      {"an item behind its place", [](auto& source) { AddInode(source.Tree, 257, 0100644, 5); }},
      {"a cut item", [](auto& source) { source.Tree.pop_back(); }},
      {"a cut inode",
       [](auto& source) {
         AddItem(source.Tree, {400, kInode, 0}, TBuffer(159));
       }},
      {"an inode of no kind", [](auto& source) { AddInode(source.Tree, 400, 0, 0); }},
      {"a length below 0", [](auto& source) { AddInode(source.Tree, 400, 0100644, ~std::uint64_t{0}); }},
      {"a name with a delimiter", [](auto& source) { AddFile(source.Tree, 256, "a/b"); }},
      {"a cut name", [](auto& source) { AddFile(source.Tree, 256, "abc", 1); }},
      {"a folder that is the file system's own", [](auto& source) { AddFile(source.Tree, 255, "a"); }},
      {"two names where one is told",
       [](auto& source) {
         AddEntry(source.Tree, 310, 2, 400, "a");
         AddEntry(source.Tree, 310, 3, 400, "b");
         AddInode(source.Tree, 400, 0100644, 1);
         TBuffer names = NameOf("a");
         const TBuffer second = NameOf("b");
         names.insert(names.end(), second.begin(), second.end());
         AddItem(source.Tree, {400, kNames, 310}, names);
       }},
      {"entries of what is no folder", [](auto& source) { AddEntry(source.Tree, 301, 9, 257, "file"); }},
      {"a name that its folder does not list", [](auto& source) { AddFile(source.Tree, 258, "a"); }},
      {"a file that is deleted but open", [](auto& source) { AddInode(source.Tree, 400, 0100644, 1, 0); },
       Done},
      {"names of an inode that is gone",
       [](auto& source) {
         AddItem(source.Tree, {400, kNames, 256}, NameOf("a"));
       },
       Done},
      {"something in a folder that is gone", [](auto& source) { AddFile(source.Tree, 350, "a"); }, Done},
  };
  for (const auto& row : kRows) {
    TSmallTree source;
    row.Change(source);
    EXPECT_EQ(ReadTree(source).Result, row.Result) << row.What;
    EXPECT_TRUE(row.Result != Stopped || source.Searches <= source.StopAt + 4) << row.What;
  }
}

// The number of searches until the highest number is known is that of its bits, about.
TEST(BtrfsTree, ChangesInTheMeantimeAreNoDamage) {
  using namespace btrfs;
  TSmallTree source;
  source.LaterFrom = 64;
  // A new folder above the last number, into which a new folder, and into that a file that was there, moved.
  TBuffer changed;
  AddInode(changed, 256, 0040755, 0, 1, 11);
  AddEntry(changed, 256, 7, 500, "new");
  AddInode(changed, 257, 0100644, 5);
  AddItem(changed, {257, kNames, 501}, NameOf("file"));
  AddInode(changed, 500, 0040755, 0, 1, 11);
  AddItem(changed, {500, kNames, 256}, NameOf("new"));
  AddEntry(changed, 500, 2, 501, "inner");
  AddInode(changed, 501, 0040755, 0, 1, 11);
  AddItem(changed, {501, kNames, 500}, NameOf("inner"));
  AddEntry(changed, 501, 2, 257, "file");
  source.Later = changed;
  const TOutcome outcome = ReadTree(source);
  ASSERT_EQ(outcome.Result, Done);
  EXPECT_EQ(outcome.Answer.Files, (std::vector<TListed>{{5, "new/inner/file"}}));
  EXPECT_EQ(outcome.Answer.FolderCount, 2U);
}

TEST(BtrfsTree, FlippedBytesAreSurvived) {
  const unsigned done =
      CountDoneOfDamaged(btrfs::SmallTree(), 0, 16, 1000, [](const auto& damaged, unsigned) {
        TSmallTree source;
        (void)damaged.ReadAt(0, source.Tree);
        const TReadResult result = ReadTree(source, 1).Result;
        EXPECT_NE(result, Stopped);
        return result == Done;
      });
  EXPECT_TRUE(done > 0 && done < 1000) << done;
}

}  // namespace
}  // namespace volindex
