#include "download/DatStream.h"

#include "download/SettingsFile.h"

#include <algorithm>
#include <limits>

QString FindDatValue(QByteArrayView bytes, const QString& key, const QString& defaultValue) {
  QString token;
  qsizetype position = 1;
  while (position < bytes.size()) {
    position = NextDatToken(bytes, position, token);
    if (position == 0) break;
    if (token == key) {
      (void)NextDatToken(bytes, position, token);
      return token;
    }
  }
  return defaultValue;
}

qsizetype NextDatToken(QByteArrayView bytes, qsizetype position, QString& token) {
  token.clear();
  const auto colon = std::find(bytes.begin() + std::min(position, bytes.size()), bytes.end(), ':');
  if (colon == bytes.end()) return 0;
  const qsizetype start = colon - bytes.begin() + 1;
  const qsizetype length = TrailingNumber(bytes.sliced(position, start - 1 - position));
  if (length > bytes.size() - start) return 0;
  token = QString::fromLatin1(bytes.sliced(start, length));
  return start + length;
}

int TrailingNumber(QByteArrayView bytes) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto digits = std::find_if_not(bytes.rbegin(), bytes.rend(), isDigit).base();
  qint64 number = 0;
  for (auto digit = digits; digit != bytes.end(); ++digit) {
    number = number * 10 + (*digit - '0');
    if (number > std::numeric_limits<int>::max()) throw TSettingsError("a length beyond all bounds");
  }
  return static_cast<int>(number);
}
