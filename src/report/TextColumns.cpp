#include "report/TextColumns.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

// Blocks rather than single characters: a terminal that sees one of them otherwise shows the line a column
// shorter or longer.
constexpr std::pair<char32_t, char32_t> kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD},
};

// A format character takes none where it is shown at all; FitToColumns shows it as a question mark.
int Columns(char32_t character) {
  switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
      return 0;
    default:
      break;
  }
  const bool wide = std::any_of(std::begin(kWide), std::end(kWide), [character](const auto& range) {
    return character >= range.first && character <= range.second;
  });
  return wide ? 2 : 1;
}

// A format character may turn the writing direction of the whole line, so it is no better than a control.
bool Showable(char32_t character) {
  switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
      return false;
    default:
      return true;
  }
}

}  // namespace

QList<char32_t> CodePoints(const QString& text) {
  QList<char32_t> points;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
    points.append(pair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : text[i].unicode());
    if (pair) ++i;
  }
  return points;
}

int TextColumns(const QString& text) {
  int columns = 0;
  for (const char32_t character : CodePoints(text))
    columns += Columns(character);
  return columns;
}

QString FitToColumns(const QString& text, int columns) {
  static const QString kCutMark = u"..."_qs;
  QList<char32_t> points = CodePoints(text);
  int width = 0;
  for (char32_t& character : points) {
    if (!Showable(character)) character = U'?';
    width += Columns(character);
  }
  if (width <= columns) return QString::fromUcs4(points.constData(), points.size());

  // The end of a path tells more than its beginning.
  const int room = columns - static_cast<int>(kCutMark.size());
  if (room < 0) return kCutMark.left(std::max(columns, 0));
  qsizetype first = 0;
  while (width > room)
    width -= Columns(points[first++]);
  while (first < points.size() && Columns(points[first]) == 0)
    ++first;  // marks of the character cut off
  return kCutMark + QString::fromUcs4(points.constData() + first, points.size() - first);
}
