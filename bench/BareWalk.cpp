// bare-walk FOLDER: the bare loop on all processors as a program, for the folders reader to be measured
// against.
#include "BareLoop.h"

#include <algorithm>
#include <cstdio>
#include <thread>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: bare-walk FOLDER\n");
    return 2;
  }
  const TBareTotals totals = BareLoop(argv[1], std::max(std::thread::hardware_concurrency(), 1U));
  std::printf("%lld names, %lld folders, %llu bytes\n", static_cast<long long>(totals.Files),
              static_cast<long long>(totals.Folders), static_cast<unsigned long long>(totals.Bytes));
  return totals.Files + totals.Folders > 0 ? 0 : 1;
}
