#include "report/ReportOutput.h"

#include "platform/Paths.h"
#include "report/TextColumns.h"
#include "support/Korvel_Routine_New.h"

#include <algorithm>

namespace {

QByteArray Counted(quint64 number, const char* one, const char* many) {
  return QByteArray::number(number) + ' ' + (number == 1 ? one : many);
}

QByteArray SizeText(quint64 bytes) {
  return SizeToText(static_cast<qint64>(bytes)).toUtf8();
}

QByteArray TotalsText(const QString& path, const TPathTotals& totals) {
  return NameToBytes(path) + "\n  " + Counted(totals.Files, "file", "files") + ", " +
         Counted(totals.Folders, "folder", "folders") + ", " + Counted(totals.Bytes, "byte", "bytes") + " (" +
         SizeText(totals.Bytes) + ")\n";
}

// Nothing at all for an empty list.
QByteArray SectionText(const char* heading, std::span<const TFileInfoEx> rows) {
  if (rows.empty()) return {};
  qsizetype width = 0;
  for (const TFileInfoEx& row : rows)
    width = std::max(width, SizeText(row.Size).size());
  QByteArray text = QByteArray("\n") + heading + '\n';
  for (const TFileInfoEx& row : rows)
    text += "  " + SizeText(row.Size).rightJustified(width) + "  " + NameToBytes(row.Path) +
            NameToBytes(row.Name) + '\n';
  return text;
}

// Names of Windows are text, those of Linux any bytes.
QString EscapedName(const QString& text) {
  return PathDelim == u'\\' ? text : EscapeUndecodable(text);
}

// A JSON string; what its rules or UTF-8 don't let stand is escaped.
QByteArray JsonText(const QString& text) {
  QByteArray json = "\"";
  for (const char32_t c : CodePoints(EscapedName(text))) {
    if (c == U'"' || c == U'\\')
      json += '\\', json += static_cast<char>(c);
    else if (c < 0x20 || QChar::isSurrogate(c))
      json += "\\u" + QByteArray::number(static_cast<uint>(c), 16).rightJustified(4, '0');
    else if (c < 0x80)
      json += static_cast<char>(c);
    else
      json += QString::fromUcs4(&c, 1).toUtf8();
  }
  return json + '"';
}

QByteArray JsonRow(const TFileInfoEx& row) {
  return "{\"path\": " + JsonText(row.Path) + ", \"name\": " + JsonText(row.Name) +
         ", \"size\": " + QByteArray::number(row.Size) + '}';
}

QByteArray JsonPath(const QString& path, const TPathTotals& totals) {
  return "{\"path\": " + JsonText(path) + ", \"files\": " + QByteArray::number(totals.Files) +
         ", \"folders\": " + QByteArray::number(totals.Folders) +
         ", \"bytes\": " + QByteArray::number(totals.Bytes) + '}';
}

// "name": [ ... ] with one line for each of the count elements.
template <typename TElement>
QByteArray JsonArray(const char* name, size_t count, const TElement& element) {
  QByteArray json = QByteArray("  \"") + name + "\": [";
  for (size_t i = 0; i < count; ++i)
    json += (i == 0 ? "\n    " : ",\n    ") + element(i);
  return json + (count == 0 ? "],\n" : "\n  ],\n");
}

QByteArray JsonRows(const char* name, std::span<const TFileInfoEx> rows) {
  return JsonArray(name, rows.size(), [rows](size_t i) { return JsonRow(rows[i]); });
}

QByteArray CsvRow(const char* kind, quint64 bytes, const QByteArray& counts, const QString& path) {
  const QByteArray quoted = EscapedName(path).toUtf8().replace('"', "\"\"");
  return QByteArray(kind) + ',' + QByteArray::number(bytes) + ',' + counts + ",\"" + quoted + "\"\n";
}

QByteArray CsvRows(const char* kind, std::span<const TFileInfoEx> rows) {
  QByteArray csv;
  for (const TFileInfoEx& row : rows)
    csv += CsvRow(kind, row.Size, ",", row.Path + row.Name);
  return csv;
}

}  // namespace

QByteArray ReportAsText(const TReport& report) {
  QByteArray text;
  for (size_t i = 0; i < report.PathTotals.size(); ++i)
    text += TotalsText(report.Paths[static_cast<qsizetype>(i)], report.PathTotals[i]);
  return text + SectionText("Largest folders", report.Folders) + SectionText("Largest files", report.Files) +
         SectionText("Download files", report.DownloadFiles);
}

QByteArray ReportAsJson(const TReport& report) {
  const auto path = [&report](size_t i) {
    return JsonPath(report.Paths[static_cast<qsizetype>(i)], report.PathTotals[i]);
  };
  return "{\n" + JsonArray("paths", report.PathTotals.size(), path) +
         JsonRows("largestFolders", report.Folders) + JsonRows("largestFiles", report.Files) +
         JsonRows("downloadFiles", report.DownloadFiles) +
         "  \"stopped\": " + (report.Stopped ? "true" : "false") +
         ",\n  \"seconds\": " + QByteArray::number(static_cast<double>(report.Milliseconds) / 1000, 'f', 3) +
         "\n}\n";
}

QByteArray ReportAsCsv(const TReport& report) {
  QByteArray csv = "kind,bytes,files,folders,path\n";
  for (size_t i = 0; i < report.PathTotals.size(); ++i) {
    const TPathTotals& totals = report.PathTotals[i];
    csv += CsvRow("path", totals.Bytes,
                  QByteArray::number(totals.Files) + ',' + QByteArray::number(totals.Folders),
                  report.Paths[static_cast<qsizetype>(i)]);
  }
  return csv + CsvRows("folder", report.Folders) + CsvRows("file", report.Files) +
         CsvRows("download", report.DownloadFiles);
}
