// bare-read DEVICE OFFSET LENGTH [OFFSET LENGTH ...]: reads these bytes on all processors in large pieces and
// does nothing with them, for a device reader to be measured against. Prints the milliseconds that it took.
#include <fcntl.h>
#include <unistd.h>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

constexpr uint64_t kLargestRead = 1 << 20;

struct TPiece {
  uint64_t Offset;
  uint64_t Length;  // at most kLargestRead
};

std::vector<TPiece> Pieces(int count, char** numbers) {
  std::vector<TPiece> pieces;
  for (int i = 0; i + 1 < count; i += 2) {
    uint64_t offset = std::strtoull(numbers[i], nullptr, 10);
    const uint64_t end = offset + std::strtoull(numbers[i + 1], nullptr, 10);
    for (; offset < end; offset += kLargestRead)
      pieces.push_back({offset, std::min(kLargestRead, end - offset)});
  }
  return pieces;
}

bool ReadAll(int device, const std::vector<TPiece>& pieces) {
  std::atomic<size_t> next{0};
  std::atomic<bool> failed{false};
  const auto work = [&] {
    // To an odd address the system copies at half the speed.
    alignas(4096) static thread_local char buffer[kLargestRead];
    for (size_t i = next++; i < pieces.size(); i = next++) {
      const ssize_t got = pread(device, buffer, pieces[i].Length, static_cast<off_t>(pieces[i].Offset));
      if (got != static_cast<ssize_t>(pieces[i].Length)) failed = true;
    }
  };
  {
    std::vector<std::jthread> others;
    for (unsigned i = 1; i < std::thread::hardware_concurrency(); ++i)
      others.emplace_back(work);
    work();
  }
  return !failed;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4 || argc % 2 != 0) {
    std::fprintf(stderr, "usage: bare-read DEVICE OFFSET LENGTH [OFFSET LENGTH ...]\n");
    return 2;
  }
  const auto start = std::chrono::steady_clock::now();
  const int device = open(argv[1], O_RDONLY | O_CLOEXEC);
  if (device < 0 || !ReadAll(device, Pieces(argc - 2, argv + 2))) {
    std::perror("bare-read");
    return 1;
  }
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
  std::printf("%.3f\n", took.count());
  return 0;
}
