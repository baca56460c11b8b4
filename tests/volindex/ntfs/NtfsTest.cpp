// The parsers of single structures against right, broken and hostile bytes, and the reader on volumes written
// record by record: what no tool of today leaves behind on purpose.
#include <gtest/gtest.h>

#include <random>

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
  TRecordHeader header;
  if (!ParseRecordHeader(record, header)) return false;
  TAttributeWalk walk(record, header);
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

using TEntries = std::map<std::string, std::uint64_t>;
using enum TAttributeType;

// The paths of a tree with their sizes; folders end in '/'.
TEntries EntriesOf(const std::optional<TAnswer>& tree) {
  TEntries entries;
  for (const auto* list : {&tree.value().Files, &tree->Folders})
    for (const TListed& listed : *list)
      entries[listed.Path + (list == &tree->Files ? "" : "/")] = listed.Size;
  return entries;
}

TEntries EntriesOf(const TVolumeMaker& maker) {
  return EntriesOf(ReadTree(maker.Make()));
}

TRecordMaker File(std::u16string_view name, std::size_t length, std::uint64_t parent = kRoot,
                  std::uint16_t sequence = 1) {
  return TRecordMaker(false, sequence).Name(parent, name).Data(length);
}

TRecordMaker Folder(std::u16string_view name, std::uint64_t parent = kRoot, std::uint16_t sequence = 1) {
  return TRecordMaker(true, sequence).Name(parent, name);
}

// Record 0 keeps the first part of the table's runs, two extension records the others; the second of them
// lies in the part that only the first makes known.
TVolumeMaker SpreadTable(bool listOutside) {
  const std::vector<TListLine> lines = {
      {Data, 0, Reference(0, 1)}, {Data, 8, Reference(15, 1)}, {Data, 16, Reference(40, 1)}};
  TVolumeMaker maker(4096, 1024, 128);
  maker.TableRuns({{8, 4}, {8, 50}, {8, 30}});
  TRecordMaker table;
  if (listOutside) {
    maker.PutBytes(100, MakeList(lines));
    table.NonResident(AttributeList, PackRuns({{1, 100}}), MakeList(lines).size());
  } else {
    table.Resident(AttributeList, MakeList(lines));
  }
  maker.OwnTableRecord(table.NonResident(Data, PackRuns({{8, 4}}), 96 * 1024));
  const auto extent = [](std::int64_t cluster, std::uint64_t vcn) {
    return TRecordMaker().Base(Reference(0, 1)).NonResident(Data, PackRuns({{8, cluster}}), 0, vcn);
  };
  maker.Put(15, extent(50, 8)).Put(40, extent(30, 16));
  return maker.Put(24, File(u"first", 1)).Put(63, File(u"second", 2)).Put(95, File(u"third", 3));
}

TEST(NtfsReader, FindsATableInPiecesSmallerThanARecordOrDescribedByAnAttributeList) {
  TVolumeMaker pieces(512, 1024, 512);
  pieces.TableRuns({{21, 20}, {31, 300}, {5, 10}, {33, 100}}).Put(25, File(u"a", 1)).Put(26, File(u"b", 2));
  EXPECT_EQ(EntriesOf(pieces.Put(42, File(u"c", 3))), (TEntries{{"a", 1}, {"b", 2}, {"c", 3}}));
  const TEntries expected = {{"first", 1}, {"second", 2}, {"third", 3}};
  EXPECT_EQ(EntriesOf(SpreadTable(false)), expected);
  EXPECT_EQ(EntriesOf(SpreadTable(true)), expected);
}

