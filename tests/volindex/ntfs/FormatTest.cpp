// The parsers of single structures against right, broken and hostile bytes.
#include <gtest/gtest.h>

#include "VolumeMaker.h"
#include "volindex/readers/ntfs/BootSector.h"
#include "volindex/readers/ntfs/LinkLength.h"
#include "volindex/readers/ntfs/RunList.h"

namespace volindex::ntfs {
namespace {

TImage Utf16(std::u16string_view text) {
  TImage bytes(text.size() * 2);
  if (!text.empty()) std::memcpy(bytes.data(), text.data(), bytes.size());
  return bytes;
}

constexpr std::uint64_t kDevice = 1u << 20;

TImage GoodBoot() {
  TImage sector(512);
  std::memcpy(sector.data() + 3, "NTFS    ", 8);
  Store<std::uint16_t>(sector, 0x0B, 512);
  Store<std::uint8_t>(sector, 0x0D, 8);
  Store<std::uint64_t>(sector, 0x28, kDevice / 512 - 1);
  Store<std::uint64_t>(sector, 0x30, 4);
  Store<std::int8_t>(sector, 0x40, -10);
  return sector;
}

TEST(NtfsBootSector, GivesTheUnitsOfTheVolume) {
  TImage sector = GoodBoot();
  const auto geometry = ParseBootSector(sector, kDevice);
  ASSERT_TRUE(geometry);
  EXPECT_EQ(geometry->ClusterSize, 4096u);
  EXPECT_EQ(geometry->RecordSize, 1024u);
  EXPECT_EQ(geometry->ClusterCount, 255u);
  EXPECT_EQ(geometry->MftCluster, 4u);
  Store<std::uint8_t>(sector, 0x0D, 0xF8);  // 2^8 sectors
  Store<std::int8_t>(sector, 0x40, 1);
  Store<std::uint64_t>(sector, 0x30, 1);
  EXPECT_FALSE(ParseBootSector(sector, kDevice)) << "a record of 128 KiB";
  Store<std::int8_t>(sector, 0x40, -12);
  const auto large = ParseBootSector(sector, kDevice);
  ASSERT_TRUE(large);
  EXPECT_EQ(large->ClusterSize, 128u << 10);
  EXPECT_EQ(large->RecordSize, 4096u);
}

TEST(NtfsBootSector, ImpossibleNumbersAreRefused) {
  static const struct {
    std::size_t Offset;
    std::uint8_t Byte;
    const char* Why;
  } kRows[] = {
      {0x03, 'X', "another file system"},         {0x0C, 0x03, "sectors of 768 bytes"},
      {0x0C, 0x00, "sectors of 0 bytes"},         {0x0D, 0x00, "clusters of no sector"},
      {0x0D, 0x07, "clusters of 7 sectors"},      {0x0D, 0x90, "a power beyond all bounds"},
      {0x40, 0x80, "a record power of 128"},      {0x40, 0x00, "records of 1 byte"},
      {0x40, 0xF7, "records of 512 bytes"},       {0x2D, 0x01, "more sectors than the device"},
      {0x30, 0xFF, "a table at the end"},         {0x37, 0x80, "a table before the beginning"},
      {0x30, 0x00, "a table at the boot sector"},
  };
  for (const auto& row : kRows) {
    TImage sector = GoodBoot();
    Store(sector, row.Offset, row.Byte);
    EXPECT_FALSE(ParseBootSector(sector, kDevice)) << row.Why;
  }
  EXPECT_FALSE(ParseBootSector(TBytes(GoodBoot()).first(100), kDevice));
}

TImage Packed(std::initializer_list<int> bytes) {
  TImage packed;
  for (const int byte : bytes)
    packed.push_back(static_cast<std::byte>(byte));
  return packed;
}

TEST(NtfsRunList, DecodesDeltasHolesAndJoinsNeighbours) {
  // 16 clusters at 32, 8 more right behind, a hole of 4, 2 clusters 40 before the last.
  const TImage packed = Packed({0x11, 16, 32, 0x11, 8, 16, 0x01, 4, 0x21, 2, 0xE8, 0xFF, 0});
  std::vector<TRun> runs;
  ASSERT_TRUE(AppendRuns(packed, 0, 100, runs));
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[0].Length, 24u);
  EXPECT_EQ(runs[1].Cluster, TRun::kHole);
  EXPECT_EQ(runs[2].Vcn, 28u);
  EXPECT_EQ(runs[2].Cluster, 24u);
  EXPECT_EQ(MappedClusters(runs), 30u);
  EXPECT_FALSE(AppendRuns(packed, 0, 100, runs)) << "does not follow";
  ASSERT_TRUE(AppendRuns(Packed({0x11, 1, 26, 0}), 30, 100, runs));
  EXPECT_EQ(runs.size(), 3u) << "an extent that goes on where the last ended";
  EXPECT_EQ(runs[2].Length, 3u);
}

TEST(NtfsRunList, BrokenListsChangeNothing) {
  static const std::vector<TImage> kLists = {
      Packed({}),                                                              // no end
      Packed({0x11, 4, 8}),                                                    // no end behind a run
      Packed({0x11, 4}),                                                       // cut off
      Packed({0x10, 4, 0}),                                                    // no length
      Packed({0x11, 0, 8, 0}),                                                 // a run of nothing
      Packed({0x11, 0x84, 8, 0}),                                              // a negative length
      Packed({0x19, 1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 0}),                         // nine bytes of length
      Packed({0x11, 4, 0xF8, 0}),                                              // before the volume
      Packed({0x11, 101, 0, 0}),                                               // beyond the volume
      Packed({0x11, 60, 1, 0x11, 60, 1, 0}),                                   // more than there is
      Packed({0x88, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0x40, 0}),    // far out
      Packed({0x11, 4, 8, 0x08, 255, 255, 255, 255, 255, 255, 255, 0x7F, 0}),  // an endless hole
  };
  for (const TImage& list : kLists) {
    std::vector<TRun> runs = {{0, 3, 2}};
    EXPECT_FALSE(AppendRuns(list, 2, 100, runs)) << &list - kLists.data();
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_EQ(runs[0].Length, 2u);
  }
}

TEST(NtfsFixups, RestoreEachStrideOrRefuse) {
  for (const std::size_t size : {1024u, 4096u}) {
    const TImage good = TRecordMaker().Name(kRoot, u"n").Make(size);
    TImage record = good;
    ASSERT_TRUE(ApplyFixups(record));
    EXPECT_EQ(Load<std::uint16_t>(record, size - 2), 0);
    EXPECT_FALSE(ApplyFixups(record)) << "a record without its update numbers is torn";
    for (const std::size_t broken :
         {std::size_t{0}, std::size_t{0x05}, std::size_t{0x06}, std::size_t{510}, size - 1}) {
      record = good;
      record[broken] ^= std::byte{0x41};
      EXPECT_FALSE(ApplyFixups(record)) << broken;
    }
  }
}

struct TBreak {
  std::size_t Offset;
  std::uint32_t Value;
  const char* Why;
};

bool HoldsTogether(TBytes record) {
  const auto header = ParseRecordHeader(record);
  if (!header) return false;
  TAttributeWalk walk(record, *header);
  for (TAttribute attribute; walk.Next(attribute);) {
  }
  return !walk.Broken();
}

TEST(NtfsFileRecord, HeaderAndAttributesMustStayWithin) {
  TImage good = TRecordMaker().Data(40).NonResident(TAttributeType::Data, PackRuns({{1, 2}}), 9).Make(1024);
  ASSERT_TRUE(ApplyFixups(good));
  ASSERT_TRUE(HoldsTogether(good));
  const std::size_t first = 0x98;
  const std::size_t second = first + Load<std::uint32_t>(good, first + 4);
  const TBreak kRows[] = {
      {0x18, 1032, "more bytes in use than the record has"},
      {0x18, 0x98, "no room for the end mark"},
      {0x18, 0, "attributes behind the end"},
      {0x14, 0x99, "crooked beginning"},
      {0x14, 0x10, "beginning within the header"},
      {first + 4, 0, "length 0: would never end"},
      {first + 4, 0x10, "shorter than its header"},
      {first + 4, 0x1001, "crooked length"},
      {first + 4, 0x7FFFFFF8, "longer than the record"},
      {first + 0x10, 0x41, "value longer than the attribute"},
      {first + 0x10, 0xFFFFFFF0, "value length that wraps"},
      {first + 0x14, 0x10, "value within the header"},
      {first + 0x08, 0x01000900, "name behind the end"},
      {second + 0x20, 0x20, "runs within the header"},
      {second + 0x20, 0xFFFF, "runs behind the end"},
      {second + 0x34, 0x80000000, "a negative length"},
  };
  for (const TBreak& row : kRows) {
    TImage record = good;
    Store(record, row.Offset, row.Value);
    EXPECT_FALSE(HoldsTogether(record)) << row.Why;
  }
}

TEST(NtfsAttributeList, EndsAtTheFirstBrokenLine) {
  const TImage good =
      MakeList({{TAttributeType::Data, 7, Reference(30, 2)}, {TAttributeType::FileName, 0, 40, true}});
  bool broken = false;
  TBytes list = good;
  const auto first = TakeListEntry(list, broken);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->LowestVcn, 7u);
  EXPECT_EQ(first->Holder, (TFileReference{30, 2}));
  ASSERT_TRUE(TakeListEntry(list, broken)->Named);
  EXPECT_FALSE(TakeListEntry(list, broken));
  EXPECT_FALSE(broken);
  for (const int length : {0, 0x19, 0x41}) {
    TImage bad = good;
    Store(bad, 4, static_cast<std::uint16_t>(length));
    list = bad;
    EXPECT_FALSE(TakeListEntry(list, broken));
    EXPECT_TRUE(broken);
  }
}

