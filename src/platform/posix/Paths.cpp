#include "platform/Paths.h"

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/MountTable.h"

#include <fcntl.h>
#include <algorithm>
#include <climits>

const QChar PathDelim = u'/';
const int kLongestPath = PATH_MAX;

QString ExcludeTrailingPathDelimiter(const QString& path) {
  if (!path.endsWith(PathDelim) || IsVolumeRoot(path)) return path;
  return WithoutDelimitersAtEnd(path);
}

// The path itself is looked at only if it is where a fixed volume is mounted: at the top of another one there
// may be a server that does not answer.
bool IsVolumeRoot(const QString& path) {
  if (!IsAbsolutePath(path)) return false;
  const QByteArray bytes = NameToBytes(WithoutDelimitersAtEnd(path));
  const auto isPlace = [&](const TMount& mount) { return mount.Point == bytes; };
  if (bytes == "/") return true;
  const QVector<TMount> mounts = ReadMountTable();
  if (std::none_of(mounts.begin(), mounts.end(), isPlace)) return false;
  const QVector<TMount> fixed = ChooseFixedMounts(mounts, FixedDeviceOf);
  return std::any_of(fixed.begin(), fixed.end(), isPlace);
}

bool IsAbsolutePath(const QString& path) {
  return path.startsWith(PathDelim);
}

bool SameVolume(const QString& a, const QString& b) {
  if (!IsAbsolutePath(a) || !IsAbsolutePath(b)) return false;
  const auto placeOfA = NearestPlace(NameToBytes(a));
  return placeOfA && placeOfA == NearestPlace(NameToBytes(b));
}

QString VolumeName(const QString& root) {
  return WithoutDelimitersAtEnd(root);
}

bool SameFolder(const QString& a, const QString& b) {
  return WithoutDelimitersAtEnd(a) == WithoutDelimitersAtEnd(b);
}

QString TextFromAnsi(QByteArrayView bytes) {
  return NameFromBytes(bytes);
}

QByteArray TextToAnsi(const QString& text) {
  return NameToBytes(text);
}