// A record in use that does not hold together may be one that its driver shows all the same.
TEST(NtfsReader, HandsOverWhatItIsUnsureOf) {
  const auto broken = [](const TVolumeMaker& maker, std::uint64_t record, std::size_t offset,
                         std::uint8_t value) {
    TImage image = maker.Make();
    Store(image, maker.OffsetOf(record) + offset, value);
    return image;
  };
  const TVolumeMaker good = TVolumeMaker().Put(24, File(u"a", 1)).Put(25, File(u"gone", 1).Deleted());
  ASSERT_TRUE(ReadTree(good.Make()));
  const auto with = [](const TRecordMaker& record) { return TVolumeMaker().Put(24, record).Make(); };
  const TImage outside = PackRuns({{1, 1000}}), list = MakeList({});
  const std::pair<const char*, TImage> kRows[] = {
      {"a table whose extent lies in a reused record",
       SpreadTable(false)
           .Put(40,
                TRecordMaker(false, 2).Base(Reference(0, 1)).NonResident(Data, PackRuns({{8, 30}}), 0, 16))
           .Make()},
      {"a gap in the table",
       SpreadTable(false)
           .Put(15, TRecordMaker().Base(Reference(0, 1)).NonResident(Data, PackRuns({{8, 50}}), 0, 9))
           .Make()},
      {"a root that is no folder", broken(good, 5, 0x16, 1)},
      {"a torn record 0", broken(good, 0, 511, 1)},
      {"a torn record", broken(good, 24, 511, 1)},
      {"an attribute of crooked length", broken(good, 24, 0x98 + 4, 0xFF)},
      {"marked as bad by a checker", with(TRecordMaker("BAAD"))},
      {"two attribute lists",
       with(File(u"a", 1).Resident(AttributeList, list).Resident(AttributeList, list))},
      {"an attribute list outside", with(File(u"a", 1).NonResident(AttributeList, outside, 64))},
      {"a broken attribute list", with(File(u"a", 1).Resident(AttributeList, TImage(8)))},
      {"two lengths", with(File(u"a", 1).Data(2))},
      {"two links", with(File(u"a", 1).Resident(ReparsePoint, TImage(8)).Resident(ReparsePoint, TImage(8)))},
      {"a link outside", with(File(u"a", 1).NonResident(ReparsePoint, outside, 64))},
      {"a link that was not written",
       with(File(u"a", 1).NonResident(ReparsePoint, PackRuns({{1, 50}}), 64, 0, 32))},
      {"an empty name", with(File(u"", 1))},
      {"two folders in one",
       TVolumeMaker().Put(24, Folder(u"a")).Put(25, Folder(u"b").Name(Reference(24, 1), u"c")).Make()}};
  for (const auto& [what, image] : kRows)
    EXPECT_FALSE(ReadTree(image)) << what;
  EXPECT_EQ(ReadTree(broken(good, 24, 0x2C, 77))->FileCount, 1u)
      << "a wrong number of its own is of no interest";
  EXPECT_EQ(ReadTree(broken(good, 25, 511, 1))->FileCount, 1u) << "nor is damage to what is not in use";
}

TEST(NtfsReader, RecordsBeyondTheWrittenPartAreNotLookedAt) {
  TVolumeMaker maker;
  maker.OwnTableRecord(TRecordMaker().NonResident(Data, PackRuns({{32, 4}}), 128 * 1024, 0, 40 * 1024));
  maker.Put(39, File(u"written", 1)).Put(40, File(u"garbage", 2));
  EXPECT_EQ(EntriesOf(maker), (TEntries{{"written", 1}}));
}

TEST(NtfsReader, LeavesOutMetadataDeletedAndReusedRecords) {
  TVolumeMaker maker;
  maker.Put(11, Folder(u"$Extend", kRoot, 11)).Put(24, File(u"$ObjId", 5, Reference(11, 11)));
  maker.Put(9, File(u"$Secure", 5));
  maker.Put(25, File(u"deleted", 5).Deleted());
  maker.Put(26, Folder(u"new folder", kRoot, 8));
  maker.Put(27, File(u"of the new", 3, Reference(26, 8)));
  maker.Put(28, File(u"of the old", 4, Reference(26, 7)));
  maker.Put(29, File(u"of no record", 4, Reference(4000, 1)));
  maker.Put(30, File(u"of a file", 4, Reference(27, 1)));
  maker.Put(31, Folder(u"loop", Reference(32, 1))).Put(32, Folder(u"pool", Reference(31, 1)));
  maker.Put(33, File(u"in the loop", 4, Reference(31, 1)));
  maker.Put(34, File(u"of the old root", 4, Reference(5, 4)));
  EXPECT_EQ(EntriesOf(maker), (TEntries{{"new folder/", 3}, {"new folder/of the new", 3}}));
}

TEST(NtfsReader, CountsTheLengthOfTheUnnamedData) {
  TVolumeMaker maker;
  const auto named = [](std::u16string_view name) { return TRecordMaker().Name(kRoot, name); };
  maker.Put(24, named(u"streams").Data(300, u"stream"));
  maker.Put(25, named(u"both").Data(3).Data(400, u"stream"));
  maker.Put(26, named(u"hole").NonResident(Data, PackRuns({{8, -1}}), 30000, 0, 0));
  maker.Put(27, named(u"huge").NonResident(Data, PackRuns({{8, -1}}), 1ull << 50));
  maker.Put(28, TRecordMaker(true).Name(kRoot, u"folder").Data(50));
  maker.Put(29, named(u"pieces")
                    .NonResident(Data, PackRuns({{8, 9}}), 60000)
                    .NonResident(Data, PackRuns({{8, 9}}), 7, 8));
  EXPECT_EQ(EntriesOf(maker), (TEntries{{"streams", 0},
                                        {"both", 3},
                                        {"hole", 30000},
                                        {"huge", 1ull << 50},
                                        {"folder/", 0},
                                        {"pieces", 60000}}));
}

