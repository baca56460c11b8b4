// What every system does alike with a path text.
#include "platform/Paths.h"

#include <algorithm>

namespace {

char16_t FoldAscii(QChar c) {
  const char16_t unit = c.unicode();
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

}  // namespace

QString IncludeTrailingPathDelimiter(const QString& path) {
  return path.endsWith(PathDelim) ? path : path + PathDelim;
}

QString WithoutDelimitersAtEnd(const QString& path) {
  qsizetype end = path.size();
  while (end > 1 && path[end - 1] == PathDelim)
    --end;
  return path.left(end);
}

QString ExtractFileDir(const QString& path) {
  return ExcludeTrailingPathDelimiter(ExtractFilePath(path));
}

QString ExtractFilePath(const QString& path) {
  return path.left(path.lastIndexOf(PathDelim) + 1);
}

QString ExtractFileName(const QString& path) {
  return path.mid(path.lastIndexOf(PathDelim) + 1);
}

QString ExtractFileExt(const QString& path) {
  const qsizetype point = path.lastIndexOf(u'.');
  return point > path.lastIndexOf(PathDelim) ? path.mid(point) : QString();
}

int CompareText(const QString& a, const QString& b) {
  const qsizetype common = std::min(a.size(), b.size());
  for (qsizetype i = 0; i < common; ++i) {
    if (const int difference = FoldAscii(a[i]) - FoldAscii(b[i]); difference != 0) return difference;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}
