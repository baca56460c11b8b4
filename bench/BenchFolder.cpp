// bench-folder FOLDER OTHER: shows a folder in the list of a window and prints how many milliseconds it took
// until the first rows and until all stood there, the longest time without an answer of the window meanwhile,
// and how long it takes to go on to the other folder in the midst of the fill.
#include "controls/shell/RzShellList.h"
#include "platform/Paths.h"

#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

// Runs the window until the condition holds; the longest turn of its loop in milliseconds.
double RunUntil(const std::function<bool()>& condition) {
  double longest = 0;
  while (!condition()) {
    QElapsedTimer turn;
    turn.start();
    QApplication::processEvents(QEventLoop::AllEvents);
    longest = std::max(longest, static_cast<double>(turn.nsecsElapsed()) / 1e6);
  }
  return longest;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication program(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: bench-folder FOLDER OTHER\n");
    return 2;
  }
  TRzShellList list;
  list.resize(900, 600);
  list.show();
  const auto isComplete = [&list] { return list.State() == TRzShellList::TState::Complete; };
  const QString folder = NameFromBytes(argv[1]);
  for (int round = 0; round < 3; ++round) {
    QElapsedTimer clock;
    clock.start();
    list.SetPath(folder);
    const double firstTurn = RunUntil([&list] { return list.Items().Count() > 0; });
    const qint64 first = clock.elapsed();
    const double longest = std::max(firstTurn, RunUntil(isComplete));
    const qint64 complete = clock.elapsed();
    const int rows = list.Items().Count();
    QElapsedTimer quiet;
    quiet.start();
    const double typing = RunUntil([&] { return quiet.elapsed() > 1000; });
    list.SetPath(folder);
    RunUntil([&] { return list.Items().Count() > rows * 3 / 4; });
    clock.start();
    list.SetPath(NameFromBytes(argv[2]));
    RunUntil(isComplete);
    std::printf(
        "%d rows: first after %lld ms, all after %lld ms, longest turn %.1f ms, after the fill %.1f ms, "
        "navigation %lld ms\n",
        rows, static_cast<long long>(first), static_cast<long long>(complete), longest, typing,
        static_cast<long long>(clock.elapsed()));
  }
  return 0;
}
