#include "report/HtmlText.h"

#include "platform/Paths.h"
#include "report/TextColumns.h"

#include <algorithm>
#include <vector>

namespace {

bool IsVisible(char32_t point) {
  switch (QChar::category(point)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
      return false;
    default:
      return true;
  }
}

bool IsMark(char32_t point) {
  const QChar::Category category = QChar::category(point);
  return category == QChar::Mark_NonSpacing || category == QChar::Mark_SpacingCombining ||
         category == QChar::Mark_Enclosing;
}

QString Hexadecimal(char32_t point, int digits) {
  return QString::number(static_cast<uint>(point), 16).rightJustified(digits, u'0');
}

// Where names are bytes, a byte that is no text is a surrogate (platform/Paths.h).
QString Named(char32_t point) {
  const bool byte = PathDelim == u'/' && point >= 0xDC80 && point <= 0xDCFF;
  if (byte) point -= 0xDC00;
  return point < 0x100 ? u"\\x"_qs + Hexadecimal(point, 2) : u"\\u"_qs + Hexadecimal(point, 4);
}

QByteArray Marked(char32_t point) {
  switch (point) {
    case U'&':
      return "&amp;";
    case U'<':
      return "&lt;";
    case U'>':
      return "&gt;";
    case U'"':
      return "&quot;";
    case U'\'':
      return "&#39;";
    default:
      return QString::fromUcs4(&point, 1).toUtf8();
  }
}

// Nearly all names: nothing to be told in letters, nothing that means anything to HTML.
bool IsPlain(const QString& text) {
  return std::ranges::all_of(text, [](QChar c) {
    if (c > u'~') return !c.isSurrogate() && IsVisible(c.unicode()) && !IsMark(c.unicode());
    return c >= u' ' && c != u'&' && c != u'<' && c != u'>' && c != u'"' && c != u'\'';
  });
}

}  // namespace

QString ShownText(const QString& text) {
  if (IsPlain(text)) return text;
  QString shown;
  for (const char32_t point : CodePoints(text)) {
    if (shown.isEmpty() && IsMark(point)) shown += u'◌';
    shown += IsVisible(point) ? QString::fromUcs4(&point, 1) : Named(point);
  }
  return shown;
}

QByteArray HtmlText(const QString& text, qsizetype mostBytes) {
  if (text.size() <= mostBytes && IsPlain(text))
    if (const QByteArray plain = text.toUtf8(); plain.size() <= mostBytes) return plain;
  // Each unit makes a byte or more, so that what is left out here would be left out below.
  const bool tooLong = text.size() / 2 > mostBytes;
  const QString ends = tooLong ? text.left(mostBytes + 1) + text.right(mostBytes + 1) : text;
  std::vector<QByteArray> pieces;
  qsizetype bytes = 0;
  for (const char32_t point : CodePoints(ShownText(ends)))
    bytes += pieces.emplace_back(Marked(point)).size();
  size_t begin = pieces.size();
  size_t end = begin;
  if (bytes > mostBytes) {
    qsizetype room = mostBytes / 3;
    for (begin = 0; pieces[begin].size() <= room; ++begin)
      room -= pieces[begin].size();
    for (room += mostBytes - mostBytes / 3; pieces[end - 1].size() <= room; --end)
      room -= pieces[end - 1].size();
  }
  QByteArray html;
  for (size_t i = 0; i < pieces.size(); ++i) {
    if (i < begin || i >= end)
      html += pieces[i];
    else if (i == begin)
      html += "…";
  }
  return html;
}
