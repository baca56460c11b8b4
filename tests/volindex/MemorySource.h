// A volume in memory, which notes whether a reader ever asked for bytes that are not there.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <random>
#include <span>
#include <vector>

#include "volindex/readers/ByteSource.h"
#include "volindex/readers/DiskBytes.h"

namespace volindex {

// The bytes must outlive it, and may change between two scans.
class TMemorySource : public TByteSource {
 public:
  explicit TMemorySource(std::span<const std::byte> bytes) : FBytes(bytes) {}
  [[nodiscard]] uint64_t Size() const override { return FBytes.size(); }
  [[nodiscard]] bool ReadAt(uint64_t offset, std::span<std::byte> target) const override {
    if (!Fits(offset, target.size(), FBytes.size())) {
      FStrayed = true;
      return false;
    }
    std::copy_n(FBytes.begin() + static_cast<std::ptrdiff_t>(offset), target.size(), target.begin());
    return true;
  }
  [[nodiscard]] bool Strayed() const { return FStrayed; }

 private:
  std::span<const std::byte> FBytes;
  mutable std::atomic<bool> FStrayed{false};
};

// Whatever bytes are wrong, a reader ends, reads nothing outside the volume and at worst hands over: how many
// of the rounds, each with a few bytes changed from `begin` on, were done all the same. Every so many zeros
// are tried too. done(source, round) is a reading.
template <class TDone>
unsigned CountDoneOfDamaged(std::vector<std::byte> volume, std::size_t begin, std::size_t zeros,
                            unsigned rounds, const TDone& done) {
  std::vector<std::size_t> places;
  for (std::size_t place = begin; place < volume.size(); ++place)
    if (volume[place] != std::byte{0} || place % zeros == 0) places.push_back(place);
  std::mt19937 random(11);
  unsigned count = 0;
  for (unsigned round = 0; round < rounds; ++round) {
    std::vector<std::pair<std::size_t, std::byte>> before;
    for (auto changes = 1 + random() % 5; changes > 0; --changes) {
      std::byte& place = volume[places[random() % places.size()]];
      before.emplace_back(&place - volume.data(), place);
      place = random() % 2 == 0 ? static_cast<std::byte>(random()) : place ^ std::byte{1} << random() % 8;
    }
    const TMemorySource source(volume);
    count += done(source, round) ? 1 : 0;
    EXPECT_FALSE(source.Strayed()) << "round " << round;
    for (auto change = before.rbegin(); change != before.rend(); ++change)
      volume[change->first] = change->second;
  }
  return count;
}

}  // namespace volindex
