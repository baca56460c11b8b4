#include "report/HtmlText.h"

#include "platform/Paths.h"
#include "report/TextColumns.h"

#include <algorithm>
#include <vector>

namespace {

// Private and unassigned characters are told in letters too: a font may have nothing for them, or anything.
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

void AppendMarked(char32_t point, QByteArray& html) {
  switch (point) {
    case U'&':
      html += "&amp;";
      return;
    case U'<':
      html += "&lt;";
      return;
    case U'>':
      html += "&gt;";
      return;
    case U'"':
      html += "&quot;";
      return;
    case U'\'':
      html += "&#39;";
      return;
    default:
      if (point < 0x80)
        html += static_cast<char>(point);
      else
        html += QStringView(QChar::fromUcs4(point)).toUtf8();
  }
}

// Nearly all names: nothing to be told in letters, nothing that means anything to HTML.
// Asked of every text first, as it spares the walk by code points and a copy.
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
    if (IsVisible(point))
      shown += QStringView(QChar::fromUcs4(point));
    else
      shown += Named(point);
  }
  return shown;
}

QByteArray HtmlText(const QString& text, qsizetype mostBytes) {
  if (text.size() <= mostBytes && IsPlain(text))
    if (const QByteArray plain = text.toUtf8(); plain.size() <= mostBytes) return plain;
  // Each unit makes a byte or more, so that what is left out here would be left out below.
  const bool tooLong = text.size() / 2 > mostBytes;
  const QString ends = tooLong ? text.left(mostBytes + 1) + text.right(mostBytes + 1) : text;
  QByteArray html;
  std::vector<qsizetype> begins;  // of each character, and the end
  for (const char32_t point : CodePoints(ShownText(ends))) {
    begins.push_back(html.size());
    AppendMarked(point, html);
  }
  begins.push_back(html.size());
  if (html.size() <= mostBytes) return html;
  // A third for the beginning and the rest for the end, where the name is; both end between characters, so no
  // entity is cut in two.
  const qsizetype front = *std::prev(std::ranges::upper_bound(begins, mostBytes / 3));
  const qsizetype back = *std::ranges::lower_bound(begins, html.size() - (mostBytes - front));
  return html.first(front) + "…" + html.sliced(back);
}
