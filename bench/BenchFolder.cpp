// bench-folder FOLDER OTHER ONE TWO: the Contents tab of the form. Prints how many milliseconds it took until
// the first rows of FOLDER and until all stood there, the longest time without an answer of the window
// meanwhile, and how long a navigation to OTHER takes in the midst of the fill; how much the program has
// grown after a hundred ways back and forth between ONE and TWO; and what 10,000 new files in OTHER within a
// second cost. Run with QT_QPA_PLATFORM=offscreen.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <thread>

#include "app/UnitScanWizard.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/shell/RzShellList.h"
#include "platform/Paths.h"
#include "views/main/Dialogs.h"
#include "views/main/UnitMain.h"

namespace {

constexpr int kRounds = 3;
constexpr int kWays = 100;
constexpr int kFirstWays = 10;  // until caches are filled
constexpr int kChanges = 10'000;
constexpr int kChangesAtOnce = 100;

// Runs the window until the condition holds; the longest turn of its loop in milliseconds.
double RunUntil(const std::function<bool()>& condition) {
  double longest = 0;
  while (!condition()) {
    QElapsedTimer turn;
    turn.start();
    QApplication::processEvents(QEventLoop::AllEvents);
    longest = std::max(longest, static_cast<double>(turn.nsecsElapsed()) / 1e6);
    std::this_thread::yield();
  }
  return longest;
}

void RunFor(qint64 milliseconds) {
  QElapsedTimer clock;
  clock.start();
  RunUntil([&] { return clock.elapsed() > milliseconds; });
}

double CpuSeconds(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

long ResidentKiB() {
  QFile status(u"/proc/self/statm"_qs);
  if (!status.open(QIODevice::ReadOnly)) return 0;
  constexpr long kKiBPerPage = 4;
  return status.readAll().split(' ')[1].toLong() * kKiBPerPage;
}

bool IsComplete(const TRzShellList& list) {
  return list.State() == TRzShellList::TState::Complete;
}

void GoTo(TRzShellList& list, const QString& folder) {
  list.SetPath(folder);
  RunUntil([&] { return IsComplete(list); });
}

void MeasureFill(TRzShellList& list, const QString& folder, const QString& other) {
  QElapsedTimer clock;
  clock.start();
  list.SetPath(folder);
  const double firstTurn = RunUntil([&list] { return list.Items().Count() > 0; });
  const qint64 first = clock.elapsed();
  const double longest = std::max(firstTurn, RunUntil([&] { return IsComplete(list); }));
  const qint64 complete = clock.elapsed();
  const int rows = list.Items().Count();
  RunFor(1000);
  list.SetPath(folder);
  RunUntil([&] { return list.Items().Count() > rows * 3 / 4; });
  clock.start();
  list.SetPath(other);
  const qint64 left = clock.elapsed();
  RunUntil([&] { return IsComplete(list); });
  std::printf(
      "%d rows: first after %lld ms, all after %lld ms, longest turn %.1f ms; navigation %lld ms, "
      "other folder complete after %lld ms\n",
      rows, static_cast<long long>(first), static_cast<long long>(complete), longest,
      static_cast<long long>(left), static_cast<long long>(clock.elapsed()));
}

void MeasureWays(TRzShellList& list, const QString& one, const QString& two) {
  long before = 0;
  for (int way = 0; way < kFirstWays + kWays; ++way) {
    if (way == kFirstWays) before = ResidentKiB();
    GoTo(list, one);
    GoTo(list, two);
  }
  RunFor(1000);
  std::printf("%d times back and forth: %ld KiB before, %ld KiB after\n", kWays, before, ResidentKiB());
}

// The files come in small groups over a second, from a thread whose own work is not counted.
void MeasureChanges(TRzShellList& list, const QString& folder) {
  GoTo(list, folder);
  RunFor(500);
  const int before = list.Items().Count();
  std::atomic<bool> done = false;
  double ownWork = 0;
  const double cpuBefore = CpuSeconds(CLOCK_PROCESS_CPUTIME_ID);
  QElapsedTimer clock;
  clock.start();
  std::thread changer([&] {
    for (int i = 0; i < kChanges; ++i) {
      QFile file(folder + u"/change%1"_qs.arg(i));
      (void)file.open(QIODevice::WriteOnly);
      if (i % kChangesAtOnce == 0)
        std::this_thread::sleep_until(std::chrono::steady_clock::now() + std::chrono::milliseconds(5));
    }
    ownWork = CpuSeconds(CLOCK_THREAD_CPUTIME_ID);
    done = true;
  });
  double longest = 0;
  while (!done) {
    QElapsedTimer turn;
    turn.start();
    QApplication::processEvents(QEventLoop::AllEvents);
    longest = std::max(longest, static_cast<double>(turn.nsecsElapsed()) / 1e6);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  changer.join();
  const double cpu = CpuSeconds(CLOCK_PROCESS_CPUTIME_ID) - cpuBefore - ownWork;
  const double seconds = static_cast<double>(clock.elapsed()) / 1000;
  clock.start();
  longest = std::max(longest, RunUntil([&] { return list.Items().Count() == before + kChanges; }));
  std::printf("%d changes in %.1f s: %.0f %% of a core, longest turn %.1f ms, right after %lld ms\n",
              kChanges, seconds, cpu / seconds * 100, longest, static_cast<long long>(clock.elapsed()));
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication program(argc, argv);
  if (argc != 5) {
    std::fprintf(stderr, "usage: bench-folder FOLDER OTHER ONE TWO\n");
    return 2;
  }
  const TStartParameters parameters{QStringList()};
  TSystemDialogs dialogs;
  TFormMain form(parameters, dialogs);
  TFormWizard wizard(form, form.StaticImages(), parameters);
  form.show();
  RunUntil([&] { return form.Activated(); });
  form.SetScanForm(wizard);
  form.findChild<TdxTabContainerDockSite*>(u"dxTabContainerDockSite1"_qs)->SetActiveChildIndex(kContentsTab);
  auto& list = *dynamic_cast<TRzShellList*>(form.findChild<QWidget*>(u"ShellListContent"_qs));
  for (int round = 0; round < kRounds; ++round)
    MeasureFill(list, NameFromBytes(argv[1]), NameFromBytes(argv[2]));
  MeasureWays(list, NameFromBytes(argv[3]), NameFromBytes(argv[4]));
  MeasureChanges(list, NameFromBytes(argv[2]));
  return 0;
}
