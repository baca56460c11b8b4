// The Contents tab beside a file system whose server never answers: a mount that nobody serves. Whatever asks
// it for anything waits until it is taken away.
#include "../ContentsFixture.h"
#include "fixtures/MountNamespace.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

class TDeadServer {
 public:
  explicit TDeadServer(const QByteArray& point)
      : FPoint(point), FDevice(open("/dev/fuse", O_RDWR | O_CLOEXEC)) {
    const QByteArray options =
        "fd=" + QByteArray::number(FDevice) + ",rootmode=40000,user_id=0,group_id=0,allow_other";
    FMounted = CutOffMounts() && mount("server", FPoint, "fuse.sshfs", 0, options.constData()) == 0;
  }
  TDeadServer(const TDeadServer&) = delete;
  TDeadServer& operator=(const TDeadServer&) = delete;
  ~TDeadServer() { GoAway(); }

  [[nodiscard]] bool Mounted() const { return FMounted; }

  // Who waits for it gets an error.
  void GoAway() {
    if (std::exchange(FMounted, false)) umount2(FPoint, MNT_FORCE | MNT_DETACH);
    if (FDevice >= 0) close(std::exchange(FDevice, -1));
  }

 private:
  const QByteArray FPoint;
  int FDevice;
  bool FMounted = false;
};

using DeadServer = TContentsTest;

}  // namespace

// Were the window's thread to ask for anything there, this would never end.
TEST_F(DeadServer, TheWindowLivesOn) {
  Enter();
  const QString point = FTree.Path("music/a") + PathDelim;
  ASSERT_TRUE(Pick("music"));
  TDeadServer server(NameToBytes(FTree.Path("music/a")));
  if (!server.Mounted()) GTEST_SKIP() << "this user may not mount";
  Select("a");
  EXPECT_EQ(Label("lblFileName"), u"a"_qs);
  QTest::keyClick(&Shown(), Qt::Key_Return);
  EXPECT_EQ(Shown().Path(), FTree.Path("music/a"));
  Combo().showPopup();
  Combo().hidePopup();
  EXPECT_EQ(Shown().State(), TRzShellList::TState::Filling);
  Command("lbtnUp").Click();
  EXPECT_EQ(Shown().Path(), FTree.Path("music")) << "whose listing asks for the mount too";
  ASSERT_TRUE(Pick("films"));
  EXPECT_EQ(Names(), u"long.mkv short.mkv"_qs);
  Combo().setEditText(point + u"deeper"_qs);
  QTest::keyClick(&Combo(), Qt::Key_Return);
  EXPECT_FALSE(Combo().NotFound()) << "nobody knows";
  ASSERT_TRUE(Pick(""));
  Shown().SetPath(point + u"deeper"_qs);
  Command("lbtnUp").Click();
  EXPECT_EQ(Shown().Path(), FTree.Path("music/a"));
  Shown().SetPath(QString());
  ASSERT_TRUE(WaitForFill());
  TListItem* const row = Row(VolumeName(point));
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(Shown().TypeText(*row), u"Network Drive"_qs);
  server.GoAway();
  EXPECT_TRUE(WaitFor([&] { return Row(VolumeName(point)) == nullptr; })) << "the rows follow the mounts";
}
