#include "SystemCalls.h"

#include "platform/Paths.h"
#include "platform/Volumes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <thread>

namespace {

thread_local bool gArmed = false;
thread_local TCallPlan gPlan;
thread_local int gCount = 0;
thread_local QByteArray gNames;
thread_local QByteArray gVolumeTop;
thread_local bool gBrokenOff = false;
thread_local const char* gStruck = "";

int Failed(int error) {
  errno = error;
  return -1;
}

// True if the call is not to be made.
bool Strike(const char* name) {
  if (!gArmed) return false;
  gNames += name + QByteArray(" ");
  ++gCount;
  if (gPlan.Meanwhile && gCount >= gPlan.At) {
    gArmed = false;
    gPlan.Meanwhile();
    gArmed = true;
  }
  if (gPlan.Meanwhile || gCount != gPlan.At) return false;
  gStruck = name;
  if (gPlan.Error == 0) std::raise(SIGKILL);
  errno = gPlan.Error;
  return true;
}

bool Crosses(int from, int to) {
  return from != to && (gDisk.IsOther || (gArmed && gPlan.OtherVolume));
}

bool BreakOff() {
  gBrokenOff = gArmed && gPlan.Interrupted && !gBrokenOff;
  if (gBrokenOff) errno = EINTR;
  return gBrokenOff;
}

QByteArray Redirected(const char* path) {
  const QByteArray given = path;
  if (!gArmed || gPlan.Redirected.isEmpty()) return given;
  if (given == gVolumeTop) return gPlan.Redirected;
  return given.startsWith("/etc") || given.startsWith("/run") ? gPlan.Redirected + given : given;
}

}  // namespace

TPlannedCalls::TPlannedCalls(const TCallPlan& plan) {
  const QString top = VolumeRootOf(NameFromBytes(plan.Redirected));
  gVolumeTop = NameToBytes(WithoutDelimitersAtEnd(top));
  gPlan = plan;
  gCount = 0;
  gStruck = "";
  gNames.clear();
  gArmed = true;
}

TPlannedCalls::~TPlannedCalls() {
  gArmed = false;
}

int TPlannedCalls::Count() {
  return gCount;
}

QByteArray TPlannedCalls::Names() {
  return gNames;
}

QByteArray TPlannedCalls::Struck() {
  return gStruck;
}

// A call that is made or fails. Names are the linker's.
#define PLANNED_CALL(result, name, parameters, arguments)        \
  extern "C" result __real_##name parameters;                    \
  extern "C" result __wrap_##name parameters {                   \
    return Strike(#name) ? result{-1} : __real_##name arguments; \
  }

PLANNED_CALL(int, chmod, (const char* a, mode_t b), (a, b))
PLANNED_CALL(int, faccessat, (int a, const char* b, int c, int d), (a, b, c, d))
PLANNED_CALL(int, fchmod, (int a, mode_t b), (a, b))
PLANNED_CALL(int, fchmodat, (int a, const char* b, mode_t c, int d), (a, b, c, d))
PLANNED_CALL(int, fchown, (int a, uid_t b, gid_t c), (a, b, c))
PLANNED_CALL(int, fchownat, (int a, const char* b, uid_t c, gid_t d, int e), (a, b, c, d, e))
PLANNED_CALL(ssize_t, fgetxattr, (int a, const char* b, void* c, size_t d), (a, b, c, d))
PLANNED_CALL(ssize_t, flistxattr, (int a, char* b, size_t c), (a, b, c))
PLANNED_CALL(int, fremovexattr, (int a, const char* b), (a, b))
PLANNED_CALL(int, fsetxattr, (int a, const char* b, const void* c, size_t d, int e), (a, b, c, d, e))
PLANNED_CALL(int, fstat, (int a, struct stat* b), (a, b))
PLANNED_CALL(int, fstatat, (int a, const char* b, struct stat* c, int d), (a, b, c, d))
PLANNED_CALL(int, fsync, (int a), (a))
PLANNED_CALL(int, ftruncate, (int a, off_t b), (a, b))
PLANNED_CALL(int, futimens, (int a, const timespec* b), (a, b))
PLANNED_CALL(off_t, lseek, (int a, off_t b, int c), (a, b, c))
PLANNED_CALL(int, mkdirat, (int a, const char* b, mode_t c), (a, b, c))
PLANNED_CALL(int, mknodat, (int a, const char* b, mode_t c, dev_t d), (a, b, c, d))
PLANNED_CALL(ssize_t, readlink, (const char* a, char* b, size_t c), (a, b, c))
PLANNED_CALL(ssize_t, readlinkat, (int a, const char* b, char* c, size_t d), (a, b, c, d))
PLANNED_CALL(int, renameat, (int a, const char* b, int c, const char* d), (a, b, c, d))
PLANNED_CALL(int, statx, (int a, const char* b, int c, unsigned d, struct statx* e), (a, b, c, d, e))
PLANNED_CALL(int, symlinkat, (const char* a, int b, const char* c), (a, b, c))
PLANNED_CALL(int, utimensat, (int a, const char* b, const timespec* c, int d), (a, b, c, d))

