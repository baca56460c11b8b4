// Damaged volumes: whatever bytes are wrong, the reader ends, reads nothing outside the image, and at worst
// hands over. (Reads outside fail the memory source; reads outside buffers fail the sanitizers.)
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>

#include "MountedVolume.h"
#include "VolumeMaker.h"

namespace volindex::ntfs {
namespace {

// A source that notes whether the reader ever asked for bytes that are not there.
class TGuardedSource : public TMemorySource {
 public:
  using TMemorySource::TMemorySource;
  [[nodiscard]] bool ReadAt(std::uint64_t offset, std::span<std::byte> target) const override {
    if (!Fits(offset, target.size(), Size())) FLeft = true;
    return TMemorySource::ReadAt(offset, target);
  }
  [[nodiscard]] bool Left() const { return FLeft; }

 private:
  mutable std::atomic<bool> FLeft{false};
};

// Damages the image some times over at places that the generator picks, reads it, and repairs it.
struct TOutcomes {
  unsigned Read = 0;
  unsigned HandedOver = 0;
};

TOutcomes ReadDamaged(TImage image, const std::vector<std::size_t>& places, unsigned rounds, unsigned seed) {
  TOutcomes outcomes;
  std::mt19937 random(seed);
  for (unsigned round = 0; round < rounds; ++round) {
    std::vector<std::pair<std::size_t, std::byte>> before;
    for (unsigned i = 0; i <= random() % 6; ++i) {
      const std::size_t place = places[random() % places.size()];
      before.emplace_back(place, image[place]);
      image[place] =
          random() % 2 == 0 ? static_cast<std::byte>(random()) : image[place] ^ std::byte{1} << random() % 8;
    }
    const TGuardedSource source(image);
    (ReadTree(source, 1 + round % 2) ? outcomes.Read : outcomes.HandedOver)++;
    EXPECT_FALSE(source.Left()) << "seed " << seed << " round " << round;
    for (auto change = before.rbegin(); change != before.rend(); ++change)
      image[change->first] = change->second;
  }
  return outcomes;
}

std::vector<std::size_t> NonZeroPlaces(const TImage& image, std::size_t from, std::size_t to) {
  std::vector<std::size_t> places;
  for (std::size_t place = from; place < std::min(to, image.size()); ++place)
    if (image[place] != std::byte{0} || place % 16 == 0) places.push_back(place);
  return places;
}

TEST(NtfsDamage, AnySingleByteOfASmallVolume) {
  TImage image = MixedVolume().Make();
  ASSERT_EQ(ReadTree(image)->Files, 5u);
  unsigned handedOver = 0;
  for (std::size_t place = 0; place < image.size(); ++place) {
    if (image[place] == std::byte{0}) continue;
    const std::byte before = image[place];
    for (const std::byte value : {~before, before ^ std::byte{1}}) {
      image[place] = value;
      const TGuardedSource source(image);
      if (!ReadTree(source, 1)) ++handedOver;
      ASSERT_FALSE(source.Left()) << place;
    }
    image[place] = before;
  }
  EXPECT_GT(handedOver, 0u);
}

TEST(NtfsDamage, ManyBytesOfASmallVolume) {
  const TImage image = MixedVolume().Make();
  const TOutcomes outcomes = ReadDamaged(image, NonZeroPlaces(image, 0, image.size()), 6000, 11);
  EXPECT_GT(outcomes.Read, 1000u);
  EXPECT_GT(outcomes.HandedOver, 50u);
}

TEST(NtfsDamage, ManyBytesOfTheTableOfARealVolume) {
  TMountedVolume volume({512, 512, 8});
  if (!volume) GTEST_SKIP() << "needs root, mkntfs, ntfs-3g and loop devices";
  std::filesystem::create_directories(volume.Root() / "a" / "b");
  for (unsigned i = 0; i < 40; ++i)
    MakeFile(volume.Root() / "a" / std::to_string(i), i * 300);
  for (unsigned i = 0; i < 9; ++i)
    create_hard_link(volume.Root() / "a" / "7", volume.Root() / "a" / "b" / std::string(150 + i, 'l'));
  volume.Unmount();
  TImage image(std::filesystem::file_size(volume.Image()));
  std::ifstream(volume.Image(), std::ios::binary)
      .read(reinterpret_cast<char*>(image.data()), static_cast<std::streamsize>(image.size()));
  const auto geometry = ParseBootSector(image, image.size());
  const std::size_t table = geometry->MftCluster * geometry->ClusterSize;
  const TOutcomes outcomes = ReadDamaged(image, NonZeroPlaces(image, table, table + 120 * 1024), 1500, 5);
  EXPECT_GT(outcomes.Read, 1000u);
}

// A record whose list names the same holders over and over costs no more than a full list.
TEST(NtfsDamage, AFullAttributeListEndsSoon) {
  TVolumeMaker maker(4096, 1024, 256);
  maker.TableRuns({{64, 4}});
  const TImage list = MakeList(std::vector<TListLine>(8000, {TAttributeType::FileName, 0, Reference(60, 1)}));
  maker.PutBytes(100, list);
  for (std::uint64_t record = 24; record < 60; ++record)
    maker.Put(record, TRecordMaker()
                          .NonResident(TAttributeType::AttributeList, PackRuns({{63, 100}}), list.size())
                          .Data(9));
  maker.Put(60, TRecordMaker().Base(Reference(24, 1)).Name(kRoot, u"repeated"));
  const auto tree = ReadTree(maker.Make());
  ASSERT_TRUE(tree);
  EXPECT_EQ(tree->Files, 1u);
}

}  // namespace
}  // namespace volindex::ntfs
