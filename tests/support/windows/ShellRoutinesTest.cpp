// Opening is watched by what is opened: scripts that leave a file behind.
#include "fixtures/SystemTest.h"
#include "support/Korvel_Routine_New.h"
#include "support/ShellRoutines.h"

namespace {

bool WaitForFile(const QString& path) {
  QElapsedTimer clock;
  for (clock.start(); !FileExists(path) && clock.elapsed() < 60'000;)
    QThread::msleep(20);
  return FileExists(path);
}

QImage IconOf(const QString& path) {
  return GetFileIconHandle(path).pixmap(32).toImage();
}

}  // namespace

// "@" stands for the script, "~" for its path without the drive.
TEST(OpenWithShell, OpensFilesAndRunsRoutinesOfLibraries) {
  TTempTree tree;
  int number = 0;
  for (QString target :
       {u"@"_qs, u"%WINDOWS%\\..~"_qs, u"%SYSTEM%\\..\\..~"_qs,
        u"rundll32.EXE url.dll,FileProtocolHandler @"_qs, u"RunDll32.exe?url.dll,FileProtocolHandler @"_qs}) {
    const QByteArray name = QByteArray::number(++number);
    tree.WriteFile(name + ".bat", "@echo done>\"%~dp0" + name + ".done\"\r\n");
    const QString script = tree.Path(name + ".bat");
    OpenWithShell(target.replace(u"@"_qs, script).replace(u"~"_qs, script.mid(2)));
    EXPECT_TRUE(WaitForFile(tree.Path(name + ".done"))) << qPrintable(target);
  }
}

TEST(GetFileIconHandle, GoesByTheNameThatIsLeftOfACommandLine) {
  const QImage installer = IconOf(u"C:\\no such\\a.msi"_qs);
  const QImage other = IconOf(u"C:\\no such\\a"_qs);
  ASSERT_FALSE(installer.isNull());
  ASSERT_NE(installer, other);
  EXPECT_EQ(IconOf(u"\"C:\\no such\\a.msi\" -x"_qs), installer);
  EXPECT_EQ(IconOf(u"C:\\no such\\a.msi /x,3"_qs), installer);
  EXPECT_EQ(IconOf(u"C:\\a - c.msi"_qs), other) << "cut before the extension";
}