// A reparse value of the tag whose names follow that many bytes of flags.
TImage Link(std::uint32_t tag, std::size_t flags, std::u16string_view target) {
  TImage value(16 + flags);
  Store(value, 0, tag);
  Store(value, 10, static_cast<std::uint16_t>(target.size() * 2));
  const TImage text = Utf16(target);
  value.insert(value.end(), text.begin(), text.end());
  return value;
}

TEST(NtfsLinks, ShowTheBytesOfTheirTarget) {
  TImage subsystem(8 + 4 + 7);
  Store(subsystem, 0, 0xA000001Du);
  TImage socket(8);
  Store(socket, 0, 0x80000023u);
  TImage broken = Link(0xA000000C, 4, u"target");
  Store<std::uint16_t>(broken, 8, 2);
  const std::pair<TImage, std::optional<std::uint64_t>> kRows[] = {
      {Link(0xA000000C, 4, u"dir\\\u00E4"), 6},
      {Link(0xA0000003, 0, u"\\??\\C:\\dir"), 6},
      {subsystem, 7},
      {socket, 0},
      {Link(0x80000017, 0, u"compressed"), std::nullopt},
      {broken, std::nullopt},
      {TImage(4), std::nullopt},
  };
  for (const auto& [value, length] : kRows)
    EXPECT_EQ(ReparseTargetLength(value), length);
}

TEST(NtfsSpecialFiles, AreToldByTheirData) {
  const auto data = [](std::string_view mark, const TImage& rest) {
    TImage bytes(mark.size());
    std::memcpy(bytes.data(), mark.data(), mark.size());
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    return bytes;
  };
  EXPECT_EQ(SpecialDataSize({}), 0u);
  EXPECT_EQ(SpecialDataSize(TImage(1)), 0u);
  EXPECT_EQ(SpecialDataSize(data("IntxLNK\1", Utf16(u"/\u00FC"))), 3u);
  EXPECT_EQ(SpecialDataSize(data(std::string_view("IntxCHR\0", 8), TImage(16))), 0u);
  EXPECT_EQ(SpecialDataSize(data("MZ", TImage(30))), std::nullopt);
}

}  // namespace
}  // namespace volindex::ntfs
