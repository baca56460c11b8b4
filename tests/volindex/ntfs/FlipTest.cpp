// Damaged volumes: whatever bytes are wrong, the reader ends, reads nothing outside the image, and at worst
// hands over. (Reads outside fail the memory source; reads outside buffers fail the sanitizers.)
#include <gtest/gtest.h>

#include <random>

#include "ReadTree.h"
#include "VolumeMaker.h"

namespace volindex::ntfs {
namespace {

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
    const TMemorySource source(image);
    (ReadTree(source, 1 + round % 2) ? outcomes.Read : outcomes.HandedOver)++;
    EXPECT_FALSE(source.Strayed()) << "seed " << seed << " round " << round;
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

TEST(NtfsDamage, ManyBytesOfASmallVolume) {
  const TImage image = MixedVolume().Make();
  const TOutcomes outcomes = ReadDamaged(image, NonZeroPlaces(image, 0, image.size()), 6000, 11);
  EXPECT_GT(outcomes.Read, 1000u);
  EXPECT_GT(outcomes.HandedOver, 50u);
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
