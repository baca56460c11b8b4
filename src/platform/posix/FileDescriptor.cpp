#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <climits>

namespace {

// How much of a path that is too long goes into the next call: up to a delimiter, within the limit.
qsizetype NextGroup(QByteArrayView rest) {
  qsizetype end = PATH_MAX - 1;
  while (end > 0 && rest[end] != '/')
    --end;
  return end;
}

}  // namespace

TFileDescriptor OpenPath(const QByteArray& path, int flags) {
  if (path.isEmpty()) return {};
  QByteArray rest = path;
  TFileDescriptor folder;
  int base = AT_FDCWD;
  while (rest.size() >= PATH_MAX) {
    const qsizetype end = NextGroup(rest);
    if (end == 0) return {};
    TFileDescriptor next(openat(base, rest.left(end), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!next.IsOpen()) return {};
    folder = std::move(next);
    base = folder.Get();
    while (end < rest.size() && rest[end] == '/')
      rest.remove(end, 1);
    rest.remove(0, end);
  }
  return TFileDescriptor(openat(base, rest.isEmpty() ? "." : rest.constData(), flags | O_CLOEXEC));
}
