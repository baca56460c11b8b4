#include "platform/FileTests.h"

#include "platform/Paths.h"
#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <cerrno>
#include <cstdlib>
#include <memory>

namespace {

// The status of a path of any length, O_NOFOLLOW in the flags looking at a link itself.
std::optional<struct stat> StatusOf(const QByteArray& path, int flags) {
  if (path.isEmpty()) return std::nullopt;
  const TFileDescriptor file = OpenPath(path, O_PATH | flags);
  struct stat status;
  if (!file.IsOpen() || fstatat(file.Get(), "", &status, AT_EMPTY_PATH) != 0) return std::nullopt;
  return status;
}

QByteArray WithoutDelimitersAtEnd(QByteArray path) {
  while (path.size() > 1 && path.endsWith('/'))
    path.chop(1);
  return path;
}

bool HasHiddenName(const QByteArray& path) {
  return path.mid(path.lastIndexOf('/') + 1).startsWith('.');
}

}  // namespace

QString RealFolder(const QString& folder) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(NameToBytes(folder), nullptr), &std::free);
  return real ? IncludeTrailingPathDelimiter(NameFromBytes(real.get())) : QString();
}

bool FileExists(const QString& path) {
  const auto status = StatusOf(NameToBytes(path), 0);
  return status && !S_ISDIR(status->st_mode);
}

bool DirectoryExists(const QString& path) {
  return StatusOf(NameToBytes(path), O_DIRECTORY).has_value();
}

bool DirectoryReadable(const QString& path) {
  return !path.isEmpty() && OpenPath(NameToBytes(path), O_RDONLY | O_DIRECTORY | O_NONBLOCK).IsOpen();
}

std::optional<TFileStatus> GetFileStatus(const QString& path) {
  const QByteArray bytes = WithoutDelimitersAtEnd(NameToBytes(path));
  const auto status = StatusOf(bytes, O_NOFOLLOW);
  if (!status) return std::nullopt;
  return TFileStatus{AttributesOf(status->st_mode, HasHiddenName(bytes)),
                     LengthOf(status->st_mode, status->st_size)};
}

std::optional<QByteArray> ReadWholeFile(const QString& path, qint64 bound) {
  const QByteArray bytes = NameToBytes(path);
  const auto status = StatusOf(bytes, 0);
  if (!status || !S_ISREG(status->st_mode) || status->st_size > bound) return std::nullopt;
  const TFileDescriptor file = OpenPath(bytes, O_RDONLY);
  if (!file.IsOpen()) return std::nullopt;

  // Files of the kernel give length 0 and hold bytes all the same; a growing file must not run on.
  QByteArray content;
  content.reserve(static_cast<qsizetype>(status->st_size) + 1);
  char part[16 * 1024];
  for (;;) {
    const ssize_t count = read(file.Get(), part, sizeof part);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 || content.size() + count > bound) return std::nullopt;
    if (count == 0) return content;
    content.append(part, count);
  }
}
