// How fast the window opens, and how soon it answers an event while a scan runs and while its result is
// filled:
//
//   bench-window --started NANOSECONDS [--limit MILLISECONDS] FOLDER
//
// `started` is the time since 1970 at which the caller began the process. A thread posts an event to the
// window every 2 ms; the figure is the time until its handler runs. Ends with 1 if a scan's worst answer is
// above the limit. Run with QT_QPA_PLATFORM=offscreen.
#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QPushButton>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

#include "app/UnitScanWizard.h"
#include "platform/Messages.h"
#include "scan/UnitScan.h"
#include "views/main/Dialogs.h"
#include "views/main/UnitMain.h"

namespace {

using TClock = std::chrono::system_clock;

constexpr unsigned kProbe = 1;
constexpr auto kProbeInterval = std::chrono::milliseconds(2);
constexpr double kNanosecondsPerMs = 1e6;

qint64 Now() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(TClock::now().time_since_epoch()).count();
}

double Milliseconds(qint64 nanoseconds) {
  return static_cast<double>(nanoseconds) / kNanosecondsPerMs;
}

// Posts probes until it goes; remembers the worst answer of each phase.
class TProbe {
 public:
  explicit TProbe(const QPushButton& stopButton)
      : FStopButton(stopButton), FWindow({{kProbe, [this](const TMessage& message) { Answer(message); }}}) {
    FThread = std::thread([this] {
      while (!FEnded) {
        PostMessage(&FWindow, kProbe, 0, Now());
        std::this_thread::sleep_for(kProbeInterval);
      }
    });
  }
  ~TProbe() {
    FEnded = true;
    FThread.join();
  }

  [[nodiscard]] double WorstInScan() const { return Milliseconds(FWorstInScan); }
  [[nodiscard]] double WorstInFill() const { return Milliseconds(FWorstInFill); }
  [[nodiscard]] int Answers() const { return FAnswers; }

 private:
  // The button hides when the fill begins.
  void Answer(const TMessage& message) {
    qint64& worst = FStopButton.isHidden() ? FWorstInFill : FWorstInScan;
    worst = std::max(worst, Now() - static_cast<qint64>(message.LParam));
    ++FAnswers;
  }

  const QPushButton& FStopButton;
  TMessageWindow FWindow;
  std::atomic<bool> FEnded{false};
  std::thread FThread;
  qint64 FWorstInScan = 0;
  qint64 FWorstInFill = 0;
  int FAnswers = 0;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QCommandLineParser options;
  options.addOption({u"started"_qs, u"time of the start"_qs, u"ns"_qs});
  options.addOption({u"limit"_qs, u"worst answer allowed in a scan"_qs, u"ms"_qs, u"50"_qs});
  options.process(application);
  QIcon::setThemeName(u"tallyscope"_qs);

  const TStartParameters parameters{QStringList()};
  TSystemDialogs dialogs;
  TFormMain form(parameters, dialogs);
  TFormWizard wizard(form, form.StaticImages(), parameters);
  form.show();
  wizard.show();
  QApplication::processEvents();
  std::printf("window open after %.0f ms\n", Milliseconds(Now() - options.value(u"started"_qs).toLongLong()));

  wizard.PreselectFolder(options.positionalArguments().value(0));
  auto* analyze = wizard.findChild<QPushButton*>(u"btnAnalyze"_qs);
  const TProbe probe(*analyze);
  const qint64 start = Now();
  analyze->click();
  while (wizard.isVisible())
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  std::printf("scan of %u files and its fill took %.0f ms, %d events answered\n",
              wizard.Result()->FileCount(), Milliseconds(Now() - start), probe.Answers());
  std::printf("worst answer: %.1f ms in the scan, %.1f ms in the fill\n", probe.WorstInScan(),
              probe.WorstInFill());
  return probe.WorstInScan() > options.value(u"limit"_qs).toDouble() ? 1 : 0;
}
