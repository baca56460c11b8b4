// The command line of the console program.
//
// A new option is a field here, a line of TakeOption (or of ParseReportArguments, if an argument follows it),
// a line of the help and one of the usage; what it does is report/main.cpp's.
#pragma once

#include <QStringList>

enum class TReportAction { Scan, Help, Version, Wrong };

enum class TReportFormat { Text, Json, Csv, Html };

struct TReportArguments {
  TReportAction Action = TReportAction::Scan;
  QString Complaint;  // what is wrong, for TReportAction::Wrong
  TReportFormat Format = TReportFormat::Text;
  QString HtmlFile;         // as given, for TReportFormat::Html; "-" is standard output
  bool Elevate = false;     // ask for the right to read volumes in bulk
  bool Folder = false;      // one folder instead of drives
  bool Unreadable = false;  // list the folders that could not be read
  QStringList Paths;        // as given; never empty for TReportAction::Scan
};

// The arguments without the program's name. "--" ends the options.
[[nodiscard]] TReportArguments ParseReportArguments(const QStringList& arguments);

// One line for a wrong command line, and the whole help; each ends in a line break.
[[nodiscard]] QString ReportUsageLine();
[[nodiscard]] QString ReportHelp();

// A relative path below the current folder, without empty and "." parts; an absolute one unchanged. ".."
// and links stay as they are, since only the file system knows where they lead. With an empty current folder,
// which is one that is not known, a relative path stays so. Windows: "/" is taken for the delimiter too, a
// path from the root is one of the current drive, and "\\server\share" is absolute.
[[nodiscard]] QString MakeAbsolutePath(const QString& path, const QString& currentFolder);
