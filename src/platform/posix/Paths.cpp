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

// Only a path that is the top of some mount is looked up among the volumes.
bool IsVolumeRoot(const QString& path) {
  if (!IsAbsolutePath(path)) return false;
  const QByteArray bytes = NameToBytes(WithoutDelimitersAtEnd(path));
  if (bytes == "/") return true;
  const TFileDescriptor folder = OpenPath(bytes, O_PATH | O_DIRECTORY | O_NOFOLLOW);
  const auto place = MountPlaceOf(folder.Get());
  if (!place || !place->MayBeMountRoot) return false;
  const QVector<TMount> mounts = FixedMounts();
  return std::any_of(mounts.begin(), mounts.end(), [&](const TMount& mount) { return mount.Point == bytes; });
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
