#include "platform/Paths.h"

const QChar PathDelim = u'\\';
const int kLongestPath = 260;

// "C:" alone would be the current folder of that drive.
QString ExcludeTrailingPathDelimiter(const QString& path) {
  const QString without = WithoutDelimitersAtEnd(path);
  return path.endsWith(PathDelim) && without.endsWith(u':') ? without + PathDelim : without;
}

bool IsVolumeRoot(const QString& path) {
  return !path.isEmpty() && path.size() <= 3;
}

bool IsAbsolutePath(const QString& path) {
  return path.size() > 1 && path[1] == u':';
}

bool SameVolume(const QString& a, const QString& b) {
  return !a.isEmpty() && !b.isEmpty() && CompareText(a.left(1), b.left(1)) == 0;
}

QString VolumeName(const QString& root) {
  return WithoutDelimitersAtEnd(root);
}

bool SameFolder(const QString& a, const QString& b) {
  return CompareText(WithoutDelimitersAtEnd(a), WithoutDelimitersAtEnd(b)) == 0;
}
