#include "platform/SingleInstance.h"

#include "fixtures/SystemTest.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <thread>

namespace {

const QString kIdentity = u"{1}TALLYSCOPE"_qs;

// Copies are objects in one process: each opens the lock for itself, as programs do.
class SingleInstance : public testing::Test {
 protected:
  SingleInstance() { SetMode(0700); }

  void SetMode(mode_t mode) { EXPECT_EQ(chmod(qPrintable(FTree.Path()), mode), 0); }

  // The tokens that have come to the first copy, with a bar before each.
  QByteArray Calls(TSingleInstance& first) {
    QByteArray calls;
    first.OnCall([&](const QByteArray& token) { calls += '|' + token; });
    const QDeadlineTimer deadline(10000);
    while (calls.isEmpty() && !deadline.hasExpired())
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    first.OnCall([](const QByteArray&) {});
    return calls;
  }

  TTempTree FTree;
  TVariables FVariables{{"XDG_RUNTIME_DIR", qPrintable(FTree.Path())},
                        {"XDG_ACTIVATION_TOKEN", nullptr},
                        {"DESKTOP_STARTUP_ID", nullptr}};
};

}  // namespace

TEST_F(SingleInstance, ALaterCopyHandsOverItsTokenAndTheNextIsTheFirstAgain) {
  {
    TSingleInstance first(kIdentity);
    EXPECT_TRUE(first.IsFirst());
    EXPECT_TRUE(TSingleInstance(u"{1}OTHER"_qs).IsFirst());
    const std::array<const char*, 3> rows[] = {
        {"new", "old", "|new"}, {nullptr, "old_TIME5", "|old_TIME5"}, {nullptr, nullptr, "|"}};
    for (const auto& [token, startupId, handed] : rows) {
      const TVariables tokens{{"XDG_ACTIVATION_TOKEN", token}, {"DESKTOP_STARTUP_ID", startupId}};
      EXPECT_FALSE(TSingleInstance(kIdentity).IsFirst());
      EXPECT_EQ(Calls(first), handed);
    }
  }
  TSingleInstance next(kIdentity);
  EXPECT_TRUE(next.IsFirst());
  EXPECT_FALSE(TSingleInstance(kIdentity).IsFirst());
  EXPECT_EQ(Calls(next), "|") << "the socket of the one before is in the way";
}

TEST_F(SingleInstance, WithoutAFolderOfThisUserAloneThereIsNoGuard) {
  const auto unguarded = [] {
    const TSingleInstance first(kIdentity);
    return TSingleInstance(kIdentity).IsFirst();
  };
  for (const mode_t mode : {0750, 0705, 0701}) {
    SetMode(mode);
    EXPECT_TRUE(unguarded()) << mode;
  }
  SetMode(0700);
  const TVariables missing{{"XDG_RUNTIME_DIR", nullptr}};
  EXPECT_TRUE(unguarded());
  EXPECT_EQ(QDir(FTree.Path()).entryList(QDir::Files | QDir::System), QStringList());
  if (geteuid() != 0) return;
  EXPECT_EQ(chown(qPrintable(FTree.Path()), 12345, 12345), 0);
  const TVariables foreign{{"XDG_RUNTIME_DIR", qPrintable(FTree.Path())}};
  EXPECT_TRUE(unguarded());
}

TEST_F(SingleInstance, AFirstCopyThatHangsDelaysForTwoSecondsAtMost) {
  const TSingleInstance hung(kIdentity);
  QElapsedTimer time;
  for (int copies = 0; copies < 5000; ++copies) {
    time.start();
    EXPECT_FALSE(TSingleInstance(kIdentity).IsFirst());
    if (time.elapsed() > 500) break;
  }
  EXPECT_GE(time.elapsed(), TSingleInstance::kCallMs);
  EXPECT_LT(time.elapsed(), TSingleInstance::kCallMs + 1000);
}

TEST_F(SingleInstance, WhoWaitsForACopyOnItsWayDownBecomesTheFirst) {
  { const TSingleInstance gone(kIdentity); }
  const QString lock = QDir(FTree.Path()).entryList({u"*.lock"_qs}, QDir::Files).value(0);
  const int file = open(qPrintable(FTree.Path(lock.toUtf8())), O_RDWR);
  EXPECT_EQ(flock(file, LOCK_EX), 0);
  std::thread ending([file] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    close(file);
  });
  EXPECT_TRUE(TSingleInstance(kIdentity).IsFirst());
  ending.join();
}
