#include "volindex/system/ScanRoot.h"

#include "volindex/IndexAnswer.h"
#include "volindex/TestTree.h"
#include "volindex/index/RunThreads.h"
#include "volindex/index/VolumeScan.h"
#include "volindex/readers/ByteSource.h"
#include "volindex/readers/folders/FoldersReader.h"

#include <gtest/gtest.h>

#include <fstream>

namespace volindex {
namespace {

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

}  // namespace
}  // namespace volindex
