#include "support/Korvel_Routine_New.h"

#include "platform/FileTests.h"
#include "platform/FileTypes.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"

#include <QLocale>

#include <algorithm>

namespace {

// The remainder of a division by up to 2^30 fits with room to spare, so rounding is exact.
QString WithTwoDecimals(qint64 bytes, qint64 unit) {
  const qint64 hundredths = (bytes % unit * 200 + unit) / (2 * unit);
  const qint64 whole = bytes / unit + hundredths / 100;
  return QString::number(whole) + QLocale().decimalPoint() +
         QString::number(hundredths % 100).rightJustified(2, u'0');
}

}  // namespace

QString SizeToText(qint64 bytes) {
  constexpr qint64 kKilo = 1024;
  constexpr qint64 kMega = kKilo * kKilo;
  constexpr qint64 kGiga = kMega * kKilo;
  if (bytes < kKilo) return QString::number(bytes) + u" Byte"_qs;
  if (bytes < kMega) return WithTwoDecimals(bytes, kKilo) + u" KB"_qs;
  if (bytes < kGiga) return WithTwoDecimals(bytes, kMega) + u" MB"_qs;
  return WithTwoDecimals(bytes, kGiga) + u" GB"_qs;
}

QString GetWindowsDir() {
  return GetWindowsFolder();
}

QString GetSystemDir() {
  return GetSystemFolder();
}

QString GetSpecialFolderPath(int number) {
  return GetKnownFolder(static_cast<TSpecialFolder>(number));
}

QString GetFileTypeName(const QString& extension) {
  if (extension.isEmpty()) return u"FILE"_qs;
  const QString type = FileTypeText(extension);
  if (!type.isEmpty()) return type;
  return RightOfLastChar(extension, 0, u'.').toUpper() + u" FILE"_qs;
}

QStringList SplitToList(const QString& text, const QString& delimiter) {
  return delimiter.isEmpty() ? QStringList(text) : text.split(delimiter);
}

QString LeftOfChar(const QString& text, int count, QChar character) {
  const qsizetype length = character.isNull() ? count : text.indexOf(character);
  return text.left(std::max(length, qsizetype{0}));
}

QString RightOfLastChar(const QString& text, int count, QChar character) {
  if (character.isNull()) return text.right(std::max(count, 0));
  return text.mid(LastCharPos(text, character, 1));
}

int LastCharPos(const QString& text, QChar character, int n) {
  int found = 0;
  for (qsizetype place = text.size(); place > 0; --place) {
    if (text[place - 1] == character && ++found == n) return static_cast<int>(place);
  }
  return 0;
}

QString TrimBelowChar(const QString& text, QChar character) {
  const auto stays = [character](QChar c) { return c > character; };
  const auto begin = std::find_if(text.begin(), text.end(), stays);
  const auto end = std::find_if(text.rbegin(), std::make_reverse_iterator(begin), stays).base();
  return QString(begin, end - begin);
}
