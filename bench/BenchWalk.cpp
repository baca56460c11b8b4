// bench-walk: the walker's time beside that of a bare loop that shares its folders out among as many threads,
// and its memory per file. The rounds of both take turns, so that what else the computer does falls on both
// alike.
#include "BareLoop.h"

#include "platform/Process.h"
#include "scan/Volindex.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <thread>
#include <vector>

namespace {

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

struct TSamples {
  std::vector<double> Elapsed;  // seconds
  std::vector<double> Cpu;      // seconds of all threads

  template <typename TWork>
  void Time(const TWork& work) {
    const double elapsed = Now(CLOCK_MONOTONIC);
    const double cpu = Now(CLOCK_PROCESS_CPUTIME_ID);
    work();
    Cpu.push_back(Now(CLOCK_PROCESS_CPUTIME_ID) - cpu);
    Elapsed.push_back(Now(CLOCK_MONOTONIC) - elapsed);
  }

 private:
  static double Now(clockid_t clock) {
    timespec now;
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
  }
};

struct TWalkFigures {
  TBareTotals Totals;
  double BytesPerFile = 0;
};

// The messages go to a window, as in a scan, and are handled outside of the time.
TWalkFigures MeasureWalk(const QString& root, TSamples& samples) {
  TMessageWindow window({});
  TTallyscope walker(&window);
  walker.SetProgressTarget(&window, 1);
  TWalkFigures figures;
  const qint64 before = ResidentBytes();
  samples.Time([&] { walker.Scan(root); });
  figures.Totals = {walker.FileCount(), walker.FolderCount(), walker.TotalSize()};
  const auto files = static_cast<double>(std::max(walker.FileCount(), 1));
  figures.BytesPerFile = static_cast<double>(PeakResidentBytes() - before) / files;
  PumpMessages();
  return figures;
}

bool Same(const TBareTotals& a, const TBareTotals& b) {
  return a.Files == b.Files && a.Folders == b.Folders && a.Bytes == b.Bytes;
}

void PrintTimes(const char* name, const TSamples& samples) {
  const auto best = [](const std::vector<double>& values) {
    return *std::min_element(values.begin(), values.end());
  };
  std::printf("%-24s %8.3f s %8.3f s %8.3f s %8.3f s\n", name, best(samples.Elapsed), Median(samples.Elapsed),
              best(samples.Cpu), Median(samples.Cpu));
}

// Of one round's pair: what disturbs the computer for longer than a round falls on both.
double MedianRatio(const std::vector<double>& walk, const std::vector<double>& bare) {
  std::vector<double> ratios;
  for (size_t i = 0; i < walk.size(); ++i)
    ratios.push_back(walk[i] / bare[i]);
  return Median(ratios);
}

int Judge(const char* what, double figure, double limit) {
  std::printf("%-62s %9.2f   at most %-6.2f %s\n", what, figure, limit, figure <= limit ? "holds" : "MISSED");
  return figure <= limit ? 0 : 1;
}

int Measure(const QString& root, int rounds, double maxRatio, double maxBytes) {
  const std::string path = QFile::encodeName(root).toStdString();
  // The first walk finds a fresh process, so the growth of its peak is the walk's own. It also fills the
  // system's caches for both.
  TSamples warming;
  const TWalkFigures first = MeasureWalk(root, warming);
  TSamples bare;
  TSamples walk;
  const unsigned threads = std::max(std::thread::hardware_concurrency(), 1U);
  for (int round = 0; round < rounds; ++round) {
    TBareTotals totals;
    bare.Time([&] { totals = BareLoop(path, threads); });
    if (!Same(totals, MeasureWalk(root, walk).Totals)) {
      std::fprintf(stderr, "bench-walk: the two ways don't find the same\n");
      return 1;
    }
  }

  std::printf("%lld files, %lld folders, %llu bytes, %d rounds\n", static_cast<long long>(first.Totals.Files),
              static_cast<long long>(first.Totals.Folders),
              static_cast<unsigned long long>(first.Totals.Bytes), rounds);
  std::printf("%-24s %10s %10s %10s %10s\n", "", "best", "median", "best CPU", "median CPU");
  PrintTimes("getdents64 + fstatat", bare);
  PrintTimes("walk", walk);
  std::printf("walk / bare loop: %.3f of the CPU time of all threads\n", MedianRatio(walk.Cpu, bare.Cpu));
  return Judge("walk, warm: its time in bare loops", MedianRatio(walk.Elapsed, bare.Elapsed), maxRatio) |
         Judge("walk: peak memory per file kept, bytes", first.BytesPerFile, maxBytes);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(
      u"Measures a walk against the kernel's own calls; exits 1 above a limit or when totals differ."_qs);
  parser.addHelpOption();
  parser.addPositionalArgument(u"FOLDER"_qs, u"The folder to walk."_qs);
  parser.addOptions({
      {u"once"_qs, u"Only walks, once: for other programs to be measured beside it."_qs},
      {u"rounds"_qs, u"Rounds of each way."_qs, u"N"_qs, u"7"_qs},
      {u"max-ratio"_qs, u"The most that a walk may take, in bare loops."_qs, u"R"_qs, u"1.15"_qs},
      {u"max-bytes"_qs, u"The most memory per file kept."_qs, u"B"_qs, u"120"_qs},
  });
  parser.process(application);
  const int rounds = parser.value(u"rounds"_qs).toInt();
  if (parser.positionalArguments().size() != 1 || rounds < 1) parser.showHelp(2);
  if (parser.isSet(u"once"_qs)) {
    TSamples once;
    return MeasureWalk(parser.positionalArguments().first(), once).Totals.Files > 0 ? 0 : 1;
  }
  return Measure(parser.positionalArguments().first(), rounds, parser.value(u"max-ratio"_qs).toDouble(),
                 parser.value(u"max-bytes"_qs).toDouble());
}