// With its list in the record or outside.
TEST(NtfsReader, GathersAFileFromItsExtensionRecords) {
  const std::uint64_t base = Reference(30, 3);
  const TImage list = MakeList({{FileName, 0, base},
                                {FileName, 0, Reference(24, 2)},
                                {Data, 0, Reference(50, 1)},
                                {Data, 9, Reference(51, 1)},
                                {ReparsePoint, 0, Reference(53, 1), true}});
  const auto dataRecord = [](std::uint64_t of) {
    return TRecordMaker().Base(of).NonResident(Data, PackRuns({{9, 0}}), 36000);
  };
  for (const bool outside : {true, false}) {
    TVolumeMaker maker;
    TRecordMaker first(false, 3);
    outside ? first.NonResident(AttributeList, PackRuns({{1, 55}}), list.size())
            : first.Resident(AttributeList, list);
    maker.PutBytes(55, list).Put(30, first.Name(kRoot, u"z"));
    maker.Put(24, TRecordMaker(false, 2).Base(base).Name(kRoot, u"a"));
    maker.Put(50, dataRecord(base));
    maker.Put(51, TRecordMaker().Base(base).NonResident(Data, PackRuns({{9, 0}}), 77, 9));
    maker.Put(52, TRecordMaker().Base(base).Name(kRoot, u"0 not in the list"));
    EXPECT_EQ(EntriesOf(maker), (TEntries{{"a", 36000}}));
    for (const auto& [record, lost] : std::initializer_list<std::pair<std::uint64_t, TRecordMaker>>{
             {24, TRecordMaker(false, 3).Base(base).Name(kRoot, u"a")},
             {24, TRecordMaker(false, 2).Base(base).Name(kRoot, u"a").Deleted()},
             {50, dataRecord(Reference(30, 2))},
             {50, TRecordMaker().Base(base)}})
      EXPECT_FALSE(ReadTree(TVolumeMaker(maker).Put(record, lost).Make())) << record;
  }
}

// Each name in a folder of its own, in several, or in one, in the record or beside it: the first path counts
// in any case. A name for DOS is none.
TEST(NtfsReader, AFilesFirstPathCountsWhereverItsNamesLie) {
  TVolumeMaker maker(4096, 1024, 256);
  const std::uint64_t b = Reference(24, 1), a = Reference(25, 1);
  maker.TableRuns({{64, 4}}).Put(24, Folder(u"b")).Put(25, Folder(u"a")).Put(16, File(u"low", 256));
  maker.Put(26, File(u"n", 1, b).Name(b, u"m").Name(a, u"y").Name(a, u"z").Name(b, u"l"));
  maker.Put(27, File(u"n", 2, b).Name(b, u"k").Name(b, u"o"));
  const TImage list = MakeList({{FileName, 0, Reference(29, 1)}, {FileName, 0, Reference(30, 1)}});
  maker.Put(28, File(u"s", 4, b).Resident(AttributeList, list));
  maker.Put(29, TRecordMaker().Base(Reference(28, 1)).Name(b, u"r").Name(a, u"t"));
  maker.Put(30, TRecordMaker().Base(Reference(28, 1)).Name(a, u"q"));
  maker.Put(31, Folder(u"gone", Reference(40, 9))).Put(32, File(u"0", 8, Reference(31, 1)).Name(b, u"8"));
  maker.Put(33, TRecordMaker().Name(b, u"LONGNA~1", TNameSpace::Dos).Name(b, u"long name here").Data(16));
  maker.Put(34, File(u"hard", 32, b).Name(a, u"HARD~1", TNameSpace::Dos).Name(a, u"hardly"));
  maker.Put(35, TRecordMaker().Name(b, u"ONLY", TNameSpace::Dos).Data(64));
  EXPECT_EQ(EntriesOf(maker), (TEntries{{"a/", 37},
                                        {"b/", 26},
                                        {"a/y", 1},
                                        {"b/k", 2},
                                        {"a/q", 4},
                                        {"b/8", 8},
                                        {"b/long name here", 16},
                                        {"a/hardly", 32},
                                        {"low", 256}}));
}

TImage ReparseValue(std::uint32_t tag, std::size_t size) {
  TImage value(size);
  Store(value, 0, tag);
  return value;
}

