// The stream between the two processes, well-made and hostile, and the reader at its end with senders of
// every kind.
#include "volindex/elevated/VolumeStream.h"

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "volindex/IndexAnswer.h"
#include "volindex/TestTree.h"
#include "volindex/include/volindex_elevation.h"
#include "volindex/posix/ElevatedReader.h"
#include "volindex/posix/Volumes.h"

namespace volindex {
namespace {

constexpr uint64_t kManyFolders = 1'000'000;

std::string Sent(const TVolumeIndex& index) {
  std::string bytes;
  const TStreamSink sink = [&bytes](TBytes part) {
    bytes.append(reinterpret_cast<const char*>(part.data()), part.size());
    return true;
  };
  EXPECT_TRUE(SendMark(sink) && SendProgress(sink, 7) && SendProgress(sink, 0) && SendIndex(sink, index));
  return bytes;
}

struct TReceived {
  TStreamState State = TStreamState::Reading;
  TAnswer Answer;
  std::vector<std::string> Unreadable;
  uint64_t Allocated = 0;
  std::vector<int> Progress;
};

TReceived Received(const std::string& bytes, size_t atOnce, uint64_t mostFolders = kManyFolders) {
  TReceived received;
  TIndexBuilder builder;
  TStreamParser parser(builder, mostFolders,
                       [&received](int percent) { received.Progress.push_back(percent); });
  for (size_t at = 0; at < bytes.size(); at += atOnce)
    received.State =
        parser.Feed(std::as_bytes(std::span(bytes)).subspan(at, std::min(atOnce, bytes.size() - at)));
  const std::atomic<bool> goOn{false};
  if (received.State != TStreamState::Done || builder.Finish(goOn) != TFinish::Done) return received;
  const TVolumeIndex index = builder.TakeIndex();
  received.Answer = AnswerOf(index);
  for (const TFolderId folder : index.Unreadable())
    received.Unreadable.push_back(index.FolderPath(folder));
  received.Allocated = index.FolderAllocated(kRootFolder);
  return received;
}

// More files than the list takes, several names, odd ones, empty folders and a chain.
void FillTree(TTestTree& tree) {
  for (unsigned i = 0; i < 1100; ++i)
    tree.AddFile("many/f" + std::to_string(i), 10 + i % 7);
  tree.AddFile("z/deep/" + kOddName.Bytes, uint64_t{5} << 32);
  tree.AddLink("z/deep/" + kOddName.Bytes, "a/second");
  tree.AddFolder("z/empty/er");
}

std::string Number(uint64_t value, size_t bytes) {
  return std::string(reinterpret_cast<const char*>(&value), bytes);
}
std::string Folder(uint32_t parent, uint64_t bytes, uint32_t files, const std::string& name,
                   uint64_t allocated = 0) {
  return 'D' + Number(parent, 4) + Number(bytes, 8) + Number(allocated, 8) + Number(files, 4) +
         Number(name.size(), 2) + name;
}
std::string File(uint32_t folder, uint64_t bytes, const std::string& name) {
  return 'F' + Number(folder, 4) + Number(bytes, 8) + Number(name.size(), 2) + name;
}
std::string Kind(uint8_t kind, uint64_t bytes) {
  return 'K' + Number(kind, 1) + Number(bytes, 8);
}
const std::string kMark(kStreamMark);
const std::string kRoot = Folder(0, 0, 0, "");
std::string Unreadable(uint32_t folder) {
  return 'U' + Number(folder, 4);
}
const std::string kEnd = 'E' + Number(0, 8);

TEST(VolumeStream, CarriesAnIndexWholeHoweverItIsCut) {
  TTestTree tree;
  FillTree(tree);
  const TReading reading = Read(tree.Root());
  const std::string bytes = Sent(reading.Index);
  const TAnswer answer = AnswerOf(reading.Index);
  ASSERT_EQ(answer.FileCount, 1101U);
  for (const size_t atOnce : {bytes.size(), size_t{1}, size_t{13}, size_t{4096}}) {
    const TReceived received = Received(bytes, atOnce);
    EXPECT_EQ(received.State, TStreamState::Done);
    EXPECT_EQ(received.Answer, answer) << atOnce;
    EXPECT_EQ(received.Allocated, reading.Index.FolderAllocated(kRootFolder));
    EXPECT_EQ(received.Progress, std::vector{7});
  }
  EXPECT_EQ(Received(bytes.substr(0, bytes.size() - 1), 100).State, TStreamState::Reading);
  EXPECT_EQ(Received(bytes, 100, answer.FolderCount).State, TStreamState::Wrong) << "the root counts too";
}

TEST(VolumeStream, WhatNoVolumeCanHoldIsRefused) {
  EXPECT_EQ(Received(kMark + kRoot + Folder(0, 5, 1, "a") + Folder(1, 6, 1, "b") + File(2, 7, "c") + kEnd, 9)
                .Answer,
            (TAnswer{{{7, "a/b/c"}}, {{18, "a"}, {13, "a/b"}}, 3, 2, 18}));
  const TReceived told = Received(kMark + Folder(0, 0, 0, "", 8) + Folder(0, 0, 0, "b", 4096) +
                                      Folder(0, 0, 0, "a", 512) + Unreadable(1) + Unreadable(2) + kEnd,
                                  9);
  EXPECT_EQ(told.Unreadable, (std::vector<std::string>{"a/", "b/"}));
  EXPECT_EQ(told.Allocated, 4616U);
  constexpr uint64_t kHalf = uint64_t{1} << 62;
  const struct {
    const char* What;
    std::string Bytes;
  } wrong[] = {
      {"another mark", "TSVOL\0\0\1" + std::string(8, 'x')},
      {"no root", kMark + kEnd},
      {"a root with a name", kMark + Folder(0, 0, 0, "r")},
      {"a root in a folder", kMark + Folder(1, 0, 0, "")},
      {"its own parent", kMark + kRoot + Folder(1, 0, 0, "a")},
      {"a parent to come", kMark + kRoot + Folder(2, 0, 0, "a") + Folder(0, 0, 0, "b")},
      {"a second root", kMark + kRoot + Folder(0, 0, 0, "")},
      {"a path for a name", kMark + kRoot + Folder(0, 0, 0, "a/b")},
      {"the folder above", kMark + kRoot + Folder(0, 0, 0, "..")},
      {"the folder itself", kMark + kRoot + File(0, 1, ".")},
      {"a name with an end in it", kMark + kRoot + File(0, 1, std::string("a\0b", 3))},
      {"a file nowhere", kMark + kRoot + File(1, 1, "a")},
      {"a file before the root", kMark + File(0, 1, "a")},
      {"sums that overflow", kMark + kRoot + Folder(0, kHalf, 1, "a") + Folder(0, kHalf, 1, "b")},
      {"a file that makes them overflow", kMark + Folder(0, kHalf, 1, "") + File(0, kHalf, "b")},
      {"blocks that overflow", kMark + Folder(0, 0, 0, "", kHalf) + Folder(0, 0, 0, "a", kHalf)},
      {"an unreadable folder nowhere", kMark + kRoot + Unreadable(1)},
      {"one that is unreadable twice", kMark + kRoot + Unreadable(0) + Unreadable(0)},
      {"a kind of no folder", kMark + Kind(1, 5)},
      {"no kind", kMark + kRoot + Kind(0, 5)},
      {"one kind too many", kMark + kRoot + Kind(8, 5)},
      {"too far", kMark + kRoot + 'P' + '\x64'},
      {"no frame", kMark + kRoot + 'X'},
      {"something behind the end", kMark + kRoot + kEnd + 'P'},
  };
  for (const auto& [what, bytes] : wrong) {
    EXPECT_EQ(Received(bytes, bytes.size()).State, TStreamState::Wrong) << what;
    EXPECT_EQ(Received(bytes, 1).State, TStreamState::Wrong) << what;
  }
  std::string files = kMark + kRoot;
  for (size_t i = 0; i < kTopCount; ++i)
    files += File(0, 1, "f" + std::to_string(i));
  EXPECT_EQ(Received(files + kEnd, 1000).State, TStreamState::Done);
  EXPECT_EQ(Received(files + File(0, 1, "more") + kEnd, 1000).State, TStreamState::Wrong);
}

TEST(VolumeStream, CarriesKindsAndNoMoreOfThemThanFoldersHold) {
  const auto indexOf = [](const std::string& bytes) {
    TIndexBuilder builder;
    builder.KeepKinds(true);
    TStreamParser parser(builder, kManyFolders, [](int) {});
    EXPECT_EQ(parser.Feed(std::as_bytes(std::span(bytes))), TStreamState::Done);
    const std::atomic<bool> goOn{false};
    EXPECT_EQ(builder.Finish(goOn), TFinish::Done);
    return builder.TakeIndex();
  };
  const TVolumeIndex index = indexOf(kMark + kRoot + Folder(0, 100, 3, "a") + Kind(1, 60) + Kind(7, 90) +
                                     File(1, 1000, "b.mp3") + kEnd);
  const TKindBytes kinds{0, 60, 0, 1000, 0, 0, 0, 40};
  EXPECT_EQ(index.FolderKinds(1), kinds);
  ExpectKindsAddUp(index);
  EXPECT_EQ(indexOf(Sent(index)).FolderKinds(1), kinds);
}

class ElevatedReader : public testing::Test {
 protected:
  // A sender that is a line of the shell.
  TReadResult ReadFrom(const std::string& line, int patience = 1) {
    TElevatedReader reader({"/bin/bash", "-c", line, "sender"}, patience);
    FRoot.Path = FTree.Root().string();
    return reader.Read(FRoot, FBuilder, {FStop, [](int) {}});
  }

