// folder-size FOLDER [ROUNDS]: sums a folder as the size thread does and prints the bytes, and the
// milliseconds of the fastest round, for du to be measured beside it.
#include "platform/Paths.h"
#include "scan/FolderCrew.h"
#include "scan/FolderSizeThread.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::fprintf(stderr, "usage: folder-size FOLDER [ROUNDS]\n");
    return 2;
  }
  TFolderCrew crew;
  quint64 bytes = 0;
  double fastest = 1e12;
  for (int round = 0; round < (argc == 3 ? std::atoi(argv[2]) : 1); ++round) {
    const auto start = std::chrono::steady_clock::now();
    bytes = GetFolderSize(NameFromBytes(argv[1]), crew);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    fastest = std::min(fastest, took.count());
  }
  std::printf("%llu bytes, %.1f ms\n", static_cast<unsigned long long>(bytes), fastest);
  return 0;
}
