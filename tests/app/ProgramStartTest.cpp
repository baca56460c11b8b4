// The program as a user starts it: one copy stays, every other ends with 0 before it has a window.
#include "fixtures/SystemTest.h"
#include "platform/KnownFolders.h"

#include <algorithm>

namespace {

constexpr int kWaitMs = 120000;

using TCopy = std::unique_ptr<QProcess>;

// The program under a name of its own, so that copies which run on this machine have no say.
struct TProgram {
  TProgram() {
    EXPECT_TRUE(QFile::copy(ProgramFolder() + u"tallyscope"_qs + Suffix, File));
    QFile::setPermissions(Tree.Path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  ~TProgram() { QFile::remove(File); }

  [[nodiscard]] TCopy Start() const {
    auto copy = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_qs, Tree.Path());
    copy->setProcessEnvironment(environment);
    copy->start(File, {});
    return copy;
  }

  const QString Suffix = ProgramFile().endsWith(u".exe"_qs) ? u".exe"_qs : QString();
  const QString File =
      ProgramFolder() + u"ts"_qs + QUuid::createUuid().toString(QUuid::Id128).left(8) + Suffix;
  const TTempTree Tree;
};

bool Runs(const TCopy& copy) {
  return copy->state() != QProcess::NotRunning;
}

void Kill(const TCopy& copy) {
  copy->kill();
  EXPECT_TRUE(copy->waitForFinished(kWaitMs));
}

}  // namespace

TEST(ProgramStart, OneCopyStaysUntilItsDeath) {
  const TProgram program;
  const TProgram other;
  const TCopy beside = other.Start();
  std::vector<TCopy> copies(qEnvironmentVariable("TALLYSCOPE_STARTS", u"12"_qs).toUInt());
  for (TCopy& copy : copies)
    copy = program.Start();
  const auto running = [&] { return std::count_if(copies.begin(), copies.end(), &Runs); };
  const QDeadlineTimer deadline(kWaitMs);
  while (running() > 1 && !deadline.hasExpired())
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
  const TCopy later = program.Start();
  EXPECT_TRUE(later->waitForFinished(kWaitMs));
  ASSERT_EQ(running(), 1);
  std::partition(copies.begin(), copies.end(), &Runs);
  Kill(copies[0]);
  copies[0] = program.Start();
  EXPECT_FALSE(copies[0]->waitForFinished(1000)) << "the next one is not the first";
  EXPECT_TRUE(Runs(beside)) << "a copy of another name";
  Kill(copies[0]);
  Kill(beside);
  for (size_t i = 1; i < copies.size(); ++i)
    EXPECT_TRUE(copies[i]->exitStatus() == QProcess::NormalExit && copies[i]->exitCode() == 0);
}