extern "C" int __real_access(const char* path, int mode);
extern "C" int __wrap_access(const char* path, int mode) {
  return Strike("access") ? -1 : __real_access(Redirected(path), mode);
}

extern "C" int __real_openat(int folder, const char* path, int flags, ...);
extern "C" int __wrap_openat(int folder, const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return Strike("openat") ? -1 : __real_openat(folder, Redirected(path), flags, mode);
}

extern "C" int __real_renameat2(int from, const char* name, int to, const char* newName, unsigned flags);
extern "C" int __wrap_renameat2(int from, const char* name, int to, const char* newName, unsigned flags) {
  if (Strike("renameat2")) return -1;
  if (Crosses(from, to)) return Failed(EXDEV);
  if (gArmed && gPlan.NoFlags && flags != 0) return Failed(EINVAL);
  return __real_renameat2(from, name, to, newName, flags);
}

extern "C" int __real_linkat(int from, const char* name, int to, const char* newName, int flags);
extern "C" int __wrap_linkat(int from, const char* name, int to, const char* newName, int flags) {
  if (Strike("linkat")) return -1;
  return Crosses(from, to) ? Failed(EXDEV) : __real_linkat(from, name, to, newName, flags);
}

extern "C" int __real_unlinkat(int folder, const char* name, int flags);
extern "C" int __wrap_unlinkat(int folder, const char* name, int flags) {
  if (Strike("unlinkat")) return -1;
  return gArmed && gPlan.Undeletable ? Failed(EPERM) : __real_unlinkat(folder, name, flags);
}

extern "C" ssize_t __real_read(int file, void* buffer, size_t size);
extern "C" ssize_t __wrap_read(int file, void* buffer, size_t size) {
  return Strike("read") || BreakOff() ? -1 : __real_read(file, buffer, size);
}

extern "C" ssize_t __real_write(int file, const void* buffer, size_t size);
extern "C" ssize_t __wrap_write(int file, const void* buffer, size_t size) {
  while (gDisk.Stalls && gettid() != getpid())
    std::this_thread::yield();
  if (!gArmed) return __real_write(file, buffer, size);
  if (Strike("write") || BreakOff()) return -1;
  auto taken = static_cast<qint64>(size);
  if (gPlan.WriteAtOnce > 0) taken = std::min<qint64>(taken, gPlan.WriteAtOnce);
  if (gPlan.Room == 0) return Failed(ENOSPC);
  if (gPlan.Room > 0) taken = std::min(taken, gPlan.Room);
  const ssize_t written = __real_write(file, buffer, static_cast<size_t>(taken));
  if (gPlan.Room > 0 && written > 0) gPlan.Room -= written;
  return written;
}
