// Volumes made to fill the memory and to keep the reader busy: whatever the image, it takes little memory and
// ends soon after a Stop.
#include <gtest/gtest.h>
#include <malloc.h>

#include <chrono>
#include <cstdlib>
#include <new>
#include <thread>

#include "ReadTree.h"
#include "VolumeMaker.h"

namespace {

// Bytes held by new, and the most since the peak was last set.
std::atomic<std::size_t> gHeld, gPeak;

void* Count(void* block) {
  if (block == nullptr) throw std::bad_alloc();
  const std::size_t held = gHeld += malloc_usable_size(block);
  for (std::size_t peak = gPeak; peak < held && !gPeak.compare_exchange_weak(peak, held);) {
  }
  return block;
}

void Release(void* block) {
  gHeld -= malloc_usable_size(block);
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) { return Count(std::malloc(size)); }
void* operator new(std::size_t size, std::align_val_t align) {
  return Count(std::aligned_alloc(static_cast<std::size_t>(align), size));
}
void operator delete(void* block) noexcept { Release(block); }
void operator delete(void* block, std::size_t) noexcept { Release(block); }
void operator delete(void* block, std::align_val_t) noexcept { Release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { Release(block); }

namespace volindex::ntfs {
namespace {

using enum TAttributeType;
using namespace std::chrono_literals;
using TClock = std::chrono::steady_clock;

// Sets the flag at one of the reads, and notes when.
class TStoppingSource : public TMemorySource {
 public:
  TStoppingSource(const TImage& image, std::uint64_t stopAt) : TMemorySource(image), FStopAt(stopAt) {}
  [[nodiscard]] bool ReadAt(uint64_t offset, std::span<std::byte> target) const override {
    if (FReads.fetch_add(1) == FStopAt) {
      Asked = TClock::now();
      Stop = true;
    }
    return TMemorySource::ReadAt(offset, target);
  }
  mutable std::atomic<bool> Stop{false};
  mutable TClock::time_point Asked;

 private:
  std::uint64_t FStopAt;
  mutable std::atomic<std::uint64_t> FReads{0};
};

// Lists of the greatest length, which all name other holders; each record names several of them.
TImage SharedLists(std::uint32_t recordSize, std::int64_t records, std::int64_t lists, int perRecord) {
  constexpr std::int64_t kListClusters = 64;
  const std::int64_t table = (records + 24) * recordSize / 4096 + 1;
  TVolumeMaker maker(4096, recordSize, static_cast<std::uint64_t>(4 + table + lists * kListClusters));
  maker.TableRuns({{table, 4}});
  for (std::int64_t list = 0; list < lists; ++list) {
    std::vector<TListLine> lines;
    for (std::uint64_t i = 0; i < 8192; ++i)
      lines.push_back({FileName, 0, Reference(24 + static_cast<std::uint64_t>(list) * 8192 + i, 7)});
    maker.PutBytes(static_cast<std::uint64_t>(4 + table + list * kListClusters), MakeList(lines));
  }
  for (std::int64_t i = 0; i < records; ++i) {
    TRecordMaker record;
    for (int n = 0; n < perRecord; ++n)
      record.NonResident(AttributeList, PackRuns({{kListClusters, 4 + table + (i + n) % lists * kListClusters}}), 8192 * 32);
    maker.Put(24 + static_cast<std::uint64_t>(i), record);
  }
  return maker.Make();
}

TEST(NtfsBounds, Repro) {
  const struct { const char* What; TImage Image; } kRows[] = {
    {"9 in 1K", SharedLists(1024, 700, 9, 9)},
    {"44 in 4K", SharedLists(4096, 60, 44, 43)},
    {"1 of 9", SharedLists(1024, 700, 9, 1)},
  };
  for (const auto& row : kRows) {
    std::fprintf(stderr, "%s: %zu KiB\n", row.What, row.Image.size() >> 10);
    for (unsigned threads : {1u, 2u}) {
      const auto start = TClock::now();
      const std::size_t before = gPeak = gHeld.load();
      const auto tree = ReadTree(TMemorySource(row.Image), threads);
      std::fprintf(stderr, "  %u threads: %zu MiB, %ld ms, %d\n", threads, (gPeak - before) >> 20,
       (long)((TClock::now() - start)/ 1ms), tree.has_value());
    }
    for (std::uint64_t stopAt : {0,2,4, 6, 10, 20, 60, 200, 600, 1000}) {
      TStoppingSource source(row.Image, stopAt);
      TIndexBuilder builder;
      auto result = ReadNtfs(source, TDriver::Kernel, builder, {source.Stop, {}}, 2);
      std::fprintf(stderr, "  stop at %d: %ld ms %d\n", (int)stopAt, source.Stop ? (long)((TClock::now() - source.Asked)/ 1ms) : -1L, (int)result);
    }
  }
}

}  // namespace
}  // namespace volindex::ntfs
