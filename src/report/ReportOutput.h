// The forms in which the console program prints a scan's results.
//
// A new figure of the report comes from the scan (TPathTotals or a list of it), gets its place in TReport,
// and is told in each form: ReportAsText, ReportAsJson with its schema, ReportAsCsv with its heading, and the
// page (HtmlPage.cpp).
#pragma once

#include "download/DownloadDirectoryScan.h"
#include "scan/UnitScan.h"

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

#include <optional>
#include <span>

// The results of one scan. Views: the scan that owns the lists must outlive it.
struct TReport {
  QStringList Paths;                        // all that were asked for
  std::span<const TPathTotals> PathTotals;  // of the first ones of Paths, fewer after a stop
  std::span<const TFileInfoEx> Folders;
  std::span<const TFileInfoEx> Files;
  std::span<const TFileInfoEx> DownloadFiles;
  std::optional<QStringList> Unreadable = {};  // folders; only if they are to be listed
  // For the page alone:
  std::span<const TFolderTree> Trees = {};  // of the paths; none unless the scan was asked to keep them
  std::span<const TDownloadLocation> Downloads = {};  // the folders of DownloadFiles
  QDateTime Begun = {};
  bool Stopped = false;
  qint64 Milliseconds = 0;
};

// All are the same bytes on every system but for the paths: lines end in a line feed alone.

// Lines for people: totals per path, for a whole volume with its balance, then the lists, sizes aligned.
// Names come out as their raw bytes, on Windows in UTF-8.
[[nodiscard]] QByteArray ReportAsText(const TReport& report);

// One JSON object in UTF-8 with exact integers. Names of any bytes are escaped by EscapeUndecodable; those of
// Windows, where "\" is the delimiter, stand as they are, and a lone surrogate in them is JSON's "\uNNNN".
// Its schema is docs/report.schema.json.
[[nodiscard]] QByteArray ReportAsJson(const TReport& report);

// A table in UTF-8 after RFC 4180: a heading, then a row for each path, folder, file, download file and
// unreadable folder. The path comes last and whole, escaped as in JSON: as it begins with a delimiter or a
// drive, no name can pass for a formula.
[[nodiscard]] QByteArray ReportAsCsv(const TReport& report);
