// The parsers of single structures against right, broken and hostile bytes.
#include <gtest/gtest.h>

#include "VolumeMaker.h"
#include "volindex/readers/ntfs/BootSector.h"
#include "volindex/readers/ntfs/LinkLength.h"
#include "volindex/readers/ntfs/RunList.h"

namespace volindex::ntfs {
namespace {

// One place of something sound, and what makes it unsound.
struct TBreak {
  std::size_t Offset;
  std::uint32_t Value;
  const char* Why;
};

TEST(NtfsBootSector, GivesTheUnitsOfTheVolumeIfTheyCanBeTrue) {
  constexpr std::uint64_t kDevice = 1u << 20;
  const TImage good = TVolumeMaker(4096, 1024, kDevice / 4096).Make();
  const auto geometry = ParseBootSector(good, kDevice);
  ASSERT_TRUE(geometry);
  EXPECT_EQ(
      std::tuple(geometry->ClusterSize, geometry->RecordSize, geometry->ClusterCount, geometry->MftCluster),
      std::tuple(4096u, 1024u, 256u, 4u));
  TImage large = good;
  Store<std::uint8_t>(large, 0x0D, 0xF9);  // 2^7 sectors
  Store<std::uint64_t>(large, 0x30, 1);
  EXPECT_EQ(ParseBootSector(large, kDevice)->ClusterSize, 64u << 10);
  Store<std::uint8_t>(large, 0x40, 1);
  EXPECT_EQ(ParseBootSector(large, kDevice)->RecordSize, 64u << 10);
  static constexpr TBreak kRows[] = {
      {0x03, 'X', "another file system"},        {0x0C, 0x03, "sectors of 768 bytes"},
      {0x0C, 0x00, "sectors of 0 bytes"},        {0x0D, 0x00, "clusters of no sector"},
      {0x0D, 0x07, "clusters of 7 sectors"},     {0x0D, 0x90, "a power beyond all bounds"},
      {0x40, 0x80, "a record power of 128"},     {0x40, 0x00, "records of 1 byte"},
      {0x40, 0xF7, "records of 512 bytes"},      {0x28, 0x01, "one sector more than the device"},
      {0x31, 0x01, "a table at the end"},        {0x37, 0x80, "a table before the beginning"},
      {0x30, 0x00, "a table at the boot sector"}};
  for (const TBreak& row : kRows) {
    TImage sector = good;
    Store(sector, row.Offset, static_cast<std::uint8_t>(row.Value));
    EXPECT_FALSE(ParseBootSector(sector, kDevice)) << row.Why;
  }
  EXPECT_FALSE(ParseBootSector(TBytes(good).first(100), kDevice));
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
  EXPECT_TRUE(runs[0].Length == 24 && runs[1].Cluster == TRun::kHole);
  EXPECT_TRUE(runs[2].Vcn == 28 && runs[2].Cluster == 24);
  EXPECT_FALSE(AppendRuns(packed, 0, 100, runs)) << "does not follow";
  ASSERT_TRUE(AppendRuns(Packed({0x11, 1, 26, 0}), 30, 100, runs));
  EXPECT_EQ(runs.size(), 3u) << "an extent that goes on where the last ended";
  EXPECT_EQ(MappedClusters(runs), 31u);
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
      Packed({0x11, 60, 5, 0x11, 60, 1, 0}),                                   // more than there is
      Packed({0x88, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0x40, 0}),    // far out
      Packed({0x11, 4, 8, 0x08, 255, 255, 255, 255, 255, 255, 255, 0x7F, 0}),  // an endless hole
  };
  for (const TImage& list : kLists) {
    std::vector<TRun> runs = {{0, 3, 2}};
    EXPECT_FALSE(AppendRuns(list, 2, 100, runs)) << &list - kLists.data();
    EXPECT_TRUE(runs.size() == 1 && runs[0].Length == 2);
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
    // The numbers moved to the end of the first stride, of which the last two bytes are not theirs.
    for (const std::size_t end : {510u, 512u}) {
      record = good;
      const std::size_t begin = end - 2 * (size / 512 + 1);
      Store(record, 0x04, static_cast<std::uint16_t>(begin));
      Store<std::uint16_t>(record, begin, 0x4711);
      EXPECT_EQ(ApplyFixups(record), end == 510);
    }
  }
}

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
  const TBreak kRows[] = {{0x18, 1032, "more bytes in use than the record has"},
                          {0x18, 0x98, "no room for the end mark"},
                          {0x18, 0, "attributes behind the end"},
                          {0x14, 0x99, "crooked beginning"},
                          {0x14, 0x10, "beginning within the header"},
                          {first + 4, 0, "length 0: would never end"},
                          {first + 4, 0x10, "shorter than its header"},
                          {first + 4, 0x41, "crooked length"},
                          {first + 4, 0x7FFFFFF8, "longer than the record"},
                          {first + 0x10, 0x41, "value longer than the attribute"},
                          {first + 0x10, 0xFFFFFFF0, "value length that wraps"},
                          {first + 0x14, 0x10, "value within the header"},
                          {first + 0x08, 0x01000900, "name behind the end"},
                          {second + 0x20, 0x20, "runs within the header"},
                          {second + 0x20, 0xFFFF, "runs behind the end"},
                          {second + 0x34, 0x80000000, "a negative length"}};
  for (const TBreak& row : kRows) {
    TImage record = good;
    Store(record, row.Offset, row.Value);
    EXPECT_FALSE(HoldsTogether(record)) << row.Why;
  }
}

// A reparse value of the tag whose names follow that many bytes of flags.
TImage Link(std::uint32_t tag, std::size_t flags, std::u16string_view target) {
  TImage value(16 + flags);
  Store(value, 0, tag);
  Store(value, 10, static_cast<std::uint16_t>(target.size() * 2));
  Add(value, BytesOf(target));
  return value;
}

TEST(NtfsLinks, ShowTheBytesOfTheirTarget) {
  TImage subsystem(8 + 4 + 7), socket(8);
  Store(subsystem, 0, 0xA000001Du);
  Store(socket, 0, 0x80000023u);
  TImage broken = Link(0xA000000C, 4, u"target");
  Store<std::uint16_t>(broken, 8, 2);
  const std::pair<TImage, std::optional<std::uint64_t>> kLinks[] = {
      {Link(0xA000000C, 4, u"dir\\\u00E4"), 6},
      {Link(0xA0000003, 0, u"\\??\\C:\\dir"), 6},
      {subsystem, 7},
      {socket, 0},
      {Link(0x80000017, 0, u"compressed"), std::nullopt},
      {broken, std::nullopt},
      {TImage(4), std::nullopt}};
  for (const auto& [value, length] : kLinks)
    EXPECT_EQ(ReparseTargetLength(value), length);
  // After the marks IntxLNK and IntxCHR.
  const std::pair<TImage, std::optional<std::uint64_t>> kData[] = {
      {{}, 0},
      {TImage(1), 0},
      {BytesOf(u"\u6E49\u7874\u4E4C\u014B/\u00FC"), 3},
      {BytesOf(u"\u6E49\u7874\u4843\u0052 of a device"), 0},
      {TImage(30), std::nullopt}};
  for (const auto& [data, length] : kData)
    EXPECT_EQ(SpecialDataSize(data), length);
}

}  // namespace
}  // namespace volindex::ntfs
