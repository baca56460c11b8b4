// Volumes made to fill the memory and to keep the reader busy: whatever the image, it takes little memory and
// ends soon after a Stop.
#include <gtest/gtest.h>
#include <malloc.h>

#include <chrono>

#include "VolumeMaker.h"

namespace volindex::ntfs {
namespace {

using enum TAttributeType;
using namespace std::chrono_literals;
using TClock = std::chrono::steady_clock;

std::size_t BytesHeld() {
  const struct mallinfo2 held = ::mallinfo2();
  return held.uordblks + held.hblkhd;
}

// Notes the most memory held at a read. Sets the flag at one of the reads, and notes when, and how much is
// read afterwards.
class TWatchingSource : public TMemorySource {
 public:
  explicit TWatchingSource(const TImage& image, std::uint64_t stopAt = ~std::uint64_t{0})
      : TMemorySource(image), FStopAt(stopAt) {}
  [[nodiscard]] bool ReadAt(uint64_t offset, std::span<std::byte> target) const override {
    const std::size_t held = BytesHeld();
    for (std::size_t most = Most; most < held && !Most.compare_exchange_weak(most, held);) {
    }
    if (FReads.fetch_add(1) == FStopAt) {
      Asked = TClock::now();
      Stop = true;
    }
    return TMemorySource::ReadAt(offset, target);
  }
  [[nodiscard]] std::uint64_t ReadsSince() const { return FReads - FStopAt; }

  mutable std::atomic<std::size_t> Most{0};
  mutable std::atomic<bool> Stop{false};
  mutable TClock::time_point Asked;

 private:
  std::uint64_t FStopAt;
  mutable std::atomic<std::uint64_t> FReads{0};
};

struct TShape {
  std::uint32_t RecordSize;
  std::int64_t Records;
  std::int64_t Lists;
  int PerRecord;
};

constexpr std::size_t kLines = 8192;  // of 32 bytes: a list of the greatest length
constexpr std::int64_t kListClusters = 64;

// Lists that all name other holders; each record names several of them.
TImage SharedLists(const TShape& shape) {
  const std::int64_t table = (shape.Records + 24) * shape.RecordSize / 4096 + 1;
  const auto clusterOf = [&](std::int64_t list) { return 4 + table + list % shape.Lists * kListClusters; };
  TVolumeMaker maker(4096, shape.RecordSize,
                     static_cast<std::uint64_t>(clusterOf(shape.Lists - 1) + kListClusters));
  maker.TableRuns({{table, 4}});
  std::uint64_t holder = 24;
  for (std::int64_t list = 0; list < shape.Lists; ++list) {
    std::vector<TListLine> lines;
    for (std::size_t line = 0; line < kLines; ++line)
      lines.push_back({FileName, 0, Reference(holder++, 7)});
    maker.PutBytes(static_cast<std::uint64_t>(clusterOf(list)), MakeList(lines));
  }
  for (std::int64_t i = 0; i < shape.Records; ++i) {
    TRecordMaker record;
    for (int n = 0; n < shape.PerRecord; ++n)
      record.NonResident(AttributeList, PackRuns({{kListClusters, clusterOf(i + n)}}), kLines * 32);
    maker.Put(24 + static_cast<std::uint64_t>(i), record);
  }
  return maker.Make();
}

// Files of that many names, each in a folder that is not there and that no other name is in.
TImage NoFolders(std::uint64_t records, int names) {
  TVolumeMaker maker(4096, 1024, records / 4 + 8);
  maker.TableRuns({{static_cast<std::int64_t>(records / 4), 4}});
  std::uint64_t folder = 0;
  for (std::uint64_t record = 24; record < records; ++record) {
    TRecordMaker file;
    for (int i = 0; i < names; ++i, ++folder)
      file.Name(
          Reference(24 + folder % (records - 24), static_cast<std::uint16_t>(1 + folder / (records - 24))),
          u"n");
    maker.Put(record, file);
  }
  return maker.Make();
}

// One file whose list names all the other records.
TImage OneFile(std::uint64_t records) {
  TVolumeMaker maker(4096, 1024, records / 4 + 80);
  maker.TableRuns({{static_cast<std::int64_t>(records / 4), 4}});
  std::vector<TListLine> lines;
  for (std::uint64_t record = 25; record < records; ++record) {
    lines.push_back({FileName, 0, Reference(record, 1)});
    maker.Put(record, TRecordMaker()
                          .Base(Reference(24, 1))
                          .Name(kRoot, u"n" + std::u16string(1, static_cast<char16_t>(0x4E00 + record))));
  }
  maker.PutBytes(records / 4 + 8, MakeList(lines));
  return maker
      .Put(24, TRecordMaker().NonResident(AttributeList,
                                          PackRuns({{64, static_cast<std::int64_t>(records / 4 + 8)}}),
                                          lines.size() * 32))
      .Make();
}

// Links whose targets lie outside of their records.
TImage FarLinks() {
  TVolumeMaker maker(4096, 1024, 800);
  maker.TableRuns({{700, 4}});
  for (std::uint64_t record = 24; record < 2800; ++record)
    maker.Put(record, TRecordMaker().Name(kRoot, u"n").NonResident(ReparsePoint, PackRuns({{1, 750}}), 64));
  return maker.Make();
}

struct TCase {
  const char* What;
  TImage Image;
  std::size_t MostMiB;
  bool Sound;
};

// Most MiB are a good deal below the promised 64 with 16 bytes per record, since these images are small.
TEST(NtfsBounds, LittleMemoryAndAStopAtAnyTime) {
  const TCase kCases[] = {{"nine lists in each small record", SharedLists({1024, 700, 9, 9}), 16, false},
                          {"many lists in each large record", SharedLists({4096, 60, 44, 44}), 16, false},
                          {"one list in each record", SharedLists({1024, 700, 9, 1}), 16, false},
                          {"no folders", NoFolders(9000, 9), 40, false},
                          {"one file", OneFile(8000), 16, true},
                          {"far links", FarLinks(), 16, true}};
  for (const auto& [what, image, mostMiB, sound] : kCases) {
    SCOPED_TRACE(what);
    for (const unsigned threads : {1u, 2u}) {
      const std::size_t before = BytesHeld();
      const TWatchingSource source(image);
      EXPECT_EQ(ReadTree(source, threads).has_value(), sound);
      EXPECT_LT((source.Most - before) >> 20, mostMiB) << threads;
    }
    for (std::uint64_t stopAt = 0;; stopAt += 1 + stopAt / 2) {
      const TWatchingSource source(image, stopAt);
      TIndexBuilder builder;
      const TReadResult result = ReadNtfs(source, TDriver::Kernel, builder, {source.Stop, {}}, 2);
      if (!source.Stop) break;
      EXPECT_LT(TClock::now() - source.Asked, 100ms) << stopAt;
      EXPECT_EQ(result, TReadResult::Stopped);
      EXPECT_LE(source.ReadsSince(), 8u) << stopAt;
    }
  }
}

}  // namespace
}  // namespace volindex::ntfs
