// Damaged volumes: whatever bytes are wrong, the reader ends, reads nothing outside the image, and at worst
// hands over. (Reads outside fail the memory source; reads outside buffers fail the sanitizers.)
#include <gtest/gtest.h>

#include <random>

#include "ReadTree.h"
#include "VolumeMaker.h"

namespace volindex::ntfs {
namespace {

TEST(NtfsDamage, ManyBytesOfASmallVolume) {
  TImage image = MixedVolume().Make();
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < image.size(); ++place)
    if (image[place] != std::byte{0} || place % 16 == 0) places.push_back(place);
  unsigned read = 0, handedOver = 0;
  std::mt19937 random(11);
  for (unsigned round = 0; round < 6000; ++round) {
    std::vector<std::pair<std::size_t, std::byte>> before;
    for (unsigned i = 0; i <= random() % 6; ++i) {
      const std::size_t place = places[random() % places.size()];
      before.emplace_back(place, image[place]);
      image[place] =
          random() % 2 == 0 ? static_cast<std::byte>(random()) : image[place] ^ std::byte{1} << random() % 8;
    }
    const TMemorySource source(image);
    (ReadTree(source, 1 + round % 2) ? read : handedOver)++;
    EXPECT_FALSE(source.Strayed()) << "round " << round;
    for (auto change = before.rbegin(); change != before.rend(); ++change)
      image[change->first] = change->second;
  }
  EXPECT_GT(read, 1000u);
  EXPECT_GT(handedOver, 50u);
}

}  // namespace
}  // namespace volindex::ntfs
