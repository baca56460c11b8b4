// What the desktop's file manager is asked by D-Bus, on a bus of the test's own.
#include "platform/Shell.h"

#include "fixtures/SystemTest.h"
#include "fixtures/UrlTaker.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTest>

namespace {

// Takes every call of the file manager and notes it.
class TFileManager : public QDBusVirtualObject {
 public:
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    Asked = message.interface() + u'.' + message.member() + u' ' +
            message.arguments().value(0).toStringList().join(u' ');
    connection.send(message.createReply());
    return true;
  }

  QString Asked;
};

class FileManagerTest : public testing::Test {
 protected:
  void SetUp() override {
    if (QStandardPaths::findExecutable(u"dbus-daemon"_qs).isEmpty()) GTEST_SKIP() << "no dbus-daemon here";
    FDaemon.start(u"dbus-daemon"_qs, {u"--session"_qs, u"--nofork"_qs, u"--print-address"_qs});
    ASSERT_TRUE(FDaemon.waitForReadyRead(20'000));
    const QByteArray address = FDaemon.readLine().trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    FBus = std::make_unique<QDBusConnection>(
        QDBusConnection::connectToBus(QString::fromLatin1(address), u"file manager"_qs));
    ASSERT_TRUE(FBus->isConnected());
    FBus->registerVirtualObject(u"/org/freedesktop/FileManager1"_qs, &FManager);
  }
  void TearDown() override {
    QDBusConnection::disconnectFromBus(u"file manager"_qs);
    FDaemon.kill();
    FDaemon.waitForFinished();
  }

  QProcess FDaemon;
  std::unique_ptr<QDBusConnection> FBus;
  TFileManager FManager;
};

// One test, as a program has one session bus for its whole life.
TEST_F(FileManagerTest, ItIsAskedByUriAndWhereThereIsNoneTheCallerServes) {
  const QString path = NameFromBytes("/a/b c,\xff#%.txt");
  int served = 0;
  TUrlTaker desktop(u"file"_qs);
  ShowPropertiesDialog(path, [&] { ++served; });
  ShowInFileManager(path);
  EXPECT_TRUE(served == 0 && desktop.Opened.isEmpty()) << "later, not at once";
  EXPECT_TRUE(QTest::qWaitFor([&] { return served == 1 && !desktop.Opened.isEmpty(); }, 20'000));
  EXPECT_EQ(std::exchange(desktop.Opened, {}), QList{QUrl(u"file:///a"_qs)}) << "the folder";

  ASSERT_TRUE(FBus->registerService(u"org.freedesktop.FileManager1"_qs));
  const auto asked = [this] {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !FManager.Asked.isEmpty(); }, 20'000));
    return std::exchange(FManager.Asked, {});
  };
  ShowPropertiesDialog(path, [&] { ++served; });
  EXPECT_EQ(asked(), u"org.freedesktop.FileManager1.ShowItemProperties file:///a/b%20c%2C%FF%23%25.txt"_qs);
  ShowInFileManager(path);
  EXPECT_EQ(asked(), u"org.freedesktop.FileManager1.ShowItems file:///a/b%20c%2C%FF%23%25.txt"_qs);
  EXPECT_TRUE(served == 1 && desktop.Opened.isEmpty());
}

}  // namespace
