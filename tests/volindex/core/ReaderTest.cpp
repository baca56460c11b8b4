// The folders reader, the readers in turn, and what they ask of the system.
#include "volindex/IndexAnswer.h"
#include "volindex/TestTree.h"
#include "volindex/index/ContentKinds.h"
#include "volindex/index/RunThreads.h"
#include "volindex/index/Wtf8.h"
#include "volindex/readers/ByteSource.h"
#include "volindex/readers/folders/LinkSearch.h"
#include "volindex/system/Utf16.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <random>

namespace volindex {
namespace {

// Odd names and such as sort around the delimiter, few sizes, files with several names, files of special
// kinds.
void Populate(TTestTree& tree, unsigned entries) {
  static const std::string kBeginnings[] = {"a", "a-", "a.", kOddName.Bytes, "b", "\xe2\x82\xac", ".hidden"};
  std::mt19937 random(7);
  std::vector<std::string> folders{""}, files{"first"};
  tree.AddFile("first", 5);
  for (unsigned i = 0; i < entries; ++i) {
    const std::string path =
        folders[random() % folders.size()] + kBeginnings[random() % 7] + std::to_string(i);
    switch (random() % 8) {
      case 0:
        tree.AddFolder(path);
        folders.push_back(path + '/');
        break;
      case 1:
        tree.AddLink(files[random() % files.size()], path);
        break;
      case 2:
        tree.AddSpecialFile(path, i);
        break;
      default:
        tree.AddFile(path, random() % 4 == 0 ? random() % 100 : uint64_t{1} << (random() % 40));
        files.push_back(path);
    }
  }
}

TEST(FoldersReader, SeesWhatFindSeesWhateverTheThreadsDo) {
  TTestTree tree;
  Populate(tree, 3000);  // more than the list takes, some of those with several names too small for it
  const TAnswer expected = AnswerOfDisk(tree.Root().string());
  ASSERT_GT(expected.FolderCount, 100U);
  for (const unsigned threads : {1U, 2U, 4U, 16U})
    EXPECT_EQ(AnswerFor(tree.Root(), threads), expected) << threads;
  EXPECT_EQ(AnswerFor(tree.Root(), 2, 1), expected);  // nearly every folder opened from the root
}

// A chain that no path text can name (Wine can make none), with a folder to come back to at each level.
TEST(FoldersReader, DeepTreeIsReadByHandle) {
  TTestTree tree;
  constexpr unsigned kDepth = std::filesystem::path::preferred_separator == '/' ? 180 : 100;
  std::string chain;
  for (unsigned level = 0; level < kDepth; ++level, chain += "a folder with a long name/") {
    tree.AddFile(chain + "file", 7);
    tree.AddFile(chain + "side/file", 3);
  }
  for (const unsigned openLimit : {1U, 20U, 100'000U}) {
    const TAnswer answer = AnswerFor(tree.Root(), 2, openLimit);
    EXPECT_EQ(answer.Total, kDepth * 10U);
    EXPECT_EQ(answer.FolderCount, kDepth * 2U - 1);
  }
}

TEST(FoldersReader, TreeThatVanishesMeanwhileDoesNoHarmAndOneThatIsGoneIsHandedOver) {
  TTestTree tree;
  Populate(tree, 1500);
  std::jthread remover([&tree] { tree.Remove({}); });
  const TReading reading = Read(tree.Root());
  EXPECT_EQ(reading.Result, TReadResult::Done);
  EXPECT_EQ(reading.Index.Unreadable().size(), 0U);
  remover.join();
  TScanRoot root;
  root.Path = tree.Path("none");
  const std::atomic<bool> stop{false};
  TIndexBuilder builder;
  EXPECT_EQ(TFoldersReader().Read(root, builder, {stop, [](int) {}}), TReadResult::HandedOver);
}

// The flag is set from within, so that reading is surely going on.
TEST(FoldersReader, StopsWithinATenthOfASecond) {
  using TClock = std::chrono::steady_clock;
  TTestTree tree;
  Populate(tree, 1500);
  for (const int stopAt : {1, 30, 90}) {
    std::atomic<bool> stop{false};
    TClock::time_point stopped = TClock::now();
    const auto progress = [&](int percent) {
      if (percent >= stopAt && !stop.exchange(true)) stopped = TClock::now();
    };
    TIndexBuilder builder;
    TFoldersReader reader(2, kPlenty);
    EXPECT_EQ(reader.Read(DescribeScanRoot(tree.Root().string()).value(), builder, {stop, progress}),
              TReadResult::Stopped);
    EXPECT_LT(TClock::now() - stopped, std::chrono::milliseconds(100));
  }
}

// What the search for links makes of folders whose files were counted by each of their names, as on a system
// whose listings tell no links. The files of the folders in `gone` go meanwhile.
TVolumeIndex SearchAfter(TTestTree& tree, std::initializer_list<const char*> folders,
                         std::initializer_list<const char*> gone) {
  const std::atomic<bool> stop{false};
  const TScanControl control{stop, [](int) {}};
  TIndexBuilder builder;
  builder.KeepKinds(true);
  TFolderHandle root;
  TEntryFacts facts;
  builder.Begin(1, TFolderOrder::ParentsFirst);
  EXPECT_EQ(root.OpenRoot(tree.Root().generic_string()), TAccess::Ok);
  EXPECT_EQ(root.Facts(facts), TAccess::Ok);
  TFolderScan scan{0,
                   builder,
                   control,
                   root,
                   facts,
                   TFolderQueue({}, 1),
                   TFolderProgress(control),
                   1,
                   std::vector<TSeenFiles>(1)};
  for (const char* folder : folders) {
    const TFolderId id = builder.ReserveFolder();
    EXPECT_TRUE(builder.Shard(0).SetFolder(id, kRootFolder, folder));
    TFolderHandle handle;
    EXPECT_EQ(handle.OpenBelow(root, folder), TAccess::Ok);
    TFolderListing listing;
    listing.Start(handle);
    while (listing.Next() == TAccess::Ok && listing.Facts(facts) == TAccess::Ok) {
      builder.Shard(0).AddFile(id, listing.Name(), facts.Size);
      scan.Seen[0].AddSingle(facts.Number, id, facts.Size, builder.Shard(0).KindIfKept(listing.Name()));
    }
  }
  for (const char* folder : gone)
    tree.Remove(folder);
  TLinkSearch(scan).Run(1);
  EXPECT_EQ(builder.Finish(stop), TFinish::Done);
  return builder.TakeIndex();
}

// A file found again stands where its first name is, one whose folders are gone by then in one of them.
TEST(LinkSearch, NothingThatWasCountedGetsLost) {
  for (const bool gone : {false, true}) {
    TTestTree tree;
    tree.AddFile("b/both.mp3", 100);
    tree.AddLink("b/both.mp3", "a/both.mp3");
    tree.AddFile("b/thrice", 10);
    tree.AddLink("b/thrice", "b/thrice again");
    tree.AddLink("b/thrice", "c/thrice");
    tree.AddFile("c/one", 1);
    const TVolumeIndex index =
        gone ? SearchAfter(tree, {"c", "b", "a"}, {"a", "b"}) : SearchAfter(tree, {"c", "b", "a"}, {});
    ExpectKindsAddUp(index);
    EXPECT_EQ(index.FileCount(), 3U);
    EXPECT_EQ(index.FolderTotal(kRootFolder), 111U);
    EXPECT_EQ(index.FolderTotal(3), 100U) << "a";
    EXPECT_EQ(index.FolderTotal(1), gone ? 11U : 1U) << "c";
  }
}

TEST(ScanRoot, DeclinesWhatIsNoFolderOfADiskAndAnOrdinaryFolderIsNoVolume) {
  TTestTree tree;
  tree.AddFile("file", 1);
  std::vector<std::string> paths = kNoFoldersOfADisk;
  paths.insert(paths.end(), {tree.Path("file"), tree.Path("none"), tree.Path("file/below"), ""});
  for (const std::string& path : paths)
    EXPECT_FALSE(DescribeScanRoot(path).has_value()) << path;
  const auto root = DescribeScanRoot(tree.Root().string() + "/");
  ASSERT_TRUE(root.has_value());
  EXPECT_EQ(root->Path, std::filesystem::canonical(tree.Root()).generic_string());
  EXPECT_TRUE(!root->IsVolumeRoot && root->Device.empty());
}

// And the trace is one line per volume.
TEST(ScanRoot, ForcedReaderIsTheOnlyOne) {
  TTestTree tree;
  tree.AddFile("a/b", 1);
  SetVariable("TALLYSCOPE_TRACE", "1");
  testing::internal::CaptureStderr();
  EXPECT_EQ(AnswerOfReader("folders", tree.Root().string()).FileCount, 1U);
  SetVariable("TALLYSCOPE_TRACE", nullptr);
  const std::string trace = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(trace.starts_with("volindex: " + tree.Root().string() + ": folders, 2 entries, 0 unreadable"));
  EXPECT_EQ(trace.find('\n'), trace.size() - 1);
  EXPECT_EQ(AnswerOfReader("no such reader", tree.Root().string()).FileCount, 0U);
  EXPECT_TRUE(CanScan(tree.Root().string()));
}

template <class TFault>
class TThrowingReader : public TReader {
 public:
  const char* Name() const override { return "throwing"; }
  bool Accepts(const TScanRoot&) const override { return true; }
  TReadResult Read(const TScanRoot&, TIndexBuilder& builder, const TScanControl&) override {
    builder.Begin(1, TFolderOrder::Any);
    builder.Shard(0).AddFile(kRootFolder, "void", 1);
    throw TFault();
  }
};

TEST(ScanRoot, ReaderThatThrowsHandsOver) {
  TTestTree tree;
  tree.AddFile("a/b", 5);
  std::atomic<bool> stop{false};
  TReaders readers;
  readers.push_back(std::make_unique<TThrowingReader<std::bad_alloc>>());
  readers.push_back(std::make_unique<TThrowingReader<int>>());
  EXPECT_EQ(ScanVolume(tree.Root().string(), {stop, [](int) {}}, readers).FileCount(), 0U);
  readers.push_back(std::make_unique<TFoldersReader>());
  EXPECT_EQ(AnswerOf(ScanVolume(tree.Root().string(), {stop, [](int) {}}, readers)).Files,
            (std::vector<TListed>{{5, "a/b"}}));
}

// Crooked places and lengths, across the units in which a disk is read, by several threads at once.
TEST(ByteSource, ReadsAnyPartOfTheSourceAndNothingBeyond) {
  TTestTree tree;
  std::string content(300'001, '\0');
  for (size_t i = 0; i < content.size(); ++i)
    content[i] = static_cast<char>(i * 7 + i / 256);
  std::ofstream(tree.Root() / "image", std::ios::binary) << content;
  const auto source = OpenByteSource(tree.Path("image"));
  ASSERT_NE(source, nullptr);
  EXPECT_EQ(source->Size(), content.size());
  RunThreads(4, [&](unsigned thread) {
    for (const size_t length : {1, 511, 4096, 65'536, 65'537, 200'000}) {
      for (const size_t offset :
           {size_t{0}, size_t{4095 + thread}, size_t{65'536}, content.size() - length}) {
        std::string bytes(length, '?');
        EXPECT_TRUE(source->ReadAt(offset, std::as_writable_bytes(std::span(bytes))));
        EXPECT_TRUE(content.compare(offset, length, bytes) == 0) << offset << ' ' << length;
        EXPECT_FALSE(source->ReadAt(content.size() - length + 1, std::as_writable_bytes(std::span(bytes))));
      }
    }
  });
  std::byte byte{};
  EXPECT_FALSE(source->ReadAt(UINT64_MAX, std::span(&byte, 1)));
  for (const std::string& path : {tree.Root().string(), tree.Path("none"), std::string("/dev/null")})
    EXPECT_EQ(OpenByteSource(path), nullptr) << path;
}

TEST(Utf16, TextsAndTheirBytesStandForEachOther) {
  for (const TTextCase& each : kTexts) {
    EXPECT_EQ(ToUtf16(each.Bytes), each.Text) << each.Bytes;
    EXPECT_EQ(ToBytes(each.Text), each.Bytes);
  }
}

TEST(Wtf8, NamesBecomeBytesWithoutLoss) {
  const TTextCase cases[] = {
      {"plain", u"plain"},
      {"a longer one in ASCII \xC3\xA4\xE2\x82\xAC", u"a longer one in ASCII \u00E4\u20AC"},
      {"\xF0\x9F\x98\x80", u"\U0001F600"},
      {"\xED\xA0\xBD", {0xD83D}},         // a lone first half
      {"\xED\xB8\x80x", {0xDE00, u'x'}},  // a lone second half
      {"\xED\xA0\xBD\xF0\x9F\x98\x80", {0xD83D, 0xD83D, 0xDE00}}};
  for (const TTextCase& each : cases) {
    std::string bytes;
    AppendWtf8(std::as_bytes(std::span(each.Text)), bytes);
    EXPECT_EQ(bytes, each.Bytes);
    EXPECT_EQ(Wtf8Length(std::as_bytes(std::span(each.Text))), bytes.size());
  }
}

TEST(KindOf, GoesByTheEndingAlone) {
  const std::pair<std::string, TKind> cases[] = {{"a.jpg", TKind::Pictures},
                                                 {"A.B.JPeG", TKind::Pictures},
                                                 {"a long name.JPeG", TKind::Pictures},
                                                 {"a long name.", TKind::Other},
                                                 {"a long name.jp\xC3\xA4", TKind::Other},
                                                 {"a long name.mp3.gz", TKind::Archives},
                                                 {"a long name.mp3", TKind::Audio},
                                                 {"\xff\xC3\xA4.mkv", TKind::Video},
                                                 {"x.flac", TKind::Audio},
                                                 {"x.pdf", TKind::Documents},
                                                 {"x.tar.gz", TKind::Archives},
                                                 {"x.7z", TKind::Archives},
                                                 {"x.squashfs", TKind::Archives},
                                                 {"x.c", TKind::Code},
                                                 {"libx.so", TKind::Programs},
                                                 {"libx.so.6.0.31", TKind::Programs},
                                                 {"x.appimage", TKind::Programs},
                                                 {"x.xappimage", TKind::Other},
                                                 {"x.123456789", TKind::Other},
                                                 {"x.jp\xC3\xA4", TKind::Other},
                                                 {".png", TKind::Other},
                                                 {"png", TKind::Other},
                                                 {"x.png.", TKind::Other},
                                                 {"x.png~", TKind::Other},
                                                 {"", TKind::Other}};
  for (const auto& [name, kind] : cases) {
    EXPECT_EQ(KindOf(name), kind) << name;
    EXPECT_EQ(KindOf(ToUtf16(name)), kind) << name;
  }
}

}  // namespace
}  // namespace volindex
