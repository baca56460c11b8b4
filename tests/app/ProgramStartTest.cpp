// The program as it is started by a user: one copy stays, every other ends with 0 before it has a window.
#include "fixtures/TempTree.h"
#include "platform/KnownFolders.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QUuid>

#include <algorithm>
#include <memory>

namespace {

constexpr int kWaitMs = 120000;

// The program under a name that nobody else uses, so that copies which run on this machine have no say.
class TProgram {
 public:
  TProgram()
      : FFile(ProgramFolder() + u"ts"_qs + QUuid::createUuid().toString(QUuid::Id128).left(8) + kSuffix) {
    EXPECT_TRUE(QFile::copy(ProgramFolder() + u"tallyscope"_qs + kSuffix, FFile));
    FTree.MakeFolder("run");
    QFile::setPermissions(FTree.Path("run"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  ~TProgram() { QFile::remove(FFile); }
  TProgram(const TProgram&) = delete;
  TProgram& operator=(const TProgram&) = delete;

  [[nodiscard]] std::unique_ptr<QProcess> Start() const {
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_qs, FTree.Path("run"));
    process->setProcessEnvironment(environment);
    process->start(FFile, {});
    return process;
  }

 private:
  static inline const QString kSuffix = ProgramFile().endsWith(u".exe"_qs) ? u".exe"_qs : QString();
  TTempTree FTree;
  const QString FFile;
};

bool Runs(const QProcess& process) {
  return process.state() != QProcess::NotRunning;
}

}  // namespace

TEST(ProgramStart, OfManyAtOnceOneStaysAndALaterOneEndsToo) {
  const int count = qEnvironmentVariable("TALLYSCOPE_STARTS", u"12"_qs).toInt();
  const TProgram program;
  std::vector<std::unique_ptr<QProcess>> copies;
  for (int i = 0; i < count; ++i)
    copies.push_back(program.Start());
  const QDeadlineTimer deadline(kWaitMs);
  const auto running = [&] {
    return std::count_if(copies.begin(), copies.end(), [](const auto& copy) { return Runs(*copy); });
  };
  while (running() > 1 && !deadline.hasExpired())
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
  ASSERT_EQ(running(), 1);
  const auto later = program.Start();
  EXPECT_TRUE(later->waitForFinished(kWaitMs));
  EXPECT_EQ(later->exitCode(), 0);
  EXPECT_EQ(running(), 1);
  for (const auto& copy : copies) {
    if (Runs(*copy)) {
      copy->kill();
      EXPECT_TRUE(copy->waitForFinished(kWaitMs));
    } else {
      EXPECT_TRUE(copy->exitStatus() == QProcess::NormalExit && copy->exitCode() == 0);
    }
  }
}

TEST(ProgramStart, ACopyUnderAnotherNameAndOneAfterADeathStay) {
  const TProgram program;
  const TProgram other;
  const auto first = program.Start();
  const auto beside = other.Start();
  ASSERT_TRUE(first->waitForStarted(kWaitMs) && beside->waitForStarted(kWaitMs));
  EXPECT_TRUE(program.Start()->waitForFinished(kWaitMs));
  first->kill();
  ASSERT_TRUE(first->waitForFinished(kWaitMs));
  const auto next = program.Start();
  EXPECT_FALSE(next->waitForFinished(1000));
  EXPECT_TRUE(Runs(*beside));
  for (QProcess* copy : {next.get(), beside.get()}) {
    copy->kill();
    EXPECT_TRUE(copy->waitForFinished(kWaitMs));
  }
}
