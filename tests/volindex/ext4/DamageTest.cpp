// Damaged volumes: whatever the bytes, a scan ends, stays within the volume and at worst hands over.
#include <gtest/gtest.h>

#include <random>

#include "Images.h"

namespace volindex::ext4 {
namespace {

void MakeSmallTree(const std::string& tree) {
  for (int folder = 0; folder < 8; ++folder) {
    const std::string path = tree + "/folder " + std::to_string(folder) + "/inner";
    std::filesystem::create_directories(path);
    for (int file = 0; file < 12; ++file)
      WriteFile(path + "/file " + std::to_string(file), "data");
  }
  std::filesystem::create_directories(tree + "/large");
  for (int i = 0; i < 60; ++i)
    WriteFile(tree + "/large/" + std::string(200, 'n') + std::to_string(i), "x");
}

// Blocks of zeros and of file data tell nothing of the reader.
[[nodiscard]] std::vector<std::size_t> PlacesOfInterest(const std::vector<std::byte>& image) {
  std::vector<std::size_t> places;
  for (std::size_t i = kSuperblockOffset; i < image.size(); ++i)
    if (image[i] != std::byte{}) places.push_back(i);
  return places;
}

class DamageTest : public testing::TestWithParam<const char*> {};

TEST_P(DamageTest, FlippedBytesAreSurvived) {
  const TTestTree scratch;
  MakeSmallTree(scratch.Path("tree"));
  ASSERT_TRUE(MakeImage(scratch.Path("image"), "2M", GetParam(), scratch.Path("tree")));
  const std::vector<std::byte> good = LoadFile(scratch.Path("image"));
  ASSERT_EQ(Scan(TMemorySource(good)).Result, TReadResult::Done);
  const auto places = PlacesOfInterest(good);
  std::mt19937 random(12345);
  std::vector<std::byte> image;
  int outcomes[2]{};
  for (int round = 0; round < 1500; ++round) {
    image = good;
    for (auto flips = 1 + random() % 4; flips > 0; --flips)
      image[places[random() % places.size()]] = static_cast<std::byte>(random());
    const TMemorySource source(image);
    const TOutcome outcome = Scan(source);
    ASSERT_NE(outcome.Result, TReadResult::Stopped);
    ++outcomes[outcome.Result == TReadResult::Done];
    ASSERT_FALSE(source.Strayed()) << "round " << round;
  }
  EXPECT_GT(outcomes[0], 0);
  EXPECT_GT(outcomes[1], 0);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, DamageTest,
    testing::Values("-t ext2 -b 1024", "-t ext4 -b 1024 -O ^metadata_csum,^has_journal",
                    "-t ext4 -b 1024 -O ^has_journal",
                    "-t ext4 -b 1024 -O ^metadata_csum,^has_journal,inline_data -I 512"));

TEST(CutTest, CutVolumeIsHandedOver) {
  const TTestTree scratch;
  MakeSmallTree(scratch.Path("tree"));
  ASSERT_TRUE(MakeImage(scratch.Path("image"), "2M", "-t ext4 -b 1024", scratch.Path("tree")));
  const std::vector<std::byte> bytes = LoadFile(scratch.Path("image"));
  for (const std::size_t size : {0u, 1000u, 2047u, 2048u, 1u << 20})
    EXPECT_EQ(Scan(TMemorySource(std::span(bytes).first(size))).Result, TReadResult::HandedOver) << size;
}

}  // namespace
}  // namespace volindex::ext4