// Links, what only another system could read, a folder of a store in the cloud, and a link stored as data.
TEST(NtfsReader, ReparsePointsAreWhatTheirDriverShows) {
  TVolumeMaker maker;
  TImage link = ReparseValue(0xA0000003, 20);
  Store<std::uint16_t>(link, 10, 4);
  maker.Put(24, Folder(u"junction").Resident(ReparsePoint, link));
  maker.Put(25, File(u"beneath", 9, Reference(24, 1)));
  maker.Put(26, File(u"compressed", 400).Resident(ReparsePoint, ReparseValue(0x80000017, 24)));
  maker.Put(27, Folder(u"cloud").Resident(ReparsePoint, ReparseValue(0x9000701A, 24)));
  maker.Put(28, File(u"in it", 50, Reference(27, 1)));
  TImage data(8 + 6);
  std::memcpy(data.data(), "IntxLNK\1", 8);
  data[8] = data[10] = data[12] = std::byte{'x'};
  maker.Put(29, TRecordMaker().Information(4).Name(kRoot, u"link").Resident(Data, data));
  const std::pair<TDriver, TEntries> kRows[] = {
      {TDriver::Kernel, {{"junction", 2}, {"compressed", 400}, {"cloud", 0}, {"link", 3}}},
      {TDriver::Ntfs3g, {{"junction", 2}, {"compressed", 34}, {"cloud", 34}, {"link", 3}}},
      {TDriver::Windows,
       {{"junction", 0}, {"compressed", 400}, {"cloud/", 50}, {"cloud/in it", 50}, {"link", 14}}}};
  const TImage image = maker.Make();
  for (const auto& [driver, entries] : kRows)
    EXPECT_EQ(EntriesOf(ReadTree(TMemorySource(image), 2, driver)), entries);
}

TEST(NtfsReader, NamesThatNoPathCanHoldAreIgnored) {
  TVolumeMaker maker;
  using namespace std::string_view_literals;
  std::uint64_t record = 24;
  for (const auto name : {u"."sv, u".."sv, u"a/b"sv, u"a\0b"sv, u"abc/"sv, u"abcdefg\0"sv, u"abcdefgh/"sv,
                          u"/bcdefghijklmnop"sv, u"abcdefghijklmnop/"sv,
                          u"abcdefghijklmno\0qrstuvwxyz012345"sv, u"abcdefghijklmnopqrstuvwxyz012345/"sv})
    maker.Put(record++, File(name, 1));
  // A lone surrogate, dots that mean nothing, and units with the forbidden bytes in one half.
  maker.Put(40, File(u"\xD800", 5)).Put(41, File(u"...", 6)).Put(42, File(u"\u2F00\u012F\u2F2F\u0100", 7));
  EXPECT_EQ(EntriesOf(maker), (TEntries{{"\xED\xA0\x80", 5}, {"...", 6}, {"\u2F00\u012F\u2F2F\u0100", 7}}));
}

// Thousands of folders and files in a shuffled order of records; every number of threads gives one answer.
TEST(NtfsReader, TheAnswerDoesNotDependOnTheThreadsAndProgressRises) {
  TVolumeMaker maker(4096, 1024, 2048);
  maker.TableRuns({{2000, 4}});
  std::mt19937 random(7);
  for (std::uint64_t record = 24; record < 7900; ++record) {
    const std::uint64_t parent = random() % 3 == 0 ? kRoot : Reference(24 + random() % 7876, 1);
    const std::u16string name = {static_cast<char16_t>(0x4E00 + record), u'x'};
    maker.Put(record,
              random() % 4 == 0
                  ? Folder(name, parent)
                  : File(name, random() % 300, parent).Name(Reference(24 + random() % 7876, 1), name));
  }
  const TImage image = maker.Make();
  const auto once = ReadTree(image, 1);
  ASSERT_TRUE(once);
  EXPECT_GT(once->FileCount, 1000u);
  for (const unsigned threads : {1u, 2u, 3u, 8u})
    EXPECT_TRUE(ReadTree(image, threads) == once) << threads;
  const std::atomic<bool> noStop{false};
  std::vector<int> reported = {1};
  TIndexBuilder builder;
  const TScanControl control{noStop, [&reported](int percent) { reported.push_back(percent); }};
  ASSERT_EQ(ReadNtfs(TMemorySource(image), TDriver::Kernel, builder, control, 1), TReadResult::Done);
  reported.push_back(99);
  EXPECT_TRUE(reported.size() >= 10 && std::ranges::is_sorted(reported));
}

TEST(NtfsDamage, ManyBytesOfASmallVolume) {
  const unsigned done = CountDoneOfDamaged(
      MixedVolume().Make(), 0, 16, 6000,
      [](const auto& source, unsigned round) { return ReadTree(source, 1 + round % 2).has_value(); });
  EXPECT_TRUE(done > 1000 && done < 5950) << done;
}

}  // namespace
}  // namespace volindex::ntfs
