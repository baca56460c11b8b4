#include "platform/Paths.h"

#include <algorithm>
#include <cstring>

namespace {

char16_t FoldAscii(QChar c) {
  const char16_t unit = c.unicode();
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

// Between a name's bytes and its text: UTF-8, with one lone low surrogate for each byte that is not part of
// it.
//
// The code point at the beginning of the bytes and how many of them it takes; a length of 1 and a value of
// 0x80 and above is a byte that is no UTF-8.
struct TDecoded {
  char32_t Value;
  int Length;
};

TDecoded DecodeOne(const unsigned char* bytes, qsizetype available) {
  const unsigned char lead = bytes[0];
  const TDecoded invalid{lead, 1};
  if (lead < 0x80) return {lead, 1};
  const int length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
  if (lead < 0xc2 || lead > 0xf4 || available < length) return invalid;
  char32_t value = lead & (0x7fU >> length);
  for (int i = 1; i < length; ++i) {
    if ((bytes[i] & 0xc0) != 0x80) return invalid;
    value = (value << 6) | (bytes[i] & 0x3fU);
  }
  // Forms longer than needed and encoded surrogates are bytes too, or two names would have one text.
  const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
  const bool surrogate = value >= 0xd800 && value <= 0xdfff;
  return overlong || surrogate || value > 0x10ffff ? invalid : TDecoded{value, length};
}

bool IsAscii(const char* bytes, qsizetype count) {
  constexpr quint64 kHighBits = 0x8080808080808080U;
  for (; count >= 8; bytes += 8, count -= 8) {
    quint64 word;
    std::memcpy(&word, bytes, sizeof word);
    if ((word & kHighBits) != 0) return false;
  }
  for (; count > 0; ++bytes, --count) {
    if ((*bytes & 0x80) != 0) return false;
  }
  return true;
}

QString DecodeAll(const unsigned char* bytes, qsizetype count) {
  QString text(count, Qt::Uninitialized);
  QChar* out = text.data();
  while (count > 0) {
    const auto [value, length] = DecodeOne(bytes, count);
    if (value >= 0x10000) {
      *out++ = QChar(QChar::highSurrogate(value));
      *out++ = QChar(QChar::lowSurrogate(value));
    } else {
      const bool undecodable = length == 1 && value >= 0x80;
      *out++ = QChar(static_cast<char16_t>(undecodable ? 0xdc00 + value : value));
    }
    bytes += length;
    count -= length;
  }
  text.truncate(out - text.constData());
  return text;
}

bool IsUndecodableByte(QChar c) {
  return c.unicode() >= 0xdc80 && c.unicode() <= 0xdcff;
}

bool IsPairAt(const QString& text, qsizetype place) {
  return text[place].isHighSurrogate() && place + 1 < text.size() && text[place + 1].isLowSurrogate();
}

// The lone surrogates of bytes become these bytes, any other one becomes '?'. Both return the place behind
// what they wrote.
char* PutUnit(char* out, QChar c) {
  const unsigned unit = c.unicode();
  if (unit < 0x80) {
    *out++ = static_cast<char>(unit);
  } else if (c.isSurrogate()) {
    *out++ = IsUndecodableByte(c) ? static_cast<char>(unit & 0xff) : '?';
  } else if (unit < 0x800) {
    *out++ = static_cast<char>(0xc0 | (unit >> 6));
    *out++ = static_cast<char>(0x80 | (unit & 0x3f));
  } else {
    *out++ = static_cast<char>(0xe0 | (unit >> 12));
    *out++ = static_cast<char>(0x80 | ((unit >> 6) & 0x3f));
    *out++ = static_cast<char>(0x80 | (unit & 0x3f));
  }
  return out;
}

char* PutPair(char* out, QChar high, QChar low) {
  const char32_t value = QChar::surrogateToUcs4(high, low);
  *out++ = static_cast<char>(0xf0 | (value >> 18));
  *out++ = static_cast<char>(0x80 | ((value >> 12) & 0x3f));
  *out++ = static_cast<char>(0x80 | ((value >> 6) & 0x3f));
  *out++ = static_cast<char>(0x80 | (value & 0x3f));
  return out;
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

void AssignName(QString& name, QByteArrayView bytes) {
  if (IsAscii(bytes.data(), bytes.size())) {
    name = QLatin1String(bytes.data(), bytes.size());
  } else {
    name = DecodeAll(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  }
}

QString NameFromBytes(QByteArrayView bytes) {
  QString name;
  AssignName(name, bytes);
  return name;
}

// One unit takes at most three bytes; a pair, which is two units, four.
QByteArray NameToBytes(const QString& name) {
  QByteArray bytes(name.size() * 3, Qt::Uninitialized);
  char* out = bytes.data();
  for (qsizetype i = 0; i < name.size(); ++i) {
    if (IsPairAt(name, i)) {
      out = PutPair(out, name[i], name[i + 1]);
      ++i;
    } else {
      out = PutUnit(out, name[i]);
    }
  }
  bytes.truncate(out - bytes.constData());
  return bytes;
}

QString EscapeUndecodable(const QString& name) {
  QString escaped;
  escaped.reserve(name.size());
  for (qsizetype i = 0; i < name.size(); ++i) {
    const QChar c = name[i];
    if (IsPairAt(name, i)) {
      escaped += c;
      escaped += name[++i];
    } else if (c == u'\\') {
      escaped += QLatin1String("\\\\");
    } else if (IsUndecodableByte(c)) {
      escaped += QStringLiteral("\\x%1").arg(c.unicode() & 0xff, 2, 16, QLatin1Char('0'));
    } else if (c.isSurrogate()) {
      escaped += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    } else {
      escaped += c;
    }
  }
  return escaped;
}
