#include "views/main/StartParameters.h"

#include <QStringDecoder>

#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "support/Korvel_Routine_New.h"

namespace {

// The lines of a text file: by its byte-order mark, else as the locale's 8-bit text. Nothing if the file
// can't be read.
QStringList ReadLines(const QString& path) {
  const auto bytes = ReadWholeFile(path);
  if (!bytes) return {};
  const auto marked = QStringConverter::encodingForData(*bytes);
  const QString text = marked ? QString(QStringDecoder(*marked).decode(*bytes)) : TextFromAnsi(*bytes);
  QStringList lines = QString(text).replace(u"\r\n"_qs, u"\n"_qs).replace(u'\r', u'\n').split(u'\n');
  if (lines.last().isEmpty()) lines.removeLast();
  return lines;
}

}  // namespace

QByteArray ConsoleAnswer(const QStringList& parameters) {
  const QString first = parameters.value(0);
  if (first == u"--version") return "tallyscope " TALLYSCOPE_VERSION "\n";
  if (first != u"--help" && first != u"-h") return {};
  return "Usage: tallyscope [/scansys | /scandrive FOLDER...]\n"
         "Shows in a window what takes the space on drives or below a folder.\n"
         "\n"
         "  /scansys              scan the system volume at once\n"
         "  /scandrive FOLDER...  scan these volumes or folders at once\n"
         "  --version             print the version\n"
         "  --help                print this help\n";
}

TAutoStart TStartParameters::AutoStart() const {
  const QString first = FParameters.value(0);
  if (CompareText(first, u"/scansys"_qs) == 0) return TAutoStart::ScanSystem;
  if (CompareText(first, u"/scandrive"_qs) == 0) return TAutoStart::ScanDrives;
  return TAutoStart::None;
}

QStringList TStartParameters::AutoPaths() const {
  if (AutoStart() == TAutoStart::ScanSystem) return {SystemVolumeRoot()};
  QStringList paths;
  if (AutoStart() == TAutoStart::ScanDrives)
    for (const QString& path : FParameters.mid(1))
      if (DirectoryExists(path)) paths.append(path);
  return paths;
}

TPreselection TStartParameters::Preselection() const {
  TPreselection chosen;
  if (Count() != 2) return chosen;
  const QString& second = FParameters[1];
  if (IsAbsolutePath(second) && FileExists(second)) {
    const QStringList lines = ReadLines(second);
    if (lines.size() == 1 && !lines.first().isEmpty() && !IsVolumeRoot(lines.first()))
      chosen.Folder = lines.first();
    return chosen;
  }
  QStringList paths = SplitToList(second, u";"_qs);
  if (paths.last().isEmpty()) paths.removeLast();
  chosen.Drives = paths;
  return chosen;
}
