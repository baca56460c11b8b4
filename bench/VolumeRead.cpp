// volume-read FOLDER: one reading of a volume by the library alone. Prints the milliseconds that it took and
// the KiB by which the process's peak of memory grew. TALLYSCOPE_READER and TALLYSCOPE_TRACE work as ever.
#include "volindex/include/volindex.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

long PeakKiB() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    long peak = 0;
    if (word == "VmHWM:" && status >> peak) return peak;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: volume-read FOLDER\n");
    return 2;
  }
  const std::string bytes = argv[1];  // plain ASCII, as bench/volumes names its mount points
  const std::u16string path(bytes.begin(), bytes.end());
  const long before = PeakKiB();
  const auto start = std::chrono::steady_clock::now();
  Tallyscope_ScanLocalDrive(path.c_str());
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
  uint32_t files = 0;
  Tallyscope_GetRecordCount(&files, nullptr);
  std::printf("%.3f %ld\n", took.count(), PeakKiB() - before);
  return files > 0 ? 0 : 1;
}
