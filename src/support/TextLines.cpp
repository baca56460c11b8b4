#include "support/TextLines.h"

#include "platform/AnsiText.h"

#include <QStringConverter>

namespace {

struct TMark {
  const char* Bytes;
  QStringConverter::Encoding Encoding;
};

constexpr TMark kMarks[] = {
    {"\xff\xfe", QStringConverter::Utf16LE},
    {"\xfe\xff", QStringConverter::Utf16BE},
    {"\xef\xbb\xbf", QStringConverter::Utf8},
};

QString Decoded(const QByteArray& content) {
  for (const TMark& mark : kMarks) {
    if (!content.startsWith(mark.Bytes)) continue;
    const QByteArrayView text = QByteArrayView(content).sliced(QByteArrayView(mark.Bytes).size());
    return QStringDecoder(mark.Encoding, QStringDecoder::Flag::ConvertInitialBom).decode(text);
  }
  return TextFromAnsi(content);
}

}  // namespace

QStringList TextLines(const QByteArray& content) {
  return Decoded(content).replace(u'\r', u'\n').split(u'\n', Qt::SkipEmptyParts);
}
