#include "report/ReportArguments.h"

#include "platform/Paths.h"
#include "platform/Volumes.h"

#include <utility>

namespace {

TReportArguments Wrong(const QString& complaint) {
  TReportArguments result;
  result.Action = TReportAction::Wrong;
  result.Complaint = complaint;
  return result;
}

// False for a text that is no option of this program.
bool TakeOption(const QString& option, TReportArguments& result) {
  if (option == u"--json")
    result.Format = TReportFormat::Json;
  else if (option == u"--csv")
    result.Format = TReportFormat::Csv;
  else if (option == u"--elevate")
    result.Elevate = true;
  else if (option == u"--folder")
    result.Folder = true;
  else if (option == u"--unreadable")
    result.Unreadable = true;
  else if (option == u"--help" || option == u"-h")
    result.Action = TReportAction::Help;
  else if (option == u"--version")
    result.Action = TReportAction::Version;
  else
    return false;
  return true;
}

}  // namespace

TReportArguments ParseReportArguments(const QStringList& arguments) {
  TReportArguments result;
  bool options = true;
  bool file = false;  // comes next
  for (const QString& argument : arguments) {
    if (std::exchange(file, false))
      result.HtmlFile = argument;
    else if (options && argument == u"--html")
      result.Format = TReportFormat::Html, file = true;
    else if (options && argument == u"--")
      options = false;
    // A lone dash is a path here; it is standard output only behind --html.
    else if (!options || !argument.startsWith(u'-') || argument == u"-")
      result.Paths.append(argument);
    else if (!TakeOption(argument, result))
      return Wrong(u"unknown option "_qs + argument);
    // Help and version are answered whatever else is wrong behind them.
    if (result.Action != TReportAction::Scan) return result;
  }
  if (file || (result.Format == TReportFormat::Html && result.HtmlFile.isEmpty()))
    return Wrong(u"--html needs a file"_qs);
  if (result.Paths.isEmpty()) return Wrong(u"no path given"_qs);
  if (result.Folder && result.Paths.size() > 1) return Wrong(u"--folder takes exactly one path"_qs);
  return result;
}

QString ReportUsageLine() {
  return u"Usage: tallyscope-report [--json | --csv | --html FILE] [--elevate] [--folder] [--unreadable] PATH...\n"_qs;
}

QString ReportHelp() {
  return ReportUsageLine() +
         u"Shows what takes the space below each path: totals, the largest folders and files.\n"
         u"For a whole volume it also tells how what is used there adds up.\n"
         u"\n"
         u"  --json        print one JSON object instead of text\n"
         u"  --csv         print a table for spreadsheets: kind, sizes and counts, path\n"
         u"  --html FILE   write a page for any browser, with a map of the folders; - prints it\n"
         u"  --elevate     ask for the administrator's consent to read volumes in bulk\n"
         u"  --folder      PATH is one folder to be walked, not a list of drives\n"
         u"  --unreadable  list the folders that could not be read\n"
         u"  --version     print the version\n"
         u"  --help        print this help\n"
         u"\n"
         u"Exit status: 0 done, 1 a path can't be scanned, 2 wrong usage, 130 stopped by Ctrl-C.\n"_qs;
}

QString MakeAbsolutePath(const QString& path, const QString& currentFolder) {
  QString native = path;
  native.replace(u'/', PathDelim);
  const bool isShare = native.startsWith(QString(2, PathDelim));
  if (IsAbsolutePath(native) || isShare || currentFolder.isEmpty()) return native;
  QString result = native.startsWith(PathDelim) ? VolumeRootOf(currentFolder) : currentFolder;
  for (const QString& part : native.split(PathDelim, Qt::SkipEmptyParts))
    if (part != u".") result = IncludeTrailingPathDelimiter(result) + part;
  return result;
}
