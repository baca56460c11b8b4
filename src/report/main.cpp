// tallyscope-report: scans paths and prints what takes their space.
//
// The way of a run: the arguments (Run), absolute paths that are looked at before anything begins
// (ScanPaths), the scan and the form that was asked for (Report), and one exit code. Standard output has the
// report alone; complaints and the line of progress go to standard error, so that a pipe gets nothing else.
#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "platform/Process.h"
#include "report/HtmlPage.h"
#include "report/ReportArguments.h"
#include "report/ReportScan.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <string>
#include <system_error>

namespace {

// As the help tells them. 130 is what a shell makes of a Ctrl-C.
enum TExitCode { kDone = 0, kFailed = 1, kWrongUsage = 2, kInterrupted = 130 };

// Where a Ctrl-C goes while a scan runs.
std::mutex InterruptGuard;
TReportScan* InterruptTarget = nullptr;  // under InterruptGuard

void SetInterruptTarget(TReportScan* target) {
  const std::lock_guard lock(InterruptGuard);
  InterruptTarget = target;
}

// The first Ctrl-C asks the scan to stop. Without a scan, or should the scan hang in the file system, nothing
// is left to wait for.
void PassInterrupt() {
  const std::lock_guard lock(InterruptGuard);
  if (InterruptTarget == nullptr) std::_Exit(kInterrupted);
  InterruptTarget->Interrupt();
  InterruptTarget = nullptr;
}

void Print(std::FILE* stream, const QByteArray& bytes) {
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
}

void Complain(const QString& text) {
  Print(stderr, "tallyscope-report: " + NameToBytes(text) + '\n');
}

// A full disk or a closed pipe shows at the latest when the last bytes are written.
int FinishOutput(int exitCode) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return exitCode;
  Complain(u"the output can't be written"_qs);
  return kFailed;
}

// True if all paths are folders that can be listed; a line on standard error for each other one.
bool CheckPaths(const QStringList& paths) {
  bool good = true;
  for (const QString& path : paths) {
    const bool folder = DirectoryExists(path);
    if (folder && DirectoryReadable(path)) continue;
    good = false;
    Complain(path + (folder             ? u": this folder can't be read"_qs
                     : FileExists(path) ? u": not a folder"_qs
                                        : u": no such folder"_qs));
  }
  return good;
}

bool IsStandardOutput(const QString& file) {
  return file == u"-";
}

// Said before a scan that may take its time. What is no plain file, as a device, would be replaced by one.
bool CheckPageFile(const QString& file) {
  if (IsStandardOutput(file)) return true;
  const QFileInfo target(file);
  const QFileInfo folder(target.path());
  const bool nameKept = QFile::encodeName(file) == NameToBytes(file);
  if (nameKept && (target.exists() ? target.isFile() && target.isWritable() : !target.isSymLink()) &&
      folder.isDir() && folder.isWritable())
    return true;
  Complain(file + u": the page can't be written there"_qs);
  return false;
}

// To a name of its own beside the file, which takes the file's name when all is on the disk.
bool WritePage(const QString& file, const QByteArray& page) {
  if (IsStandardOutput(file)) {
    Print(stdout, page);
    return true;
  }
  QSaveFile target(file);
  if (target.open(QIODevice::WriteOnly) && target.write(page) == page.size() && target.commit()) return true;
  Complain(file + u": the page can't be written"_qs);
  return false;
}

// The scan reads these flags as it begins, so they are set before it is made. From the target on until it is
// taken back a Ctrl-C goes to the scan.
int Report(const TReportArguments& arguments, const QStringList& paths) {
  const bool page = arguments.Format == TReportFormat::Html;
  if (page && !CheckPageFile(arguments.HtmlFile)) return kFailed;
  KeepFolderTrees = page;
  if (arguments.Elevate) AskForElevation = TALLYSCOPE_ASK_ON_TERMINAL_TOO;
  ListUnreadable = arguments.Unreadable || page;
  TReportScan scan(StdErrIsTerminal());
  SetInterruptTarget(&scan);
  const TReport report = scan.Run(paths, arguments.Folder);
  SetInterruptTarget(nullptr);
  // An object tells of a stop by itself, a table or text would look whole.
  if (arguments.Format == TReportFormat::Json) Print(stdout, ReportAsJson(report));
  // Nothing is written over a page that is there.
  if (report.Stopped) {
    Complain(u"stopped"_qs);
    return FinishOutput(kInterrupted);
  }
  if (arguments.Format == TReportFormat::Text) Print(stdout, ReportAsText(report));
  if (arguments.Format == TReportFormat::Csv) Print(stdout, ReportAsCsv(report));
  if (page && !WritePage(arguments.HtmlFile, ReportAsHtml(report))) return kFailed;
  return FinishOutput(kDone);
}

// A path as the system has it: bytes or UTF-16.
// The standard library asks the system itself: the current folder may have a name of any bytes.
template <typename TUnit>
QString PathText(const std::basic_string<TUnit>& path) {
  if constexpr (sizeof(TUnit) == 1)
    return NameFromBytes({path.data(), static_cast<qsizetype>(path.size())});
  else
    return QString::fromStdWString(path);
}

// Empty if it is not known, as when it was removed.
QString CurrentFolder() {
  std::error_code error;
  return PathText(std::filesystem::current_path(error).native());
}

int ScanPaths(const TReportArguments& arguments) {
  const QString currentFolder = CurrentFolder();
  QStringList paths;
  for (const QString& path : arguments.Paths)
    paths.append(MakeAbsolutePath(path, currentFolder));
  return CheckPaths(paths) ? Report(arguments, paths) : kFailed;
}

int Run(const TReportArguments& arguments) {
  switch (arguments.Action) {
    case TReportAction::Help:
      Print(stdout, ReportHelp().toUtf8());
      return FinishOutput(kDone);
    case TReportAction::Version:
      Print(stdout, "tallyscope-report " TALLYSCOPE_VERSION "\n");
      return FinishOutput(kDone);
    case TReportAction::Wrong:
      Complain(arguments.Complaint);
      Print(stderr, ReportUsageLine().toUtf8());
      return kWrongUsage;
    case TReportAction::Scan:
      break;
  }
  return ScanPaths(arguments);
}

}  // namespace

int main(int argc, char** argv) {
  // Before anything decodes them by the locale.
  const QStringList arguments = ProgramParameters(argc, argv);
  MakeOutputPlain();
  OnInterrupt(PassInterrupt);
  QCoreApplication application(argc, argv);
  return Run(ParseReportArguments(arguments));
}
