#include "platform/SystemSettings.h"

#include "platform/FileTests.h"
#include "platform/Paths.h"

#include <QMimeDatabase>
#include <QStringConverter>
#include <QStringList>

#include <optional>

namespace {

// A byte-order mark decides; without one the bytes are in the locale's encoding, which is UTF-8.
QString DecodeText(const QByteArray& bytes) {
  const auto encoding = QStringConverter::encodingForData(bytes);
  if (encoding && *encoding != QStringConverter::Utf8) return QStringDecoder(*encoding).decode(bytes);
  return NameFromBytes(bytes.startsWith("\xef\xbb\xbf") ? bytes.mid(3) : bytes);
}

QStringList SplitLines(QString text) {
  text.replace(u'\r', u'\n');
  QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
  for (QString& line : lines)
    line = line.trimmed();
  return lines;
}

bool IsSectionLine(const QString& line) {
  return line.startsWith(u'[');
}

QString SectionName(const QString& line) {
  const qsizetype end = line.lastIndexOf(u']');
  return line.mid(1, end < 0 ? -1 : end - 1).trimmed();
}

bool SameName(const QString& a, const QString& b) {
  return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString Unquote(const QString& value) {
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
  return quoted ? value.mid(1, value.size() - 2) : value;
}

std::optional<QString> FindValue(const QStringList& lines, const QString& section, const QString& key) {
  bool inSection = false;
  for (const QString& line : lines) {
    if (IsSectionLine(line)) {
      if (inSection) return std::nullopt;
      inSection = SameName(SectionName(line), section);
      continue;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (!inSection || equals < 0 || line.startsWith(u';')) continue;
    if (SameName(line.left(equals).trimmed(), key)) return Unquote(line.mid(equals + 1).trimmed());
  }
  return std::nullopt;
}

}  // namespace

QString ReadPrivateProfile(const QString& file, const QString& section, const QString& key,
                           const QString& defaultValue) {
  const auto content = ReadWholeFile(file);
  if (!content) return defaultValue;
  return FindValue(SplitLines(DecodeText(*content)), section.trimmed(), key.trimmed()).value_or(defaultValue);
}

std::optional<TRegistryValue> ReadRegistry(TRegistryRoot, const QString&, const QString&) {
  return std::nullopt;
}

QString FileTypeText(const QString& extension) {
  const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(u'x' + extension);
  return types.isEmpty() || types.front().isDefault() ? QString() : types.front().comment();
}

// The name of the type itself: what a name says goes by its end, by all of it ("Makefile") or by a pattern.
QString FileTypeKey(const QString& name) {
  const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(name);
  return types.isEmpty() ? QString() : types.front().name();
}

QString TypeTextOfFile(const QString& name) {
  const QMimeDatabase types;
  const QList<QMimeType> found = types.mimeTypesForFileName(name);
  return (found.isEmpty() ? types.mimeTypeForName(QStringLiteral("application/octet-stream")) : found.front())
      .comment();
}

QString TypeTextOfFolder() {
  return QMimeDatabase().mimeTypeForName(QStringLiteral("inode/directory")).comment();
}