  void WriteStream(const std::string& name, const std::string& bytes) { WriteFile(FTree.Path(name), bytes); }

  TTestTree FTree;
  TScanRoot FRoot;
  TIndexBuilder FBuilder;
  std::atomic<bool> FStop{false};
};

TEST_F(ElevatedReader, TakesAWholeAnswerAndNoOther) {
  const std::string good = kMark + kRoot + File(0, 9, "f");
  WriteStream("good", good + kEnd);
  WriteStream("part", good);
  WriteStream("wrong", good + "X");
  EXPECT_EQ(ReadFrom("cat \"$1/good\""), TReadResult::Done);
  EXPECT_EQ(FBuilder.TakeIndex().FolderTotal(kRootFolder), 9U);
  for (const char* line : {"exit 126", "exit 127", "cat \"$1/part\"", "cat \"$1/wrong\"; sleep 60",
                           "cat \"$1/part\"; sleep 60", "yes", "/no/such/program"})
    EXPECT_EQ(ReadFrom(line), TReadResult::HandedOver) << line;
}

TEST_F(ElevatedReader, AStopIsSeenAtOnceAndTheSenderEnds) {
  const std::string ended = FTree.Path("ended");
  std::jthread stopper([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    FStop = true;
  });
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(ReadFrom("trap '' TERM; cat >/dev/null; echo >\"$1/ended\"", 60), TReadResult::Stopped);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(800));
  for (int i = 0; i < 200 && ::access(ended.c_str(), F_OK) != 0; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(::access(ended.c_str(), F_OK), 0) << "its input closes, should no signal reach it";
}

// Run directly here, as the administrator.
TEST(VolumeProgram, AnswersLikeTheReaderItselfAndOnlyForAVolume) {
  const TMountedVolume volume("64M", "mke2fs -q -F -t ext4 $image", "mount $device $root");
  SKIP_IF_REFUSED(volume);
  MakeVariedTree(volume.Root() + "/varied", "ext4");
  const std::string program = VOLUME_PROGRAM;
  const TScanRoot root = DescribeScanRoot(volume.Root()).value();
  TElevatedReader reader({program});
  TIndexBuilder builder;
  const std::atomic<bool> goOn{false};
  ASSERT_TRUE(reader.Accepts(root));
  ASSERT_EQ(reader.Read(root, builder, {goOn, [](int) {}}), TReadResult::Done);
  EXPECT_EQ(AnswerOf(builder.TakeIndex()), AnswerOfDisk(volume.Root()));

  TScanRoot part = root;
  for (const std::string& path : {volume.Root() + "/varied", volume.Root() + "/", std::string("/proc"),
                                  std::string("relative"), std::string()}) {
    part.Path = path;
    EXPECT_EQ(reader.Read(part, builder, {goOn, [](int) {}}), TReadResult::HandedOver) << path;
  }
  EXPECT_FALSE(TElevatedReader().Accepts(root))
      << "nobody said that the user may be asked, or he is root already";
}

// Also where nobody takes its output, which is full here: a hanging window holds that end.
TEST(VolumeProgram, EndsWithItsInput) {
  std::string said;
  EXPECT_TRUE(Try("{ head -c 65536 /dev/zero; timeout 2 " VOLUME_PROGRAM
                  " / </dev/null; echo $? >&2; } | sleep 3",
                  said));
  EXPECT_EQ(said, "0\n");
}

}  // namespace
}  // namespace volindex
