#include "report/ReportOutput.h"

#include "platform/Paths.h"
#include "report/TextColumns.h"
#include "report/VolumeBalance.h"
#include "support/Korvel_Routine_New.h"

#include <algorithm>

namespace {

QByteArray Counted(quint64 number, const char* one, const char* many) {
  return QByteArray::number(number) + ' ' + (number == 1 ? one : many);
}

QByteArray SizeText(quint64 bytes) {
  return SizeToText(static_cast<qint64>(bytes)).toUtf8();
}

QByteArray BytesText(quint64 bytes) {
  return Counted(bytes, "byte", "bytes") + " (" + SizeText(bytes) + ')';
}

// What is unreadable stands in a volume's balance, or else behind the sums.
QByteArray UsageText(const TPathTotals& totals) {
  // No reader told what the files occupy.
  if (!totals.Usage) return {};
  const QByteArray onDisk = ", " + BytesText(totals.Usage->Allocated) + " on disk";
  if (const auto balance = BalanceOf(totals)) return onDisk + "\n  " + balance->Text().toUtf8();
  const quint32 unreadable = totals.Usage->Unreadable;
  if (unreadable == 0) return onDisk;
  return onDisk + ", " + Counted(unreadable, "unreadable folder", "unreadable folders");
}

QByteArray TotalsText(const QString& path, const TPathTotals& totals) {
  return NameToBytes(path) + "\n  " + Counted(totals.Files, "file", "files") + ", " +
         Counted(totals.Folders, "folder", "folders") + ", " + BytesText(totals.Bytes) + UsageText(totals) +
         '\n';
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

QByteArray PathsText(const char* heading, const QStringList& paths) {
  QByteArray text;
  for (const QString& path : paths)
    text += "  " + NameToBytes(path) + '\n';
  return text.isEmpty() ? text : QByteArray("\n") + heading + '\n' + text;
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

// What is not known is left out.
QByteArray JsonUsage(const std::optional<TPathUsage>& usage) {
  if (!usage) return {};
  QByteArray json = ", \"allocated\": " + QByteArray::number(usage->Allocated);
  if (usage->VolumeUsed) json += ", \"volumeUsed\": " + QByteArray::number(*usage->VolumeUsed);
  return json + ", \"unreadable\": " + QByteArray::number(usage->Unreadable);
}

QByteArray JsonPath(const QString& path, const TPathTotals& totals) {
  return "{\"path\": " + JsonText(path) + ", \"files\": " + QByteArray::number(totals.Files) +
         ", \"folders\": " + QByteArray::number(totals.Folders) +
         ", \"bytes\": " + QByteArray::number(totals.Bytes) + JsonUsage(totals.Usage) + '}';
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

// Five columns that only a path fills.
constexpr const char* kNoCounts = ",,,,";

// Files, folders, allocated, volumeUsed, unreadable; empty where it is not known.
QByteArray CsvCounts(const TPathTotals& totals) {
  const QByteArray counts = QByteArray::number(totals.Files) + ',' + QByteArray::number(totals.Folders);
  if (!totals.Usage) return counts + ",,,";
  const TPathUsage& usage = *totals.Usage;
  const QByteArray used = usage.VolumeUsed ? QByteArray::number(*usage.VolumeUsed) : QByteArray();
  return counts + ',' + QByteArray::number(usage.Allocated) + ',' + used + ',' +
         QByteArray::number(usage.Unreadable);
}

// Every path is quoted, so that neither commas nor line breaks in it need a rule.
QByteArray CsvRow(const char* kind, const QByteArray& bytes, const QByteArray& counts, const QString& path) {
  const QByteArray quoted = EscapedName(path).toUtf8().replace('"', "\"\"");
  return QByteArray(kind) + ',' + bytes + ',' + counts + ",\"" + quoted + "\"\n";
}

QByteArray CsvRows(const char* kind, std::span<const TFileInfoEx> rows) {
  QByteArray csv;
  for (const TFileInfoEx& row : rows)
    csv += CsvRow(kind, QByteArray::number(row.Size), kNoCounts, row.Path + row.Name);
  return csv;
}

}  // namespace

QByteArray ReportAsText(const TReport& report) {
  QByteArray text;
  for (size_t i = 0; i < report.PathTotals.size(); ++i)
    text += TotalsText(report.Paths[static_cast<qsizetype>(i)], report.PathTotals[i]);
  return text + SectionText("Largest folders", report.Folders) + SectionText("Largest files", report.Files) +
         SectionText("Download files", report.DownloadFiles) +
         PathsText("Unreadable folders", report.Unreadable.value_or(QStringList()));
}

QByteArray ReportAsJson(const TReport& report) {
  const auto path = [&report](size_t i) {
    return JsonPath(report.Paths[static_cast<qsizetype>(i)], report.PathTotals[i]);
  };
  const QStringList unreadable = report.Unreadable.value_or(QStringList());
  const auto folder = [&unreadable](size_t i) { return JsonText(unreadable[static_cast<qsizetype>(i)]); };
  return "{\n" + JsonArray("paths", report.PathTotals.size(), path) +
         JsonRows("largestFolders", report.Folders) + JsonRows("largestFiles", report.Files) +
         JsonRows("downloadFiles", report.DownloadFiles) +
         (report.Unreadable ? JsonArray("unreadableFolders", static_cast<size_t>(unreadable.size()), folder)
                            : QByteArray()) +
         "  \"stopped\": " + (report.Stopped ? "true" : "false") +
         ",\n  \"seconds\": " + QByteArray::number(static_cast<double>(report.Milliseconds) / 1000, 'f', 3) +
         "\n}\n";
}

QByteArray ReportAsCsv(const TReport& report) {
  QByteArray csv = "kind,bytes,files,folders,allocated,volumeUsed,unreadable,path\n";
  for (size_t i = 0; i < report.PathTotals.size(); ++i) {
    const TPathTotals& totals = report.PathTotals[i];
    csv += CsvRow("path", QByteArray::number(totals.Bytes), CsvCounts(totals),
                  report.Paths[static_cast<qsizetype>(i)]);
  }
  csv += CsvRows("folder", report.Folders) + CsvRows("file", report.Files) +
         CsvRows("download", report.DownloadFiles);
  for (const QString& folder : report.Unreadable.value_or(QStringList()))
    csv += CsvRow("unreadable", {}, kNoCounts, folder);
  return csv;
}
