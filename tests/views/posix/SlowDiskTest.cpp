// The file commands where the system is slow or refuses: its calls are led through here by the linker
// (--wrap).
#include "../FileOperationsFixture.h"

#include <QDir>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QThread>

#include <fcntl.h>
#include <unistd.h>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <thread>

namespace {

std::atomic<bool> gOtherVolume{false};  // a rename from one folder to another gives EXDEV
std::atomic<bool> gStalls{false};       // the disk takes no content
QByteArray gSystem;  // of the main thread: nothing can be deleted, and "/etc" and "/run" lie here

QByteArray Redirected(const char* path) {
  const QByteArray given = path;
  return !gSystem.isEmpty() && (given.startsWith("/etc") || given.startsWith("/run")) ? gSystem + given
                                                                                      : given;
}

class SlowDisk : public TFileOperationsTest {
 protected:
  ~SlowDisk() override {
    gOtherVolume = gStalls = false;
    gSystem.clear();
  }

  // Moves all rows to what seems another volume. The disk goes on when the user has acted on the box that
  // tells of the copy, and that has been seen to.
  void MoveWhile(const std::function<void(QProgressDialog&)>& user) {
    gOtherVolume = gStalls = true;
    bool acted = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &FForm, [&] {
      auto* box = FForm.findChild<QProgressDialog*>(u"FileProgress"_qs);
      if (acted) gStalls = false;
      if (acted || box == nullptr || !box->isVisible()) return;
      acted = true;
      user(*box);
    });
    look.start(10);
    On(kTopFilesTab).Move();
  }
};

TEST_F(SlowDisk, ALongCopyIsToldAndCancelEndsItWithTheRowsBehindIt) {
  AddFileRow("root", "first");
  AddFileRow("root", "second");
  FTree.MakeFile("root/first", 3 << 20);
  MoveWhile([&](QProgressDialog& box) {
    EXPECT_EQ(box.labelText(), u"Moving \"first\""_qs);
    QTest::mouseClick(&FForm, Qt::LeftButton);
    EXPECT_TRUE(box.isVisible()) << "input beside the box is dropped";
    QTest::mouseClick(box.findChild<QPushButton*>(), Qt::LeftButton);
  });
  EXPECT_TRUE(There("root/first") && There("root/second"));
  EXPECT_TRUE(QDir(FTree.Path("to")).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
  int told = 0;
  MoveWhile([&told](QProgressDialog& box) {
    ++told;
    EXPECT_EQ(box.maximum(), 1000);
  });
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(There("to/first") && There("to/second")) << "a copy that nobody cancels goes on";
  EXPECT_EQ(FForm.findChild<QProgressDialog*>(u"FileProgress"_qs), nullptr);
}

// What is put off to the next start takes its row along on each tab, the Overview's too.
TEST_F(SlowDisk, ADeleteAtRestartTakesTheRowOff) {
  FTree.MakeAll({"system/etc/tmpfiles.d/", "system/run/systemd/system/"});
  for (const TTabIndex tab : kTabs) {
    Clear();
    AddFileRow("root", "file");
    gSystem = NameToBytes(FTree.Path("system"));
    On(tab).Delete();
    gSystem.clear();
    EXPECT_TRUE(There("root/file"));
    EXPECT_EQ(FList.Items().Count(), 0) << tab;
  }
}

}  // namespace

extern "C" {
int __real_renameat2(int from, const char* name, int to, const char* newName, unsigned flags);
int __wrap_renameat2(int from, const char* name, int to, const char* newName, unsigned flags) {
  if (!gOtherVolume || from == to) return __real_renameat2(from, name, to, newName, flags);
  errno = EXDEV;
  return -1;
}

ssize_t __real_write(int file, const void* buffer, size_t size);
ssize_t __wrap_write(int file, const void* buffer, size_t size) {
  while (gStalls && QThread::currentThread() != qApp->thread())
    std::this_thread::yield();
  return __real_write(file, buffer, size);
}

int __real_unlinkat(int folder, const char* name, int flags);
int __wrap_unlinkat(int folder, const char* name, int flags) {
  if (gSystem.isEmpty()) return __real_unlinkat(folder, name, flags);
  errno = EPERM;
  return -1;
}

int __real_access(const char* path, int mode);
int __wrap_access(const char* path, int mode) {
  return __real_access(Redirected(path), mode);
}

int __real_openat(int folder, const char* path, int flags, ...);
int __wrap_openat(int folder, const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return __real_openat(folder, Redirected(path), flags, mode);
}
}
